// Textures in files, and those that are made new.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "paint/PaintClass.h"
#include "recipe/language/Definitions.h"

namespace recipe {

/// Told the share that is done, 0 to 1.
using ProgressHook = std::function<void(double)>;

/// The names that LoadTexture and SaveTexture take.
inline FileName TextureFileName() {
    return {{".png", ".jpg", ".jpeg", ".jfif", ".tmp"}};
}
/// The names that SaveRepeated takes.
inline FileName PictureFileName() {
    return {{".png", ".jpg", ".jpeg", ".jfif"}};
}

// All throw std::runtime_error in one line, or std::bad_alloc. Sides are 1 to 512.

/// A white texture, its work channel 255 throughout, so that a saved one is the same each time.
std::unique_ptr<PaintClass> NewTexture(short width, short height);

/// Reads a .png or .tmp file, or else a JPEG as the editor does. A PNG's transparency is laid over
/// white, as the plug-in gets the layers of an image editor. Undo is white.
std::unique_ptr<PaintClass> LoadTexture(const std::filesystem::path& file);

/// Writes a .tmp file (with the work channel), a .png (RGB, without it), or else a JPEG (likewise)
/// as the editor does.
void SaveTexture(const PaintClass& texture, const std::filesystem::path& file);

/// Writes a .png, or else a JPEG, of the texture side by side and one above the other.
void SaveRepeated(const PaintClass& texture, int columns, int rows,
                  const std::filesystem::path& file, const ProgressHook& progress);

}  // namespace recipe

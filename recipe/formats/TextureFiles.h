// Textures: new ones, and those in files.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "paint/PaintClass.h"
#include "recipe/language/Definitions.h"

namespace recipe {

/// Is called with the share that is done, 0 to 1.
using ProgressHook = std::function<void(double)>;

/// The names that LoadTexture and SaveTexture take.
inline FileName TextureFileName() {
    return {{".png", ".jpg", ".jpeg", ".jfif", ".tmp"}};
}
/// The names that SaveRepeated takes.
inline FileName PictureFileName() {
    return {{".png", ".jpg", ".jpeg", ".jfif"}};
}

// All functions throw std::bad_alloc, or std::runtime_error with a text of one line. Sides are 1 to
// 512.

/// A white texture, its work channel 255 throughout, so that a saved one is the same each time.
std::unique_ptr<PaintClass> NewTexture(short width, short height);

/// Reads a .png or .tmp file, or a JPEG as the editor does. A PNG is composited over white, as the
/// plug-in gets the layers of an image editor. The undo store is white.
std::unique_ptr<PaintClass> LoadTexture(const std::filesystem::path& file);

/// Writes a .tmp file (with the work channel), a .png (RGB alone), or a JPEG (RGB alone) as the
/// editor does.
void SaveTexture(const PaintClass& texture, const std::filesystem::path& file);

/// Writes a .png or a JPEG of the texture, repeated `columns` times side by side and `rows` times
/// one above the other.
void SaveRepeated(const PaintClass& texture, int columns, int rows,
                  const std::filesystem::path& file, const ProgressHook& progress);

}  // namespace recipe

// Textures in files, and those that are made new.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "paint/PaintClass.h"

namespace recipe {

/// Told the share that is done, 0 to 1.
using ProgressHook = std::function<void(double)>;

// All throw std::runtime_error in one line, or std::bad_alloc. Sides are 1 to 512.

/// A white texture, its work channel 255 throughout, so that a saved one is the same each time.
std::unique_ptr<PaintClass> NewTexture(short width, short height);

/// Reads a .png or .tmp file, told apart by the extension. A PNG's transparency is laid over white,
/// as the plug-in gets the layers of an image editor. Undo is white.
std::unique_ptr<PaintClass> LoadTexture(const std::filesystem::path& file);

/// Writes a .png (RGB, without the work channel) or .tmp file (with it).
void SaveTexture(const PaintClass& texture, const std::filesystem::path& file);

/// Writes a .png of the texture side by side and one above the other.
void SaveRepeated(const PaintClass& texture, int columns, int rows,
                  const std::filesystem::path& file, const ProgressHook& progress);

}  // namespace recipe

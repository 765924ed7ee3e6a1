// The temporary file that keeps the texture that was applied last: for the host's "last filter"
// command, and as a start for the next texture.
//
// Little-endian, no magic, no version: width and height as 16-bit signed integers, then the pixels
// exactly as they stand in memory, the alpha byte included. All failures are silent; the callers
// decide.
#pragma once

#include <cstdio>
#include <memory>

#include "paint/PaintClass.h"

/// Writes the file in the system's temporary folder. True when all of it was written. Asserts that
/// `pic` is not null.
bool SaveLastTexture(const PicClass* pic);
/// Null without a file, with one shorter than its header says, or without memory.
std::unique_ptr<PaintClass> LoadLastTexture();

// The same format on any open file. The file stays open.
bool WriteTexture(std::FILE* file, const PicClass& pic);
/// Any size is accepted, as far as there is memory.
std::unique_ptr<PaintClass> ReadTexture(std::FILE* file);

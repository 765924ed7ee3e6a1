// The file formats of LoadPicture() and SavePicture().
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/picture/Picture.h"

namespace host {

struct PictureHeader {
    int width;
    int height;
    /// Components in the file, 1 to 4; 2 and 4 have transparency.
    int components;
};

/// Pixels per inch.
struct Resolution {
    double horizontal = 72.0;
    double vertical = 72.0;
};

/// Throws PictureError if the bytes are no PNG, JPEG or BMP.
PictureHeader ReadPictureHeader(const std::vector<std::uint8_t>& bytes, const std::string& name);

/// 3 planes, or 4 if the file has transparency; the resolution stays at its default. Throws
/// PictureError, std::bad_alloc.
Picture DecodePixels(const std::vector<std::uint8_t>& bytes, const PictureHeader& header,
                     const std::string& name);

/// From PNG's pHYs, JPEG's JFIF density or BMP's pixels per metre. 72 where the file has none, or
/// none that makes sense (1 to 30000).
Resolution ReadResolution(const std::vector<std::uint8_t>& bytes);

}  // namespace host

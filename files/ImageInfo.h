// One raster as the image files see it.
#pragma once

#include <cstdint>

#include "hostapi/HostTypes.h"

/// The unit of a picture's resolution; numbered as in a JFIF header.
enum ResolutionUnit : std::int16_t {
    resolutionNone = 0,
    dotsPerInch = 1,
    dotsPerCentimetre = 2,
};

struct ImageInfo {
    std::int16_t Width() const { return static_cast<std::int16_t>(right - left); }
    std::int16_t Height() const { return static_cast<std::int16_t>(bottom - top); }

    /// An image mode of the host's interface: 1 grey, 3 RGB, 4 CMYK.
    std::int16_t mode = 0;
    /// Colour planes a pixel.
    std::int16_t planes = 0;
    /// Bytes from pixel to pixel of a row, and from row to row.
    std::int32_t colBytes = 0;
    std::int32_t rowBytes = 0;
    std::int16_t top = 0;
    std::int16_t left = 0;
    std::int16_t bottom = 0;
    std::int16_t right = 0;
    std::int16_t resolutionUnit = resolutionNone;
    /// Dots per unit.
    std::uint16_t xResolution = 0;
    std::uint16_t yResolution = 0;
};

/// The number of planes of image modes 0 to 9; 0 for any other mode.
constexpr std::int16_t PlanesOfMode(std::int16_t mode) {
    constexpr std::int16_t planes[] = {0, 1, 1, 3, 4, 3, 3, 1, 1, 3};
    constexpr int modes = sizeof planes / sizeof planes[0];
    return mode >= 0 && mode < modes ? planes[mode] : std::int16_t{0};
}

/// Statuses of operations on image files, in addition to those of File; 0 is success.
enum ImageStatus : std::int16_t {
    /// No name of a supported image.
    imageNotSupported = 17400,
    /// The picture cannot be read: damaged, of a kind that is not read, or too large for memory.
    imageNotRead = 17401,
    /// The picture cannot be written.
    imageNotWritten = 17402,
};

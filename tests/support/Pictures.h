// Rasters to test with, and how they are compared.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "raster/PicClass.h"

/// All four bytes of every pixel from a generator of its own, so that the core's is left alone.
inline void FillWithNoise(PicClass& pic, unsigned seed = 1) {
    std::mt19937 generator(seed);
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetPixel(x, y, static_cast<Pixel>(generator()));
        }
    }
}

/// Copies whole rows: tests call this more often than anything else, and are not optimised.
inline std::vector<Pixel> PixelsOf(const PicClass& pic) {
    std::vector<Pixel> pixels(static_cast<std::size_t>(pic.grX) *
                              static_cast<std::size_t>(pic.grY));
    Pixel* row = pixels.data();
    for (short y = 0; y < pic.grY; ++y) {
        std::memcpy(row, pic.PixelAddress(0, y), static_cast<std::size_t>(pic.grX) * sizeof *row);
        row += pic.grX;
    }
    return pixels;
}

/// Without the alpha bytes, which mean nothing between operations.
inline std::vector<Pixel> ColorsOf(const PicClass& pic) {
    std::vector<Pixel> colors = PixelsOf(pic);
    const Pixel* const end = colors.data() + colors.size();
    for (Pixel* color = colors.data(); color != end; ++color) {
        *color &= 0x00FFFFFF;
    }
    return colors;
}

/// A pixel of the given colour with the alpha byte 0.
constexpr Pixel Color(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8 | blue << 16;
}

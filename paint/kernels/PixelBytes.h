// Whole pixels in rows of bytes.
#pragma once

#include <cstring>

#include "raster/PicClass.h"

// The bytes of a pixel, in memory order.

constexpr int redByte = 0;
constexpr int greenByte = 1;
constexpr int blueByte = 2;
constexpr int alphaByte = 3;

/// The pixel at place `x` of a row.
inline Pixel LoadPixel(const unsigned char* row, int x) {
    Pixel pixel;
    std::memcpy(&pixel, row + x * bytesPerPixel, sizeof pixel);
    return pixel;
}

inline void StorePixel(unsigned char* row, int x, Pixel pixel) {
    std::memcpy(row + x * bytesPerPixel, &pixel, sizeof pixel);
}

// A pixel's channels, 0 to 255 each.

constexpr int RedOf(Pixel pixel) {
    return static_cast<int>(pixel & 0xFF);
}

constexpr int GreenOf(Pixel pixel) {
    return static_cast<int>(pixel >> 8 & 0xFF);
}

constexpr int BlueOf(Pixel pixel) {
    return static_cast<int>(pixel >> 16 & 0xFF);
}

/// The average of the three, rounded down.
constexpr int GreyOf(Pixel pixel) {
    return (RedOf(pixel) + GreenOf(pixel) + BlueOf(pixel)) / 3;
}

constexpr Pixel alphaMask = 0xFF000000;

/// `pixel` with the low 8 bits of each of the numbers as its colour.
constexpr Pixel WithColor(Pixel pixel, int red, int green, int blue) {
    return (static_cast<Pixel>(red) & 0xFF) | (static_cast<Pixel>(green) & 0xFF) << 8 |
           (static_cast<Pixel>(blue) & 0xFF) << 16 | (pixel & alphaMask);
}

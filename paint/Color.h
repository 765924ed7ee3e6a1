// Colours as the editor and the parameter records keep them.
#pragma once

#include <cstdint>

/// 16 bits a component. A value that comes from 8 bits sits in the high byte (255 is 0xFF00), and
/// the raster takes the high byte, unrounded. The default white is 0xFFFF.
struct RGBColor16 {
    std::uint16_t red;
    std::uint16_t green;
    std::uint16_t blue;

    friend bool operator==(const RGBColor16&, const RGBColor16&) = default;
};
static_assert(sizeof(RGBColor16) == 6);

constexpr RGBColor16 black16{0, 0, 0};
constexpr RGBColor16 white16{0xFFFF, 0xFFFF, 0xFFFF};

/// The byte of a component that the raster stores.
constexpr unsigned char HighByte(std::uint16_t component) {
    return static_cast<unsigned char>(component >> 8);
}

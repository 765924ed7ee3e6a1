// Scalar and geometric types that a host and a filter plug-in exchange.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

static_assert(std::endian::native == std::endian::little, "the host's records are little-endian");

#ifdef _WIN32
#define HOST_CALL __cdecl
#else
#define HOST_CALL
#endif

namespace hostapi {

/// 0 or 1 in one byte.
using Boolean8 = std::uint8_t;
/// 16.16 fixed point.
using Fixed = std::int32_t;
/// A relocatable block of the host: the pointer to its current address.
using Handle = char**;
/// Names a block of the buffer suite; as wide as a pointer, 0 names none.
using BufferID = std::uintptr_t;

/// Vertical first.
struct Point {
    std::int16_t v;
    std::int16_t h;
};

/// Right and bottom are exclusive.
struct Rect {
    std::int16_t top;
    std::int16_t left;
    std::int16_t bottom;
    std::int16_t right;
};

/// The 32-bit rectangle of the display service.
struct VRect {
    std::int32_t top;
    std::int32_t left;
    std::int32_t bottom;
    std::int32_t right;
};

struct RGBColor {
    std::uint16_t red;
    std::uint16_t green;
    std::uint16_t blue;
};

static_assert(sizeof(Point) == 4 && sizeof(Rect) == 8 && sizeof(VRect) == 16);
static_assert(sizeof(RGBColor) == 6);

/// Four characters as one number, the first in the high byte.
constexpr std::uint32_t FourCharacters(char a, char b, char c, char d) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(a)) << 24 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b)) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(d));
}

}  // namespace hostapi

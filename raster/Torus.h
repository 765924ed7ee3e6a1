// The one place that knows the torus: a coordinate beyond an edge comes in on the other side.
#pragma once

#include <cstdint>

/// Reduces a coordinate to 0 .. size - 1: the remainder in signed arithmetic, plus `size` if that
/// is negative. `size` is above 0.
constexpr short Wrap(int coordinate, short size) {
    const int remainder = coordinate % size;
    return static_cast<short>(remainder < 0 ? remainder + size : remainder);
}

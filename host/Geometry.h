// Arithmetic on the interface's rectangles. Right and bottom are exclusive everywhere.
#pragma once

#include <algorithm>
#include <cstdint>

#include "hostapi/HostTypes.h"

namespace host {

constexpr std::int32_t Width(const hostapi::VRect& rect) {
    return rect.right - rect.left;
}

constexpr std::int32_t Height(const hostapi::VRect& rect) {
    return rect.bottom - rect.top;
}

/// Also true of an inverted rectangle.
constexpr bool IsEmpty(const hostapi::VRect& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

constexpr hostapi::VRect Intersect(const hostapi::VRect& a, const hostapi::VRect& b) {
    return {std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
            std::min(a.right, b.right)};
}

constexpr bool Contains(const hostapi::VRect& outer, const hostapi::VRect& inner) {
    return inner.top >= outer.top && inner.left >= outer.left && inner.bottom <= outer.bottom &&
           inner.right <= outer.right;
}

constexpr bool Contains(const hostapi::VRect& rect, std::int32_t x, std::int32_t y) {
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

constexpr hostapi::VRect Offset(const hostapi::VRect& rect, std::int32_t dx, std::int32_t dy) {
    return {rect.top + dy, rect.left + dx, rect.bottom + dy, rect.right + dx};
}

constexpr bool AreEqual(const hostapi::VRect& a, const hostapi::VRect& b) {
    return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

constexpr hostapi::VRect Widened(const hostapi::Rect& rect) {
    return {rect.top, rect.left, rect.bottom, rect.right};
}

/// The caller sees to it that the coordinates fit 16 bits.
constexpr hostapi::Rect Narrowed(const hostapi::VRect& rect) {
    return {static_cast<std::int16_t>(rect.top), static_cast<std::int16_t>(rect.left),
            static_cast<std::int16_t>(rect.bottom), static_cast<std::int16_t>(rect.right)};
}

}  // namespace host

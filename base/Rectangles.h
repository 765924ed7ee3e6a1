// Arithmetic on the interface's rectangles. Right and bottom are exclusive everywhere.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "hostapi/HostTypes.h"

// In the namespace of the rectangles, so that a call finds these by its arguments.
namespace hostapi {

// --- 16 bits: windows, items, the host's filter and mask rectangles ---

/// -65535 to 65535: an inverted rectangle has a negative width.
constexpr int Width(const Rect& rect) {
    return rect.right - rect.left;
}

constexpr int Height(const Rect& rect) {
    return rect.bottom - rect.top;
}

/// Whether no pixel lies inside. Also true of an inverted rectangle.
constexpr bool IsEmpty(const Rect& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

constexpr bool AreEqual(const Rect& a, const Rect& b) {
    return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

constexpr bool Contains(const Rect& rect, int x, int y) {
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

constexpr bool Contains(const Rect& rect, Point point) {
    return Contains(rect, point.h, point.v);
}

constexpr bool AreEqual(Point a, Point b) {
    return a.h == b.h && a.v == b.v;
}

/// Whether the two share a pixel.
constexpr bool Meet(const Rect& a, const Rect& b) {
    return !IsEmpty(Rect{std::max(a.top, b.top), std::max(a.left, b.left),
                         std::min(a.bottom, b.bottom), std::min(a.right, b.right)});
}

/// Clamps to 16 bits.
constexpr std::int16_t Saturated(int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

/// `rect` with each side moved inwards; negative amounts move them outwards. Sides are clamped to
/// 16 bits.
constexpr Rect Inset(const Rect& rect, int horizontal, int vertical) {
    return {Saturated(rect.top + vertical), Saturated(rect.left + horizontal),
            Saturated(rect.bottom - vertical), Saturated(rect.right - horizontal)};
}

/// Sides stop at the ends of 16 bits.
constexpr Rect Offset(const Rect& rect, int horizontal, int vertical) {
    return {Saturated(rect.top + vertical), Saturated(rect.left + horizontal),
            Saturated(rect.bottom + vertical), Saturated(rect.right + horizontal)};
}

// --- 32 bits: pictures, the display service ---

constexpr std::int32_t Width(const VRect& rect) {
    return rect.right - rect.left;
}

constexpr std::int32_t Height(const VRect& rect) {
    return rect.bottom - rect.top;
}

/// No pixel lies inside. Also true of an inverted rectangle.
constexpr bool IsEmpty(const VRect& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

constexpr bool AreEqual(const VRect& a, const VRect& b) {
    return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

constexpr bool Contains(const VRect& rect, std::int32_t x, std::int32_t y) {
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

constexpr bool Contains(const VRect& outer, const VRect& inner) {
    return inner.top >= outer.top && inner.left >= outer.left && inner.bottom <= outer.bottom &&
           inner.right <= outer.right;
}

constexpr VRect Intersect(const VRect& a, const VRect& b) {
    return {std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
            std::min(a.right, b.right)};
}

constexpr VRect Offset(const VRect& rect, std::int32_t dx, std::int32_t dy) {
    return {rect.top + dy, rect.left + dx, rect.bottom + dy, rect.right + dx};
}

constexpr VRect Widened(const Rect& rect) {
    return {rect.top, rect.left, rect.bottom, rect.right};
}

/// The caller sees to it that the coordinates fit 16 bits.
constexpr Rect Narrowed(const VRect& rect) {
    return {static_cast<std::int16_t>(rect.top), static_cast<std::int16_t>(rect.left),
            static_cast<std::int16_t>(rect.bottom), static_cast<std::int16_t>(rect.right)};
}

}  // namespace hostapi

// Where windows and items stand: arithmetic alone.
#pragma once

#include <cstdint>

#include "base/ScreenGeometry.h"
#include "hostapi/HostTypes.h"

/// How far a dialog stays from the edges of the work area when it opens, in pixels at 96 dots an
/// inch.
constexpr int dialogMargin = 8;

/// Each side cut to 16 bits.
hostapi::Rect ToRect(const ScreenRect& rect);
ScreenRect ToScreenRect(const hostapi::Rect& rect);

/// An item after the window's client area has grown by so much; `rules` of ResizeRule.
hostapi::Rect FollowResize(const hostapi::Rect& bounds, std::uint8_t rules, int widthChange,
                           int heightChange);

/// A placement as it is stored: a client area, and in the sign bit of its top whether the window is
/// maximised. That leaves 15 bits for the top, which go from -16384 to 16383: of a screen above the
/// primary one the top is negative.
struct Placing {
    hostapi::Rect client;
    bool isMaximized;
};
/// The same placement for a screen of another resolution: the size grows or shrinks with it, the
/// top left corner stays. Both are in dots an inch, above 0.
hostapi::Rect Rescaled(const hostapi::Rect& placement, int from, int to);
Placing UnpackPlacement(const hostapi::Rect& placement);
hostapi::Rect PackPlacement(const Placing& placing);

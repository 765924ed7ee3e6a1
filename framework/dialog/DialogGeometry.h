// Where windows and items stand: arithmetic alone.
#pragma once

#include <cstdint>

#include "hostapi/HostTypes.h"

/// On the screen, in 32 bits: several screens can lie beyond what 16 bits hold.
struct ScreenRect {
    int left;
    int top;
    int right;
    int bottom;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    friend bool operator==(const ScreenRect&, const ScreenRect&) = default;
};

/// How far a dialog stays from the edges of the work area when it opens, in pixels.
constexpr int dialogMargin = 8;

/// `rect` moved so that its middle lies on that of `around`.
ScreenRect CenteredOn(const ScreenRect& rect, const ScreenRect& around);
/// `rect` moved into `area`; what is too large keeps its top and left inside.
ScreenRect PushedInto(const ScreenRect& rect, const ScreenRect& area);
/// The same, and cut to the area's size first.
ScreenRect FittedInto(const ScreenRect& rect, const ScreenRect& area);
ScreenRect Shrunk(const ScreenRect& rect, int margin);

/// Each side cut to 16 bits.
hostapi::Rect ToRect(const ScreenRect& rect);
ScreenRect ToScreenRect(const hostapi::Rect& rect);

/// An item after the window's client area has grown by so much; `rules` of ResizeRule.
hostapi::Rect FollowResize(const hostapi::Rect& bounds, std::uint8_t rules, int widthChange,
                           int heightChange);

/// A placement as it is stored: a client area, and in the sign bit of its top whether the window is
/// maximised.
struct Placing {
    hostapi::Rect client;
    bool isMaximized;
};
Placing UnpackPlacement(const hostapi::Rect& placement);
hostapi::Rect PackPlacement(const Placing& placing);

// The system's rectangles, and what is measured with them on a screen of any resolution.
#pragma once

#include <windows.h>

#include <cmath>

#include "fixtures/LargeScreen.Win.h"
#include "hostapi/HostTypes.h"

/// Pixels on this screen for pixels at 96 dots an inch.
inline int Scaled(int pixels) {
    return static_cast<int>(std::lround(pixels * ScreenResolution() / 96.0));
}

inline int Width(const RECT& rect) {
    return static_cast<int>(rect.right - rect.left);
}

inline int Height(const RECT& rect) {
    return static_cast<int>(rect.bottom - rect.top);
}

inline bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

inline bool Meet(const RECT& a, const RECT& b) {
    RECT both;
    return IntersectRect(&both, &a, &b) != FALSE;
}

inline hostapi::Rect ToRect(const RECT& rect) {
    return {static_cast<short>(rect.top), static_cast<short>(rect.left),
            static_cast<short>(rect.bottom), static_cast<short>(rect.right)};
}

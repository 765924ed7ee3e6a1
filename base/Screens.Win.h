// The screens that the system has, and the one that a window is on.
#pragma once

#include <windows.h>

#include "base/ScreenGeometry.h"

inline RECT ToSystem(const ScreenRect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}
inline ScreenRect FromSystem(const RECT& rect) {
    return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
            static_cast<int>(rect.bottom)};
}

/// The screen that most of the window is on, or that is nearest to it; the primary one without a
/// window. Of a window that is an icon, the one where it will be a window again.
Screen ScreenOf(HWND window);
/// The same of a place.
Screen ScreenAt(const ScreenRect& place);

/// The window with its frame, on the screens.
ScreenRect FrameOf(HWND window);

// The port's rectangles in the system's form, and back.
#pragma once

#include <windows.h>

// After the system's header: it makes some of the names in there stand for others.
#include "base/Screens.Win.h"
#include "framework/dialog/DialogGeometry.h"
#include "framework/drawing/InterfaceLib.h"

inline RECT ToSystem(const hostapi::Rect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}
inline hostapi::Rect RectFromSystem(const RECT& rect) {
    return ToRect(FromSystem(rect));
}

/// The name by which a resource with a number is asked for.
inline LPCSTR ResourceName(int id) {
    return MAKEINTRESOURCEA(static_cast<WORD>(id));
}

// Where a colour is in a picture of a control.
#pragma once

#include <windows.h>

#include <algorithm>

#include "fixtures/Screenshot.Win.h"

/// The box around the pixels of this colour within a part of the picture; all zeros without any.
inline RECT BoundsOf(const host::Picture& picture, COLORREF color, const RECT& part) {
    RECT bounds{};
    for (LONG y = part.top; y < part.bottom; ++y) {
        for (LONG x = part.left; x < part.right; ++x) {
            if (ColorAt(picture, static_cast<int>(x), static_cast<int>(y)) == color) {
                const RECT pixel{x, y, x + 1, y + 1};
                UnionRect(&bounds, &bounds, &pixel);
            }
        }
    }
    return bounds;
}

/// In all of the picture but for an edge of so many pixels.
inline RECT BoundsOf(const host::Picture& picture, COLORREF color, int edge = 0) {
    return BoundsOf(picture, color, RECT{edge, edge, picture.width - edge, picture.height - edge});
}

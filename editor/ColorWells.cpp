#include "editor/ColorWells.h"

namespace {

hostapi::Rect RectOf(int top, int left, int bottom, int right) {
    return {static_cast<short>(top), static_cast<short>(left), static_cast<short>(bottom),
            static_cast<short>(right)};
}

/// As Contains, but all four edges count.
bool ContainsWithEdges(const hostapi::Rect& rect, short x, short y) {
    return x >= rect.left && x <= rect.right && y >= rect.top && y <= rect.bottom;
}

}  // namespace

WellPart ColorWells::PartAt(short x, short y) const {
    if (ContainsWithEdges(foreRect, x, y)) {
        return wellForeground;
    }
    if (ContainsWithEdges(backRectRight, x, y) || ContainsWithEdges(backRectBottom, x, y)) {
        return wellBackground;
    }
    if (ContainsWithEdges(swapRect, x, y)) {
        return wellSwap;
    }
    return ContainsWithEdges(defaultRect, x, y) ? wellDefault : wellNone;
}

ColorWells WellsIn(const hostapi::Rect& item, const hostapi::Rect& swapRect,
                   const hostapi::Rect& defaultRect) {
    return {RectOf(item.top + 7, item.left + 9, item.bottom - 20, item.right - 22),
            RectOf(item.top + 20, item.right - 20, item.bottom - 8, item.right - 9),
            RectOf(item.bottom - 18, item.left + 20, item.bottom - 8, item.right - 9), swapRect,
            defaultRect};
}

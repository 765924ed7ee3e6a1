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
                   const hostapi::Rect& defaultRect, ScreenScale scale) {
    const auto at = [scale](int edge, int pixels) { return edge + scale.Pixels(pixels); };
    const auto& [top, left, bottom, right] = item;
    return {RectOf(at(top, 7), at(left, 9), at(bottom, -20), at(right, -22)),
            RectOf(at(top, 20), at(right, -20), at(bottom, -8), at(right, -9)),
            RectOf(at(bottom, -18), at(left, 20), at(bottom, -8), at(right, -9)), swapRect,
            defaultRect};
}

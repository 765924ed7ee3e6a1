#include "host/window/SelectionDrag.h"

#include <algorithm>

namespace host {

bool DraggedSelection::Contains(int x, int y) const {
    if (!hostapi::Contains(bounds, x, y)) {
        return false;
    }
    if (shape == SelectionShape::rectangle) {
        return true;
    }
    // From the pixel's centre to the ellipse's, in half axes.
    const double dx = (2.0 * (x - bounds.left) + 1.0) / Width(bounds) - 1.0;
    const double dy = (2.0 * (y - bounds.top) + 1.0) / Height(bounds) - 1.0;
    return dx * dx + dy * dy <= 1.0;
}

hostapi::VRect DraggedRect(Place from, Place to, Size picture) {
    const hostapi::VRect dragged{std::min(from.y, to.y), std::min(from.x, to.x),
                                 std::max(from.y, to.y) + 1, std::max(from.x, to.x) + 1};
    return Intersect(dragged, {0, 0, picture.height, picture.width});
}

Selection FinishDrag(const DraggedSelection& dragged, double feather) {
    return dragged.shape == SelectionShape::ellipse ? SelectEllipse(dragged.bounds, feather)
                                                    : SelectRectangle(dragged.bounds);
}

}  // namespace host

// Selections made by dragging from one corner to another.
#pragma once

#include "host/picture/Selection.h"
#include "host/window/Viewport.h"

namespace host {

enum class SelectionShape { rectangle, ellipse };

/// A selection that is being dragged. It has no mask yet: that of a large picture takes too long to
/// make for each movement of the mouse.
struct DraggedSelection {
    hostapi::VRect bounds{};
    SelectionShape shape = SelectionShape::rectangle;

    bool Contains(int x, int y) const;
};

/// The rectangle of pixels between two corners, both included, as far as it lies in the picture;
/// empty if it lies outside altogether.
hostapi::VRect DraggedRect(Place from, Place to, Size picture);

/// `feather` is as in SelectEllipse() and of no account for a rectangle. Throws SelectionError if
/// the bounds are empty.
Selection FinishDrag(const DraggedSelection& dragged, double feather);

}  // namespace host

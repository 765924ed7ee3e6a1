// Draws what a view of the picture shows, pixel by pixel, into memory.
#pragma once

#include "host/picture/Picture.h"
#include "host/picture/Selection.h"
#include "host/record/DisplayPixels.h"
#include "host/window/SelectionDrag.h"
#include "host/window/Viewport.h"

namespace host {

/// The part `area` of the view, in view pixels: the picture over a chequered ground where it is
/// transparent, and a plain ground around it. Zoomed out, each view pixel is the mean of four
/// pixels, so its cost doesn't depend on the zoom.
DisplayRows DrawView(const Picture& picture, const Viewport& viewport, const hostapi::VRect& area);

/// Adds the selection's outline in dashes of black and white, which wander as `phase` grows. The
/// outline runs through the selected view pixels, where the selection is half full at least.
/// `rows` are the part of the view that begins at (left, top).
void DrawOutline(DisplayRows& rows, Place leftTop, const Viewport& viewport,
                 const Selection& selection, int phase);
void DrawOutline(DisplayRows& rows, Place leftTop, const Viewport& viewport,
                 const DraggedSelection& selection, int phase);

}  // namespace host

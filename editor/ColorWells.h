// Where the parts of the editor's colour wells lie.
//
// The background well is an L around the lower right corner of the foreground well: two bars.
#pragma once

#include "framework/drawing/ScreenScale.h"
#include "hostapi/HostTypes.h"

enum WellPart : short {
    wellForeground = 0,
    wellBackground = 1,
    wellSwap = 2,
    wellDefault = 3,
    wellNone = 4,
};

struct ColorWells {
    hostapi::Rect foreRect;
    /// The upright bar of the background well.
    hostapi::Rect backRectRight;
    /// Its bottom bar.
    hostapi::Rect backRectBottom;
    /// The symbols' items.
    hostapi::Rect swapRect;
    hostapi::Rect defaultRect;

    WellPart PartAt(short x, short y) const;
};

/// The wells in the item's rectangle, with the rectangles of the two symbols.
ColorWells WellsIn(const hostapi::Rect& item, const hostapi::Rect& swapRect,
                   const hostapi::Rect& defaultRect, ScreenScale scale = {});

// Angles, elevations and the place of the knob on a dial.
#pragma once

#include <cstdint>

#include "framework/dialog/DialogGeometry.h"

/// Where a dial stands in its item.
struct GlobeGeometry {
    hostapi::Point center;
    /// The radius of the knob's path.
    int radius;
    /// The square that the picture takes.
    hostapi::Rect square;
};

/// For the item's rectangle; `inset` pixels lie between the knob's path and the picture's edge.
/// FatalError 20005 without room for a radius of a pixel.
GlobeGeometry MeasureGlobe(const hostapi::Rect& bounds, int inset);

/// The value of a dial.
struct GlobeValue {
    /// 0 to 90, or -1 for a dial with an angle only.
    int elevation;
    /// Degrees: 0 points up, positive values go clockwise.
    int angle;

    friend bool operator==(const GlobeValue&, const GlobeValue&) = default;
};

/// `angle` turned by this many degrees, at most a whole turn: beyond the bottom it goes on from the
/// other side.
int TurnedAngle(int angle, int degrees);

/// The middle of the knob. Without an elevation it is on the rim, at 90 in the centre.
hostapi::Point KnobPlace(const GlobeGeometry& geometry, const GlobeValue& value);

/// Returns `value` after a move of the mouse to `place`. The angle stays where the elevation
/// becomes 90.
GlobeValue ValueUnder(const GlobeGeometry& geometry, const GlobeValue& value, hostapi::Point place);

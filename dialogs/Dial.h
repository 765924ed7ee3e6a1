// The angle dial of the effect dialogs, which all look the same.
#pragma once

#include "framework/controls/GlobeControl.h"
#include "resources/Ids.h"

constexpr double lowestAngle = -180;
constexpr double highestAngle = 180;

/// `callback` puts the angle into the dialog's field.
inline void InitializeDial(GlobeControl& globe, NorvantaDialog* dialog, short item,
                           GlobeControl::Callback callback) {
    constexpr short knobInset = 7;
    globe.Initialize(dialog, item, bitmapDial, iconDialKnob, knobInset, callback);
}

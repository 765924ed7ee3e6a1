#include "framework/controls/GlobeControl.h"

#include "base/FatalError.h"
#include "framework/dialog/NorvantaDialog.h"

namespace {

constexpr char sourceName[] = "GlobeControl";

/// The rectangle of a knob of this size (height, width) around its middle.
hostapi::Rect KnobBounds(hostapi::Point place, hostapi::Point size) {
    const int left = place.h - size.h / 2;
    const int top = place.v - size.v / 2;
    return ToRect({left, top, left + size.h, top + size.v});
}

}  // namespace

void GlobeControl::Initialize(NorvantaDialog* newDialog, short newItem, short newBackground,
                              short newKnob, short newInset, Callback newCallback) {
    dialog = newDialog;
    item = newItem;
    background = newBackground;
    knob = newKnob;
    inset = newInset;
    callback = newCallback;
    elevation = -1;
    trackRegion = std::make_unique<Region>();
    savedRegion = std::make_unique<Region>();
}

void GlobeControl::CheckInitialized() const {
    if (dialog == nullptr || item == 0 || trackRegion == nullptr || savedRegion == nullptr) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
}

void GlobeControl::SetAngle(int newAngle) {
    CheckInitialized();
    angle = newAngle;
    if (dialog->IsOpen()) {
        Draw();
    }
}

void GlobeControl::SetElevation(int newElevation) {
    CheckInitialized();
    elevation = newElevation;
    if (dialog->IsOpen()) {
        Draw();
    }
}

GlobeGeometry GlobeControl::Measure() const {
    return MeasureGlobe(dialog->GetBounds(item), dialog->Scale().Pixels(inset));
}

void GlobeControl::Draw() {
    CheckInitialized();
    const GlobeGeometry geometry = Measure();
    knobPlace = KnobPlace(geometry, {elevation, angle});
    dialog->Port().DrawPicture(background, geometry.square);
    DrawKnob();
}

void GlobeControl::DrawKnob() {
    DrawingPort& port = dialog->Port();
    const short disabledKnob = static_cast<short>(knob + 1);
    const hostapi::Rect bounds = KnobBounds(knobPlace, port.IconSize(knob));
    const hostapi::Point corner{bounds.top, bounds.left};
    if (dialog->IsEnabled(item) || port.DrawIcon(disabledKnob, corner) != 0) {
        port.DrawIcon(knob, corner);
    }
}

bool GlobeControl::Track() {
    CheckInitialized();
    const GlobeGeometry geometry = Measure();
    hostapi::Point place;
    while (dialog->TrackMouse(&place)) {
        const GlobeValue before{elevation, angle};
        const GlobeValue value = ValueUnder(geometry, before, place);
        if (value == before) {
            continue;
        }
        elevation = value.elevation;
        angle = value.angle;
        MoveKnob(geometry.square, KnobPlace(geometry, value));
        if (callback != nullptr) {
            callback(this, elevation, angle);
        }
    }
    return true;
}

void GlobeControl::MoveKnob(const hostapi::Rect& square, hostapi::Point place) {
    DrawingPort& port = dialog->Port();
    // Only what the old knob covered is drawn anew, so the picture does not flicker.
    port.CopyClip(*savedRegion);
    trackRegion->Set(KnobBounds(knobPlace, port.IconSize(knob)));
    port.SetClip(*trackRegion);
    port.DrawPicture(background, square);
    port.SetClip(*savedRegion);
    knobPlace = place;
    DrawKnob();
}

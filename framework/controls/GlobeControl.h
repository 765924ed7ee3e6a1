// A dial in a user item: a round picture with a knob that the user drags.
//
// A member of a dialog, which hands it the drawing of the item (DrawItem) and the drag (ItemHit).
#pragma once

#include <memory>

#include "framework/controls/GlobeGeometry.h"
#include "framework/drawing/InterfaceLib.h"

class NorvantaDialog;

class GlobeControl {
  public:
    /// Called on each change during a drag. `elevation` is -1 for a dial with an angle only.
    using Callback = void (*)(GlobeControl* globe, int elevation, int angle);

    /// `newItem` is a user item of the dialog. `newBackground` is a bitmap, `newKnob` an icon, the
    /// knob of a disabled dial has the next id. `newInset` pixels (at 96 dots an inch) lie between
    /// the knob's path and the picture's edge. FatalError -108 when the system gives no regions.
    void Initialize(NorvantaDialog* newDialog, short newItem, short newBackground, short newKnob,
                    short newInset, Callback newCallback);

    /// Degrees, -180 to 180: 0 points up, positive values go clockwise. Draws at once if the
    /// dialog is open.
    void SetAngle(int newAngle);
    int Angle() const { return angle; }
    /// 0 to 90, or -1 (as it starts) for a dial with an angle only. As SetAngle.
    void SetElevation(int newElevation);
    int Elevation() const { return elevation; }

    /// FatalError 20008 before Initialize, 20005 for an item with no room for a radius.
    void Draw();
    /// Follows the mouse until the button goes up. Returns true.
    bool Track();

    NorvantaDialog* Dialog() const { return dialog; }
    short Item() const { return item; }

  private:
    void CheckInitialized() const;
    GlobeGeometry Measure() const;
    void DrawKnob();
    /// `square` is the picture's.
    void MoveKnob(const hostapi::Rect& square, hostapi::Point place);

    NorvantaDialog* dialog = nullptr;
    short item = 0;
    Callback callback = nullptr;
    int elevation = -1;
    int angle = 0;
    short background = 0;
    short knob = 0;
    short inset = 0;
    hostapi::Point knobPlace{};
    std::unique_ptr<Region> trackRegion;
    std::unique_ptr<Region> savedRegion;
};

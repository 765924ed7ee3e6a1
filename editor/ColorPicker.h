// The editor's colour wells: they paint the foreground and the background colour and answer clicks.
// The colours themselves are the editor's.
#pragma once

#include <vector>

#include "editor/ColorWells.h"
#include "framework/dialog/SmallPSDialog.h"
#include "paint/Color.h"

class ColorPicker {
  public:
    /// `newWells` are where the parts lie in the dialog. Asserts the three pointers.
    ColorPicker(RGBColor16* f, RGBColor16* b, const ColorWells& newWells, SmallPSDialog* d);

    /// The background, then the foreground.
    void Draw() const;
    /// Uses the part at that place, if there is one.
    void Click(short x, short y) { Use(PartAt(x, y)); }
    /// Chooses a colour, or exchanges or resets both.
    void Use(WellPart used);
    WellPart PartAt(short x, short y) const { return wells.PartAt(x, y); }
    /// The focus frame of the part: in a well, around a symbol; empty for none.
    hostapi::Rect FocusFrame(WellPart part) const;
    /// The descriptions for screen readers, in the order of WellPart.
    std::vector<ItemPart> Parts() const;

    /// Exchanges the colours.
    void Swap();
    /// Black on white.
    void SetDefaults();

  private:
    void DrawForeground() const;
    void DrawBackground() const;
    void DrawBackgroundOutline() const;

    RGBColor16* fore;
    RGBColor16* back;
    ColorWells wells;
    SmallPSDialog* dialog;
};

// How many copies of the texture the tiled one has.
#pragma once

#include "framework/dialog/SmallPSDialog.h"

class TileDialog : public SmallPSDialog {
  public:
    /// `newPlacement` is where the dialogs of the class were last; all 0 for never.
    TileDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement);

    void Setup() override;
    short ItemHit(short item) override;

    // The counts that the dialog was closed with, 1 to 12 each.
    short Horizontal() const { return horizontal; }
    short Vertical() const { return vertical; }

  private:
    hostapi::Rect& placement;
    short horizontal = 2;
    short vertical = 2;
};

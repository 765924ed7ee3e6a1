// The settings of the Paintbrush.
#pragma once

#include "dialogs/ToolsDialog.h"

class BrushDialog : public ToolsDialog {
  public:
    /// `newSize` is shown at first.
    BrushDialog(hostapi::FilterRecord* newRecord, NorvantaDialog* newOwner,
                hostapi::Rect& newPlacement, short newSize);

    void Setup() override;
    short ItemHit(short item) override;
    bool ScrollChanged(short item, int value) override;

    /// The diameter in pixels that the dialog was closed with.
    short Size() const { return size; }

  private:
    void KeepValues() override;

    short size;
};

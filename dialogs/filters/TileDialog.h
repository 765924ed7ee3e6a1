// How many copies of the texture become the new one.
#pragma once

#include "dialogs/tools/ToolsDialog.h"
#include "paint/records/FilterParams.h"

class TileDialog : public ToolsDialog {
  public:
    /// `newPlacement` is where the dialogs of the class were last; all 0 for never.
    TileDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement);

    void Setup() override;

    /// The counts that the dialog was closed with.
    const TileParams& Counts() const { return counts; }

  private:
    TileParams counts;
};

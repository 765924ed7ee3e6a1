// The settings of the Rubber Stamp.
#pragma once

#include "dialogs/tools/ToolsDialog.h"
#include "paint/records/ToolParams.h"

/// Shows the vertical offset negated: a positive one points upwards there.
class CloneDialog : public ToolsDialog {
  public:
    CloneDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                const StampSettings& newSettings);

    /// The settings that the dialog was closed with.
    const StampSettings& Settings() const { return settings; }

  private:
    StampSettings settings;
};

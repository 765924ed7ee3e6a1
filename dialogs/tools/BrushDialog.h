// The settings of the Paintbrush.
#pragma once

#include "dialogs/tools/ToolsDialog.h"
#include "paint/records/ToolParams.h"

class BrushDialog : public ToolsDialog {
  public:
    BrushDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                const BrushSettings& newSettings);

    /// The settings that the dialog was closed with.
    const BrushSettings& Settings() const { return settings; }

  private:
    BrushSettings settings;
};

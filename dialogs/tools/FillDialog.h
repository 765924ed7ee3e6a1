// The settings of the Fill tool.
#pragma once

#include "dialogs/tools/ToolsDialog.h"
#include "paint/records/ToolParams.h"

class FillDialog : public ToolsDialog {
  public:
    FillDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
               const FillSettings& newSettings);

    /// The settings that the dialog was closed with.
    const FillSettings& Settings() const { return settings; }

  private:
    FillSettings settings;
};

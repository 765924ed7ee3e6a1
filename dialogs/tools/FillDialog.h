// The settings of the Fill tool.
#pragma once

#include <cstdint>

#include "dialogs/tools/ToolsDialog.h"

struct FillSettings {
    /// 0 to 100.
    std::int16_t tolerance;
    /// 0 or 1.
    std::int16_t antiAlias;
};

class FillDialog : public ToolsDialog {
  public:
    FillDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
               const FillSettings& newSettings);

    /// The settings that the dialog was closed with.
    const FillSettings& Settings() const { return settings; }

  private:
    FillSettings settings;
};

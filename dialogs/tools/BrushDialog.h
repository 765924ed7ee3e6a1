// The settings of the Paintbrush.
#pragma once

#include <cstdint>

#include "dialogs/tools/ToolsDialog.h"

struct BrushSettings {
    /// The diameter in pixels, 2 to 20.
    std::int16_t size;
};

class BrushDialog : public ToolsDialog {
  public:
    BrushDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                const BrushSettings& newSettings);

    /// The settings that the dialog was closed with.
    const BrushSettings& Settings() const { return settings; }

  private:
    BrushSettings settings;
};

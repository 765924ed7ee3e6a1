// The settings of the Rubber Stamp.
#pragma once

#include <cstdint>

#include "dialogs/tools/ToolsDialog.h"

struct StampSettings {
    /// The diameter, 1 to 20 pixels.
    std::int16_t size;
    /// From the brush to the source in texture pixels, to the right and down, -1000 to 1000.
    std::int16_t offsetH;
    std::int16_t offsetV;
};

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

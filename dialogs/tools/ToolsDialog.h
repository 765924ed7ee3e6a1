// The base of small dialogs with OK and Cancel and without a preview: the settings of the paint
// tools, and Tile. A dialog derived from it binds its controls to a record of its own.
#pragma once

#include "dialogs/Bindings.h"

class ToolsDialog : public SmallPSDialog {
  public:
    /// `newPlacement` is where the dialogs of the class were last; all 0 for never. `newSettings`
    /// is the derived dialog's record; it need not exist before the window opens.
    ToolsDialog(short newResourceId, NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                void* newSettings);

    void Setup() override;
    /// OK and Cancel both read the controls.
    short ItemHit(short item) override;
    bool ScrollChanged(short item, int value) override;

  protected:
    Bindings bindings;

  private:
    hostapi::Rect& placement;
};

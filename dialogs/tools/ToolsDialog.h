// The base of the paint tools' settings: a small dialog with OK and Cancel, without a preview. A
// dialog derived from it binds its controls to a record of its own.
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

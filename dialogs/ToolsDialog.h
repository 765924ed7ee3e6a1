// The base of the paint tools' settings: a small dialog with OK and Cancel, without a preview.
#pragma once

#include "framework/dialog/SmallPSDialog.h"

class ToolsDialog : public SmallPSDialog {
  public:
    /// `newPlacement` is where the dialogs of the class were last; all 0 for never.
    ToolsDialog(short newResourceId, hostapi::FilterRecord* newRecord, NorvantaDialog* newOwner,
                hostapi::Rect& newPlacement);

    void Setup() override;
    short ItemHit(short item) override;

  protected:
    /// Reads the controls when the dialog is left, by OK or by Cancel.
    virtual void KeepValues() = 0;

  private:
    hostapi::Rect& placement;
};

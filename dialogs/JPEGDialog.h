// The quality of a JPEG that is written without a callback. The program's own textures have one, so
// that saving them never opens this window.
#pragma once

#include "files/JPEGQuality.h"
#include "framework/dialog/NorvantaDialog.h"

class JPEGDialog : public NorvantaDialog {
  public:
    /// Shows the choice and changes it; `newChoice` outlives the dialog.
    explicit JPEGDialog(JPEGQualityChoice& newChoice);

    void Setup() override;
    short ItemHit(short item) override;
    bool ScrollChanged(short item, int value) override;

  private:
    void Change(double quality);

    JPEGQualityChoice& choice;
};

/// Runs the dialog. 0 after OK, fileCancelled after Cancel, memFullErr without memory for it, or
/// the id of the fault that ended it.
std::int16_t RunJPEGDialog(JPEGQualityChoice& choice);

// The parameters of Waves.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/EffectParams.h"

class WavesDialog : public ParamsDialog<WavesParams> {
  public:
    WavesDialog(const ApplyContext& context, WavesParams& newStored);

    /// A slider takes its value at the end of the drag only.
    bool ScrollChanged(short item, int value) override;

  private:
    /// Fields that no control shows are always the same, whatever a preset says.
    void KeepValues() override;
    const char* DeleteAssertion() const override {
        return "WavesDialog / Zeile 106 !(menuitem > 2)";
    }
};

// The parameters of Twirls.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/EffectParams.h"

class TwirlsDialog : public ParamsDialog<TwirlsParams> {
  public:
    TwirlsDialog(const ApplyContext& context, TwirlsParams& newStored);

    /// A slider takes its value at the end of the drag only.
    bool ScrollChanged(short item, int value) override;

  private:
    const char* DeleteAssertion() const override {
        return "TwirlsDialog / Zeile 104 !(menuitem > 2)";
    }
};

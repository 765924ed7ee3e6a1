// The parameters of Dividers.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/EffectParams.h"

class DevidersDialog : public ParamsDialog<DividersParams> {
  public:
    DevidersDialog(const ApplyContext& context, DividersParams& newStored);

    /// Random colours leave the texture between the lines. A preset that says otherwise is shown as
    /// it is.
    short ItemHit(short item) override;

  private:
    /// The record takes the editor's two colours at every read, whichever preset was loaded.
    void KeepValues() override;
    const char* DeleteAssertion() const override {
        return "DevidersDialog / Zeile 105 !(menuitem > 2)";
    }
};

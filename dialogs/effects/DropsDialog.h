// The parameters of Drops.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/EffectParams.h"

class DropsDialog : public ParamsDialog<DropsParams> {
  public:
    DropsDialog(const ApplyContext& context, DropsParams& newStored);

  private:
    const char* DeleteAssertion() const override {
        return "DropsDialog / Zeile 100 !(menuitem > 2)";
    }
};

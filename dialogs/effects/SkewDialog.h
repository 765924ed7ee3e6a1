// The parameter of Skew.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/EffectParams.h"

class SkewDialog : public ParamsDialog<SkewParams> {
  public:
    SkewDialog(const ApplyContext& context, SkewParams& newStored);

  private:
    const char* DeleteAssertion() const override { return "SkewDialog / Zeile 96 !(menuitem > 2)"; }
};

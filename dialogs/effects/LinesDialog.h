// The parameters of Lines.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/LinesParams.h"

class LinesDialog : public ParamsDialog<LinesParams> {
  public:
    LinesDialog(const ApplyContext& context, LinesParams& newStored);

    short ItemHit(short item) override;

  private:
    const char* DeleteAssertion() const override {
        return "LinesDialog / Zeile 117 !(menuitem > 2)";
    }
};

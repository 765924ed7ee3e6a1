// The parameters of Shapes.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/EffectParams.h"

class ShapesDialog : public ParamsDialog<ShapesParams> {
  public:
    ShapesDialog(const ApplyContext& context, ShapesParams& newStored);

  private:
    const char* DeleteAssertion() const override {
        return "ShapesDialog / Zeile 123 !(menuitem > 2)";
    }
};

// The parameters of Lines.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "framework/controls/GlobeControl.h"
#include "paint/records/LinesParams.h"

class LinesDialog : public ParamsDialog<LinesParams> {
  public:
    LinesDialog(const ApplyContext& context, LinesParams& newStored);

    short ItemHit(short item) override;
    void DrawItem(short item) override;

  private:
    void SetUpControls() override;
    void ShowValues(const LinesParams& params) override;
    void ReadValues(LinesParams* params) override;
    const char* DeleteAssertion() const override {
        return "LinesDialog / Zeile 117 !(menuitem > 2)";
    }
    void ChooseColor();

    GlobeControl globe;
    /// What the swatch shows.
    RGBColor16 color;
};

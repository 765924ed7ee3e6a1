// The parameters of Blur and Motion Blur.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class BlurDialog : public ParamsDialog<BlurParams> {
  public:
    BlurDialog(const ApplyContext& context, BlurParams& newStored);

    short ItemHit(short item) override;
    bool ScrollChanged(short item, int value) override;

  private:
    void SetUpControls() override;
    void ShowValues(const BlurParams& params) override;
    void ReadValues(BlurParams* params) override;

    void SetDirection(short radio);
    void EnableDirections();
};

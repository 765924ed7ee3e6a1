// The parameters of Blur and Motion Blur.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class BlurDialog : public ParamsDialog<BlurParams> {
  public:
    BlurDialog(const ApplyContext& context, BlurParams& newStored);
};

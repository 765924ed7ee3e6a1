// The parameters of Brightness and Contrast.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class BrightContrDialog : public ParamsDialog<BrightContrParams> {
  public:
    BrightContrDialog(const ApplyContext& context, BrightContrParams& newStored);
};

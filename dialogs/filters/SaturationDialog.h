// The parameters of Saturation.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class SaturationDialog : public ParamsDialog<SaturationParams> {
  public:
    SaturationDialog(const ApplyContext& context, SaturationParams& newStored);
};

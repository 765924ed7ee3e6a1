// The parameters of Noise.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class NoiseDialog : public ParamsDialog<NoiseParams> {
  public:
    NoiseDialog(const ApplyContext& context, NoiseParams& newStored);
};

// The parameters of Sharpen.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class SharpenDialog : public ParamsDialog<SharpenParams> {
  public:
    SharpenDialog(const ApplyContext& context, SharpenParams& newStored);
};

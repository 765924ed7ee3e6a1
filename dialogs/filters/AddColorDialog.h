// The parameters of Add Color.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class AddColorDialog : public ParamsDialog<AddColorParams> {
  public:
    AddColorDialog(const ApplyContext& context, AddColorParams& newStored);

    short ItemHit(short item) override;
};

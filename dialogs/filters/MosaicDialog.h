// The parameters of Mosaic.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "paint/records/FilterParams.h"

class MosaicDialog : public ParamsDialog<MosaicParams> {
  public:
    MosaicDialog(const ApplyContext& context, MosaicParams& newStored);

    void Setup() override;

  private:
    void OfferDivisors(short popup, short side);
};

#include "dialogs/filters/SaturationDialog.h"

#include "resources/Ids.h"

using Items = SaturationItems;

SaturationDialog::SaturationDialog(const ApplyContext& context, SaturationParams& newStored)
    : ParamsDialog(context, saturationDialog, newStored) {
    constexpr NumberShown aroundZero{.offset = -50};
    bindings.Number(FieldFor(&SaturationParams::saturation),
                    {.field = Items::saturation, .slider = Items::slider}, aroundZero);
}

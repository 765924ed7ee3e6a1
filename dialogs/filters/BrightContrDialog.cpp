#include "dialogs/filters/BrightContrDialog.h"

#include "resources/Ids.h"

using Items = BrightContrItems;

BrightContrDialog::BrightContrDialog(const ApplyContext& context, BrightContrParams& newStored)
    : ParamsDialog(context, brightContrDialog, newStored) {
    constexpr NumberShown aroundZero{.offset = -50};
    bindings.Number(FieldFor(&BrightContrParams::brightness),
                    {.field = Items::brightness, .slider = Items::brightnessSlider}, aroundZero);
    bindings.Number(FieldFor(&BrightContrParams::contrast),
                    {.field = Items::contrast, .slider = Items::contrastSlider}, aroundZero);
}

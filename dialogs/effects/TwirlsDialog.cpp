#include "dialogs/effects/TwirlsDialog.h"

#include "resources/Ids.h"

using Items = TwirlsItems;

TwirlsDialog::TwirlsDialog(const ApplyContext& context, TwirlsParams& newStored)
    : ParamsDialog(context, twirlsDialog, newStored) {
    bindings.Number(FieldFor(&TwirlsParams::quantity),
                    {.field = Items::quantity, .slider = Items::quantitySlider});
    bindings.Number(FieldFor(&TwirlsParams::size),
                    {.field = Items::size, .slider = Items::sizeSlider});
    bindings.Number(FieldFor(&TwirlsParams::intensity),
                    {.field = Items::intensity, .slider = Items::intensitySlider});
}

bool TwirlsDialog::ScrollChanged(short item, int value) {
    ParamsDialog::ScrollChanged(item, value);
    return false;
}

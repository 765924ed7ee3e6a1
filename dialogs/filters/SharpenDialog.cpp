#include "dialogs/filters/SharpenDialog.h"

#include "resources/Ids.h"

using Items = SharpenItems;

SharpenDialog::SharpenDialog(const ApplyContext& context, SharpenParams& newStored)
    : ParamsDialog(context, sharpenDialog, newStored) {
    bindings.Number(FieldFor(&SharpenParams::passes),
                    {.field = Items::passes, .slider = Items::slider});
}

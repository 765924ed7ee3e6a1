#include "dialogs/effects/DropsDialog.h"

#include "resources/Ids.h"

using Items = DropsItems;

DropsDialog::DropsDialog(const ApplyContext& context, DropsParams& newStored)
    : ParamsDialog(context, dropsDialog, newStored) {
    bindings.Number(FieldFor(&DropsParams::count), {.slider = Items::count});
    bindings.Number(FieldFor(&DropsParams::size), {.slider = Items::size});
    bindings.Number(FieldFor(&DropsParams::variation), {.slider = Items::variation});
    bindings.Number(FieldFor(&DropsParams::reflection), {.slider = Items::reflection});
    bindings.Check(FieldFor(&DropsParams::emphasizeLight), Items::emphasizeLight);
    // These two sliders begin at 0.
    bindings.Number(FieldFor(&DropsParams::coveredBlur), {.slider = Items::coveredBlur},
                    {.offset = -coveredBlurNone});
    bindings.Number(FieldFor(&DropsParams::coveredTone), {.slider = Items::coveredTone},
                    {.offset = -coveredLighter});
    bindings.TabOrder({Items::reflection, Items::emphasizeLight});
}

#include "dialogs/effects/DropsDialog.h"

#include "resources/Ids.h"

using Items = DropsItems;

DropsDialog::DropsDialog(const ApplyContext& context, DropsParams& newStored)
    : ParamsDialog(context, dropsDialog, newStored) {
    bindings.Number(FieldFor(&DropsParams::count),
                    {.slider = Items::count, .name = "Number, few to many"});
    bindings.Number(FieldFor(&DropsParams::size),
                    {.slider = Items::size, .name = "Size, small to big"});
    bindings.Number(FieldFor(&DropsParams::variation),
                    {.slider = Items::variation, .name = "Variation, same to different"});
    bindings.Number(FieldFor(&DropsParams::reflection),
                    {.slider = Items::reflection, .name = "Reflection, dim to glossy"});
    bindings.Check(FieldFor(&DropsParams::emphasizeLight), Items::emphasizeLight);
    // These two sliders begin at 0.
    bindings.Number(FieldFor(&DropsParams::coveredBlur),
                    {.slider = Items::coveredBlur, .name = "Covered area, normal to blurred"},
                    {.offset = -coveredBlurNone});
    bindings.Number(FieldFor(&DropsParams::coveredTone),
                    {.slider = Items::coveredTone, .name = "Covered area, lighter to darker"},
                    {.offset = -coveredLighter});
    bindings.TabOrder({Items::reflection, Items::emphasizeLight});
}

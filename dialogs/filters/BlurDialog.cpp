#include "dialogs/filters/BlurDialog.h"

#include "resources/Ids.h"

using Items = BlurItems;

BlurDialog::BlurDialog(const ApplyContext& context, BlurParams& newStored)
    : ParamsDialog(context, blurDialog, newStored) {
    bindings.Number(FieldFor(&BlurParams::amount),
                    {.field = Items::amount, .slider = Items::slider});
    bindings.Check(FieldFor(&BlurParams::motion), Items::motion);
    // No button checked: 8, the number after the last button.
    bindings.Radios(FieldFor(&BlurParams::direction),
                    RadioRange(Items::firstDirection, Items::lastDirection), {.readAs = 8});
    bindings.Disable(ItemRange(Items::firstDirection, Items::lastDirection), Items::motion, 0);
}

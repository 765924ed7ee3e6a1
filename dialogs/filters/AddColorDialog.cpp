#include "dialogs/filters/AddColorDialog.h"

#include "dialogs/ColorChoice.h"
#include "resources/Ids.h"

using Items = AddColorItems;

AddColorDialog::AddColorDialog(const ApplyContext& context, AddColorParams& newStored)
    : ParamsDialog(context, addColorDialog, newStored) {
    bindings.Number(FieldFor(&AddColorParams::opacity),
                    {.field = Items::opacity, .slider = Items::slider});
    bindings.Swatch(FieldFor(&AddColorParams::color), Items::color);
}

// A colour dialog that is cancelled leaves the result that the texture shows.
short AddColorDialog::ItemHit(short item) {
    if (item != Items::color) {
        return ParamsDialog::ItemHit(item);
    }
    if (ChooseColorFor(*this, &values.color)) {
        InvalidateItem(Items::color);
        MarkChanged(true);
    }
    return 0;
}

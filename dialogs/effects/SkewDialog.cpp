#include "dialogs/effects/SkewDialog.h"

#include "resources/Ids.h"

using Items = SkewItems;

SkewDialog::SkewDialog(const ApplyContext& context, SkewParams& newStored)
    : ParamsDialog(context, skewDialog, newStored) {
    bindings.Radios(FieldFor(&SkewParams::direction),
                    RadioRange(Items::firstRadio, Items::lastRadio, Items::firstPicture));
}

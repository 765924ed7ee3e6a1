#include "dialogs/effects/DevidersDialog.h"

#include "resources/Ids.h"

using Items = DividersItems;

DevidersDialog::DevidersDialog(const ApplyContext& context, DividersParams& newStored)
    : ParamsDialog(context, devidersDialog, newStored) {
    bindings.Number(FieldFor(&DividersParams::lines),
                    {.slider = Items::lines, .name = "Number, few to many"});
    bindings.Number(FieldFor(&DividersParams::direction),
                    {.slider = Items::direction, .name = "Direction, horizontal to vertical"});
    bindings.Radios(FieldFor(&DividersParams::randomColors),
                    {{1, Items::randomColors}, {0, Items::pickedColors}},
                    {.shownAs = Items::randomColors});
    bindings.Check(FieldFor(&DividersParams::transparent), Items::transparent);
    bindings.Disable({Items::transparent}, Items::randomColors, 1);
    bindings.Number(FieldFor(&DividersParams::lineWidth),
                    {.field = Items::lineWidth, .slider = Items::lineWidthSlider});
    bindings.Number(FieldFor(&DividersParams::widthVariation),
                    {.field = Items::widthVariation, .slider = Items::widthVariationSlider});
    bindings.Number(FieldFor(&DividersParams::minimalGap),
                    {.field = Items::minimalGap, .slider = Items::minimalGapSlider});
    bindings.Check(FieldFor(&DividersParams::antiAliased), Items::antiAliased);
    bindings.TabOrder({Items::pickedColors, Items::randomColors, Items::transparent});
}

short DevidersDialog::ItemHit(short item) {
    if (item == Items::randomColors) {
        SetValue(Items::transparent, 1);
    }
    return ParamsDialog::ItemHit(item);
}

void DevidersDialog::KeepValues() {
    ParamsDialog::KeepValues();
    values.foreground = Father()->Foreground();
    values.background = Father()->Background();
}

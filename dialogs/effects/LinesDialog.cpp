#include "dialogs/effects/LinesDialog.h"

#include "resources/Ids.h"

using Items = LinesItems;

LinesDialog::LinesDialog(const ApplyContext& context, LinesParams& newStored)
    : ParamsDialog(context, linesDialog, newStored) {
    bindings.Number(FieldFor(&LinesParams::precision),
                    {.slider = Items::precision, .label = Items::precisionLabel});
    bindings.Radios(FieldFor(&LinesParams::appearance),
                    {{linesWax, Items::wax}, {linesInk, Items::ink}}, {.shownAs = Items::ink});
    bindings.Radios(FieldFor(&LinesParams::colorMode),
                    {{linesAverage, Items::averageColor}, {linesRandom, Items::random}},
                    {.shownAs = Items::random});
    bindings.Number(FieldFor(&LinesParams::angle), {.field = Items::angle, .dial = Items::globe});
    bindings.Swatch(FieldFor(&LinesParams::color), Items::color);
    SetName(Items::color, "Average color");
    bindings.TabOrder({ApplyItems::apply, Items::precision, Items::wax, Items::ink, Items::random,
                       Items::averageColor, Items::color, Items::angleLabel, Items::angle,
                       Items::globe});
}

// A colour is chosen to be the average; a choice that is cancelled switches to it, too.
short LinesDialog::ItemHit(short item) {
    if (item == Items::color) {
        bindings.Hit(Items::color);
        return ParamsDialog::ItemHit(Items::averageColor);
    }
    return ParamsDialog::ItemHit(item);
}

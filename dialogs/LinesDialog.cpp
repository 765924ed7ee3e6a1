#include "dialogs/LinesDialog.h"

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
}

// The numbers of the two buttons lie apart, but arrows move from one to the other.
void LinesDialog::Setup() {
    ParamsDialog::Setup();
    FollowInTabOrder(Items::ink, Items::wax);
}

// A colour is chosen to be the average; a choice that is cancelled switches to it, too.
short LinesDialog::ItemHit(short item) {
    if (item == Items::color) {
        bindings.Hit(Items::color);
        return ParamsDialog::ItemHit(Items::averageColor);
    }
    return ParamsDialog::ItemHit(item);
}

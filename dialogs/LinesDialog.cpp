#include "dialogs/LinesDialog.h"

#include "dialogs/ColorChoice.h"
#include "dialogs/Dial.h"
#include "resources/Ids.h"

namespace {

using Items = LinesItems;

}  // namespace

LinesDialog::LinesDialog(const ApplyContext& context, LinesParams& newStored)
    : ParamsDialog(context, linesDialog, newStored), color(newStored.color) {}

// The slider's range is what it comes with.
void LinesDialog::SetUpControls() {
    SetFormat(Items::angle, "%d", lowestAngle, highestAngle);
    InitializeDial(globe, this, Items::globe, [](GlobeControl* dial, int, int angle) {
        dial->Dialog()->SetValue(Items::angle, angle);
    });
}

void LinesDialog::ShowValues(const LinesParams& params) {
    SetValue(Items::precision, params.precision);
    SetRadio(params.appearance == linesWax ? Items::wax : Items::ink, {Items::wax, Items::ink});
    SetRadio(params.colorMode == linesAverage ? Items::averageColor : Items::random,
             {Items::random, Items::averageColor});
    SetValue(Items::angle, params.angle);
    globe.SetAngle(params.angle);
    color = params.color;
    InvalidateItem(Items::color);
}

void LinesDialog::ReadValues(LinesParams* params) {
    params->precision = GetShort(Items::precision);
    params->appearance = GetShort(Items::wax) != 0 ? linesWax : linesInk;
    params->colorMode = GetShort(Items::averageColor) != 0 ? linesAverage : linesRandom;
    params->angle = GetShort(Items::angle);
    params->color = color;
}

short LinesDialog::ItemHit(short item) {
    switch (item) {
        case Items::color:
            ChooseColor();
            break;
        case Items::wax:
        case Items::ink:
            SetRadio(item, {Items::wax, Items::ink});
            MarkChanged(true);
            break;
        case Items::random:
        case Items::averageColor:
            SetRadio(item, {Items::random, Items::averageColor});
            MarkChanged(true);
            break;
        case Items::globe:
            globe.Track();
            MarkChanged(true);
            break;
        case Items::angle:
            globe.SetAngle(GetShort(Items::angle));
            MarkChanged(true);
            break;
        default:
            return ParamsDialog::ItemHit(item);
    }
    return 0;
}

void LinesDialog::DrawItem(short item) {
    if (item == Items::color) {
        DrawSwatch(*this, item, color);
    } else if (item == Items::globe) {
        globe.Draw();
    } else {
        ParamsDialog::DrawItem(item);
    }
}

void LinesDialog::ChooseColor() {
    ChooseColorFor(*this, &color);
    InvalidateItem(Items::color);
    SetRadio(Items::averageColor, {Items::random, Items::averageColor});
    MarkChanged(true);
}

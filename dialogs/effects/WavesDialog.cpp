#include "dialogs/effects/WavesDialog.h"

#include "resources/Ids.h"

using Items = WavesItems;

WavesDialog::WavesDialog(const ApplyContext& context, WavesParams& newStored)
    : ParamsDialog(context, wavesDialog, newStored) {
    bindings.Popup(FieldFor(&WavesParams::formX), Items::horizontalForm);
    bindings.Number(FieldFor(&WavesParams::heightX),
                    {.field = Items::horizontalHeight, .slider = Items::horizontalHeightSlider});
    bindings.Number(FieldFor(&WavesParams::countX), {.field = Items::horizontalCount,
                                                     .slider = Items::horizontalCountSlider,
                                                     .label = Items::horizontalCountLabel});
    bindings.Disable({Items::horizontalHeight, Items::horizontalHeightSlider,
                      Items::horizontalCount, Items::horizontalCountSlider},
                     Items::horizontalForm, waveNone);
    bindings.Popup(FieldFor(&WavesParams::formY), Items::verticalForm);
    bindings.Number(FieldFor(&WavesParams::heightY),
                    {.field = Items::verticalHeight, .slider = Items::verticalHeightSlider});
    bindings.Number(FieldFor(&WavesParams::countY), {.field = Items::verticalCount,
                                                     .slider = Items::verticalCountSlider,
                                                     .label = Items::verticalCountLabel});
    bindings.Disable({Items::verticalHeight, Items::verticalHeightSlider, Items::verticalCount,
                      Items::verticalCountSlider},
                     Items::verticalForm, waveNone);
}

bool WavesDialog::ScrollChanged(short item, int value) {
    ParamsDialog::ScrollChanged(item, value);
    return false;
}

void WavesDialog::KeepValues() {
    ParamsDialog::KeepValues();
    constexpr WavesParams standard;
    values.unused12 = standard.unused12;
    values.interpolate = standard.interpolate;
}

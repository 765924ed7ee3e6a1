#include "dialogs/filters/NoiseDialog.h"

#include "resources/Ids.h"

using Items = NoiseItems;

NoiseDialog::NoiseDialog(const ApplyContext& context, NoiseParams& newStored)
    : ParamsDialog(context, noiseDialog, newStored) {
    bindings.Number(FieldFor(&NoiseParams::amount),
                    {.field = Items::amount, .slider = Items::slider, .name = "Noise"});
    // The modes do not count as the items do.
    bindings.Radios(FieldFor(&NoiseParams::mode), {{noiseGrey, Items::blackAndWhite},
                                                   {noiseColored, Items::colored},
                                                   {noiseColorful, Items::reallyColorful}});
    bindings.TabOrder({Items::blackAndWhite, Items::colored, Items::reallyColorful});
}

#include "dialogs/BlurDialog.h"

#include "resources/Ids.h"

namespace {

using Items = BlurItems;

constexpr double lowestAmount = 1;
constexpr double highestAmount = 100;

bool IsDirection(short item) {
    return item >= Items::firstDirection && item <= Items::lastDirection;
}

}  // namespace

BlurDialog::BlurDialog(const ApplyContext& context, BlurParams& newStored)
    : ParamsDialog(context, blurDialog, newStored) {}

void BlurDialog::SetUpControls() {
    SetFormat(Items::amount, "%d", lowestAmount, highestAmount);
    SetRange(Items::slider, lowestAmount, highestAmount);
}

void BlurDialog::ShowValues(const BlurParams& params) {
    SetValue(Items::amount, params.amount);
    SetValue(Items::slider, params.amount);
    SetValue(Items::motion, params.motion);
    SetDirection(static_cast<short>(Items::firstDirection + params.direction));
    EnableDirections();
}

// With no button on, the direction is the number behind the last one.
void BlurDialog::ReadValues(BlurParams* params) {
    params->amount = GetShort(Items::amount);
    params->motion = GetShort(Items::motion) != 0 ? 1 : 0;
    short radio = Items::firstDirection;
    while (radio <= Items::lastDirection && GetShort(radio) == 0) {
        ++radio;
    }
    params->direction = static_cast<std::int16_t>(radio - Items::firstDirection);
}

short BlurDialog::ItemHit(short item) {
    if (item == Items::amount) {
        SetValue(Items::slider, GetValue(Items::amount));
        MarkChanged(true);
    } else if (item == Items::motion) {
        SetValue(Items::motion, GetShort(Items::motion) != 0 ? 0 : 1);
        EnableDirections();
        MarkChanged(true);
    } else if (IsDirection(item)) {
        SetDirection(item);
        MarkChanged(true);
    } else {
        return ParamsDialog::ItemHit(item);
    }
    return 0;
}

bool BlurDialog::ScrollChanged(short item, int value) {
    if (item == Items::slider) {
        SetValue(Items::amount, value);
    }
    return ParamsDialog::ScrollChanged(item, value);
}

void BlurDialog::SetDirection(short radio) {
    for (short item = Items::firstDirection; item <= Items::lastDirection; ++item) {
        SetValue(item, item == radio ? 1 : 0);
    }
}

void BlurDialog::EnableDirections() {
    const bool on = GetShort(Items::motion) != 0;
    for (short item = Items::firstDirection; item <= Items::lastDirection; ++item) {
        Enable(item, on);
    }
}

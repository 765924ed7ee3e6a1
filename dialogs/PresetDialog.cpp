#include "dialogs/PresetDialog.h"

#include <cstring>

#include "resources/Ids.h"

namespace {

/// Can be pasted all the same.
constexpr char refusedCharacters[] = "!-./<>";

}  // namespace

PresetDialog::PresetDialog(NorvantaDialog* newOwner) : SmallPSDialog(presetDialog, newOwner) {}

// The format of the plus sign disables OK while the field is empty.
void PresetDialog::Setup() {
    SmallPSDialog::Setup();
    SetFormat(PresetItems::name, "%+s");
    SetFocus(PresetItems::name);
}

short PresetDialog::ItemHit(short item) {
    if (item != okItem && item != cancelItem) {
        return 0;
    }
    name = GetText(PresetItems::name);
    return item;
}

short PresetDialog::KeyDown(int key, int modifiers) {
    if (key > 0 && std::strchr(refusedCharacters, key) != nullptr) {
        return 0;
    }
    return SmallPSDialog::KeyDown(key, modifiers);
}

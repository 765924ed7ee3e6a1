#include "dialogs/BrushDialog.h"

#include "resources/Ids.h"

namespace {

using Items = BrushItems;

constexpr double lowestSize = 2;
constexpr double highestSize = 20;

}  // namespace

BrushDialog::BrushDialog(hostapi::FilterRecord* newRecord, NorvantaDialog* newOwner,
                         hostapi::Rect& newPlacement, short newSize)
    : ToolsDialog(brushDialog, newRecord, newOwner, newPlacement), size(newSize) {}

void BrushDialog::Setup() {
    ToolsDialog::Setup();
    SetFormat(Items::size, "%d", lowestSize, highestSize);
    SetRange(Items::slider, lowestSize, highestSize);
    SetValue(Items::size, size);
    SetValue(Items::slider, size);
}

short BrushDialog::ItemHit(short item) {
    if (item == Items::size) {
        SetValue(Items::slider, GetValue(Items::size));
    }
    return ToolsDialog::ItemHit(item);
}

bool BrushDialog::ScrollChanged(short item, int value) {
    if (item != Items::slider) {
        return ToolsDialog::ScrollChanged(item, value);
    }
    SetValue(Items::size, value);
    return true;
}

void BrushDialog::KeepValues() {
    size = GetShort(Items::size);
}

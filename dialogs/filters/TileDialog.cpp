#include "dialogs/filters/TileDialog.h"

#include "resources/Ids.h"

namespace {

using Items = TileItems;

constexpr double fewestCopies = 1;
constexpr double mostCopies = 12;

}  // namespace

TileDialog::TileDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement)
    : SmallPSDialog(tileDialog, newOwner), placement(newPlacement) {}

void TileDialog::Setup() {
    SmallPSDialog::Setup();
    // The button of the dialogs that preview: here there is nothing to go back to.
    Enable(Items::apply, false);
    SetFormat(Items::horizontal, "%d", fewestCopies, mostCopies);
    SetFormat(Items::vertical, "%d", fewestCopies, mostCopies);
    SetValue(Items::horizontal, horizontal);
    SetValue(Items::vertical, vertical);
    if (placement.right != 0) {
        SetPlacement(placement.top, placement.left);
    }
}

short TileDialog::ItemHit(short item) {
    if (item != okItem && item != cancelItem) {
        return 0;
    }
    horizontal = GetShort(Items::horizontal);
    vertical = GetShort(Items::vertical);
    placement = Placement();
    return item;
}

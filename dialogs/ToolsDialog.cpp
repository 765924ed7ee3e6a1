#include "dialogs/ToolsDialog.h"

ToolsDialog::ToolsDialog(short newResourceId, hostapi::FilterRecord* newRecord,
                         NorvantaDialog* newOwner, hostapi::Rect& newPlacement)
    : SmallPSDialog(newResourceId, newRecord, newOwner), placement(newPlacement) {}

void ToolsDialog::Setup() {
    SmallPSDialog::Setup();
    if (placement.right != 0) {
        SetPlacement(placement.top, placement.left);
    }
}

short ToolsDialog::ItemHit(short item) {
    if (item != okItem && item != cancelItem) {
        return 0;
    }
    KeepValues();
    placement = Placement();
    return item;
}

#include "dialogs/tools/ToolsDialog.h"

ToolsDialog::ToolsDialog(short newResourceId, NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                         void* newSettings)
    : SmallPSDialog(newResourceId, newOwner),
      bindings(*this, newSettings),
      placement(newPlacement) {}

void ToolsDialog::Setup() {
    SmallPSDialog::Setup();
    if (placement.right != 0) {
        SetPlacement(placement.top, placement.left);
    }
    bindings.SetUp();
    bindings.Show();
}

short ToolsDialog::ItemHit(short item) {
    if (item != okItem && item != cancelItem) {
        bindings.Hit(item);
        return 0;
    }
    bindings.Read();
    placement = Placement();
    return item;
}

bool ToolsDialog::ScrollChanged(short item, int value) {
    bindings.Scroll(item, value);
    return true;
}

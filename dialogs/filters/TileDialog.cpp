#include "dialogs/filters/TileDialog.h"

#include "resources/Ids.h"

using Items = TileItems;

TileDialog::TileDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement)
    : ToolsDialog(tileDialog, newOwner, newPlacement, &counts) {
    bindings.Number(FieldFor(&TileParams::horizontal), {.field = Items::horizontal});
    bindings.Number(FieldFor(&TileParams::vertical), {.field = Items::vertical});
}

void TileDialog::Setup() {
    ToolsDialog::Setup();
    // The button of the dialogs that preview: here there is nothing to go back to.
    Enable(Items::apply, false);
}

#include "dialogs/tools/BrushDialog.h"

#include "resources/Ids.h"

BrushDialog::BrushDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                         const BrushSettings& newSettings)
    : ToolsDialog(brushDialog, newOwner, newPlacement, &settings), settings(newSettings) {
    bindings.Number(FieldFor(&BrushSettings::size),
                    {.field = BrushItems::size, .slider = BrushItems::slider});
}

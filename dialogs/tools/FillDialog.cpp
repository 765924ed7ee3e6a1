#include "dialogs/tools/FillDialog.h"

#include "resources/Ids.h"

using Items = FillItems;

FillDialog::FillDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                       const FillSettings& newSettings)
    : ToolsDialog(fillDialog, newOwner, newPlacement, &settings), settings(newSettings) {
    bindings.Number(FieldFor(&FillSettings::tolerance),
                    {.field = Items::tolerance, .slider = Items::slider});
    bindings.Check(FieldFor(&FillSettings::antiAlias), Items::antiAlias);
}

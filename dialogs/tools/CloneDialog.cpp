#include "dialogs/tools/CloneDialog.h"

#include "resources/Ids.h"

using Items = CloneItems;

CloneDialog::CloneDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                         const StampSettings& newSettings)
    : ToolsDialog(cloneDialog, newOwner, newPlacement, &settings), settings(newSettings) {
    bindings.Number(FieldFor(&StampSettings::size),
                    {.field = Items::size, .slider = Items::slider});
    bindings.Number(FieldFor(&StampSettings::offsetH), {.field = Items::horizontalOffset});
    bindings.Number(FieldFor(&StampSettings::offsetV), {.field = Items::verticalOffset},
                    {.factor = -1});
}

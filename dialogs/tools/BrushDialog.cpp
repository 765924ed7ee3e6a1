#include "dialogs/tools/BrushDialog.h"

#include "resources/Ids.h"

namespace {

constexpr Field sizeField = fields::Number<&BrushSettings::size>("size", 2, 20);

}  // namespace

BrushDialog::BrushDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                         const BrushSettings& newSettings)
    : ToolsDialog(brushDialog, newOwner, newPlacement, &settings), settings(newSettings) {
    bindings.Number(sizeField, {.field = BrushItems::size, .slider = BrushItems::slider});
}

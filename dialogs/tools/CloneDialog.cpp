#include "dialogs/tools/CloneDialog.h"

#include "resources/Ids.h"

namespace {

using Items = CloneItems;

constexpr double farthest = 1000;
constexpr Field sizeField = fields::Number<&StampSettings::size>("size", 1, 20);
constexpr Field offsetHField =
    fields::Number<&StampSettings::offsetH>("offsetH", -farthest, farthest);
constexpr Field offsetVField =
    fields::Number<&StampSettings::offsetV>("offsetV", -farthest, farthest);

}  // namespace

CloneDialog::CloneDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                         const StampSettings& newSettings)
    : ToolsDialog(cloneDialog, newOwner, newPlacement, &settings), settings(newSettings) {
    bindings.Number(sizeField, {.field = Items::size, .slider = Items::slider});
    bindings.Number(offsetHField, {.field = Items::horizontalOffset});
    bindings.Number(offsetVField, {.field = Items::verticalOffset}, {.factor = -1});
}

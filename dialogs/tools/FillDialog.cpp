#include "dialogs/tools/FillDialog.h"

#include "resources/Ids.h"

namespace {

using Items = FillItems;

constexpr Field toleranceField = fields::Number<&FillSettings::tolerance>("tolerance", 0, 100);
constexpr Field antiAliasField = fields::Choice<&FillSettings::antiAlias>("antiAlias", offAndOn);

}  // namespace

FillDialog::FillDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                       const FillSettings& newSettings)
    : ToolsDialog(fillDialog, newOwner, newPlacement, &settings), settings(newSettings) {
    bindings.Number(toleranceField, {.field = Items::tolerance, .slider = Items::slider});
    bindings.Check(antiAliasField, Items::antiAlias);
}

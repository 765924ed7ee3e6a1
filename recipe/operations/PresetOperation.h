// The row of the operation table that runs an effect with a preset.
#pragma once

#include "recipe/language/Definitions.h"

namespace recipe {

OperationDefinition PresetOperation();

}  // namespace recipe

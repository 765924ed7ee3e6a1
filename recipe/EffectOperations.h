// The rows of the operation table that run an effect.
#pragma once

#include <vector>

#include "recipe/Definitions.h"

namespace recipe {

std::vector<OperationDefinition> EffectOperations();

}  // namespace recipe

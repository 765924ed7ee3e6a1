// The paint tools' rows of the operation table.
#pragma once

#include <vector>

#include "recipe/language/Definitions.h"

namespace recipe {

std::vector<OperationDefinition> ToolOperations();

}  // namespace recipe

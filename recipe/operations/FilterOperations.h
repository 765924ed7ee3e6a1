// The rows of the operation table that filter the texture, move it or make another one of it.
#pragma once

#include <vector>

#include "recipe/language/Definitions.h"

namespace recipe {

std::vector<OperationDefinition> FilterOperations();

}  // namespace recipe

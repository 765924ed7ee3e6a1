// The rows of the operation table that take no record: they change the whole texture, move it or
// make another one of it.
#pragma once

#include <vector>

#include "recipe/language/Definitions.h"

namespace recipe {

std::vector<OperationDefinition> FilterOperations();

}  // namespace recipe

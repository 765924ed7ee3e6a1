// The rows of the operation table without a record: operations that change the whole texture, move
// it or replace it.
#pragma once

#include <vector>

#include "recipe/language/Definitions.h"

namespace recipe {

std::vector<OperationDefinition> FilterOperations();

}  // namespace recipe

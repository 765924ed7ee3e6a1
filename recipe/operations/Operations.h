// The operations of the recipe language.
#pragma once

#include <span>

#include "recipe/language/Definitions.h"

namespace recipe {

/// One row for each operation. It lives as long as the program.
std::span<const OperationDefinition> OperationTable();

}  // namespace recipe

// The text of a recipe to its checked operations.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "recipe/language/Definitions.h"

namespace recipe {

/// The texts that replace `${name}`, by name.
using Replacements = std::map<std::string, std::string, std::less<>>;

/// Whether `${name}` can be written: a letter or underscore, then letters, digits and underscores.
bool IsReplacementName(std::string_view name);

/// Checks the whole recipe against the table, one operation a line. `text` may be any bytes: all
/// that is no recipe throws a RecipeError for the first line at fault. The operations point into
/// `table`, which has to outlive them.
///
/// A replacement is made in names, keys and values after they have been told apart, so its text is
/// taken as it is: blanks, quotes and # in it mean nothing, and it is not looked through again.
std::vector<Operation> ParseRecipe(std::string_view text,
                                   std::span<const OperationDefinition> table,
                                   const Replacements& replacements = {});

}  // namespace recipe

// Turns the text of a recipe into checked operations.
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

/// Checks the whole recipe against the table, one operation a line. `text` may be any bytes; throws
/// a RecipeError for the first line that is invalid. The operations point into `table`, which must
/// outlive them.
///
/// Replacements are made in names, keys and values after the line has been split, so their text is
/// literal: blanks, quotes and # in it mean nothing, and it is not searched for further ones.
std::vector<Operation> ParseRecipe(std::string_view text,
                                   std::span<const OperationDefinition> table,
                                   const Replacements& replacements = {});

}  // namespace recipe

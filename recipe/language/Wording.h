// Names and lists in messages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace recipe {

/// A piece of a recipe in single quotes, shortened if it is long.
std::string Quoted(std::string_view text);

/// "a", "a or b", "a, b or c".
std::string ListOf(const std::vector<std::string>& items);

}  // namespace recipe

// The text of one value to the value.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "recipe/language/Definitions.h"

namespace recipe {

/// A value that cannot be. ParseValue's says what it has to be, so that a key's name can stand
/// before it: "must be ...".
class ValueError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Throws ValueError for any text that is not a value of the type, or lies outside its range.
Value ParseValue(const KeyType& type, std::string_view text);

/// The extension of a file name in lower case, with its dot; empty if it has none.
std::string LowerCaseExtension(std::string_view fileName);

}  // namespace recipe

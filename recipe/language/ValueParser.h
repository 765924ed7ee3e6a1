// Turns the text of one value into the value.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "recipe/language/Definitions.h"

namespace recipe {

/// An invalid value. The texts of ParseValue say what is valid, to follow a key's name: "must be
/// ...".
class ValueError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Throws ValueError for a text that is not a value of the type, or one outside its range.
Value ParseValue(const KeyType& type, std::string_view text);

/// The extension of a file name in lower case, with its dot; empty if it has none.
std::string LowerCaseExtension(std::string_view fileName);

}  // namespace recipe

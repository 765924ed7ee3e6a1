// Texts of the program by their resource ids, for code without a resource file at hand.
#pragma once

#include <cstdint>

enum StringId : std::uint16_t {
#define STRING(id, name, text) name = id,
#include "resources/Strings.def"
#undef STRING
};

/// The text of the string resource with this id.
constexpr const char* StringText(StringId id) {
    switch (id) {
#define STRING(number, name, text) \
    case name:                     \
        return text;
#include "resources/Strings.def"
#undef STRING
    }
    return "";
}

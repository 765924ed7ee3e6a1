// Colours between the keys of a recipe and the records of the core.
#pragma once

#include <string_view>

#include "paint/Color.h"
#include "recipe/language/Definitions.h"

namespace recipe {

inline RGBColor16 ColorOf(const Arguments& arguments, std::string_view key) {
    const auto& color = arguments.Get<hostapi::RGBColor>(key);
    return {color.red, color.green, color.blue};
}

inline Value ColorValue(const RGBColor16& color) {
    return hostapi::RGBColor{.red = color.red, .green = color.green, .blue = color.blue};
}

}  // namespace recipe

// The parameter record of Lines, byte for byte as it stands in the preference file.
#pragma once

#include <cstddef>
#include <cstdint>

#include "paint/Color.h"
#include "paint/records/Field.h"

enum LinesAppearance : std::uint16_t { linesWax = 9, linesInk = 10 };

/// The dialog offers random and average; the generator knows all four.
enum LinesColorMode : std::uint16_t {
    linesRandom = 11,
    linesDark = 12,
    linesBright = 13,
    linesAverage = 14,
};

struct LinesParams {
    /// 0 to 100: how straight a stroke runs.
    std::int16_t precision = 50;
    /// A LinesAppearance; wax adds the softening pass.
    std::uint16_t appearance = linesWax;
    /// A LinesColorMode.
    std::uint16_t colorMode = linesRandom;
    /// -180 to 180 degrees, the main direction.
    std::int16_t angle = 45;
    /// The colour that average scatters around.
    RGBColor16 color{0x7FFF, 0x7FFF, 0x7FFF};
};

static_assert(sizeof(LinesParams) == 14);
static_assert(offsetof(LinesParams, appearance) == 2 && offsetof(LinesParams, colorMode) == 4);
static_assert(offsetof(LinesParams, angle) == 6 && offsetof(LinesParams, color) == 8);

inline constexpr FieldWord linesAppearanceWords[] = {{"wax", linesWax}, {"ink", linesInk}};
inline constexpr FieldWord linesColorModeWords[] = {{"random", linesRandom},
                                                    {"dark", linesDark},
                                                    {"bright", linesBright},
                                                    {"average", linesAverage}};
inline constexpr Field linesFields[] = {
    fields::Number<&LinesParams::precision>("precision", 0, 100),
    fields::Choice<&LinesParams::appearance>("appearance", linesAppearanceWords),
    fields::Choice<&LinesParams::colorMode>("colorMode", linesColorModeWords),
    fields::Number<&LinesParams::angle>("angle", -180, 180),
    fields::Color<&LinesParams::color>("color"),
};
template <>
constexpr std::span<const Field> FieldsOf<LinesParams>() {
    return linesFields;
}

// The units in which sizes are read and typed.
#pragma once

#include <cstdint>

enum Unit : std::int32_t { unitPixels = 1, unitInch = 2, unitCentimetre = 3 };

/// Inches in a centimetre, rounded in the last digits. Intended: sizes are computed with this
/// number.
constexpr double inchesPerCentimetre = 0.39370078740157477;
constexpr double centimetresPerInch = 2.54;

/// Dots an inch of a host's 16.16 fixed-point resolution: the integer part alone. A host that
/// gives none has the screen's 72.
short WholeResolution(std::int32_t fixedResolution);

/// `value` from one unit in another at `resolution` dots an inch, which is at least 1. A length
/// becomes whole pixels, rounded by adding a half and truncating; pixels stay as they are. Unknown
/// units leave the value.
double ConvertUnit(std::int32_t from, std::int32_t to, double value, int resolution);

/// The same in pixels, truncated to 16 bits.
short PixelSize(std::int32_t unit, double value, int resolution);

#include "editor/Readouts.h"

#include <cmath>

#include "editor/Units.h"
#include "resources/Strings.h"

namespace {

/// One decimal after a point, whatever the locale: tenths, rounded, with the point set in.
std::string OneDecimal(double value) {
    std::string digits = std::to_string(static_cast<long>(std::trunc(value * 10 + 0.5)));
    if (digits.size() == 1) {
        digits.insert(0, 1, '0');
    }
    return digits.insert(digits.size() - 1, 1, '.');
}

const char* UnitText(std::int32_t unit) {
    switch (unit) {
        case unitInch:
            return StringText(stringInch);
        case unitCentimetre:
            return StringText(stringCentimetre);
        default:
            return StringText(stringPixel);
    }
}

}  // namespace

std::string SideText(short pixels, std::int32_t unit, int resolution) {
    const bool isLength = unit == unitInch || unit == unitCentimetre;
    const std::string number = isLength
                                   ? OneDecimal(ConvertUnit(unitPixels, unit, pixels, resolution))
                                   : std::to_string(pixels);
    return number + UnitText(unit);
}

std::string ResolutionText(int resolution) {
    return std::to_string(resolution) + StringText(stringDotsPerInch);
}

int Kilobytes(short width, short height) {
    return static_cast<int>(std::int64_t{height} * width * 4 / 1024);
}

std::string MemoryText(int kilobytes) {
    return std::to_string(kilobytes) + StringText(stringKilobytes);
}

std::string ZoomText(double zoom) {
    return std::to_string(static_cast<int>(100 * zoom)) + "%";
}

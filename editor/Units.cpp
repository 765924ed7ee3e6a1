#include "editor/Units.h"

#include <algorithm>
#include <cmath>

#include "raster/Truncation.h"

namespace {

constexpr int screenResolution = 72;
constexpr int fixedPointBits = 16;

double RoundHalfUp(double value) {
    return std::trunc(value + 0.5);
}

double PixelsFrom(std::int32_t unit, double value, int resolution) {
    switch (unit) {
        case unitInch:
            return RoundHalfUp(value * resolution);
        case unitCentimetre:
            return RoundHalfUp(value * resolution * inchesPerCentimetre);
        default:
            return value;
    }
}

double InchesFrom(std::int32_t unit, double value, int resolution) {
    switch (unit) {
        case unitPixels:
            return value / resolution;
        case unitCentimetre:
            return value * inchesPerCentimetre;
        default:
            return value;
    }
}

double CentimetresFrom(std::int32_t unit, double value, int resolution) {
    switch (unit) {
        case unitPixels:
            return value / (resolution * inchesPerCentimetre);
        case unitInch:
            return value * centimetresPerInch;
        default:
            return value;
    }
}

}  // namespace

short WholeResolution(std::int32_t fixedResolution) {
    const int whole = fixedResolution >> fixedPointBits;
    return static_cast<short>(whole >= 1 ? whole : screenResolution);
}

double ConvertUnit(std::int32_t from, std::int32_t to, double value, int resolution) {
    const int dots = std::max(resolution, 1);
    switch (to) {
        case unitPixels:
            return PixelsFrom(from, value, dots);
        case unitInch:
            return InchesFrom(from, value, dots);
        case unitCentimetre:
            return CentimetresFrom(from, value, dots);
        default:
            return value;
    }
}

short PixelSize(std::int32_t unit, double value, int resolution) {
    return TruncateToShort(ConvertUnit(unit, unitPixels, value, resolution));
}

#include "framework/controls/GlobeGeometry.h"

#include <algorithm>
#include <cmath>

#include "base/FatalError.h"

namespace {

constexpr double pi = 3.141592654;
constexpr double degreesInHalfTurn = 180.0;
constexpr int greatestElevation = 90;
constexpr int greatestAngle = 180;

std::int16_t RoundToShort(double value) {
    return static_cast<std::int16_t>(std::lround(value));
}

}  // namespace

GlobeGeometry MeasureGlobe(const hostapi::Rect& bounds, int inset) {
    const int halfHeight = (bounds.bottom - bounds.top) >> 1;
    const int halfWidth = (bounds.right - bounds.left) >> 1;
    GlobeGeometry geometry;
    geometry.radius = std::min(halfHeight, halfWidth) - inset;
    if (geometry.radius < 1) {
        FatalError(faultInternalLimit, "GlobeControl", __LINE__);
    }
    geometry.center = {static_cast<std::int16_t>(bounds.top + halfHeight),
                       static_cast<std::int16_t>(bounds.left + halfWidth)};
    const int halfSide = geometry.radius + inset;
    geometry.square = ToRect({geometry.center.h - halfSide, geometry.center.v - halfSide,
                              geometry.center.h + halfSide, geometry.center.v + halfSide});
    return geometry;
}

hostapi::Point KnobPlace(const GlobeGeometry& geometry, const GlobeValue& value) {
    const int elevation = std::max(value.elevation, 0);
    const double distance =
        static_cast<double>(greatestElevation - elevation) * geometry.radius / greatestElevation;
    const double angle = value.angle * pi / degreesInHalfTurn;
    return {RoundToShort(geometry.center.v - std::cos(angle) * distance),
            RoundToShort(geometry.center.h + std::sin(angle) * distance)};
}

int TurnedAngle(int angle, int degrees) {
    constexpr int turn = 2 * greatestAngle;
    const int turned = angle + degrees;
    if (turned > greatestAngle) {
        return turned - turn;
    }
    return turned < -greatestAngle ? turned + turn : turned;
}

GlobeValue ValueUnder(const GlobeGeometry& geometry, const GlobeValue& value,
                      hostapi::Point place) {
    const double right = place.h - geometry.center.h;
    const double up = geometry.center.v - place.v;
    GlobeValue result = value;
    if (value.elevation != -1) {
        const double scale = static_cast<double>(greatestElevation) / geometry.radius;
        const double distance = std::sqrt(right * right + up * up);
        result.elevation =
            std::max(0, static_cast<int>(std::lround(greatestElevation - distance * scale)));
    }
    if (result.elevation < greatestElevation) {
        const double degrees = std::atan2(right, up) * degreesInHalfTurn / pi;
        result.angle =
            std::clamp(static_cast<int>(std::lround(degrees)), -greatestAngle, greatestAngle);
    }
    return result;
}

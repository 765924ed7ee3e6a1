#include "paint/kernels/TwirlCodes.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

namespace {

constexpr double fractionUnit = 1 << fractionBits;

/// A place next to a whole number may be rounded to it, or lie beside it: far more than a rounding
/// can be.
constexpr double wholeNumberMargin = 1e-6;

constexpr double longestWay = 8191;

bool IsNextToWholeNumber(double fraction) {
    return fraction < wholeNumberMargin || fraction > 1 - wholeNumberMargin;
}

int InFractionUnits(double value) {
    return static_cast<int>(std::floor(value * fractionUnit + 0.5));
}

}  // namespace

bool TurnedSource(double x, double y, int radius, SourceCode* code) {
    const double wholeX = std::floor(x);
    const double wholeY = std::floor(y);
    const double fx = x - wholeX;
    const double fy = y - wholeY;
    const int sum = InFractionUnits(fx + fy - 1);
    const int difference = InFractionUnits(fx - fy);
    const int most = std::max(std::abs(sum), std::abs(difference));
    *code = {SpotAt(static_cast<int>(wholeX) + radius, static_cast<int>(wholeY) + radius),
             Halves(sum, difference)};
    return !IsNextToWholeNumber(fx) && !IsNextToWholeNumber(fy) && most < 1 << fractionBits;
}

bool StillSource(double x, double y, int dx, int dy, std::uint32_t* way) {
    const double wayX = (x - dx) * stillUnit;
    const double wayY = (y - dy) * stillUnit;
    if (!(std::fabs(wayX) <= longestWay && std::fabs(wayY) <= longestWay) ||
        wayX != std::trunc(wayX) || wayY != std::trunc(wayY)) {
        return false;
    }
    *way = Halves(static_cast<int>(wayX), static_cast<int>(wayY));
    return true;
}

/// The doubles next to a coordinate lie a distance apart that doubles with each power of two; half
/// of it is rounded away, as the coordinate itself is even in its last bit. For 0, where no way is,
/// all ways count as leading above.
RoundingLimits LimitsAt(int coordinate) {
    if (coordinate == 0) {
        return {-32768, -32768, 0};
    }
    const auto size = static_cast<unsigned>(std::abs(coordinate));
    const int outer = static_cast<int>(std::bit_floor(size)) / 2;
    const int inner = std::has_single_bit(size) ? outer / 2 : outer;
    return coordinate > 0 ? RoundingLimits{-inner, outer, -1} : RoundingLimits{-outer, inner, 0};
}

void ColumnLimits::Place(int cx, int radius) {
    for (int dx = -radius; dx <= radius; ++dx) {
        const RoundingLimits limits = InUpperHalves(LimitsAt(cx + dx));
        low[dx + radius] = limits.low;
        high[dx + radius] = limits.high;
        isPositive[dx + radius] = limits.isPositive;
    }
}

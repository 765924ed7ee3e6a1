#include "paint/EffectMath.h"

#include <cmath>

#include "raster/Truncation.h"

namespace {

// Double-double arithmetic: a number is the unevaluated sum of a double and a much smaller one,
// about 106 bits. Built of nothing but IEEE additions and multiplications, so every processor and
// every compiler gives the same bits.
struct Pair {
    double high;
    double low;
};

/// a + b exactly.
Pair TwoSum(double a, double b) {
    const double sum = a + b;
    const double bPart = sum - a;
    return {sum, (a - (sum - bPart)) + (b - bPart)};
}

/// The same where |a| >= |b|.
Pair QuickTwoSum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// The upper 26 bits of a, and the rest.
Pair Split(double a) {
    constexpr double splitter = 134217729.0;  // 2 to the 27th, plus 1
    const double scaled = splitter * a;
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

/// a * b exactly.
Pair TwoProduct(double a, double b) {
    const double product = a * b;
    const Pair x = Split(a);
    const Pair y = Split(b);
    const double error =
        ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low;
    return {product, error};
}

Pair operator+(Pair a, Pair b) {
    const Pair high = TwoSum(a.high, b.high);
    const Pair low = TwoSum(a.low, b.low);
    const Pair sum = QuickTwoSum(high.high, high.low + low.high);
    return QuickTwoSum(sum.high, sum.low + low.low);
}

Pair operator*(Pair a, Pair b) {
    const Pair product = TwoProduct(a.high, b.high);
    return QuickTwoSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

Pair operator-(Pair a) {
    return {-a.high, -a.low};
}

Pair DividedBy(Pair a, double divisor) {
    const double first = a.high / divisor;
    const Pair rest = a + -TwoProduct(first, divisor);
    return QuickTwoSum(first, rest.high / divisor);
}

// Pi / 2 in three doubles, 159 bits.
constexpr double halfPi1 = 0x1.921fb54442d18p+0;
constexpr double halfPi2 = 0x1.1a62633145c07p-54;
constexpr double halfPi3 = -0x1.f1976b7ed8fbcp-110;

struct Reduced {
    /// -pi/4 to pi/4.
    Pair angle;
    /// How many quarter turns were taken off, modulo 4.
    int quadrant;
};

/// Three exact products are taken off one after the other, so what is left keeps its bits also next
/// to a multiple of a quarter turn, where the first of them cancels all that the argument has.
Reduced ReduceToQuadrant(double radians) {
    const double quarters = std::floor(radians / halfPi1 + 0.5);
    const Pair first = TwoProduct(quarters, halfPi1);
    const Pair second = TwoProduct(quarters, halfPi2);
    const Pair third = TwoProduct(quarters, halfPi3);
    Pair rest = TwoSum(radians, -first.high);
    rest = rest + TwoSum(-first.low, 0);
    rest = rest + -second;
    rest = rest + -third;
    return {rest, static_cast<int>(static_cast<long long>(quarters) & 3)};
}

/// The Taylor series that begins with `term`, the power number `power`: both functions share it.
/// For |x| <= pi/4 the last term is far below the pair's last bit.
Pair Series(Pair squared, Pair term, int power) {
    constexpr int lastPower = 30;
    Pair sum = term;
    for (int n = power; n + 2 <= lastPower; n += 2) {
        term = DividedBy(-(term * squared), (n + 1.0) * (n + 2.0));
        sum = sum + term;
    }
    return sum;
}

double SineOfQuadrant(const Reduced& reduced, int quadrant) {
    const Pair squared = reduced.angle * reduced.angle;
    const bool isCosine = (quadrant & 1) != 0;
    const Pair value =
        isCosine ? Series(squared, {1.0, 0.0}, 0) : Series(squared, reduced.angle, 1);
    return (quadrant & 2) != 0 ? -value.high : value.high;
}

}  // namespace

double ExactSin(double radians) {
    const Reduced reduced = ReduceToQuadrant(radians);
    return SineOfQuadrant(reduced, reduced.quadrant);
}

double ExactCos(double radians) {
    const Reduced reduced = ReduceToQuadrant(radians);
    return SineOfQuadrant(reduced, reduced.quadrant + 1);
}

unsigned char CosineProfile(unsigned char value) {
    const short degrees = TruncateToShort(value * 0.3529411764747405);
    return static_cast<unsigned char>(
        TruncateToShort((1 - ExactCos(DegreesToRadians(degrees))) * 255));
}

short ReliefThreshold(double e) {
    if (e < 4) {
        return 160;
    }
    if (e > 26) {
        return 220;
    }
    return TruncateToShort((e - 4) * 0.045454545454545456 * 60.0 + 160.0);
}

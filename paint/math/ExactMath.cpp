#include "paint/math/ExactMath.h"

#include <array>
#include <cmath>
#include <limits>

#include "paint/math/DoublePair.h"
#include "paint/math/WideFixed.h"

// Each function has two paths. The fast path computes a pair of doubles and a bound of its error;
// where all numbers within that bound round to one double, that is the result. Elsewhere, about
// once in a thousand calls, the exact path computes in wide integers.

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Adding and subtracting it rounds to a whole number, which then also stands in the low bits.
constexpr double roundingShift = 0x1.8p52;

struct Nearest {
    double value;
    std::int32_t number;
};

/// The nearest whole number, for up to 2^31 in size.
Nearest NearestInteger(double value) {
    const double shifted = value + roundingShift;
    return {shifted - roundingShift,
            static_cast<std::int32_t>(std::bit_cast<std::uint64_t>(shifted))};
}

/// A value known to lie within `error` of high + low.
struct Enclosure {
    double high;
    double low;
    double error;

    double Upper() const { return high + (low + error); }
    double Lower() const { return high + (low - error); }
    bool IsDecided() const { return Upper() == Lower(); }
};

// The exact path.

/// The power of two below which the terms of a series end.
constexpr int negligible = -252;

struct WideSinCos {
    WideFixed sin;
    WideFixed cos;
};

/// atan(1 / n) or, with `alternating` off, atanh(1 / n).
WideFixed ArcTangentOfInverse(std::uint32_t n, bool alternating) {
    WideFixed power = WideFixed(1.0) / n;
    WideFixed sum = power;
    for (std::uint32_t k = 3; !power.IsBelow(negligible); k += 2) {
        power = power / n / n;
        if (alternating) {
            power = -power;
        }
        sum = sum + power / k;
    }
    return sum;
}

const WideFixed& HalfPi() {
    // Half of Machin's formula.
    static const WideFixed value = WideFixed(8.0) * ArcTangentOfInverse(5, true) -
                                   WideFixed(2.0) * ArcTangentOfInverse(239, true);
    return value;
}

const WideFixed& LogOf2() {
    static const WideFixed value = WideFixed(2.0) * ArcTangentOfInverse(3, false);
    return value;
}

/// 360 is 2^3 3^2 5, with log 3 = log 2 + 2 atanh(1/5) and log 5 = 2 log 2 + 2 atanh(1/9).
const WideFixed& LogOf360() {
    static const WideFixed value = WideFixed(7.0) * LogOf2() +
                                   WideFixed(4.0) * ArcTangentOfInverse(5, false) +
                                   WideFixed(2.0) * ArcTangentOfInverse(9, false);
    return value;
}

/// The Taylor series in steps of two powers that begins with `term`, the power number `power`.
WideFixed TrigonometricSeries(const WideFixed& squared, WideFixed term, std::uint32_t power) {
    WideFixed sum = term;
    while (!term.IsBelow(negligible)) {
        term = -(term * squared) / ((power + 1) * (power + 2));
        sum = sum + term;
        power += 2;
    }
    return sum;
}

WideSinCos SinCosOf(const WideFixed& angle, double quarters) {
    const WideFixed rest = angle - WideFixed(quarters) * HalfPi();
    const WideFixed squared = rest * rest;
    const WideFixed sin = TrigonometricSeries(squared, rest, 1);
    const WideFixed cos = TrigonometricSeries(squared, WideFixed(1.0), 0);
    switch (static_cast<std::int32_t>(quarters) & 3) {
        case 0:
            return {sin, cos};
        case 1:
            return {cos, -sin};
        case 2:
            return {-sin, -cos};
        default:
            return {-cos, sin};
    }
}

WideSinCos SinCosOf(double radians) {
    constexpr double quartersPerRadian = 0.6366197723675814;
    return SinCosOf(WideFixed(radians), std::floor(radians * quartersPerRadian + 0.5));
}

/// e^x for x from 0 to 1.
WideFixed ExpOf(const WideFixed& x) {
    WideFixed term(1.0);
    WideFixed sum = term;
    for (std::uint32_t n = 1; !term.IsBelow(negligible); ++n) {
        term = term * x / n;
        sum = sum + term;
    }
    return sum;
}

double WidePow360(double y) {
    const WideFixed exponent = WideFixed(y) * LogOf360();
    const double twos = std::floor(exponent.Rounded() / LogOf2().Rounded());
    return ExpOf(exponent - WideFixed(twos) * LogOf2()).Rounded(static_cast<int>(twos));
}

// Tables of the fast path, computed once.

constexpr int pointsPerQuarter = 128;
constexpr int pointsPerTurn = 4 * pointsPerQuarter;
constexpr double pointsPerRadian = 0x1.45f306dc9c883p+6;

/// The sines of all multiples of pi / 256 over a turn, and a quarter turn more for the cosines.
class SineTable {
  public:
    SineTable() {
        const WideFixed spacing = HalfPi() / pointsPerQuarter;
        const WideSinCos step = SinCosOf(spacing, 0);
        WideSinCos point{WideFixed(0.0), WideFixed(1.0)};
        for (int k = 0; k < pointsPerQuarter; ++k) {
            Enter(k, point.sin.RoundedPair());
            point = {point.sin * step.cos + point.cos * step.sin,
                     point.cos * step.cos - point.sin * step.sin};
        }
        Enter(pointsPerQuarter, {1.0, 0.0});
    }

    /// `point` counts multiples of pi / 256, of any sign.
    const DoublePair& Sin(std::int32_t point) const {
        return sines[static_cast<std::size_t>(point & (pointsPerTurn - 1))];
    }
    const DoublePair& Cos(std::int32_t point) const { return (&Sin(point))[pointsPerQuarter]; }

  private:
    /// `k` in the first quarter stands for its mirror images in all others too.
    void Enter(int k, DoublePair sine) {
        const DoublePair negative{-sine.high, -sine.low};
        for (const int turn : {0, pointsPerTurn}) {
            Set(turn + k, sine);
            Set(turn + 2 * pointsPerQuarter - k, sine);
            Set(turn + 2 * pointsPerQuarter + k, k == 0 ? sine : negative);
            Set(turn + pointsPerTurn - k, k == 0 ? sine : negative);
        }
    }
    void Set(int index, DoublePair sine) {
        if (index < static_cast<int>(sines.size())) {
            sines[static_cast<std::size_t>(index)] = sine;
        }
    }

    std::array<DoublePair, pointsPerTurn + pointsPerQuarter> sines;
};

const SineTable& Sines() {
    static const SineTable table;
    return table;
}

constexpr int powersPerOctave = 128;

/// 2^(j / 128).
class PowerTable {
  public:
    PowerTable() {
        const WideFixed step = ExpOf(LogOf2() / powersPerOctave);
        WideFixed power(1.0);
        for (DoublePair& entry : powers) {
            entry = power.RoundedPair();
            power = power * step;
        }
    }

    const DoublePair& operator[](std::int32_t j) const {
        return powers[static_cast<std::size_t>(j & (powersPerOctave - 1))];
    }

  private:
    std::array<DoublePair, powersPerOctave> powers;
};

const PowerTable& Powers() {
    static const PowerTable table;
    return table;
}

// The fast path of sine and cosine.

/// An angle as a point of the table and what is left, at most pi / 512 and a little.
struct ReducedAngle {
    std::int32_t point;
    DoublePair rest;
    /// How far `rest` may be off because of the many turns taken away.
    double error;
};

ReducedAngle Reduce(double radians) {
    // Pi / 256 in parts so short that their products with the number of points are exact.
    constexpr double spacing1 = 0x1.921fb5p-7;
    constexpr double spacing2 = 0x1.110b46p-33;
    constexpr double spacing3 = 0x1.1a6263p-61;
    constexpr double spacing4 = 0x1.8a2e03707344ap-88;
    const Nearest points = NearestInteger(radians * pointsPerRadian);
    const double first = radians - points.value * spacing1;
    const DoublePair second = TwoSum(first, -points.value * spacing2);
    const DoublePair third = TwoSum(second.high, -points.value * spacing3);
    const double low = (second.low + third.low) - points.value * spacing4;
    return {points.number, TwoSum(third.high, low), std::fabs(points.value) * 0x1p-138};
}

/// Series of the rest r that both results use: sin r - r and cos r - 1.
struct SmallAngle {
    double sinTail;
    double cosTail;
};

SmallAngle TailsOf(DoublePair rest) {
    const double r = rest.high;
    const double squared = r * r;
    const double sinTail =
        r * squared * (-1.0 / 6 + squared * (1.0 / 120 - squared * (1.0 / 5040)));
    const double cosTail =
        squared * squared * (1.0 / 24 - squared * (1.0 / 720 - squared * (1.0 / 40320)));
    return {sinTail, cosTail - (0.5 * squared + r * rest.low)};
}

/// sine * cos(rest) + cosine * sin(rest).
Enclosure Rotated(const DoublePair& sine, const DoublePair& cosine, const ReducedAngle& angle,
                  const SmallAngle& tails) {
    const DoublePair product = TwoProduct(cosine.high, angle.rest.high);
    const DoublePair sum = TwoSum(sine.high, product.high);
    const double small =
        (cosine.high * (angle.rest.low + tails.sinTail) + cosine.low * angle.rest.high) +
        (sine.high * tails.cosTail + sine.low);
    const double low = sum.low + (product.low + small);
    return {sum.high, low, std::fabs(sum.high) * 0x1p-64 + angle.error};
}

Enclosure QuickSin(const SineTable& table, const ReducedAngle& angle, const SmallAngle& tails) {
    return Rotated(table.Sin(angle.point), table.Cos(angle.point), angle, tails);
}

Enclosure QuickCos(const SineTable& table, const ReducedAngle& angle, const SmallAngle& tails) {
    const DoublePair& sine = table.Sin(angle.point);
    return Rotated(table.Cos(angle.point), {-sine.high, -sine.low}, angle, tails);
}

bool IsAngle(double radians) {
    return std::fabs(radians) <= exactSinLimit;
}

/// An angle so small that it is its own sine and arcsine, to the nearest double.
constexpr double tinyAngle = 0x1p-27;

// The fast path of the inverse functions: the angle of a point on the unit circle.

struct CirclePoint {
    DoublePair sin;
    DoublePair cos;
};

/// sqrt(1 - x^2), for up to 1 in size.
DoublePair Complement(double x) {
    const DoublePair squared = TwoProduct(x, x);
    const DoublePair difference = TwoSum(1.0, -squared.high);
    const DoublePair rest = TwoSum(difference.high, difference.low - squared.low);
    const double root = std::sqrt(rest.high);
    if (root == 0) {
        return {};
    }
    const DoublePair rootSquared = TwoProduct(root, root);
    const double remainder = (rest.high - rootSquared.high) + (rest.low - rootSquared.low);
    return {root, remainder / (2 * root)};
}

/// The exact path, by Newton's method from a double next to the result. One derivative serves for
/// all steps: each still gains 26 bits or more, next to 1 where it gains least.
WideFixed AsinOf(double sine, double approximation) {
    constexpr int lastStep = -200;
    const WideFixed target(sine);
    const WideFixed derivative(1.0 / Complement(sine).high);
    WideFixed angle(approximation);
    WideFixed step(1.0);
    while (!step.IsBelow(lastStep)) {
        step = (target - TrigonometricSeries(angle * angle, angle, 1)) * derivative;
        angle = angle + step;
    }
    return angle;
}

/// The angle of a point with a sine of 0 or more, to within a thousandth.
double RoughAngle(double sine, double cosine) {
    const double width = std::fabs(cosine);
    const bool isFlat = sine < width;
    const double x = isFlat ? sine : width;
    const double squared = x * x;
    const double arc =
        x * (1 + squared * (1.0 / 6 +
                            squared * (3.0 / 40 + squared * (15.0 / 336 + squared * (1.0 / 26)))));
    constexpr double pi = 3.141592653589793;
    const double angle = isFlat ? arc : pi / 2 - arc;
    return cosine < 0 ? pi - angle : angle;
}

/// The angle, 0 to pi, of a point with a sine of 0 or more: the nearest point of the table, and the
/// arcsine of what is left after turning back by it.
Enclosure QuickAngle(const CirclePoint& point) {
    // Pi / 256; the product of the first part with up to 256 is exact.
    constexpr double spacing1 = 0x1.921fb54442cp-7;
    constexpr double spacing2 = 0x1.18469898cc517p-51;
    const SineTable& table = Sines();
    const Nearest nearest =
        NearestInteger(RoughAngle(point.sin.high, point.cos.high) * pointsPerRadian);
    const DoublePair& sine = table.Sin(nearest.number);
    const DoublePair& cosine = table.Cos(nearest.number);
    const DoublePair minuend = TwoProduct(point.sin.high, cosine.high);
    const DoublePair subtrahend = TwoProduct(point.cos.high, sine.high);
    const DoublePair turned = TwoSum(minuend.high, -subtrahend.high);
    const double turnedLow = (turned.low + (minuend.low - subtrahend.low)) +
                             ((point.sin.high * cosine.low + point.sin.low * cosine.high) -
                              (point.cos.high * sine.low + point.cos.low * sine.high));
    const double u = turned.high;
    const double squared = u * u;
    const double tail =
        u * squared *
        (1.0 / 6 + squared * (3.0 / 40 + squared * (15.0 / 336 + squared * (105.0 / 3456))));
    const DoublePair sum = TwoSum(nearest.value * spacing1, u);
    const double low = sum.low + (nearest.value * spacing2 + (turnedLow + tail));
    return {sum.high, low, std::fabs(sum.high) * 0x1p-65};
}

// The fast path of the power.

/// mantissa * 2^twos
struct QuickPower {
    Enclosure mantissa;
    int twos;
};

/// By the nearest power of 2^(1/128). `y` must lie within -127 to 121.
QuickPower QuickPow360(double y) {
    // The natural logarithms of 360 and of 2^(1/128); the first part of the latter is so short that
    // its products are exact.
    constexpr DoublePair logOf360{0x1.78b5edaefba8cp+2, -0x1.2bef5544aefc5p-53};
    constexpr double logOfStep1 = 0x1.62e42fef8p-8;
    constexpr double logOfStep2 = 0x1.1cf79abc9e3b4p-43;
    constexpr double stepsPerLog = 0x1.71547652b82fep+7;
    const DoublePair exponent = TwoProduct(y, logOf360.high);
    const Nearest steps = NearestInteger(exponent.high * stepsPerLog);
    const DoublePair rest = TwoSum(exponent.high - steps.value * logOfStep1,
                                   (exponent.low + y * logOf360.low) - steps.value * logOfStep2);
    const double r = rest.high;
    const double cubicTail =
        1.0 / 6 + r * (1.0 / 24 + r * (1.0 / 120 + r * (1.0 / 720 + r * (1.0 / 5040))));
    const double tail = r * r * (0.5 + r * cubicTail) + r * rest.low;
    const DoublePair& power = Powers()[steps.number];
    const DoublePair product = TwoProduct(power.high, r);
    const DoublePair sum = TwoSum(power.high, product.high);
    const double low =
        sum.low + (product.low + (power.high * (rest.low + tail) + power.low * (1 + r)));
    return {{sum.high, low, sum.high * 0x1p-66}, steps.number >> 7};
}

}  // namespace

double ExactSin(double radians) {
    if (!IsAngle(radians)) {
        return notANumber;
    }
    if (std::fabs(radians) < tinyAngle) {
        return radians;
    }
    const ReducedAngle angle = Reduce(radians);
    const Enclosure sin = QuickSin(Sines(), angle, TailsOf(angle.rest));
    return sin.IsDecided() ? sin.Upper() : SinCosOf(radians).sin.Rounded();
}

double ExactCos(double radians) {
    if (!IsAngle(radians)) {
        return notANumber;
    }
    const ReducedAngle angle = Reduce(radians);
    const Enclosure cos = QuickCos(Sines(), angle, TailsOf(angle.rest));
    return cos.IsDecided() ? cos.Upper() : SinCosOf(radians).cos.Rounded();
}

SinCos ExactSinCos(double radians) {
    if (!IsAngle(radians)) {
        return {notANumber, notANumber};
    }
    if (std::fabs(radians) < tinyAngle) {
        return {radians, 1.0};
    }
    const SineTable& table = Sines();
    const ReducedAngle angle = Reduce(radians);
    const SmallAngle tails = TailsOf(angle.rest);
    const Enclosure sin = QuickSin(table, angle, tails);
    const Enclosure cos = QuickCos(table, angle, tails);
    if (sin.IsDecided() && cos.IsDecided()) {
        return {sin.Upper(), cos.Upper()};
    }
    const WideSinCos wide = SinCosOf(radians);
    return {wide.sin.Rounded(), wide.cos.Rounded()};
}

double ExactAsin(double sine) {
    const double size = std::fabs(sine);
    if (!(size <= 1)) {
        return notANumber;
    }
    if (size < tinyAngle) {
        return sine;
    }
    const Enclosure quick = QuickAngle({{size, 0}, Complement(size)});
    const double angle = quick.IsDecided() ? quick.Upper() : AsinOf(size, quick.high).Rounded();
    return sine < 0 ? -angle : angle;
}

double ExactAcos(double cosine) {
    if (!(std::fabs(cosine) <= 1)) {
        return notANumber;
    }
    const Enclosure quick = QuickAngle({Complement(cosine), {cosine, 0}});
    if (quick.IsDecided()) {
        return quick.Upper();
    }
    return (HalfPi() - AsinOf(cosine, HalfPi().Rounded() - quick.high)).Rounded();
}

double ExactPow360(double y) {
    if (!(y < 120.6)) {  // 360^120.59 is beyond the largest double
        return y + std::numeric_limits<double>::infinity();
    }
    if (y < -127.0) {
        return 0;
    }
    const QuickPower quick = QuickPow360(y);
    // The mantissa may lie just below 1, so the smallest normal numbers, too, are left to the wide
    // way; and one factor alone may be too large for a double.
    constexpr int smallestNormal = -1022;
    if (quick.mantissa.IsDecided() && quick.twos > smallestNormal) {
        return quick.mantissa.Upper() * 2 * PowerOfTwo(quick.twos - 1);
    }
    return WidePow360(y);
}

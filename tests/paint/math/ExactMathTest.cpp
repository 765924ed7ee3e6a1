#include "paint/math/ExactMath.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "paint/math/EffectMath.h"

#ifdef HAVE_MPFR
#include <mpfr.h>
#endif

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

std::uint64_t BitsOf(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

/// Arguments of many kinds, the same on every system: made of integers and exact steps alone.
class Arguments {
  public:
    /// Evenly spread below `limit` in size.
    double Even(double limit) {
        return static_cast<double>(static_cast<std::int64_t>(generator()) >> 10) * 0x1p-53 * limit;
    }
    /// A number of any size from 2^lowest to 2^highest, all alike.
    double OfAnySize(int lowest, int highest) {
        const auto sizes = static_cast<std::uint64_t>(highest - lowest);
        const int exponent = lowest + static_cast<int>(generator() % sizes);
        const double size = std::ldexp(static_cast<double>(generator() >> 11 | 1ull << 52), -52);
        return std::ldexp((generator() & 1) != 0 ? size : -size, exponent);
    }
    /// Next to a multiple of `unit`, where differences cancel.
    double Near(double unit, int limit) {
        const auto times = static_cast<double>(
            static_cast<std::int64_t>(generator() % static_cast<std::uint64_t>(2 * limit)) - limit);
        const double value = times * unit;
        return (generator() & 1) != 0 ? value : std::nextafter(value, 0.0);
    }

    double Angle(int kind) {
        switch (kind % 4) {
            case 0:
                return Even(8.0);
            case 1:
                return Even(exactSinLimit);
            case 2:
                return OfAnySize(-40, 19);
            default:
                return Near(0.006135923151542565, 1 << 16);  // pi / 512
        }
    }
    double Sine(int kind) {
        switch (kind % 4) {
            case 0:
                return Even(1.0);
            case 1:
                return OfAnySize(-60, -1);
            case 2:
                return 1 - std::fabs(OfAnySize(-53, -2));
            default:
                return -1 + std::fabs(OfAnySize(-53, -2));
        }
    }
    double Power(int kind) {
        switch (kind % 4) {
            case 0:
                return Even(8.0);
            case 1:
                return Even(127.5);
            case 2:
                return OfAnySize(-60, 5);
            default:
                return -121 - std::fabs(Even(6.0));  // the results are subnormal
        }
    }

  private:
    std::mt19937_64 generator{20240229};
};

/// Folds results into one number.
class Hash {
  public:
    void Add(double value) { state = (state ^ BitsOf(value)) * 0x100000001B3u; }
    std::uint64_t Value() const { return state; }

  private:
    std::uint64_t state = 0xCBF29CE484222325u;
};

constexpr int samples = 40000;

// The numbers are the same in every build: nothing here depends on the system's library. The tests
// below show that they are right, where there is the arbitrary-precision library.

TEST(ExactMathTest, EveryWholeDegreeHasTheSameSineOnEverySystem) {
    Hash hash;
    for (int degrees = -32768; degrees <= 32767; ++degrees) {
        const double radians = DegreesToRadians(static_cast<short>(degrees));
        hash.Add(ExactSin(radians));
        hash.Add(ExactCos(radians));
    }
    EXPECT_EQ(hash.Value(), 0x7C1A3926A74766EFu);
}

TEST(ExactMathTest, AllFunctionsGiveTheSameOnEverySystem) {
    Arguments arguments;
    Hash hash;
    for (int i = 0; i < samples; ++i) {
        const double angle = arguments.Angle(i);
        hash.Add(ExactSin(angle));
        hash.Add(ExactCos(angle));
        const double sine = arguments.Sine(i);
        hash.Add(ExactAsin(sine));
        hash.Add(ExactAcos(sine));
        hash.Add(ExactPow360(arguments.Power(i)));
    }
    EXPECT_EQ(hash.Value(), 0x66F9A015D2D72E03u);
}

TEST(ExactMathTest, BothAtOnceAreTheSameAsEach) {
    Arguments arguments;
    for (int i = 0; i < samples; ++i) {
        const double angle = arguments.Angle(i);
        const SinCos both = ExactSinCos(angle);
        ASSERT_EQ(BitsOf(both.sin), BitsOf(ExactSin(angle))) << angle;
        ASSERT_EQ(BitsOf(both.cos), BitsOf(ExactCos(angle))) << angle;
    }
}

TEST(ExactMathTest, MirroredArgumentsGiveMirroredResults) {
    Arguments arguments;
    for (int i = 0; i < samples; ++i) {
        const double angle = arguments.Angle(i);
        ASSERT_EQ(BitsOf(ExactSin(-angle)), BitsOf(-ExactSin(angle))) << angle;
        ASSERT_EQ(BitsOf(ExactCos(-angle)), BitsOf(ExactCos(angle))) << angle;
        const double sine = arguments.Sine(i);
        ASSERT_EQ(BitsOf(ExactAsin(-sine)), BitsOf(-ExactAsin(sine))) << sine;
    }
}

TEST(ExactMathTest, SineAndCosineAtTheirLandmarks) {
    EXPECT_EQ(BitsOf(ExactSin(0.0)), BitsOf(0.0));
    EXPECT_EQ(BitsOf(ExactSin(-0.0)), BitsOf(-0.0));
    EXPECT_EQ(ExactSin(smallest), smallest);
    EXPECT_EQ(ExactCos(0.0), 1.0);
    EXPECT_EQ(ExactCos(-smallest), 1.0);
    EXPECT_EQ(ExactSin(1.5707963267948966), 1.0);
    EXPECT_EQ(ExactCos(1.5707963267948966), 6.123233995736766e-17);
    EXPECT_EQ(ExactSin(3.141592653589793), 1.2246467991473532e-16);
    EXPECT_EQ(ExactCos(3.141592653589793), -1.0);
    EXPECT_TRUE(std::isfinite(ExactSin(exactSinLimit)));
    EXPECT_TRUE(std::isfinite(ExactCos(-exactSinLimit)));
}

TEST(ExactMathTest, SineAndCosineHaveADomain) {
    for (const double outside :
         {std::nextafter(exactSinLimit, infinity), -1e300, infinity, -infinity, notANumber}) {
        EXPECT_TRUE(std::isnan(ExactSin(outside))) << outside;
        EXPECT_TRUE(std::isnan(ExactCos(outside))) << outside;
        EXPECT_TRUE(std::isnan(ExactSinCos(outside).sin)) << outside;
        EXPECT_TRUE(std::isnan(ExactSinCos(outside).cos)) << outside;
    }
}

TEST(ExactMathTest, TheInversesAtTheirLandmarks) {
    EXPECT_EQ(BitsOf(ExactAsin(0.0)), BitsOf(0.0));
    EXPECT_EQ(BitsOf(ExactAsin(-0.0)), BitsOf(-0.0));
    EXPECT_EQ(ExactAsin(smallest), smallest);
    EXPECT_EQ(ExactAsin(1.0), 1.5707963267948966);
    EXPECT_EQ(ExactAsin(-1.0), -1.5707963267948966);
    EXPECT_EQ(BitsOf(ExactAcos(1.0)), BitsOf(0.0));
    EXPECT_EQ(ExactAcos(-1.0), 3.141592653589793);
    EXPECT_EQ(ExactAcos(0.0), 1.5707963267948966);
    EXPECT_EQ(ExactAcos(smallest), 1.5707963267948966);
    EXPECT_EQ(ExactAcos(0.5), 1.0471975511965979);
}

TEST(ExactMathTest, TheInversesHaveADomain) {
    for (const double outside :
         {std::nextafter(1.0, 2.0), std::nextafter(-1.0, -2.0), infinity, -infinity, notANumber}) {
        EXPECT_TRUE(std::isnan(ExactAsin(outside))) << outside;
        EXPECT_TRUE(std::isnan(ExactAcos(outside))) << outside;
    }
}

TEST(ExactMathTest, WholePowersThatADoubleHoldsAreExact) {
    double power = 1.0;
    for (int n = 0; n <= 9; ++n) {
        EXPECT_EQ(ExactPow360(n), power) << n;
        power *= 360.0;
    }
}

TEST(ExactMathTest, PowersBeyondTheDoublesAreInfinityAndZero) {
    EXPECT_EQ(ExactPow360(120.6), infinity);
    EXPECT_EQ(ExactPow360(1e300), infinity);
    EXPECT_EQ(ExactPow360(infinity), infinity);
    EXPECT_EQ(ExactPow360(-126.6), 0.0);
    EXPECT_EQ(ExactPow360(-1e300), 0.0);
    EXPECT_EQ(ExactPow360(-infinity), 0.0);
    EXPECT_EQ(ExactPow360(smallest), 1.0);
    EXPECT_EQ(ExactPow360(-0.0), 1.0);
    EXPECT_TRUE(std::isnan(ExactPow360(notANumber)));
    EXPECT_TRUE(std::isfinite(ExactPow360(120.58)));
    EXPECT_GT(ExactPow360(-126.5), 0.0);
}

#ifdef HAVE_MPFR

/// The correctly rounded value, from a library of arbitrary precision.
class Judge {
  public:
    using Function = int (*)(mpfr_t, const mpfr_t, mpfr_rnd_t);

    Judge() {
        mpfr_init2(argument, doubleBits);
        mpfr_init2(value, doubleBits);
    }
    Judge(const Judge&) = delete;
    Judge& operator=(const Judge&) = delete;
    ~Judge() {
        mpfr_clear(argument);
        mpfr_clear(value);
    }

    double Of(Function function, double x) {
        mpfr_set_d(argument, x, MPFR_RNDN);
        function(value, argument, MPFR_RNDN);
        return mpfr_get_d(value, MPFR_RNDN);
    }

    /// With the range of doubles, so that subnormal results are rounded once.
    double Pow360(double y) {
        const mpfr_exp_t lowest = mpfr_get_emin();
        const mpfr_exp_t highest = mpfr_get_emax();
        mpfr_set_emin(-1073);
        mpfr_set_emax(1024);
        mpfr_set_d(argument, y, MPFR_RNDN);
        const int inexact = mpfr_ui_pow(value, 360, argument, MPFR_RNDN);
        mpfr_subnormalize(value, inexact, MPFR_RNDN);
        const double result = mpfr_get_d(value, MPFR_RNDN);
        mpfr_set_emin(lowest);
        mpfr_set_emax(highest);
        return result;
    }

  private:
    static constexpr int doubleBits = 53;

    mpfr_t argument;
    mpfr_t value;
};

TEST(ExactMathTest, SineAndCosineAreCorrectlyRoundedForEveryWholeDegree) {
    Judge judge;
    for (int degrees = -32768; degrees <= 32767; ++degrees) {
        const double radians = DegreesToRadians(static_cast<short>(degrees));
        ASSERT_EQ(ExactSin(radians), judge.Of(mpfr_sin, radians)) << degrees;
        ASSERT_EQ(ExactCos(radians), judge.Of(mpfr_cos, radians)) << degrees;
    }
}

TEST(ExactMathTest, AllFunctionsAreCorrectlyRounded) {
    Arguments arguments;
    Judge judge;
    for (int i = 0; i < samples; ++i) {
        const double angle = arguments.Angle(i);
        ASSERT_EQ(ExactSin(angle), judge.Of(mpfr_sin, angle)) << angle;
        ASSERT_EQ(ExactCos(angle), judge.Of(mpfr_cos, angle)) << angle;
        const double sine = arguments.Sine(i);
        ASSERT_EQ(ExactAsin(sine), judge.Of(mpfr_asin, sine)) << sine;
        ASSERT_EQ(ExactAcos(sine), judge.Of(mpfr_acos, sine)) << sine;
        const double power = arguments.Power(i);
        ASSERT_EQ(ExactPow360(power), judge.Pow360(power)) << power;
    }
}

#else

TEST(ExactMathTest, AllFunctionsAreNextToTheLibrarys) {
    Arguments arguments;
    for (int i = 0; i < samples; ++i) {
        const double angle = arguments.Even(8.0);
        ASSERT_NEAR(ExactSin(angle), std::sin(angle), 4e-16) << angle;
        ASSERT_NEAR(ExactCos(angle), std::cos(angle), 4e-16) << angle;
        const double sine = arguments.Sine(i);
        ASSERT_NEAR(ExactAsin(sine), std::asin(sine), 4e-16) << sine;
        ASSERT_NEAR(ExactAcos(sine), std::acos(sine), 1e-15) << sine;
        const double power = arguments.Even(100.0);
        ASSERT_NEAR(ExactPow360(power) / std::pow(360.0, power), 1.0, 1e-12) << power;
    }
}

#endif

}  // namespace

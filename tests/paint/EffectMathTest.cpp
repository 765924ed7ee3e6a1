#include "paint/EffectMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#ifdef HAVE_MPFR
#include <mpfr.h>
#endif

namespace {

std::uint64_t BitsOf(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// One number for the sines and cosines of all whole degrees that 16 bits hold.
std::uint64_t HashOfAllDegrees() {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (int degrees = -32768; degrees <= 32767; ++degrees) {
        const double radians = DegreesToRadians(static_cast<short>(degrees));
        for (const double value : {ExactSin(radians), ExactCos(radians)}) {
            hash = (hash ^ BitsOf(value)) * 0x100000001B3u;
        }
    }
    return hash;
}

TEST(EffectMathTest, DegreesBecomeRadiansInTheOrderOfTheProduct) {
    EXPECT_EQ(DegreesToRadians(0), 0.0);
    EXPECT_EQ(DegreesToRadians(180), 180 * 3.141592653589793 * 0.005555555555555556);
    EXPECT_EQ(DegreesToRadians(-1), -3.141592653589793 * 0.005555555555555556);
}

// The same number in every build: the sines do not depend on the system's library. That it is
// the right number is what the test below shows where the arbitrary-precision library is.
TEST(EffectMathTest, EveryWholeDegreeHasTheSameSineOnEverySystem) {
    EXPECT_EQ(HashOfAllDegrees(), 0x7C1A3926A74766EFu);
}

TEST(EffectMathTest, SineAndCosineAreCorrectlyRoundedForEveryWholeDegree) {
#ifdef HAVE_MPFR
    mpfr_t argument;
    mpfr_t value;
    mpfr_init2(argument, 53);
    mpfr_init2(value, 53);
    for (int degrees = -32768; degrees <= 32767; ++degrees) {
        const double radians = DegreesToRadians(static_cast<short>(degrees));
        mpfr_set_d(argument, radians, MPFR_RNDN);
        mpfr_sin(value, argument, MPFR_RNDN);
        EXPECT_EQ(ExactSin(radians), mpfr_get_d(value, MPFR_RNDN)) << degrees;
        mpfr_cos(value, argument, MPFR_RNDN);
        EXPECT_EQ(ExactCos(radians), mpfr_get_d(value, MPFR_RNDN)) << degrees;
    }
    mpfr_clear(argument);
    mpfr_clear(value);
#else
    // The library's own are right to within one unit in the last place or so here.
    for (int degrees = -720; degrees <= 720; ++degrees) {
        const double radians = DegreesToRadians(static_cast<short>(degrees));
        EXPECT_NEAR(ExactSin(radians), std::sin(radians), 4e-16) << degrees;
        EXPECT_NEAR(ExactCos(radians), std::cos(radians), 4e-16) << degrees;
    }
#endif
}

TEST(EffectMathTest, TheProfileRunsAlongAQuarterOfACosine) {
    EXPECT_EQ(CosineProfile(0), 0);
    EXPECT_EQ(CosineProfile(128), 74);
    EXPECT_EQ(CosineProfile(255), 254) << "255 is flat ground";
    for (int value = 0; value < 255; ++value) {
        EXPECT_LE(CosineProfile(static_cast<unsigned char>(value)),
                  CosineProfile(static_cast<unsigned char>(value + 1)));
    }
}

TEST(EffectMathTest, TheThresholdIsFlatOutsideItsSlope) {
    EXPECT_EQ(ReliefThreshold(-100), 160);
    EXPECT_EQ(ReliefThreshold(3.9), 160);
    EXPECT_EQ(ReliefThreshold(4), 160);
    EXPECT_EQ(ReliefThreshold(15), 190);
    EXPECT_EQ(ReliefThreshold(26), 220);
    EXPECT_EQ(ReliefThreshold(40), 220);
    EXPECT_EQ(ReliefThreshold(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace

#include "paint/math/WideFixed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

TEST(WideFixedTest, HoldsDoublesOfEitherSign) {
    for (const double value : {0.0, 1.0, -1.0, 0.1, -1e-20, 123456.789, -2147483647.0}) {
        EXPECT_EQ(WideFixed(value).Rounded(), value);
        EXPECT_EQ(WideFixed(value).IsNegative(), value < 0);
    }
}

TEST(WideFixedTest, AddsAcrossAllWords) {
    const WideFixed tiny(0x1p-256);
    EXPECT_EQ((WideFixed(1.0) - tiny + tiny).Rounded(), 1.0);
    EXPECT_EQ((WideFixed(1.0) + tiny - WideFixed(1.0)).Rounded(), 0x1p-256);
    EXPECT_EQ((tiny - tiny - tiny).Rounded(), -0x1p-256);
}

TEST(WideFixedTest, MultipliesExactlyWhereThereIsRoom) {
    EXPECT_EQ((WideFixed(-3.5) * WideFixed(0x1p-100)).Rounded(), -0x1.cp-99);
    EXPECT_EQ((WideFixed(-65535.0) * WideFixed(-32768.0)).Rounded(), 65535.0 * 32768.0);
    EXPECT_EQ((WideFixed(0x1p-200) * WideFixed(0x1p-57)).Rounded(), 0.0) << "below the last bit";
}

TEST(WideFixedTest, DividesToTheLastBit) {
    const WideFixed third = WideFixed(1.0) / 3;
    EXPECT_EQ(third.Rounded(), 1.0 / 3);
    EXPECT_EQ((WideFixed(1.0) - third * WideFixed(3.0)).Rounded(), 0x1p-256);
    EXPECT_EQ((WideFixed(-1.0) / 3).Rounded(), -1.0 / 3);
}

TEST(WideFixedTest, RoundsToTheNearestAndTiesToEven) {
    const WideFixed one(1.0);
    const WideFixed half(0x1p-53);
    const WideFixed tiny(0x1p-250);
    EXPECT_EQ((one + half).Rounded(), 1.0);
    EXPECT_EQ((one + half + tiny).Rounded(), 1.0 + 0x1p-52);
    EXPECT_EQ((one + half + half + half).Rounded(), 1.0 + 0x1p-51);
    EXPECT_EQ((-one - half - tiny).Rounded(), -1.0 - 0x1p-52);
    EXPECT_EQ((WideFixed(2.0) - tiny).Rounded(), 2.0) << "the mantissa overflows";
}

TEST(WideFixedTest, RoundsSubnormalResultsOnce) {
    constexpr double smallest = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(WideFixed(1.0).Rounded(-1074), smallest);
    EXPECT_EQ(WideFixed(1.0).Rounded(-1075), 0.0) << "a tie";
    EXPECT_EQ((WideFixed(1.0) + WideFixed(0x1p-200)).Rounded(-1075), smallest);
    EXPECT_EQ(WideFixed(1.5).Rounded(-1074), 2 * smallest) << "a tie";
    EXPECT_EQ(WideFixed(1.0).Rounded(-1200), 0.0);
    EXPECT_EQ(WideFixed(1.0).Rounded(1023), 0x1p1023);
}

TEST(WideFixedTest, KnowsItsSize) {
    EXPECT_TRUE(WideFixed(0.0).IsBelow(-256));
    EXPECT_TRUE(WideFixed(-0.49).IsBelow(-1));
    EXPECT_FALSE(WideFixed(-0.5).IsBelow(-1));
}

TEST(WideFixedTest, APairHoldsTwiceTheBits) {
    const WideFixed third = WideFixed(1.0) / 3;
    const DoublePair pair = third.RoundedPair();
    EXPECT_EQ(pair.high, 1.0 / 3);
    EXPECT_LT(std::fabs((third - WideFixed(pair.high) - WideFixed(pair.low)).Rounded()), 0x1p-107);
}

}  // namespace

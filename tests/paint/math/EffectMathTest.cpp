#include "paint/math/EffectMath.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(EffectMathTest, DegreesBecomeRadiansInTheOrderOfTheProduct) {
    EXPECT_EQ(DegreesToRadians(0), 0.0);
    EXPECT_EQ(DegreesToRadians(180), 180 * 3.141592653589793 * 0.005555555555555556);
    EXPECT_EQ(DegreesToRadians(-1), -3.141592653589793 * 0.005555555555555556);
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

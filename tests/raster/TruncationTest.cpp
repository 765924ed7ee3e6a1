#include "raster/Truncation.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(TruncationTest, TruncatesTowardsZero) {
    EXPECT_EQ(TruncateToShort(2.9), 2);
    EXPECT_EQ(TruncateToShort(-2.9), -2);
    EXPECT_EQ(TruncateToShort(-0.5), 0);
    EXPECT_EQ(TruncateToShort(32767.999), 32767);
}

TEST(TruncationTest, KeepsTheLowSixteenBits) {
    EXPECT_EQ(TruncateToShort(32768.0), -32768);
    EXPECT_EQ(TruncateToShort(65537.5), 1);
    EXPECT_EQ(TruncateToShort(-32769.0), 32767);
    EXPECT_EQ(TruncateToShort(2147483647.5), -1);
    EXPECT_EQ(TruncateToShort(2147483648.0), 0);
    EXPECT_EQ(TruncateToShort(4294967298.0), 2);
    EXPECT_EQ(TruncateToShort(-2147483648.5), 0);
    EXPECT_EQ(TruncateToShort(-2147483650.0), -2);
    EXPECT_EQ(TruncateToShort(9007199254740991.0), -1);
}

TEST(TruncationTest, WhatDoesNotFitGivesZero) {
    EXPECT_EQ(TruncateToShort(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(TruncateToShort(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(TruncateToShort(-std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(TruncateToShort(1e30), 0);
    EXPECT_EQ(TruncateToShort(9223372036854775808.0), 0);
}

}  // namespace

#include "raster/Torus.h"

#include <gtest/gtest.h>

namespace {

TEST(TorusTest, WhatLeavesOnOneSideComesInOnTheOther) {
    EXPECT_EQ(Wrap(-1, 10), 9);
    EXPECT_EQ(Wrap(10, 10), 0);
    EXPECT_EQ(Wrap(-10, 10), 0);
    EXPECT_EQ(Wrap(-11, 10), 9);
    EXPECT_EQ(Wrap(25, 10), 5);
}

TEST(TorusTest, AgreesWithFlooredDivisionForEverySixteenBitCoordinate) {
    for (const int size : {1, 2, 7, 349, 511, 512, 32767}) {
        int expected = ((32768 / size + 1) * size - 32768) % size;
        for (int coordinate = -32768; coordinate <= 32767; ++coordinate) {
            ASSERT_EQ(Wrap(coordinate, static_cast<short>(size)), expected)
                << coordinate << " " << size;
            expected = expected + 1 == size ? 0 : expected + 1;
        }
    }
}

}  // namespace

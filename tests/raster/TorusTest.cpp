#include "raster/Torus.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>

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

TEST(TorusTest, OneTileOutsideNeedsNoDivision) {
    for (const short size : std::initializer_list<short>{1, 2, 7, 512}) {
        for (int coordinate = -size; coordinate < 2 * size; ++coordinate) {
            ASSERT_EQ(WrapOnce(coordinate, size), Wrap(coordinate, size))
                << coordinate << " " << size;
        }
    }
}

TEST(TorusTest, AWalkIsWhereTheRemainderSays) {
    std::mt19937 generator(1);
    for (const short size : std::initializer_list<short>{1, 2, 7, 349, 512, 32767}) {
        WrappedWalk walk(size);
        short coordinate = 0;
        for (int step = 0; step < 20000; ++step) {
            // Mostly small steps, and now and then one to anywhere.
            const int move = static_cast<int>(generator() % 7) - 3;
            coordinate = static_cast<short>(step % 1000 != 999 ? coordinate + move
                                                               : static_cast<int>(generator()));
            ASSERT_EQ(walk.Place(coordinate), Wrap(coordinate, size)) << coordinate << " " << size;
        }
    }
}

}  // namespace

#include "paint/math/Random.h"

#include "tests/support/CoreTest.h"

namespace {

class RandomTest : public CoreTest {
  protected:
    /// A state from which the next Rand() is `value`.
    static void MakeNext(std::uint32_t value) {
        // The multiplier is odd, so the step can be taken back.
        std::uint32_t inverse = 1;
        for (int i = 0; i < 5; ++i) {
            inverse *= 2 - 1103515245u * inverse;
        }
        SetSeed(((value << 16) - 12345u) * inverse);
    }
};

TEST_F(RandomTest, StepsTheClassicGenerator) {
    SetSeed(1);
    EXPECT_EQ(Rand(), 16838);
    EXPECT_EQ(Rand(), 5758);
    EXPECT_EQ(Rand(), 10113);
    EXPECT_EQ(Rand(), 17515);
}

TEST_F(RandomTest, IsSeededByTheClocksSecond) {
    Log().clock = 123456789;
    SeedRandom();
    EXPECT_EQ(Seed(), 123456789u);
}

TEST_F(RandomTest, StaysWithinFifteenBits) {
    SetSeed(99);
    for (int i = 0; i < 100000; ++i) {
        const std::int32_t value = Rand();
        ASSERT_GE(value, 0);
        ASSERT_LE(value, 32767);
    }
}

TEST_F(RandomTest, TheUpperEndComesOnlyWithTheLargestDraw) {
    for (const auto& [lo, hi] : {std::pair{0, 65535}, {0, 8}, {0, 512}, {25000, 65535}}) {
        MakeNext(32767);
        EXPECT_EQ(RandomRange(lo, hi), hi);
        MakeNext(32766);
        EXPECT_LT(RandomRange(lo, hi), hi);
        MakeNext(0);
        EXPECT_EQ(RandomRange(lo, hi), lo);
    }
}

TEST_F(RandomTest, RangesFollowTheirFormulaForEveryDraw) {
    int counts[9] = {};
    for (std::uint32_t draw = 0; draw <= 32767; ++draw) {
        MakeNext(draw);
        ASSERT_EQ(RandomRange(1000, 52000), static_cast<int>(draw * 51000u / 32767u) + 1000);
        MakeNext(draw);
        ++counts[RandomRange(0, 8)];
    }
    EXPECT_EQ(counts[8], 1);
    for (int value = 0; value < 8; ++value) {
        EXPECT_NEAR(counts[value], 4096, 1);
    }
}

TEST_F(RandomTest, TheLowSixteenBitsMakeTheDifference) {
    // 6 - 10 is 0xFFFFFFFC, whose product with 32767 wraps to 0xFFFE0004; a 32767th of that is
    // 131072.
    MakeNext(32767);
    EXPECT_EQ(RandomRange(10, 6), 131082);
    MakeNext(32767);
    EXPECT_EQ(RandomRange(0, -1), 65535);
    MakeNext(0);
    EXPECT_EQ(RandomRange(-5, 5), -5);
}

TEST_F(RandomTest, SpreadsReachOneBeyondTheirNumber) {
    for (const int n : {0, 3, 4, 14, 16381}) {
        MakeNext(0);
        EXPECT_EQ(RandomSpread(static_cast<short>(n)), -(n + 1));
        MakeNext(32766);
        EXPECT_EQ(RandomSpread(static_cast<short>(n)), n + 1);
    }
    MakeNext(32767);
    EXPECT_EQ(RandomSpread(3), 4);
    MakeNext(32767);
    EXPECT_EQ(RandomSpread(16381), 16382);
    MakeNext(32767);
    EXPECT_EQ(RandomSpread(16382), 16384) << "one more from here on";
    MakeNext(32767);
    EXPECT_EQ(RandomSpread(16384), 16386);
}

TEST_F(RandomTest, SpreadsFollowTheirFormulaForEveryDraw) {
    for (std::uint32_t draw = 0; draw <= 32767; ++draw) {
        for (const int n : {4, 14, 16384, 32767, -6}) {
            MakeNext(draw);
            const int expected = (n + 1) * static_cast<int>(draw) / 16383 - n - 1;
            ASSERT_EQ(RandomSpread(static_cast<short>(n)), static_cast<short>(expected));
        }
    }
}

TEST_F(RandomTest, ManyDrawsAtOnceComeToTheSameState) {
    for (const std::uint32_t start : {0u, 1u, 0x80000000u, 3141592653u}) {
        RandomGenerator generator(start);
        for (std::uint32_t count = 0; count < 1000; ++count) {
            ASSERT_EQ(DrawSteps(count).From(start), generator.State());
            ASSERT_EQ(DrawSteps(-count).From(generator.State()), start);
            generator.Rand();
        }
    }
}

}  // namespace

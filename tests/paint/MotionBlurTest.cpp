#include <initializer_list>
#include <random>
#include <vector>

#include "paint/PaintClass.h"
#include "paint/records/FilterParams.h"
#include "plain/PlainBlur.h"
#include "tests/support/BusyCursor.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/Shifting.h"

namespace {

/// Fills `rows` rows from row `first` on, around the torus, with random multiples of
/// 1 + .. + `length`: in trails of this length the last bits of doubles decide every channel.
void FillWithMultiples(PaintClass& pic, short length, short first, short rows, unsigned seed) {
    std::mt19937 generator(seed);
    const auto divisor = static_cast<unsigned>(length * (length + 1) / 2);
    const auto multiple = [&] {
        return static_cast<unsigned char>(generator() % (255 / divisor + 1) * divisor);
    };
    for (short i = 0; i < rows; ++i) {
        const auto y = static_cast<short>((first + i) % pic.grY);
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetRGB(x, y, multiple(), multiple(), multiple());
        }
    }
}

/// One colour in most places.
void FillWithSpots(PaintClass& pic, unsigned seed) {
    std::mt19937 generator(seed);
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            if (generator() % 32 != 0) {
                pic.SetRGB(x, y, 8, 120, 249);
            }
        }
    }
}

class MotionBlurTest : public CoreTest {
  protected:
    static void ExpectSameAsPlain(short width, short height, short length, short direction,
                                  unsigned seed) {
        PaintClass pic(width, height);
        FillWithNoise(pic, seed);
        ExpectSameAsPlain(pic, length, direction);
    }

    /// Blurs `fast`.
    static void ExpectSameAsPlain(PaintClass& fast, short length, short direction) {
        PaintClass plain(fast.grX, fast.grY);
        CopyShifted(fast, plain, 0, 0);
        ASSERT_TRUE(fast.MotionBlur(length, direction));
        ASSERT_TRUE(PlainMotionBlur(plain, length, direction));
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain))
            << fast.grX << " by " << fast.grY << ", " << length << " towards " << direction;
        ASSERT_EQ(fast.changed, length >= 1);
    }
};

TEST_F(MotionBlurTest, TheSameAsThePlainLoopForAnySizeAndTrail) {
    std::mt19937 generator(10);
    WithBothCompilations([&] {
        for (int i = 0; i < 1000; ++i) {
            const auto width = static_cast<short>(generator() % 40 + 1);
            const auto height = static_cast<short>(generator() % 40 + 1);
            const auto length = static_cast<short>(generator() % 26);
            const auto direction = static_cast<short>(generator() % 8);
            ExpectSameAsPlain(width, height, length, direction, static_cast<unsigned>(generator()));
        }
        for (short direction = 0; direction < 8; ++direction) {
            ExpectSameAsPlain(1, 1, 25, direction, 1);
            ExpectSameAsPlain(1, 512, 7, direction, 2);
            ExpectSameAsPlain(511, 2, 25, direction, 3);
        }
    });
}

TEST_F(MotionBlurTest, TheSameAsThePlainLoopAtTheLargestTile) {
    ExpectSameAsPlain(512, 511, 5, 7, 4);
}

TEST_F(MotionBlurTest, ShortTrailsAreTheSameWhereverDoublesDecide) {
    std::mt19937 generator(12);
    const auto random = [&](unsigned count) { return static_cast<short>(generator() % count); };
    WithBothCompilations([&] {
        for (int i = 0; i < 400; ++i) {
            PaintClass pic(static_cast<short>(random(40) + 1), static_cast<short>(random(40) + 1));
            const auto length = static_cast<short>(random(5) + 2);
            const auto seed = static_cast<unsigned>(i);
            FillWithNoise(pic, seed);
            if (i % 2 == 0) {
                FillWithMultiples(pic, length, random(40), random(40), seed);
            } else {
                FillWithSpots(pic, seed);
            }
            ExpectSameAsPlain(pic, length, random(8));
        }
    });
}

TEST_F(MotionBlurTest, FlatTrailsOfAnyValueAreTheSameAsThePlainLoops) {
    WithBothCompilations([] {
        for (short length = 2; length <= 6; ++length) {
            PaintClass pic(256, 3);
            for (short y = 0; y < pic.grY; ++y) {
                for (short x = 0; x < pic.grX; ++x) {
                    const auto value = static_cast<unsigned char>(x);
                    pic.SetRGB(x, y, value, value ^ 0xFF, value ^ 0x55);
                }
            }
            ExpectSameAsPlain(pic, length, 4);
        }
    });
}

TEST_F(MotionBlurTest, TrailsAndDirectionsBeyondTheDialogsAreTheSameAsThePlainLoopToo) {
    for (const short direction : std::initializer_list<short>{-32768, -1, 8, 32767, 3}) {
        ExpectSameAsPlain(7, 5, 25, direction, 5);
    }
    ExpectSameAsPlain(3, 2, 8191, 5, 6);
    ExpectSameAsPlain(2, 3, 32767, 1, 7);
    ExpectSameAsPlain(7, 5, -32768, 1, 8);
}

TEST_F(MotionBlurTest, ALengthBelowOneChangesNothing) {
    PaintClass pic(9, 9);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    // The run step passes this for the amounts 1 to 3.
    for (const int amount : {1, 2, 3}) {
        EXPECT_TRUE(pic.MotionBlur(static_cast<short>(amount / 4), 1));
    }
    EXPECT_TRUE(pic.MotionBlur(-5, 1));
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_FALSE(pic.changed);
}

TEST_F(MotionBlurTest, ASingleSampleIsThePixelItself) {
    PaintClass pic(9, 9);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    EXPECT_TRUE(pic.MotionBlur(4 / 4, 1));
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_TRUE(pic.changed);
}

TEST_F(MotionBlurTest, TheStreakTrailsTowardsTheButton) {
    constexpr int steps[8][2] = {{0, -1}, {1, -1}, {1, 0},  {1, 1},
                                 {0, 1},  {-1, 1}, {-1, 0}, {-1, -1}};
    for (short direction = 0; direction < 8; ++direction) {
        PaintClass pic(9, 9);
        pic.FillColor({0, 0, 0});
        pic.SetRGB(4, 4, 255, 255, 255);
        ASSERT_TRUE(pic.MotionBlur(3, direction));
        // A pixel reads towards the button, so the white one is seen from the other side, by 3 / 6,
        // 2 / 6 and 1 / 6.
        const int dx = steps[direction][0];
        const int dy = steps[direction][1];
        const auto red = [&](int away) {
            return pic.GetPixelWrapped(static_cast<short>(4 - away * dx),
                                       static_cast<short>(4 - away * dy)) &
                   0xFF;
        };
        EXPECT_EQ(red(0), 127u);
        EXPECT_EQ(red(1), 85u);
        EXPECT_EQ(red(2), 42u);
        EXPECT_EQ(red(-1), 0u);
        EXPECT_EQ(red(3), 0u);
    }
}

TEST_F(MotionBlurTest, TheAlphaByteIsTheLastSamples) {
    PaintClass pic(5, 1);
    for (short x = 0; x < 5; ++x) {
        pic.SetAlpha(x, 0, static_cast<unsigned char>(10 * x));
    }
    ASSERT_TRUE(pic.MotionBlur(3, 2));
    for (short x = 0; x < 5; ++x) {
        EXPECT_EQ(pic.GetAlpha(x, 0), 10 * ((x + 2) % 5));
    }
}

TEST_F(MotionBlurTest, EachWrapCountsAsAFurtherSample) {
    PaintClass pic(2, 1);
    pic.SetRGB(0, 0, 0, 0, 0);
    pic.SetRGB(1, 0, 255, 255, 255);
    ASSERT_TRUE(pic.MotionBlur(4, 2));
    // 4, 3, 2 and 1 tenths, of which the second and the fourth are the neighbour's.
    EXPECT_EQ(pic.GetPixel(0, 0) & 0xFF, 102u);
    EXPECT_EQ(pic.GetPixel(1, 0) & 0xFF, 153u);
}

TEST_F(MotionBlurTest, IsTheSameWhereverTheTileBegins) {
    std::mt19937 generator(11);
    for (int i = 0; i < 40; ++i) {
        const auto width = static_cast<short>(generator() % 40 + 1);
        const auto height = static_cast<short>(generator() % 40 + 1);
        const auto direction = static_cast<short>(generator() % 8);
        PaintClass pic(width, height);
        PaintClass shifted(width, height);
        PaintClass back(width, height);
        FillWithNoise(pic, static_cast<unsigned>(generator()));
        CopyShifted(pic, shifted, 13, 7);
        ASSERT_TRUE(pic.MotionBlur(25, direction));
        ASSERT_TRUE(shifted.MotionBlur(25, direction));
        CopyShifted(shifted, back, -13, -7);
        ASSERT_EQ(PixelsOf(back), PixelsOf(pic));
    }
}

TEST_F(MotionBlurTest, WithoutMemoryNothingChanges) {
    PaintClass pic(20, 20);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    memory.FailAllocation(1);
    EXPECT_FALSE(pic.MotionBlur(5, 1));
    EXPECT_EQ(PixelsOf(pic), before);
    // Trails of 5 pixels need fewer blocks than those of 7, and than those along the rows.
    struct Trail {
        short length;
        short direction;
        int blocks;
    };
    for (const auto [length, direction, blocks] :
         {Trail{5, 1, 4}, Trail{7, 1, 5}, Trail{5, 2, 5}}) {
        pic.changed = false;
        FillWithNoise(pic);
        for (int nth = 1; nth <= blocks; ++nth) {
            const FailingHandles handles(nth);
            EXPECT_FALSE(pic.MotionBlur(length, direction)) << nth;
            EXPECT_EQ(PixelsOf(pic), before);
            EXPECT_EQ(pic.clone, nullptr);
        }
        EXPECT_FALSE(pic.changed);
        const FailingHandles none(blocks + 1);
        EXPECT_TRUE(pic.MotionBlur(length, direction));
        EXPECT_EQ(none.Asked(), blocks);
    }
}

TEST_F(MotionBlurTest, TicksTheBusyCursorAfterEachRow) {
    const auto ticks = [](PaintClass& pic) {
        const BusyCursor cursor;
        EXPECT_TRUE(pic.MotionBlur(2, 1));
        EXPECT_EQ(cursor.Arrows(), 1);
        return cursor.Waits() - 1;
    };
    PaintClass narrow(4, 5);
    EXPECT_EQ(ticks(narrow), 5);
    PaintClass wide(16, 20);
    FillWithNoise(wide);
    EXPECT_EQ(ticks(wide), 20);
    FillWithMultiples(wide, 2, 0, 20, 1);
    EXPECT_EQ(ticks(wide), 20);
}

}  // namespace

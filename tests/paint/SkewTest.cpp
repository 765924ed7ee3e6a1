#include <cstdint>
#include <vector>

#include "paint/PaintClass.h"
#include "plain/PlainSkew.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class SkewTest : public CoreTest {
  protected:
    /// Noise whose channels have only the bits of `mask`.
    void ExpectSameAsPlain(short width, short height, std::int32_t direction, bool nearest,
                           Pixel mask = 0xFFFFFFFF) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        for (short y = 0; y < height; ++y) {
            for (short x = 0; x < width; ++x) {
                fast.SetPixel(x, y, fast.GetPixel(x, y) & mask);
            }
        }
        CopyShifted(fast, plain, 0, 0);
        ASSERT_TRUE(fast.Skew(direction, nearest));
        ASSERT_TRUE(PlainSkew(plain, direction, nearest));
        if (nearest) {
            ASSERT_EQ(PixelsOf(fast), PixelsOf(plain)) << width << " by " << height;
        }
        ASSERT_EQ(ColorsOf(fast), ColorsOf(plain))
            << width << " by " << height << ", direction " << direction;
        ASSERT_TRUE(fast.changed);
        ASSERT_EQ(fast.clone, nullptr);
    }

    void ExpectSameInAllDirections(short width, short height) {
        for (std::int32_t direction = 0; direction < 4; ++direction) {
            ExpectSameAsPlain(width, height, direction, false);
            ExpectSameAsPlain(width, height, direction, true);
        }
    }

    RandomInput input{23};
};

TEST_F(SkewTest, TheSameAsThePlainLoopAtEverySmallSize) {
    WithBothCompilations([this] {
        for (short height = 1; height <= 16; ++height) {
            for (short width = 1; width <= 16; ++width) {
                ExpectSameInAllDirections(width, height);
            }
        }
    });
}

TEST_F(SkewTest, TheSameAsThePlainLoopAtAnySize) {
    WithBothCompilations([this] {
        for (int i = 0; i < 150; ++i) {
            ExpectSameInAllDirections(input.Number(1, 70), input.Number(1, 70));
        }
        for (const auto& [width, height] :
             {std::pair<short, short>{1, 512}, {512, 1}, {129, 3}, {256, 8}, {5, 300}}) {
            ExpectSameInAllDirections(width, height);
        }
    });
}

TEST_F(SkewTest, TheSameAsThePlainLoopAtTheLargestTile) {
    ExpectSameAsPlain(512, 512, 0, false);
    ExpectSameAsPlain(512, 512, 3, false);
    ExpectSameAsPlain(511, 512, 1, false);
    ExpectSameAsPlain(512, 511, 2, false);
}

TEST_F(SkewTest, TheSameAsThePlainLoopWhereValuesAreWholeNumbers) {
    WithBothCompilations([this] {
        // Flat, black and white, and a few steps: values on a whole number, and next to one.
        for (const Pixel mask : {0x00000000u, 0x80808080u, 0x03030303u, 0xC00100FFu}) {
            for (std::int32_t direction = 0; direction < 4; ++direction) {
                ExpectSameAsPlain(131, 60, direction, false, mask);
                ExpectSameAsPlain(60, 131, direction, false, mask);
                ExpectSameAsPlain(512, 511, direction, false, mask);
            }
        }
        for (int grey = 1; grey < 256; ++grey) {
            PaintClass fast(67, 41);
            PaintClass plain(67, 41);
            const auto component = static_cast<std::uint16_t>(grey << 8);
            fast.FillColor({component, component, component});
            CopyShifted(fast, plain, 0, 0);
            ASSERT_TRUE(fast.Skew(grey % 4, false));
            ASSERT_TRUE(PlainSkew(plain, grey % 4, false));
            ASSERT_EQ(ColorsOf(fast), ColorsOf(plain)) << grey;
        }
    });
}

TEST_F(SkewTest, PlacesBeyondSixteenBitsAreTheSameAsThePlainLoopToo) {
    ExpectSameInAllDirections(20000, 3);
    ExpectSameInAllDirections(3, 20000);
}

TEST_F(SkewTest, TheFirstRowIsOnlySoftened) {
    PaintClass pic(30, 20);
    FillWithNoise(pic);
    PaintClass before(30, 20);
    CopyShifted(pic, before, 0, 0);
    ASSERT_TRUE(pic.Skew(0, false));
    for (short x = 0; x < 30; ++x) {
        const unsigned char* a = before.PixelAddress(x, 0);
        const unsigned char* b = before.PixelAddressWrapped(static_cast<short>(x + 1), 0);
        const unsigned char* c = before.PixelAddress(x, 1);
        for (int i = 0; i < 3; ++i) {
            ASSERT_EQ(pic.PixelAddress(x, 0)[i], (2 * a[i] + b[i] + c[i]) / 4);
        }
    }
}

TEST_F(SkewTest, TheLastLineIsOneStepShortOfAWholeTile) {
    // The slope is that of the tile's diagonal: 3 columns a row, or a third of a row a column.
    PaintClass pic(30, 10);
    FillWithNoise(pic);
    PaintClass rows(30, 10);
    PaintClass columns(30, 10);
    CopyShifted(pic, rows, 0, 0);
    CopyShifted(pic, columns, 0, 0);
    ASSERT_TRUE(rows.Skew(0, true));
    ASSERT_TRUE(columns.Skew(3, true));
    for (short x = 0; x < 30; ++x) {
        ASSERT_EQ(rows.GetPixel(x, 9), pic.GetPixelWrapped(static_cast<short>(x - 27), 9));
    }
    for (short y = 0; y < 10; ++y) {
        ASSERT_EQ(columns.GetPixel(29, y), pic.GetPixelWrapped(29, static_cast<short>(y + 9)));
    }
}

TEST_F(SkewTest, OppositeDirectionsBringThePictureBack) {
    for (const std::int32_t direction : {0, 2}) {
        PaintClass pic(37, 21);
        FillWithNoise(pic);
        const std::vector<Pixel> before = PixelsOf(pic);
        ASSERT_TRUE(pic.Skew(direction, true));
        EXPECT_NE(PixelsOf(pic), before);
        ASSERT_TRUE(pic.Skew(direction + 1, true));
        EXPECT_EQ(PixelsOf(pic), before);
    }
}

/// On square tiles, along the moved lines. Across them the law holds with a shear of its own.
TEST_F(SkewTest, IsTheSameWhereverTheLinesBegin) {
    for (std::int32_t direction = 0; direction < 4; ++direction) {
        const int dx = direction < 2 ? 11 : 0;
        const int dy = direction < 2 ? 0 : 11;
        PaintClass pic(29, 29);
        PaintClass shifted(29, 29);
        PaintClass back(29, 29);
        FillWithNoise(pic);
        CopyShifted(pic, shifted, dx, dy);
        ASSERT_TRUE(pic.Skew(direction, false));
        ASSERT_TRUE(shifted.Skew(direction, false));
        CopyShifted(shifted, back, -dx, -dy);
        ASSERT_EQ(ColorsOf(back), ColorsOf(pic)) << direction;
    }
}

/// Two copies of the tile on top of each other: moved by one tile over each, the lower one goes on
/// where the upper one ends.
TEST_F(SkewTest, TheSeamCloses) {
    PaintClass single(24, 24);
    FillWithNoise(single);
    PaintClass twice(48, 48);
    for (short y = 0; y < 48; ++y) {
        for (short x = 0; x < 48; ++x) {
            twice.SetPixel(x, y, single.GetPixelWrapped(x, y));
        }
    }
    for (std::int32_t direction = 0; direction < 4; ++direction) {
        ASSERT_TRUE(single.Skew(direction, false));
        ASSERT_TRUE(twice.Skew(direction, false));
        for (short y = 0; y < 48; ++y) {
            for (short x = 0; x < 48; ++x) {
                ASSERT_EQ(twice.GetPixel(x, y) & 0xFFFFFF, single.GetPixelWrapped(x, y) & 0xFFFFFF);
            }
        }
    }
}

TEST_F(SkewTest, AnUnknownDirectionMovesNothing) {
    for (const std::int32_t direction : {-1, 4, INT32_MAX, INT32_MIN}) {
        PaintClass pic(10, 12);
        FillWithNoise(pic);
        const std::vector<Pixel> before = PixelsOf(pic);
        EXPECT_TRUE(pic.Skew(direction, false));
        EXPECT_EQ(PixelsOf(pic), before);
    }
}

TEST_F(SkewTest, WithoutMemoryForTheWindowItIsJustSlower) {
    for (std::int32_t direction = 0; direction < 4; ++direction) {
        PaintClass pic(40, 20);
        PaintClass slow(40, 20);
        FillWithNoise(pic);
        FillWithNoise(slow);
        ASSERT_TRUE(pic.Skew(direction, false));
        const FailingHandles handles(2);
        ASSERT_TRUE(slow.Skew(direction, false));
        EXPECT_EQ(handles.Asked(), 2);
        EXPECT_EQ(ColorsOf(slow), ColorsOf(pic));
    }
}

TEST_F(SkewTest, ReportsEveryFifthLineAndTheEnd) {
    Bar bar;
    PaintClass pic(20, 11);
    ASSERT_TRUE(pic.Skew(0, false));
    EXPECT_EQ(bar.percents, (std::vector<short>{0, 45, 90, 100}));
    bar.percents.clear();
    ASSERT_TRUE(pic.Skew(3, false));
    EXPECT_EQ(bar.percents, (std::vector<short>{0, 25, 50, 75, 100}));
}

}  // namespace

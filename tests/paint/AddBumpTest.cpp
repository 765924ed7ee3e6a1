#include <cstdlib>
#include <random>
#include <vector>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "plain/PlainAddBump.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/Shifting.h"

namespace {

bool SmoothAlpha(PaintClass& pic) {
    ShowClass progress(100);
    bool abortFlag = true;
    const bool done = pic.SmoothAlpha(0, &progress, &abortFlag);
    EXPECT_FALSE(abortFlag) << "cleared on entry";
    return done;
}

class SmoothAlphaTest : public CoreTest {};
class AddBumpTest : public CoreTest {
  protected:
    static void ExpectSameAsPlain(short width, short height, unsigned seed) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, seed);
        CopyShifted(fast, plain, 0, 0);
        ASSERT_TRUE(fast.AddBump());
        PlainAddBump(plain);
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain)) << width << " by " << height;
        ASSERT_TRUE(fast.changed);
    }
};

TEST_F(SmoothAlphaTest, TheSameAsThePlainLoopAtEverySmallSize) {
    WithBothCompilations([] {
        for (short height = 1; height <= 9; ++height) {
            for (short width = 1; width <= 40; ++width) {
                PaintClass fast(width, height);
                PaintClass plain(width, height);
                FillWithNoise(fast, static_cast<unsigned>(width * 100 + height));
                CopyShifted(fast, plain, 0, 0);
                ASSERT_TRUE(SmoothAlpha(fast));
                PlainSmoothAlpha(plain);
                ASSERT_EQ(PixelsOf(fast), PixelsOf(plain)) << width << " by " << height;
                ASSERT_TRUE(fast.changed);
            }
        }
    });
}

TEST_F(SmoothAlphaTest, FlatGroundFallsByOne) {
    PaintClass pic(5, 5);
    pic.SetAllAlpha(255);
    ASSERT_TRUE(SmoothAlpha(pic));
    for (short y = 0; y < 5; ++y) {
        for (short x = 0; x < 5; ++x) {
            EXPECT_EQ(pic.GetAlpha(x, y), 254);
        }
    }
}

TEST_F(SmoothAlphaTest, WithoutThePlaneNothingChanges) {
    PaintClass pic(9, 9);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    const FailingHandles handles(1);
    EXPECT_FALSE(SmoothAlpha(pic));
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_FALSE(pic.changed);
}

TEST_F(SmoothAlphaTest, ReportsEveryTenthRowFromTheOffsetOn) {
    Bar bar;
    PaintClass pic(2, 25);
    {
        ShowClass progress(100);
        bool abortFlag = false;
        EXPECT_TRUE(pic.SmoothAlpha(40, &progress, &abortFlag));
    }
    EXPECT_EQ(bar.percents, (std::vector<short>{40, 50, 60}));
}

TEST_F(AddBumpTest, TheSameAsThePlainLoopAtAnySize) {
    WithBothCompilations([] {
        for (short height = 1; height <= 9; ++height) {
            for (short width = 1; width <= 50; ++width) {
                ExpectSameAsPlain(width, height, static_cast<unsigned>(width * 100 + height));
            }
        }
        ExpectSameAsPlain(511, 512, 1);
        ExpectSameAsPlain(512, 511, 2);
    });
}

TEST_F(AddBumpTest, AUniformTextureStaysAsItIs) {
    PaintClass pic(7, 6);
    pic.FillColor({0xFF00, 0x1000, 0x7700});
    ASSERT_TRUE(pic.AddBump());
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(42, Color(0xFF, 0x10, 0x77)));
}

/// Sum of the changes in 20 rows by an edge along a * x + b * y = 0 through the middle, which
/// crosses each row once.
int ReliefOfEdge(int a, int b) {
    PaintClass pic(60, 60);
    PaintClass before(60, 60);
    for (short y = 0; y < 60; ++y) {
        for (short x = 0; x < 60; ++x) {
            const unsigned char value = a * (x - 30) + b * (y - 30) < 0 ? 150 : 100;
            pic.SetRGB(x, y, value, value, value);
        }
    }
    CopyShifted(pic, before, 0, 0);
    EXPECT_TRUE(pic.AddBump());
    int relief = 0;
    for (short y = 20; y < 40; ++y) {
        for (short x = 10; x < 50; ++x) {
            const int red = static_cast<int>(pic.GetPixel(x, y) & 0xFF);
            const int old = static_cast<int>(before.GetPixel(x, y) & 0xFF);
            relief += std::abs(red - old);
        }
    }
    return relief;
}

TEST_F(AddBumpTest, AnEdgeAcrossTheDiagonalShowsMost) {
    // From lower left to upper right; upright; from upper left to lower right.
    const int across = ReliefOfEdge(1, 1);
    const int upright = ReliefOfEdge(1, 0);
    const int along = ReliefOfEdge(1, -1);
    EXPECT_GT(across, upright);
    EXPECT_GT(upright, along);
}

TEST_F(AddBumpTest, TheLastPixelLooksAtTheFirst) {
    PaintClass pic(8, 8);
    pic.FillColor({0x8000, 0x8000, 0x8000});
    ASSERT_TRUE(pic.AddBump());
    const Pixel flat = pic.GetPixel(7, 7);
    PaintClass dark(8, 8);
    dark.FillColor({0x8000, 0x8000, 0x8000});
    dark.SetRGB(0, 0, 0, 0, 0);
    ASSERT_TRUE(dark.AddBump());
    // Grey 126 becomes 125 when smoothed, and 63 where the neighbours alone are left.
    EXPECT_EQ(flat & 0xFF, 128u);
    EXPECT_EQ(dark.GetPixel(7, 7) & 0xFF, 128u + 126u - 63u);
}

TEST_F(AddBumpTest, TheAlphaBytesStaySmoothed) {
    PaintClass pic(3, 3);
    pic.FillWhite();
    ASSERT_TRUE(pic.AddBump());
    EXPECT_EQ(pic.GetAlpha(1, 1), 254);
}

TEST_F(AddBumpTest, IsTheSameWhereverTheTileBegins) {
    std::mt19937 generator(14);
    for (int i = 0; i < 30; ++i) {
        const auto width = static_cast<short>(generator() % 40 + 1);
        const auto height = static_cast<short>(generator() % 40 + 1);
        PaintClass pic(width, height);
        PaintClass shifted(width, height);
        PaintClass back(width, height);
        FillWithNoise(pic, static_cast<unsigned>(generator()));
        CopyShifted(pic, shifted, 13, 7);
        ASSERT_TRUE(pic.AddBump());
        ASSERT_TRUE(shifted.AddBump());
        CopyShifted(shifted, back, -13, -7);
        ASSERT_EQ(PixelsOf(back), PixelsOf(pic));
    }
}

TEST_F(AddBumpTest, WithoutThePlaneTheColoursStay) {
    PaintClass pic(9, 9);
    FillWithNoise(pic);
    const std::vector<Pixel> before = ColorsOf(pic);
    {
        const FailingHandles handles(1);
        EXPECT_FALSE(pic.AddBump());
    }
    EXPECT_EQ(ColorsOf(pic), before);
    EXPECT_FALSE(pic.changed);
    PaintClass grey(9, 9);
    FillWithNoise(grey);
    grey.AlphaFromGrey();
    EXPECT_EQ(PixelsOf(pic), PixelsOf(grey)) << "the alpha bytes hold the grey values";
}

TEST_F(AddBumpTest, ReportsEveryTenthRowTwice) {
    Bar bar;
    PaintClass pic(2, 25);
    ASSERT_TRUE(pic.AddBump());
    EXPECT_EQ(bar.percents, (std::vector<short>{0, 20, 40, 50, 70, 90}));
}

}  // namespace

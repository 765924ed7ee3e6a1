#include <initializer_list>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/BlurKernel.h"
#include "paint/kernels/WideConvolution.h"
#include "paint/records/FilterParams.h"
#include "plain/PlainBlur.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/Shifting.h"

namespace {

constexpr short allPixels = 1;
constexpr short alphaBytes = 2;
constexpr short whereAlpha = 3;

double RadiusOf(int amount) {
    return amount * 0.05;
}

bool Blur(PaintClass& pic, double radius, short mode) {
    bool abortFlag = true;
    const bool done = pic.Blur(radius, mode, nullptr, 0, &abortFlag);
    EXPECT_FALSE(abortFlag) << "cleared on entry";
    return done;
}

/// Colours at random, and alpha bytes as the effects leave them: flat ground with hills on it.
/// `coverage` of 8 pixels are on a hill.
void FillWithHills(PicClass& pic, std::mt19937& generator, unsigned coverage) {
    bool hill = false;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            if (generator() % 8 == 0) {
                hill = generator() % 8 < coverage;
            }
            const unsigned alpha = hill ? generator() % 256 : 255;
            pic.SetPixel(x, y, (static_cast<Pixel>(generator()) & 0xFFFFFF) | alpha << 24);
        }
    }
}

class BlurTest : public CoreTest {
  protected:
    static void ExpectSameAsPlain(short width, short height, double radius, short mode,
                                  std::mt19937& generator) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithHills(fast, generator, static_cast<unsigned>(generator() % 10));
        CopyShifted(fast, plain, 0, 0);
        ASSERT_TRUE(Blur(fast, radius, mode));
        ASSERT_TRUE(PlainBlur(plain, radius, mode));
        // The alpha bytes of mode 1 mean nothing, but they stay here as there.
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain))
            << width << " by " << height << ", radius " << radius << ", mode " << mode;
        ASSERT_TRUE(fast.changed);
    }
};

TEST_F(BlurTest, TheSameAsThePlainLoopForAnySizeAndAmount) {
    std::mt19937 generator(4);
    WithBothCompilations([&] {
        for (int i = 0; i < 600; ++i) {
            const auto width = static_cast<short>(generator() % 60 + 1);
            const auto height = static_cast<short>(generator() % 12 + 1);
            const auto mode = static_cast<short>(generator() % 3 + 1);
            // Small amounts more often: the plain loop takes as long as the square is large.
            const int largest = i % 20 == 0 ? 100 : 30;
            const double radius = RadiusOf(static_cast<int>(generator() % 100) % largest + 1);
            ExpectSameAsPlain(width, height, radius, mode, generator);
        }
    });
}

TEST_F(BlurTest, TheSameAsThePlainLoopAtSizesThatMatter) {
    std::mt19937 generator(5);
    WithBothCompilations([&] {
        for (const short mode : {allPixels, alphaBytes, whereAlpha}) {
            for (const auto& [width, height] : {std::pair<short, short>{1, 1},
                                                {1, 70},
                                                {70, 1},
                                                {2, 3},
                                                {12, 12},
                                                {11, 40},
                                                {15, 16},
                                                {17, 2},
                                                {33, 33}}) {
                ExpectSameAsPlain(width, height, RadiusOf(100), mode, generator);
            }
            ExpectSameAsPlain(512, 9, RadiusOf(10), mode, generator);
            ExpectSameAsPlain(511, 7, RadiusOf(7), mode, generator);
            ExpectSameAsPlain(3, 512, RadiusOf(33), mode, generator);
        }
    });
}

TEST_F(BlurTest, TheSameAsThePlainLoopAtTheLargestTile) {
    std::mt19937 generator(6);
    ExpectSameAsPlain(511, 512, RadiusOf(20), allPixels, generator);
    ExpectSameAsPlain(512, 511, RadiusOf(20), whereAlpha, generator);
    ExpectSameAsPlain(512, 512, RadiusOf(20), alphaBytes, generator);
}

TEST_F(BlurTest, SquaresBeyondTheDialogsAreTheSameAsThePlainLoopToo) {
    std::mt19937 generator(7);
    for (const double radius : {8.0, 20.3, 60.0, (BlurKernel::largestHalf - 1) / 2.0}) {
        ExpectSameAsPlain(5, 4, radius, allPixels, generator);
    }
    for (const double radius : {0.0, 5e-324, -0.3, -1.0, -700.0, 1e300,
                                std::numeric_limits<double>::quiet_NaN(), 32768.0}) {
        for (const short mode : {allPixels, alphaBytes, whereAlpha}) {
            ExpectSameAsPlain(9, 7, radius, mode, generator);
        }
    }
}

/// Squares so large that they go through transforms, which take blocks of some 860 pixels.
constexpr double radiusLikeTheTile = 40.0;
constexpr std::pair<short, short> likeTheTile[] = {{1100, 100}, {100, 1100}};

TEST_F(BlurTest, SquaresLikeTheTileGiveThePlainSums) {
    const PlainKernel kernel = MakePlainKernel(radiusLikeTheTile);
    std::mt19937 generator(6);
    for (const auto& [width, height] : likeTheTile) {
        ASSERT_TRUE(WideConvolution::Pays(BlurKernel(radiusLikeTheTile), width, height));
        PaintClass pic(width, height);
        FillWithNoise(pic);
        PaintClass before(width, height);
        CopyShifted(pic, before, 0, 0);
        ASSERT_TRUE(Blur(pic, radiusLikeTheTile, allPixels));
        // Both edges, the end of the first block, and places at random.
        std::vector<int> places = {0, 1, 864, 865, 866, 867, 1098, 1099};
        for (int i = 0; i < 60; ++i) {
            places.push_back(static_cast<int>(generator() % 1100));
        }
        for (const int along : places) {
            const int across = static_cast<int>(generator() % 100);
            const int x = width > height ? along : across;
            const int y = width > height ? across : along;
            const Pixel result = pic.GetPixel(static_cast<short>(x), static_cast<short>(y));
            const Pixel expected = Color(PlainBlurredByte(before, kernel, x, y, 0),
                                         PlainBlurredByte(before, kernel, x, y, 1),
                                         PlainBlurredByte(before, kernel, x, y, 2));
            EXPECT_EQ(result & 0xFFFFFF, expected & 0xFFFFFF) << x << ", " << y;
        }
    }
}

// The direct sums take half a minute under the sanitizers.
#ifndef __SANITIZE_ADDRESS__
TEST_F(BlurTest, SquaresLikeTheTileAreTheSameWithoutMemoryForTransforms) {
    for (const auto& [width, height] : likeTheTile) {
        PaintClass wide(width, height);
        PaintClass slow(width, height);
        FillWithNoise(wide);
        CopyShifted(wide, slow, 0, 0);
        int blocks = 0;
        {
            const FailingHandles none(0);
            ASSERT_TRUE(Blur(wide, radiusLikeTheTile, allPixels));
            blocks = none.Asked();
        }
        // The kernel takes one, the transforms three.
        EXPECT_EQ(blocks, 4);
        const FailingHandles handles(blocks);
        ASSERT_TRUE(Blur(slow, radiusLikeTheTile, allPixels));
        EXPECT_GT(handles.Asked(), blocks);
        EXPECT_EQ(PixelsOf(wide), PixelsOf(slow));
        EXPECT_TRUE(wide.changed);
        EXPECT_EQ(wide.clone, nullptr);
    }
}
#endif

TEST_F(BlurTest, SquaresLikeTheTileReportEveryRowToo) {
    PaintClass pic(512, 300);
    Bar bar;
    ASSERT_TRUE(Blur(pic, 40.0, allPixels));
    EXPECT_EQ(bar.percents.size(), 300u);
    EXPECT_EQ(bar.percents.front(), 0);
    EXPECT_EQ(bar.percents.back(), 99);
}

TEST_F(BlurTest, ASquareBeyondTheLargestLeavesTheTexture) {
    PaintClass pic(6, 5);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    for (const short mode : {allPixels, alphaBytes, whereAlpha}) {
        EXPECT_FALSE(Blur(pic, RadiusOf(32767), mode));
        EXPECT_EQ(PixelsOf(pic), before);
        EXPECT_EQ(AssertionOf([&] { Blur(pic, 5000.0, mode); }),
                  "PaintClass1 / Zeile 599 !(datasize > 0)");
    }
    EXPECT_FALSE(pic.changed);
}

TEST_F(BlurTest, WhiteFallsByOneStepFromAmountTenOn) {
    for (const int amount : {1, 10, 20, 50, 100}) {
        PaintClass pic(30, 30);
        pic.FillWhite();
        ASSERT_TRUE(Blur(pic, RadiusOf(amount), allPixels));
        const unsigned value = amount == 1 ? 255 : 254;
        EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(900, Color(value, value, value))) << amount;
    }
}

TEST_F(BlurTest, TheSeamIsBlurredAcross) {
    PaintClass pic(20, 20);
    pic.FillColor({0, 0, 0});
    for (short y = 0; y < 20; ++y) {
        pic.SetRGB(19, y, 255, 255, 255);
    }
    ASSERT_TRUE(Blur(pic, RadiusOf(10), allPixels));
    const unsigned beside = pic.GetPixel(18, 5) & 0xFF;
    EXPECT_GT(beside, 20u);
    EXPECT_EQ(pic.GetPixel(0, 5) & 0xFF, beside);
    EXPECT_EQ(pic.GetPixel(1, 5) & 0xFF, pic.GetPixel(17, 5) & 0xFF);
    EXPECT_EQ(pic.GetPixel(9, 5) & 0xFF, 0u);
}

TEST_F(BlurTest, IsTheSameWhereverTheTileBegins) {
    std::mt19937 generator(8);
    for (const short mode : {allPixels, alphaBytes, whereAlpha}) {
        for (int i = 0; i < 20; ++i) {
            const auto width = static_cast<short>(generator() % 50 + 1);
            const auto height = static_cast<short>(generator() % 50 + 1);
            const int dx = static_cast<int>(generator() % 50);
            const int dy = static_cast<int>(generator() % 50);
            PaintClass pic(width, height);
            PaintClass shifted(width, height);
            PaintClass back(width, height);
            FillWithHills(pic, generator, 5);
            CopyShifted(pic, shifted, dx, dy);
            const double radius = RadiusOf(static_cast<int>(generator() % 60 + 1));
            ASSERT_TRUE(Blur(pic, radius, mode));
            ASSERT_TRUE(Blur(shifted, radius, mode));
            CopyShifted(shifted, back, -dx, -dy);
            ASSERT_EQ(PixelsOf(back), PixelsOf(pic)) << width << " by " << height;
        }
    }
}

TEST_F(BlurTest, FlatGroundStays) {
    PaintClass pic(40, 3);
    FillWithNoise(pic);
    pic.SetAllAlpha(255);
    const std::vector<Pixel> before = PixelsOf(pic);
    EXPECT_TRUE(Blur(pic, 2.0, alphaBytes));
    EXPECT_TRUE(Blur(pic, 2.0, whereAlpha));
    EXPECT_EQ(PixelsOf(pic), before);
    pic.SetAlpha(20, 1, 254);
    EXPECT_TRUE(Blur(pic, 2.0, whereAlpha));
    for (short x = 0; x < 40; ++x) {
        const bool same = pic.GetPixel(x, 1) == before[static_cast<std::size_t>(40 + x)];
        EXPECT_EQ(same, x != 20) << x;
    }
}

TEST_F(BlurTest, FlatGroundStaysUnderSquaresLikeTheTile) {
    PaintClass pic(1100, 100);
    FillWithNoise(pic);
    pic.SetAllAlpha(255);
    const std::vector<Pixel> before = PixelsOf(pic);
    EXPECT_TRUE(Blur(pic, radiusLikeTheTile, whereAlpha));
    EXPECT_EQ(PixelsOf(pic), before);
}

TEST_F(BlurTest, AnUnknownModeDoesNothing) {
    PaintClass pic(6, 5);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    for (const short mode : std::initializer_list<short>{-32768, -1, 0, 4, 32767}) {
        EXPECT_FALSE(Blur(pic, 1.0, mode));
    }
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_FALSE(pic.changed);
}

TEST_F(BlurTest, WithoutTheCloneNothingChanges) {
    PaintClass pic(20, 20);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    for (const short mode : {allPixels, whereAlpha}) {
        memory.FailAllocation(1);
        EXPECT_FALSE(Blur(pic, 1.0, mode));
        EXPECT_EQ(PixelsOf(pic), before);
        EXPECT_EQ(pic.clone, nullptr);
        EXPECT_FALSE(pic.changed);
    }
}

TEST_F(BlurTest, WithoutABlockNothingChanges) {
    PaintClass pic(20, 20);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    for (const short mode : {allPixels, alphaBytes, whereAlpha}) {
        int blocks = 1;
        for (int nth = 1; nth <= blocks; ++nth) {
            {
                const FailingHandles none(0);
                PaintClass other(20, 20);
                Blur(other, 1.0, mode);
                blocks = none.Asked();
            }
            const FailingHandles handles(nth);
            EXPECT_FALSE(Blur(pic, 1.0, mode)) << nth;
            EXPECT_EQ(PixelsOf(pic), before);
            EXPECT_EQ(pic.clone, nullptr);
        }
        EXPECT_EQ(blocks, mode == alphaBytes ? 4 : 6);
    }
    EXPECT_FALSE(pic.changed);
}

TEST_F(BlurTest, ReportsEveryRowOrEveryFourth) {
    PaintClass pic(4, 10);
    for (const short mode : {allPixels, alphaBytes, whereAlpha}) {
        Bar bar;
        ASSERT_TRUE(Blur(pic, 1.0, mode));
        const std::vector<short> all = {0, 10, 20, 30, 40, 50, 60, 70, 80, 90};
        const std::vector<short> fourths = {0, 40, 80};
        EXPECT_EQ(bar.percents, mode == alphaBytes ? fourths : all);
    }
}

TEST_F(BlurTest, FillsTheCallersBarFromTheOffsetOn) {
    PaintClass pic(4, 3);
    Bar bar;
    ShowClass progress(100);
    bool abortFlag = false;
    ASSERT_TRUE(pic.Blur(1.0, allPixels, &progress, 50, &abortFlag));
    EXPECT_EQ(bar.percents, (std::vector<short>{50, 51, 52}));
}

TEST_F(BlurTest, WithItsOwnBarTheOffsetDoesNotCount) {
    PaintClass pic(4, 2);
    Bar bar;
    bool abortFlag = false;
    ASSERT_TRUE(pic.Blur(1.0, allPixels, nullptr, 50, &abortFlag));
    EXPECT_EQ(bar.percents, (std::vector<short>{0, 50}));
}

TEST_F(BlurTest, AnyAmountOfADamagedRecordIsSafe) {
    std::mt19937 generator(9);
    PaintClass pic(3, 2);
    for (int i = 0; i < 100; ++i) {
        FillWithNoise(pic, static_cast<unsigned>(i));
        const auto amount = static_cast<std::int16_t>(generator());
        const std::vector<Pixel> before = PixelsOf(pic);
        const bool tooLarge = amount >= 10 * BlurKernel::largestHalf;
        EXPECT_EQ(Blur(pic, RadiusOf(amount), allPixels), !tooLarge) << amount;
        if (tooLarge) {
            EXPECT_EQ(PixelsOf(pic), before);
        }
    }
}

}  // namespace

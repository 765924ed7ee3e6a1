#include <initializer_list>

#include "base/Progress.h"
#include "paint/kernels/ContourMix.h"
#include "plain/PlainTools.h"
#include "tests/support/Compilations.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/ToolTest.h"

namespace {

class FloodFillTest : public ToolTest {
  protected:
    /// `steps` colours a channel: few make large regions.
    static void FillWithSteps(PaintClass& pic, unsigned seed, unsigned steps) {
        std::mt19937 generator(seed);
        for (short y = 0; y < pic.grY; ++y) {
            for (short x = 0; x < pic.grX; ++x) {
                const auto step = [&] {
                    return static_cast<unsigned char>(100 + generator() % steps * 20);
                };
                const unsigned char red = step();
                const unsigned char green = step();
                pic.SetRGB(x, y, red, green, step());
            }
        }
    }

    void ExpectSameAsPlain(const PaintClass& picture, hostapi::Point start, short tolerance,
                           short antiAlias) {
        Canvas fast(*this, picture.grX, picture.grY);
        Canvas plain(*this, picture.grX, picture.grY);
        for (Canvas* canvas : {&fast, &plain}) {
            CopyShifted(picture, canvas->pic, 0, 0);
            canvas->pic.fillTolerance = tolerance;
            canvas->pic.fillAntiAlias = antiAlias;
        }
        ASSERT_TRUE(fast.pic.FloodFill(start));
        PlainFloodFill(plain.pic, start);
        ASSERT_EQ(PixelsOf(fast.pic), PixelsOf(plain.pic))
            << picture.grX << " by " << picture.grY << " at " << start.h << ", " << start.v
            << ", tolerance " << tolerance;
        ASSERT_TRUE(fast.pic.changed);
    }

    void ExpectSameAsPlain(short width, short height, hostapi::Point start) {
        PaintClass picture(width, height);
        FillWithSteps(picture, input.Seed(), static_cast<unsigned>(input.Number(1, 5)));
        ExpectSameAsPlain(picture, start, input.Number(0, 100), input.Number(0, 1));
    }

    int CountOf(const PaintClass& pic, const RGBColor16& color) {
        int count = 0;
        for (const Pixel pixel : ColorsOf(pic)) {
            count += pixel == RasterPixel(color, 0) ? 1 : 0;
        }
        return count;
    }
};

TEST_F(FloodFillTest, IsTheSameAsThePlainOneForAnyTextureAndSetting) {
    for (int i = 0; i < 600; ++i) {
        ExpectSameAsPlain(input.Number(1, 30), input.Number(1, 30), AnyPoint(100));
    }
    ExpectSameAsPlain(511, 512, At(510, 511));
    ExpectSameAsPlain(512, 509, At(-1, -1));
    ExpectSameAsPlain(1, 512, At(0, 3));
    ExpectSameAsPlain(512, 1, At(0, 3));
}

/// Rows of one word of bits, of several, and of parts of words.
TEST_F(FloodFillTest, IsTheSameAsThePlainOneForRowsOfAnyNumberOfWords) {
    WithBothCompilations([this] {
        for (const short width :
             std::initializer_list<short>{1, 2, 63, 64, 65, 127, 128, 129, 200}) {
            for (int i = 0; i < 20; ++i) {
                ExpectSameAsPlain(width, input.Number(1, 25), AnyPoint(300));
            }
        }
    });
}

/// Corridors one pixel wide: runs of one pixel, long runs, and ways through both seams.
TEST_F(FloodFillTest, IsTheSameAsThePlainOneInALabyrinth) {
    for (int i = 0; i < 60; ++i) {
        PaintClass picture(input.Number(1, 150), input.Number(1, 60));
        picture.FillWhite();
        const int walls = picture.grX * picture.grY * 2 / 5;
        for (int wall = 0; wall < walls; ++wall) {
            picture.SetRGB(static_cast<short>(input.Number(0, picture.grX - 1)),
                           static_cast<short>(input.Number(0, picture.grY - 1)), 0, 0, 0);
        }
        ExpectSameAsPlain(picture, AnyPoint(200), 25, input.Number(0, 1));
    }
}

TEST_F(FloodFillTest, IsTheSameAsThePlainOneForAnyBytes) {
    for (int i = 0; i < 300; ++i) {
        PaintClass picture(input.Number(1, 30), input.Number(1, 30));
        FillWithNoise(picture, input.Seed());
        ExpectSameAsPlain(picture, AnyPoint(32767), input.Number(-32768, 32767),
                          input.Number(-1, 2));
    }
}

/// The queue's 16 bits overflow where a region winds around the torus often enough, and the fill
/// continues in another place.
TEST_F(FloodFillTest, CoordinatesThatRunOverAreTheSameAsThePlainOnes) {
    for (const auto& [width, height] : {std::pair<short, short>{100, 7}, {7, 100}, {63, 65}}) {
        PaintClass flat(width, height);
        flat.FillWhite();
        for (const auto& start : {At(32767, 0), At(-32768, 0), At(0, 32767), At(5, -32768),
                                  At(32767, 32767), At(32700, -32700)}) {
            ExpectSameAsPlain(flat, start, 0, 1);
            ExpectSameAsPlain(width, height, start);
        }
    }
}

/// A line one pixel thick that goes around the tile 256 times, further down each time, and closes
/// nowhere; or the same from top to bottom.
TEST_F(FloodFillTest, ALineThatWindsBeyondSixteenBitsIsTheSameAsThePlainOne) {
    constexpr short shorter = 131;
    constexpr short longer = 512;
    for (const bool goesDown : {false, true}) {
        PaintClass helix(goesDown ? longer : shorter, goesDown ? shorter : longer);
        helix.FillWhite();
        const auto blacken = [&](int along, short across) {
            const short place = Wrap(along, shorter);
            helix.SetRGB(goesDown ? across : place, goesDown ? place : across, 0, 0, 0);
        };
        int along = 0;
        for (short across = 0; across < longer; across = static_cast<short>(across + 2)) {
            const int end = along + shorter - 2;
            for (; along < end; ++along) {
                blacken(along, across);
            }
            blacken(along, across);
            blacken(along, static_cast<short>(across + 1));
        }
        ASSERT_GT(along, 32767);
        ExpectSameAsPlain(helix, At(0, 0), 0, 0);
        ExpectSameAsPlain(helix, goesDown ? At(0, 131 * 200) : At(131 * 200, 0), 0, 0);
    }
}

TEST_F(FloodFillTest, ToleranceNothingTakesTheConnectedPixelsOfTheSeedsColor) {
    Canvas canvas(*this, 5, 4);
    canvas.pic.FillColor(white16);
    canvas.pic.fillTolerance = 0;
    canvas.pic.fillAntiAlias = 0;
    // A closed frame of almost white around (2, 1), and beyond it white again.
    for (const auto& [x, y] : {std::pair<short, short>{2, 0}, {1, 1}, {3, 1}, {2, 2}}) {
        canvas.pic.SetRGB(x, y, 255, 254, 255);
    }
    ASSERT_TRUE(canvas.pic.FloodFill(At(2, 1)));
    EXPECT_EQ(CountOf(canvas.pic, foreground), 1);
    EXPECT_EQ(canvas.pic.GetPixel(2, 1), RasterPixel(foreground, 0));
    EXPECT_EQ(canvas.pic.GetPixel(0, 0), RasterPixel(white16, 255));
    ASSERT_TRUE(canvas.pic.FloodFill(At(0, 0)));
    EXPECT_EQ(CountOf(canvas.pic, foreground), 16);
}

TEST_F(FloodFillTest, TheToleranceIsTheSumOfThreeChannelsAgainst255) {
    const auto fills = [this](short tolerance, int red, int green, int blue) {
        Canvas canvas(*this, 2, 1);
        canvas.pic.FillColor(black16);
        canvas.pic.SetRGB(1, 0, static_cast<unsigned char>(red), static_cast<unsigned char>(green),
                          static_cast<unsigned char>(blue));
        canvas.pic.fillTolerance = tolerance;
        canvas.pic.fillAntiAlias = 0;
        EXPECT_TRUE(canvas.pic.FloodFill(At(0, 0)));
        return canvas.pic.GetAlpha(1, 0) == 0;
    };
    EXPECT_TRUE(fills(100, 85, 85, 85));
    EXPECT_TRUE(fills(100, 255, 0, 0));
    EXPECT_FALSE(fills(100, 86, 85, 85));
    EXPECT_TRUE(fills(25, 21, 21, 21)) << "25 * 255 / 100 is 63";
    EXPECT_FALSE(fills(25, 22, 21, 21));
    EXPECT_TRUE(fills(1, 1, 1, 0));
    EXPECT_FALSE(fills(1, 1, 1, 1));
}

TEST_F(FloodFillTest, AFlatTextureIsFilledFromAnywhereWhateverTheTolerance) {
    for (const short tolerance : std::initializer_list<short>{0, 25, 100}) {
        for (int i = 0; i < 5; ++i) {
            Canvas canvas(*this, 33, 21);
            canvas.pic.FillColor(background);
            canvas.pic.fillTolerance = tolerance;
            ASSERT_TRUE(canvas.pic.FloodFill(AnyPoint(500)));
            EXPECT_EQ(PixelsOf(canvas.pic),
                      std::vector<Pixel>(33 * 21, RasterPixel(foreground, 0)));
        }
    }
}

TEST_F(FloodFillTest, AStripeFromEdgeToEdgeIsFilledAtOnce) {
    Canvas canvas(*this, 30, 20);
    canvas.pic.FillColor(black16);
    canvas.pic.fillAntiAlias = 0;
    for (short y = 0; y < 20; ++y) {
        if (y != 7) {  // open at one place, so that the way round is the only one
            canvas.pic.SetRGB(12, y, 255, 255, 255);
        }
    }
    ASSERT_TRUE(canvas.pic.FloodFill(At(12, 8)));
    EXPECT_EQ(CountOf(canvas.pic, foreground), 19);
}

TEST_F(FloodFillTest, StripesThatTouchThroughTheSeamAreOneRegion) {
    Canvas canvas(*this, 30, 20);
    canvas.pic.FillColor(black16);
    canvas.pic.fillAntiAlias = 0;
    for (short y = 5; y < 10; ++y) {
        canvas.pic.SetRGB(0, y, 255, 255, 255);
        canvas.pic.SetRGB(29, y, 255, 255, 255);
    }
    ASSERT_TRUE(canvas.pic.FloodFill(At(0, 5)));
    EXPECT_EQ(CountOf(canvas.pic, foreground), 10);
}

TEST_F(FloodFillTest, APixelOfTheForegroundFloodsAsEver) {
    Canvas canvas(*this, 30, 20);
    canvas.pic.FillColor(foreground);
    canvas.pic.SetRGB(4, 4, 0xFE, 0x80, 0x20);
    canvas.pic.fillTolerance = 1;
    canvas.pic.fillAntiAlias = 0;
    ASSERT_TRUE(canvas.pic.FloodFill(At(20, 10)));
    EXPECT_EQ(PixelsOf(canvas.pic), std::vector<Pixel>(600, RasterPixel(foreground, 0)));
}

TEST_F(FloodFillTest, AFlatTextureOfTheForegroundStaysWithItsContour) {
    for (const RGBColor16& color : {black16, white16, foreground, RGBColor16{0x0100, 0xFE00, 0}}) {
        Canvas canvas(*this, 30, 20);
        canvas.pic.SetColors(&color, &white16);
        canvas.pic.FillColor(color);
        for (const short tolerance : std::initializer_list<short>{0, 25, 100}) {
            canvas.pic.fillTolerance = tolerance;
            canvas.pic.fillAntiAlias = 1;
            ASSERT_TRUE(canvas.pic.FloodFill(At(20, 10)));
            EXPECT_EQ(PixelsOf(canvas.pic), std::vector<Pixel>(600, RasterPixel(color, 0)));
        }
    }
}

TEST_F(FloodFillTest, ColorsAreHeldAgainstTheSeedNotAgainstTheirNeighbour) {
    Canvas canvas(*this, 50, 1);
    for (short x = 0; x < 50; ++x) {
        canvas.pic.SetRGB(x, 0, static_cast<unsigned char>(x < 25 ? x * 4 : (50 - x) * 4), 0, 0);
    }
    canvas.pic.fillTolerance = 10;  // 25 of 255
    canvas.pic.fillAntiAlias = 0;
    ASSERT_TRUE(canvas.pic.FloodFill(At(0, 0)));
    EXPECT_EQ(CountOf(canvas.pic, foreground), 13) << "0 to 24 on either side";
}

TEST_F(FloodFillTest, TheContourBecomesAMixOfItsNeighbours) {
    Canvas canvas(*this, 20, 20);
    foreground = white16;
    canvas.pic.FillColor(black16);
    for (short y = 5; y < 15; ++y) {
        for (short x = 5; x < 15; ++x) {
            canvas.pic.SetRGB(x, y, 200, 200, 200);
        }
    }
    ASSERT_TRUE(canvas.pic.FloodFill(At(10, 10)));
    // The first corner: two sides and a corner of it are filled.
    EXPECT_EQ(canvas.pic.GetPixel(5, 5), Color(107, 107, 107)) << "0.42 of 255, the alpha byte 0";
    // Its right neighbour sees it mixed: 0.17 * (107 + 2 * 255) + 0.16 * 255.
    EXPECT_EQ(canvas.pic.GetPixel(6, 5), Color(145, 145, 145));
    EXPECT_EQ(canvas.pic.GetPixel(6, 6), Color(255, 255, 255)) << "within";
    EXPECT_EQ(canvas.pic.GetPixel(4, 5), RasterPixel(black16, 255)) << "beyond";
}

TEST(ContourMix, IsTheTruncatedSumOfDoublesForAllSumsOfBytes) {
    constexpr int most = 4 * 255;
    for (int sides = 0; sides <= most; ++sides) {
        for (int corners = 0; corners <= most; ++corners) {
            const auto expected = static_cast<unsigned char>(0.17 * sides + 0.08 * corners);
            ASSERT_EQ(ContourMix(sides, corners), expected) << sides << ", " << corners;
        }
    }
}

TEST_F(FloodFillTest, TheContourIsSoftenedAcrossTheSeam) {
    Canvas canvas(*this, 20, 20);
    foreground = white16;
    canvas.pic.FillColor(black16);
    for (short y = 0; y < 20; ++y) {
        canvas.pic.SetRGB(0, y, 200, 200, 200);
        canvas.pic.SetRGB(1, y, 200, 200, 200);
    }
    canvas.pic.FloodFill(At(0, 10));
    EXPECT_LT(canvas.pic.GetPixel(0, 10) & 0xFF, 255u) << "beside the black of the last column";
    EXPECT_LT(canvas.pic.GetPixel(1, 10) & 0xFF, 255u);
    EXPECT_EQ(canvas.pic.GetPixel(19, 10) & 0xFF, 0u);
}

TEST_F(FloodFillTest, OnlyOneSoftensTheContour) {
    PaintClass picture(20, 20);
    FillWithSteps(picture, 3, 3);
    const auto run = [&](short antiAlias) {
        Canvas canvas(*this, 20, 20);
        CopyShifted(picture, canvas.pic, 0, 0);
        canvas.pic.fillAntiAlias = antiAlias;
        EXPECT_TRUE(canvas.pic.FloodFill(At(3, 3)));
        return ColorsOf(canvas.pic);
    };
    EXPECT_NE(run(1), run(0));
    for (const short other : std::initializer_list<short>{2, -1, 256, 257}) {
        EXPECT_EQ(run(other), run(0)) << other;
    }
}

TEST_F(FloodFillTest, WithoutItsContourIsTheSameWhereverTheTileBegins) {
    for (int i = 0; i < 50; ++i) {
        PaintClass picture(input.Number(1, 40), input.Number(1, 40));
        FillWithSteps(picture, input.Seed(), 3);
        const int dx = input.Number(-100, 100);
        const int dy = input.Number(-100, 100);
        const hostapi::Point start = AnyPoint(100);
        Canvas canvas(*this, picture.grX, picture.grY);
        Canvas shifted(*this, picture.grX, picture.grY);
        PaintClass back(picture.grX, picture.grY);
        CopyShifted(picture, canvas.pic, 0, 0);
        CopyShifted(picture, shifted.pic, dx, dy);
        canvas.pic.fillAntiAlias = 0;
        shifted.pic.fillAntiAlias = 0;
        ASSERT_TRUE(canvas.pic.FloodFill(start));
        ASSERT_TRUE(shifted.pic.FloodFill(At(start.h + dx, start.v + dy)));
        CopyShifted(shifted.pic, back, -dx, -dy);
        ASSERT_EQ(PixelsOf(back), PixelsOf(canvas.pic));
    }
}

TEST_F(FloodFillTest, WithoutMemoryTheColorsStay) {
    Canvas canvas(*this, 20, 20);
    const std::vector<Pixel> before = ColorsOf(canvas.pic);
    for (int nth = 1; nth <= 3; ++nth) {
        const FailingHandles handles(nth);
        EXPECT_FALSE(canvas.pic.FloodFill(At(3, 3))) << nth;
        EXPECT_EQ(ColorsOf(canvas.pic), before);
        EXPECT_EQ(canvas.pic.GetAlpha(3, 3), 255);
        EXPECT_FALSE(canvas.pic.changed);
    }
    const FailingHandles handles(0);
    EXPECT_TRUE(canvas.pic.FloodFill(At(3, 3)));
    EXPECT_EQ(handles.Asked(), 3);
}

TEST_F(FloodFillTest, WithoutMemoryForTheQueueTheColorsStay) {
    Canvas canvas(*this, 20, 20);
    const std::vector<Pixel> before = ColorsOf(canvas.pic);
    // So far out that the order of growth counts.
    const hostapi::Point start = At(32767, 3);
    for (int nth = 4; nth <= 6; ++nth) {
        const FailingHandles handles(nth);
        EXPECT_FALSE(canvas.pic.FloodFill(start)) << nth;
        EXPECT_EQ(ColorsOf(canvas.pic), before);
        EXPECT_EQ(canvas.pic.GetAlpha(3, 3), 255);
        EXPECT_FALSE(canvas.pic.changed);
    }
    const FailingHandles handles(0);
    EXPECT_TRUE(canvas.pic.FloodFill(start));
    EXPECT_EQ(handles.Asked(), 6);
}

TEST_F(FloodFillTest, ShowsTheBusyCursorOnce) {
    class SilentTarget final : public ProgressTarget {
        void DrawProgress(short) override { ADD_FAILURE() << "no bar"; }
    } target;
    CursorClass::target = &target;
    Log().ticks = 100000;
    Canvas canvas(*this, 20, 20);
    EXPECT_TRUE(canvas.pic.FloodFill(At(3, 3)));
    CursorClass::target = nullptr;
    EXPECT_EQ(Log().waitCursors, 1);
    EXPECT_EQ(Log().arrowCursors, 1);
}

TEST_F(FloodFillTest, WithoutAnEditorItFillsBlack) {
    PaintClass pic(6, 5);
    ASSERT_TRUE(pic.FloodFill(At(3, 3)));
    EXPECT_EQ(PixelsOf(pic), std::vector<Pixel>(30, 0));
}

}  // namespace

// The brush tables, the stamps of the brush and the pencil's pixel.
#include <initializer_list>
#include <limits>

#include "paint/Stroke.h"
#include "plain/PlainTools.h"
#include "tests/support/ToolTest.h"

namespace {

constexpr char roundSizeAssertion[] = "PaintClass6 / Zeile 42 !(radius <= 20)";
constexpr char squareSizeAssertion[] = "PaintClass6 / Zeile 60 !(radius <= 20)";

void FillTable(unsigned char value) {
    std::memset(brushTable, value, sizeof brushTable);
}

/// How many entries still are `value`.
int Untouched(unsigned char value) {
    int count = 0;
    for (const auto& row : brushTable) {
        for (const unsigned char entry : row) {
            count += entry == value ? 1 : 0;
        }
    }
    return count;
}

class BrushTest : public ToolTest {
  protected:
    void ExpectSameAsPlain(short width, short height, short size, const Path& path) {
        foreground = AnyColor();
        Canvas fast(*this, width, height);
        Canvas plain(*this, width, height);
        fast.pic.brushSize = size;
        plain.pic.brushSize = size;
        PaintStroke<BrushStroke>(fast.pic, path);
        PlainBrushStroke(plain.pic, path);
        ASSERT_EQ(PixelsOf(fast.pic), PixelsOf(plain.pic))
            << width << " by " << height << ", size " << size;
    }

    /// Presses once with a white brush of this size on a black texture.
    std::vector<Pixel> Pressed(short size, short width, short height, hostapi::Point place) {
        foreground = white16;
        Canvas canvas(*this, width, height);
        canvas.pic.FillColor(black16);
        canvas.pic.brushSize = size;
        PaintStroke<BrushStroke>(canvas.pic, {place});
        return ColorsOf(canvas.pic);
    }
};

TEST_F(BrushTest, RoundTablesAreTheSameAsThePlainOnes) {
    for (short size = 1; size <= 20; ++size) {
        const PlainBrush round = PlainRoundBrush(size);
        const PlainBrush square = PlainSquareBrush(size);
        PaintClass::MakeRoundBrush(size);
        for (int i = 0; i < size; ++i) {
            for (int j = 0; j < size; ++j) {
                ASSERT_EQ(brushTable[i][j], round.coverage[i][j]) << size << ": " << i << ", " << j;
            }
        }
        PaintClass::MakeSquareBrush(size);
        for (int i = 0; i < size; ++i) {
            for (int j = 0; j < size; ++j) {
                ASSERT_EQ(brushTable[i][j], square.coverage[i][j]) << size;
            }
        }
    }
}

TEST_F(BrushTest, ARoundTableFallsFromTheMiddleToTheRim) {
    PaintClass::MakeRoundBrush(11);
    EXPECT_EQ(brushTable[5][5], 255);
    EXPECT_EQ(brushTable[5][6], 240) << "4 of 5 of 300";
    EXPECT_EQ(brushTable[5][7], 180);
    EXPECT_EQ(brushTable[9][5], 60);
    EXPECT_EQ(brushTable[5][0], 0) << "the rim itself";
    EXPECT_EQ(brushTable[8][9], 0) << "the rim, 3 and 4 away";
    EXPECT_EQ(brushTable[0][0], 0);
}

TEST_F(BrushTest, ATableIsOnlyAsLargeAsItsBrush) {
    for (const short size : std::initializer_list<short>{20, 13, 1, 0, -1, -32768}) {
        FillTable(77);
        PaintClass::MakeRoundBrush(size);
        EXPECT_EQ(Untouched(77), size > 0 ? 400 - size * size : 400) << size;
        FillTable(78);
        PaintClass::MakeSquareBrush(size);
        EXPECT_EQ(Untouched(78), size > 0 ? 400 - size * size : 400) << size;
    }
}

TEST_F(BrushTest, ASizeAboveTwentyFailsBeforeTheTableIsTouched) {
    FillTable(77);
    for (const short size : std::initializer_list<short>{21, 255, 32767}) {
        EXPECT_EQ(AssertionOf([size] { PaintClass::MakeRoundBrush(size); }), roundSizeAssertion);
        EXPECT_EQ(AssertionOf([size] { PaintClass::MakeSquareBrush(size); }), squareSizeAssertion);
    }
    EXPECT_EQ(Untouched(77), 400);
}

TEST_F(BrushTest, AStrokeIsTheSameAsThePlainOne) {
    for (int i = 0; i < 400; ++i) {
        ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 40), input.Number(-3, 20),
                          AnyPath(i % 2 == 0 ? 40 : 200));
    }
    ExpectSameAsPlain(512, 511, 20, {At(-40, 300), At(600, -20), At(500, 500)});
    ExpectSameAsPlain(511, 512, 19, {At(510, 511)});
}

TEST_F(BrushTest, WildPositionsAreTheSameAsThePlainOnes) {
    for (int i = 0; i < 10; ++i) {
        ExpectSameAsPlain(input.Number(1, 30), input.Number(1, 30), input.Number(1, 20),
                          {AnyPoint(32767), AnyPoint(32767)});
    }
    ExpectSameAsPlain(30, 20, 20, {At(32767, 32767)});
    ExpectSameAsPlain(30, 20, 20, {At(-32768, -32768)});
}

TEST_F(BrushTest, StampsAtNoPlaceAtAllAreSafe) {
    Canvas canvas(*this, 30, 20);
    const BrushStroke stroke(canvas.pic);
    for (const double wild : {std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300,
                              std::numeric_limits<double>::infinity(), 1e15}) {
        PaintClass::StampBrush(wild, 3, &canvas.pic);
        PaintClass::StampBrush(3, wild, &canvas.pic);
        PaintClass::StampBrush(wild, -wild, &canvas.pic);
    }
}

TEST_F(BrushTest, StampsNeedAStroke) {
    Canvas canvas(*this, 30, 20);
    const std::vector<Pixel> before = PixelsOf(canvas.pic);
    PaintClass::StampBrush(3, 3, &canvas.pic);
    EXPECT_EQ(PixelsOf(canvas.pic), before);
}

TEST_F(BrushTest, ASizeThatMadeNoTableStaysWithinIt) {
    Canvas canvas(*this, 50, 50);
    const BrushStroke stroke(canvas.pic);
    for (const short size : std::initializer_list<short>{21, 32767, -32768}) {
        canvas.pic.brushSize = size;
        PaintClass::StampBrush(25, 25, &canvas.pic);
    }
}

TEST_F(BrushTest, AStrokeAcrossTheRightEdgeComesInOnTheLeft) {
    const std::vector<Pixel> across = Pressed(11, 40, 30, At(39, 10));
    const std::vector<Pixel> inside = Pressed(11, 40, 30, At(19, 10));
    for (std::size_t y = 0; y < 30; ++y) {
        for (std::size_t x = 0; x < 40; ++x) {
            ASSERT_EQ(across[y * 40 + (x + 20) % 40], inside[y * 40 + x]) << x << ", " << y;
        }
    }
    EXPECT_EQ(across[10 * 40 + 39], Color(255, 255, 255));
    EXPECT_EQ(across[10 * 40], Color(240, 240, 240));
}

TEST_F(BrushTest, AStampOnACornerShowsInAllFour) {
    const std::vector<Pixel> pixels = Pressed(20, 64, 48, At(0, 0));
    for (const std::size_t corner :
         std::initializer_list<std::size_t>{0, 63, 47 * 64, 47 * 64 + 63}) {
        EXPECT_EQ(pixels[corner], Color(255, 255, 255)) << corner;
    }
}

TEST_F(BrushTest, TwiceWithinAStrokeIsOnceButTwoStrokesBlendAgain) {
    // Level, so that the way back falls on the same places to the last bit.
    const Path once = {At(10, 10), At(25, 10)};
    const Path twice = {At(10, 10), At(25, 10), At(10, 10)};
    Canvas first(*this, 40, 30);
    Canvas second(*this, 40, 30);
    PaintStroke<BrushStroke>(first.pic, once);
    PaintStroke<BrushStroke>(second.pic, twice);
    EXPECT_EQ(PixelsOf(first.pic), PixelsOf(second.pic));
    const std::vector<Pixel> painted = PixelsOf(first.pic);
    PaintStroke<BrushStroke>(first.pic, once);
    EXPECT_NE(PixelsOf(first.pic), painted);
}

TEST_F(BrushTest, AnotherPressAtTheSamePlaceChangesNothingWithinAStroke) {
    Canvas canvas(*this, 40, 30);
    BrushStroke stroke(canvas.pic);
    stroke.Paint(At(12, 12), At(12, 12));
    const std::vector<Pixel> painted = PixelsOf(canvas.pic);
    stroke.Paint(At(12, 12), At(12, 12));
    EXPECT_EQ(PixelsOf(canvas.pic), painted);
}

TEST_F(BrushTest, TheColorThatIsThereLosesOneStepAtMost) {
    Canvas canvas(*this, 40, 30);
    canvas.pic.FillColor(foreground);
    PaintStroke<BrushStroke>(canvas.pic, {At(5, 5), At(31, 22)});
    for (const Pixel pixel : ColorsOf(canvas.pic)) {
        EXPECT_GE(pixel & 0xFF, 0xFEu);
        EXPECT_GE(pixel >> 8 & 0xFF, 0x7Fu);
        EXPECT_GE(pixel >> 16, 0x1Fu);
        EXPECT_LE(pixel & 0xFF, 0xFFu);
        EXPECT_LE(pixel >> 8 & 0xFF, 0x80u);
        EXPECT_LE(pixel >> 16, 0x20u);
    }
}

TEST_F(BrushTest, SizesTwoAndThreePaintOnePixel) {
    for (const short size : std::initializer_list<short>{2, 3}) {
        const std::vector<Pixel> pixels = Pressed(size, 20, 10, At(7, 4));
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            EXPECT_EQ(pixels[i], i == 4 * 20 + 7 ? Color(255, 255, 255) : 0u) << i;
        }
    }
    EXPECT_EQ(Pressed(1, 20, 10, At(7, 4)), std::vector<Pixel>(200, 0)) << "no radius";
}

TEST_F(BrushTest, AnOddSizeLeavesTheLastRowAndColumnOut) {
    // 2 * 5 rows and columns of a table of 11, from 5 before the position on.
    const std::vector<Pixel> pixels = Pressed(11, 30, 30, At(15, 15));
    EXPECT_EQ(pixels[15 * 30 + 11], Color(60, 60, 60));
    EXPECT_EQ(pixels[15 * 30 + 19], Color(60, 60, 60));
    foreground = white16;
    Canvas canvas(*this, 30, 30);
    canvas.pic.FillColor(black16);
    canvas.pic.brushSize = 11;
    const BrushStroke stroke(canvas.pic);
    FillTable(200);
    PaintClass::StampBrush(15, 15, &canvas.pic);
    EXPECT_EQ(canvas.pic.GetAlpha(10, 10), 200);
    EXPECT_EQ(canvas.pic.GetAlpha(19, 19), 200);
    EXPECT_EQ(canvas.pic.GetAlpha(20, 15), 0);
    EXPECT_EQ(canvas.pic.GetAlpha(15, 20), 0);
}

TEST_F(BrushTest, IsTheSameWhereverTheTileBegins) {
    for (int i = 0; i < 30; ++i) {
        const short width = input.Number(1, 50);
        const short height = input.Number(1, 50);
        const short dx = input.Number(0, 60);
        const short dy = input.Number(0, 60);
        const short x = input.Number(0, 60);
        const short y = input.Number(0, 60);
        const short length = input.Number(0, 60);
        Canvas canvas(*this, width, height);
        Canvas shifted(*this, width, height);
        Canvas back(*this, width, height);
        CopyShifted(canvas.pic, shifted.pic, dx, dy);
        PaintStroke<BrushStroke>(canvas.pic, {At(x, y), At(x + length, y)});
        PaintStroke<BrushStroke>(shifted.pic, {At(x + dx, y + dy), At(x + dx + length, y + dy)});
        CopyShifted(shifted.pic, back.pic, -dx, -dy);
        ASSERT_EQ(PixelsOf(back.pic), PixelsOf(canvas.pic)) << width << " by " << height;
    }
}

TEST_F(BrushTest, TheSeamIsNoPlaceOfItsOwnToTheLeftOfTheTile) {
    // Between 0 and -W the lifted position is above 0, so it truncates as everywhere.
    Canvas left(*this, 40, 30);
    Canvas inside(*this, 40, 30);
    PaintStroke<BrushStroke>(left.pic, {At(-30, -20), At(-23, -17)});
    PaintStroke<BrushStroke>(inside.pic, {At(10, 10), At(17, 13)});
    EXPECT_EQ(PixelsOf(left.pic), PixelsOf(inside.pic));
}

TEST_F(BrushTest, PlotPixelPaintsTheForegroundAndClearsTheAlphaByte) {
    Canvas canvas(*this, 7, 5);
    std::vector<Pixel> expected = PixelsOf(canvas.pic);
    PaintClass::PlotPixel(-1, 5, &canvas.pic);
    expected[6] = RasterPixel(foreground, 0);
    EXPECT_EQ(PixelsOf(canvas.pic), expected);
    PaintClass::PlotPixel(32767, -32768, &canvas.pic);
    expected[static_cast<std::size_t>(Wrap(-32768, 5)) * 7 + static_cast<std::size_t>(32767 % 7)] =
        RasterPixel(foreground, 0);
    EXPECT_EQ(PixelsOf(canvas.pic), expected);
}

TEST_F(BrushTest, WithoutAnEditorTheForegroundIsBlack) {
    PaintClass pic(4, 4);
    PaintClass::PlotPixel(1, 1, &pic);
    EXPECT_EQ(pic.GetPixel(1, 1), 0u);
    pic.brushSize = 2;
    PaintStroke<BrushStroke>(pic, {At(2, 2)});
    EXPECT_EQ(pic.GetPixel(2, 2), 0xFF000000u);
}

}  // namespace

#include "plain/PlainTools.h"
#include "tests/support/ToolTest.h"

namespace {

class GradientTest : public ToolTest {
  protected:
    void ExpectSameAsPlain(short width, short height, hostapi::Point from, hostapi::Point to) {
        foreground = AnyColor();
        background = AnyColor();
        Canvas fast(*this, width, height);
        Canvas plain(*this, width, height);
        fast.pic.Gradient(from, to);
        PlainGradient(plain.pic, from, to);
        ASSERT_EQ(PixelsOf(fast.pic), PixelsOf(plain.pic))
            << width << " by " << height << " from " << from.h << ", " << from.v << " to " << to.h
            << ", " << to.v;
        ASSERT_TRUE(fast.pic.changed);
    }

    /// The red of each row of a texture that was 7 before, with black as the foreground and 0xC800
    /// as the background.
    std::vector<unsigned> RedOfRows(int fromY, int toY) {
        foreground = black16;
        background = {0xC800, 0, 0};
        Canvas canvas(*this, 3, 40);
        canvas.pic.FillColor({0x0700, 0, 0});
        canvas.pic.Gradient(At(1, fromY), At(1, toY));
        std::vector<unsigned> reds;
        for (short y = 0; y < 40; ++y) {
            reds.push_back(canvas.pic.GetPixel(0, y) & 0xFF);
            EXPECT_EQ(canvas.pic.GetPixel(2, y) & 0xFF, reds.back());
        }
        return reds;
    }
};

TEST_F(GradientTest, IsTheSameAsThePlainOne) {
    for (int i = 0; i < 400; ++i) {
        const hostapi::Point from = AnyPoint(100);
        hostapi::Point to = AnyPoint(100);
        (i % 2 == 0 ? to.h : to.v) = i % 2 == 0 ? from.h : from.v;
        ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 40), from, to);
    }
    ExpectSameAsPlain(512, 511, At(-100, 0), At(900, 0));
    ExpectSameAsPlain(511, 512, At(0, 511), At(0, 1));
    ExpectSameAsPlain(5, 4, At(-32768, 0), At(32767, 0));
    ExpectSameAsPlain(5, 4, At(0, 32767), At(0, -32768));
}

TEST_F(GradientTest, DownwardsTheForegroundIsAtTheTop) {
    const std::vector<unsigned> reds = RedOfRows(10, 20);
    EXPECT_EQ(reds[9], 7u);
    EXPECT_EQ(reds[10], 0u);
    EXPECT_EQ(reds[15], 100u);
    EXPECT_EQ(reds[19], 180u) << "a tenth short of the background";
    EXPECT_EQ(reds[20], 7u);
}

TEST_F(GradientTest, UpwardsTheBackgroundIsAtTheTop) {
    const std::vector<unsigned> reds = RedOfRows(20, 10);
    EXPECT_EQ(reds[9], 7u);
    EXPECT_EQ(reds[10], 200u);
    EXPECT_EQ(reds[19], 20u);
    EXPECT_EQ(reds[20], 7u) << "where the drag began";
}

TEST_F(GradientTest, WrapsAtTheEdge) {
    const std::vector<unsigned> reds = RedOfRows(-5, 5);
    EXPECT_EQ(reds[34], 7u);
    EXPECT_EQ(reds[35], 0u);
    EXPECT_EQ(reds[39], 80u);
    EXPECT_EQ(reds[0], 100u);
    EXPECT_EQ(reds[4], 180u);
    EXPECT_EQ(reds[5], 7u);
}

TEST_F(GradientTest, LongerThanTheTileTheLaterRowsStand) {
    const std::vector<unsigned> reds = RedOfRows(0, 50);
    EXPECT_EQ(reds[9], 196u) << "49 of 50";
    EXPECT_EQ(reds[10], 40u) << "10 of 50";
}

TEST_F(GradientTest, AClickPaintsNothing) {
    Canvas canvas(*this, 20, 20);
    const std::vector<Pixel> before = PixelsOf(canvas.pic);
    canvas.pic.Gradient(At(5, 5), At(5, 5));
    EXPECT_EQ(PixelsOf(canvas.pic), before);
}

TEST_F(GradientTest, AcrossItPaintsWholeColumnsAndLeavesTheAlphaBytes) {
    Canvas canvas(*this, 20, 20);
    const std::vector<Pixel> before = PixelsOf(canvas.pic);
    canvas.pic.Gradient(At(18, 7), At(22, 7));
    const std::vector<Pixel> after = PixelsOf(canvas.pic);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const std::size_t x = i % 20;
        EXPECT_EQ(after[i] >> 24, before[i] >> 24);
        if (x >= 2 && x < 18) {
            EXPECT_EQ(after[i], before[i]);
        } else {
            EXPECT_EQ(after[i] & 0xFFFFFF, after[x] & 0xFFFFFF);
        }
    }
    EXPECT_EQ(after[18] & 0xFFFFFF, RasterPixel(foreground, 0));
}

TEST_F(GradientTest, BetweenEqualColorsRepaintsInThatColor) {
    background = foreground;
    Canvas canvas(*this, 20, 20);
    canvas.pic.Gradient(At(0, 3), At(0, 8));
    for (short y = 3; y < 8; ++y) {
        EXPECT_EQ(canvas.pic.GetPixel(9, y) & 0xFFFFFF, RasterPixel(foreground, 0));
    }
}

TEST_F(GradientTest, TheRampHasSixteenBits) {
    foreground = {0x00FF, 0, 0};
    background = {0x0101, 0, 0};
    Canvas canvas(*this, 1, 4);
    canvas.pic.Gradient(At(0, 0), At(0, 4));
    // 0xFF, 0xFF, 0x100, 0x100 before the high byte is taken.
    EXPECT_EQ(canvas.pic.GetPixel(0, 0) & 0xFF, 0u);
    EXPECT_EQ(canvas.pic.GetPixel(0, 1) & 0xFF, 0u);
    EXPECT_EQ(canvas.pic.GetPixel(0, 2) & 0xFF, 1u);
    EXPECT_EQ(canvas.pic.GetPixel(0, 3) & 0xFF, 1u);
}

TEST_F(GradientTest, ASlantFailsItsAssertion) {
    Canvas canvas(*this, 20, 20);
    const std::vector<Pixel> before = PixelsOf(canvas.pic);
    EXPECT_EQ(AssertionOf([&] { canvas.pic.Gradient(At(1, 1), At(2, 2)); }),
              "PaintClass6 / Zeile 579 !(false)");
    EXPECT_EQ(PixelsOf(canvas.pic), before);
    EXPECT_FALSE(canvas.pic.changed);
}

TEST_F(GradientTest, WithoutAnEditorItGoesFromBlackToWhite) {
    PaintClass pic(2, 2);
    pic.Gradient(At(0, 0), At(0, 2));
    EXPECT_EQ(ColorsOf(pic),
              (std::vector<Pixel>{0, 0, Color(127, 127, 127), Color(127, 127, 127)}));
}

TEST_F(GradientTest, IsTheSameWhereverTheTileBegins) {
    for (int i = 0; i < 30; ++i) {
        const short width = input.Number(1, 50);
        const short height = input.Number(1, 50);
        const int dx = input.Number(-200, 200);
        const int dy = input.Number(-200, 200);
        const hostapi::Point from = AnyPoint(100);
        hostapi::Point to = from;
        (i % 2 == 0 ? to.h : to.v) = input.Number(-100, 100);
        Canvas canvas(*this, width, height);
        Canvas shifted(*this, width, height);
        Canvas back(*this, width, height);
        CopyShifted(canvas.pic, shifted.pic, dx, dy);
        canvas.pic.Gradient(from, to);
        shifted.pic.Gradient(At(from.h + dx, from.v + dy), At(to.h + dx, to.v + dy));
        CopyShifted(shifted.pic, back.pic, -dx, -dy);
        ASSERT_EQ(PixelsOf(back.pic), PixelsOf(canvas.pic));
    }
}

}  // namespace

#include "paint/PaintClass.h"

#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

namespace {

class PaintClassTest : public CoreTest {};

TEST_F(PaintClassTest, StartsUnchangedWithUndo) {
    const PaintClass pic(5, 4);
    EXPECT_FALSE(pic.changed);
    EXPECT_EQ(pic.cut, nullptr);
    EXPECT_EQ(pic.foreColor, nullptr);
    EXPECT_EQ(pic.backColor, nullptr);
    EXPECT_EQ(pic.brushSize, 11);
    EXPECT_EQ(pic.stampSize, 16);
    EXPECT_EQ(pic.stampOffsetH, 0);
    EXPECT_EQ(pic.stampOffsetV, 0);
    EXPECT_EQ(pic.fillTolerance, 25);
    EXPECT_EQ(pic.fillAntiAlias, 1);
    EXPECT_NE(pic.undo, nullptr);
}

TEST_F(PaintClassTest, FillColorTakesHighBytesAndLeavesAlpha) {
    PaintClass pic(5, 4);
    FillWithNoise(pic);
    std::vector<Pixel> expected = PixelsOf(pic);
    for (Pixel& pixel : expected) {
        pixel = (pixel & 0xFF000000) | Color(0x12, 0x7F, 0xFF);
    }
    pic.FillColor({0x12FF, 0x7FFF, 0xFF00});
    EXPECT_EQ(PixelsOf(pic), expected);
    EXPECT_TRUE(pic.changed);
}

TEST_F(PaintClassTest, FillWhiteIsWhite) {
    PaintClass pic(5, 4);
    FillWithNoise(pic);
    pic.FillWhite();
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(20, Color(255, 255, 255)));
}

TEST_F(PaintClassTest, OperationsOnARasterWithoutPixelsFailTheirAssertion) {
    memory.FailAllocation(1);
    PaintClass pic(5, 4);
    ASSERT_EQ(pic.pixelMap, nullptr);
    EXPECT_EQ(AssertionOf([&] { pic.FillWhite(); }), "PicClass / Zeile 249 !(locked)");
    EXPECT_EQ(AssertionOf([&] { pic.Lines(LinesParams{}); }), "PicClass / Zeile 249 !(locked)");
}

TEST_F(PaintClassTest, DisposeCutDeletesAndCounts) {
    PaintClass pic(5, 4);
    pic.cut = std::make_unique<PicClass>(short{2}, short{2}, false);
    pic.DisposeCut();
    EXPECT_EQ(pic.cut, nullptr);
    EXPECT_TRUE(pic.changed);
    EXPECT_EQ(AssertionOf([&] { pic.DisposeCut(); }), "PaintClass4 / Zeile 66 !(cut != nil)");
}

TEST_F(PaintClassTest, DeletesItsCut) {
    // CoreTest finds what is left.
    PaintClass pic(5, 4);
    pic.cut = std::make_unique<PicClass>(short{2}, short{2}, false);
}

TEST_F(PaintClassTest, TheProductTableRoundsEveryProductDown) {
    const PaintClass pic(1, 1);
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            ASSERT_EQ(productTable[a][b], a * b / 255) << a << " " << b;
        }
    }
}

}  // namespace

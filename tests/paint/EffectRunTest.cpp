#include "paint/EffectRun.h"

#include <initializer_list>
#include <vector>

#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/Shifting.h"

namespace {

class EffectRunTest : public CoreTest {
  protected:
    EffectRunTest() {
        FillWithNoise(pic);
        FillWithNoise(expected);
    }

    PaintClass pic{23, 17};
    PaintClass expected{23, 17};
};

TEST_F(EffectRunTest, TheAmountOfABlurIsTwentiethsOfItsRadius) {
    EXPECT_TRUE(RunBlur(pic, {.amount = 37, .direction = 6}));
    bool stopped = false;
    expected.Blur(37 * 0.05, 1, nullptr, 0, &stopped);
    EXPECT_EQ(ColorsOf(pic), ColorsOf(expected));
}

TEST_F(EffectRunTest, TheAmountOfAMotionBlurIsFourTimesItsLength) {
    EXPECT_TRUE(RunBlur(pic, {.amount = 39, .motion = 1, .direction = 6}));
    expected.MotionBlur(9, 6);
    EXPECT_EQ(PixelsOf(pic), PixelsOf(expected));
}

TEST_F(EffectRunTest, ASmallMotionBlurChangesNothing) {
    for (std::int16_t amount = 1; amount <= 3; ++amount) {
        EXPECT_TRUE(RunBlur(pic, {.amount = amount, .motion = 1}));
    }
    EXPECT_EQ(PixelsOf(pic), PixelsOf(expected));
    EXPECT_FALSE(pic.changed);
}

/// More passes than the dialog gives end when nothing changes any more, as if all had run.
TEST_F(EffectRunTest, ManyPassesOfSharpenAreTheSameAsAllOfThem) {
    for (const short passes : std::initializer_list<short>{5, 6, 7, 10, 25, 200, 3000}) {
        PaintClass pic(21, 14);
        PaintClass expected(21, 14);
        FillWithNoise(pic);
        CopyShifted(pic, expected, 0, 0);
        EXPECT_TRUE(RunSharpen(pic, {.passes = passes}));
        for (short pass = 0; pass < passes; ++pass) {
            expected.Sharpen();
        }
        EXPECT_EQ(ColorsOf(pic), ColorsOf(expected)) << passes;
    }
}

TEST_F(EffectRunTest, SharpenGoesOnWithoutMemoryForAPass) {
    memory.FailAllocation(1);
    EXPECT_FALSE(RunSharpen(pic, {.passes = 3}));
    expected.Sharpen();
    expected.Sharpen();
    EXPECT_EQ(ColorsOf(pic), ColorsOf(expected));
}

TEST_F(EffectRunTest, OnlyTexturesOfTheSameSizeAreCombined) {
    PaintClass narrow(22, 17);
    PaintClass low(23, 16);
    EXPECT_FALSE(RunCombine(pic, narrow, 50, 1));
    EXPECT_FALSE(RunCombine(pic, low, 50, 1));
    EXPECT_EQ(PixelsOf(pic), PixelsOf(expected));
    EXPECT_TRUE(RunCombine(pic, expected, 100, 1));
}

TEST_F(EffectRunTest, ANewTextureGetsTheColorsAndIsItsOwnUndo) {
    const RGBColor16 fore = black16;
    const RGBColor16 back = white16;
    pic.SetColors(&fore, &back);
    for (const auto& texture : {RunTile(pic, 2, 3), RunResize(pic, 46, 51)}) {
        ASSERT_NE(texture, nullptr);
        EXPECT_EQ(texture->grX, 46);
        EXPECT_EQ(texture->grY, 51);
        EXPECT_EQ(texture->foreColor, &fore);
        EXPECT_EQ(texture->backColor, &back);
        const std::vector<Pixel> pixels = PixelsOf(*texture);
        texture->SwapUndo();
        EXPECT_EQ(PixelsOf(*texture), pixels);
    }
}

TEST_F(EffectRunTest, WithoutMemoryThereIsNoNewTexture) {
    // The pixels and the block that has to be left; the undo store goes to the disk.
    for (const int nth : {1, 3}) {
        memory.FailAllocation(nth);
        EXPECT_EQ(RunTile(pic, 2, 2), nullptr);
        memory.FailAllocation(nth);
        EXPECT_EQ(RunResize(pic, 5, 5), nullptr);
    }
    memory.FailAllocation(0);
    EXPECT_EQ(RunTile(pic, 0, 1), nullptr);
    EXPECT_EQ(RunTile(pic, 1, 2000), nullptr) << "more than 16 bits hold";
    EXPECT_EQ(RunResize(pic, 0, 5), nullptr);
    EXPECT_EQ(RunResize(pic, 5, -1), nullptr);
}

TEST_F(EffectRunTest, MoveGoesToTheRightAndDownAndLeavesNoClone) {
    EXPECT_TRUE(RunMove(pic, 4, -2));
    EXPECT_EQ(pic.GetPixel(4, 15), expected.GetPixel(0, 0));
    EXPECT_EQ(pic.clone, nullptr);
    memory.FailAllocation(1);
    EXPECT_FALSE(RunMove(pic, 1, 1));
    memory.FailAllocation(0);
    EXPECT_EQ(pic.GetPixel(4, 15), expected.GetPixel(0, 0));
}

}  // namespace

#include <vector>

#include "paint/PaintClass.h"
#include "plain/PlainColors.h"
#include "tests/support/BusyCursor.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class CombineTest : public CoreTest {
  protected:
    void ExpectSameAsPlain(short width, short height, std::int16_t amount, std::int32_t mode) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        PaintClass other(width, height);
        FillWithNoise(fast, input.Seed());
        FillWithNoise(other, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        const CombineRecord what{amount, mode, &fast, &other};
        fast.Combine(&what);
        PlainCombine(plain, {amount, mode, &plain, &other});
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain)) << amount << " percent in mode " << mode;
        ASSERT_TRUE(fast.changed);
    }

    RandomInput input{53};
};

/// Returns one pixel combined with another.
Pixel Combined(Pixel target, Pixel other, std::int16_t amount, std::int32_t mode) {
    PaintClass pic(1, 1);
    PaintClass otherPic(1, 1);
    pic.SetPixel(0, 0, target);
    otherPic.SetPixel(0, 0, other);
    const CombineRecord what{amount, mode, &pic, &otherPic};
    pic.Combine(&what);
    return pic.GetPixel(0, 0);
}

TEST_F(CombineTest, TheSameAsThePlainLoopForAnyRecordAndSize) {
    WithBothCompilations([&] {
        for (int i = 0; i < 600; ++i) {
            ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 20), input.Number(0, 100),
                              input.Number(1, 3));
        }
        for (std::int32_t mode = 1; mode <= 3; ++mode) {
            ExpectSameAsPlain(511, 64, 100, mode);
            ExpectSameAsPlain(1, 512, 63, mode);
        }
    });
}

TEST_F(CombineTest, TheSameAsThePlainLoopForRecordsOfAnyBytes) {
    for (int i = 0; i < 300; ++i) {
        const auto amount = input.AnyBytes<std::int16_t>();
        ExpectSameAsPlain(input.Number(1, 20), input.Number(1, 20), amount,
                          i % 2 == 0 ? input.AnyBytes<std::int32_t>() : i % 5);
    }
}

TEST_F(CombineTest, BlendingNothingLeavesTheTexture) {
    PaintClass pic(40, 40);
    PaintClass other(40, 40);
    FillWithNoise(pic, 1);
    FillWithNoise(other, 2);
    const std::vector<Pixel> before = PixelsOf(pic);
    for (const std::int32_t mode : {1, 2}) {
        const CombineRecord what{0, mode, &pic, &other};
        pic.Combine(&what);
        EXPECT_EQ(PixelsOf(pic), before) << mode;
    }
    const CombineRecord what{0, 3, &pic, &other};
    pic.Combine(&what);
    for (short y = 0; y < 40; ++y) {
        for (short x = 0; x < 40; ++x) {
            for (int c = 0; c < 3; ++c) {
                const int loss =
                    static_cast<int>(before[static_cast<std::size_t>(y * 40 + x)] >> 8 * c & 0xFF) -
                    pic.PixelAddress(x, y)[c];
                ASSERT_TRUE(loss == 0 || loss == 1) << "a step through the colour model";
            }
        }
    }
}

TEST_F(CombineTest, BlendingAllReplacesTheTexture) {
    PaintClass pic(40, 40);
    PaintClass other(40, 40);
    FillWithNoise(pic, 1);
    FillWithNoise(other, 2);
    const CombineRecord what{100, 1, &pic, &other};
    pic.Combine(&what);
    EXPECT_EQ(ColorsOf(pic), ColorsOf(other));
}

TEST_F(CombineTest, MiddleGreyHasNoStructure) {
    const Pixel color = Color(10, 200, 90);
    EXPECT_EQ(Combined(color, Color(128, 128, 128), 100, 2), color);
    EXPECT_EQ(Combined(color, Color(127, 127, 127), 100, 2), Color(8, 198, 88));
    EXPECT_EQ(Combined(color, Color(255, 255, 255), 100, 2), Color(255, 255, 255));
    EXPECT_EQ(Combined(color, Color(0, 0, 0), 10, 2), Color(0, 175, 65));
}

TEST_F(CombineTest, TheOtherTexturesGreyTurnsTheHue) {
    // 188 is 60 above the middle; twice that turns red into green.
    EXPECT_EQ(Combined(Color(255, 0, 0), Color(188, 188, 188), 100, 3), Color(0, 255, 0));
    EXPECT_EQ(Combined(Color(255, 0, 0), Color(68, 68, 68), 100, 3), Color(0, 0, 255));
    EXPECT_EQ(Combined(Color(255, 0, 0), Color(128, 128, 128), 100, 3), Color(255, 0, 0));
    // A grey has no hue; this one loses a step through the colour model.
    EXPECT_EQ(Combined(Color(90, 90, 90), Color(250, 9, 77), 100, 3), Color(89, 89, 89));
}

/// 0 - 120 - 256 degrees come back by one turn only, to -16: 255 * -16 / 60, truncated, is -68.
TEST_F(CombineTest, AHueTurnedTooFarKeepsTheLowBits) {
    EXPECT_EQ(Combined(Color(255, 0, 0), Color(0, 0, 0), 100, 3) >> 16, 256u - 68u);
}

TEST_F(CombineTest, AlphaBytesStay) {
    for (std::int32_t mode = 1; mode <= 3; ++mode) {
        EXPECT_EQ(Combined(0xAB123456, 0xCD654321, 70, mode) >> 24, 0xABu);
    }
}

TEST_F(CombineTest, TheResultGoesToTheRasterWhateverTheTarget) {
    for (std::int32_t mode = 1; mode <= 3; ++mode) {
        PaintClass pic(9, 5);
        PaintClass plain(9, 5);
        PaintClass target(9, 5);
        FillWithNoise(pic, 1);
        FillWithNoise(target, 2);
        CopyShifted(pic, plain, 0, 0);
        // The raster itself is the other texture.
        const CombineRecord what{30, mode, &target, &pic};
        pic.Combine(&what);
        PlainCombine(plain, {30, mode, &target, &plain});
        ASSERT_EQ(PixelsOf(pic), PixelsOf(plain)) << mode;
    }
}

TEST_F(CombineTest, ASmallerTextureFailsTheAccessorsAssertion) {
    PaintClass pic(5, 4);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    PaintClass narrow(4, 4);
    PaintClass low(5, 3);
    const char* const outside =
        "PicClass / Zeile 322 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))";
    for (PaintClass* other : {&narrow, &low}) {
        const CombineRecord withOther{50, 1, &pic, other};
        EXPECT_EQ(AssertionOf([&] { pic.Combine(&withOther); }), outside);
        const CombineRecord onOther{50, 1, other, &pic};
        EXPECT_EQ(AssertionOf([&] { pic.Combine(&onOther); }), outside);
    }
    EXPECT_EQ(PixelsOf(pic), before);
}

TEST_F(CombineTest, NeedsNoMemoryAndShowsABusyCursor) {
    PaintClass pic(5, 4);
    PaintClass other(5, 4);
    const int before = memory.Allocations();
    const BusyCursor cursor;
    const CombineRecord what{50, 3, &pic, &other};
    pic.Combine(&what);
    EXPECT_EQ(cursor.Waits(), 1);
    EXPECT_EQ(cursor.Arrows(), 1);
    EXPECT_EQ(memory.Allocations(), before);
}

}  // namespace

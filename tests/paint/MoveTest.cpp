// Flip and the shift of the Move tool.
#include <initializer_list>
#include <vector>

#include "paint/PaintClass.h"
#include "plain/PlainPlaces.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class MoveTest : public CoreTest {
  protected:
    void ExpectSameFlip(short width, short height, short mode) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        fast.Flip(mode);
        PlainFlip(plain, mode);
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain)) << width << " by " << height << ", " << mode;
        ASSERT_TRUE(fast.changed);
    }
    void ExpectSameShift(short width, short height, short dx, short dy) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        ASSERT_NE(fast.GetClone(), nullptr);
        ASSERT_NE(plain.GetClone(), nullptr);
        fast.ShiftBy(dx, dy);
        PlainShiftBy(plain, dx, dy);
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain))
            << width << " by " << height << ", " << dx << ", " << dy;
        ASSERT_TRUE(fast.changed);
        ASSERT_NE(fast.clone, nullptr) << "it lives as long as the drag";
    }

    RandomInput input{55};
};

TEST_F(MoveTest, FlipIsTheSameAsThePlainLoop) {
    for (short height = 1; height <= 9; ++height) {
        for (short width = 1; width <= 9; ++width) {
            for (short mode = 0; mode <= 2; ++mode) {
                ExpectSameFlip(width, height, mode);
            }
        }
    }
    ExpectSameFlip(511, 64, 2);
    ExpectSameFlip(1, 512, 2);
}

TEST_F(MoveTest, AFlipOfNoKindChangesNoPixel) {
    for (const short mode : std::initializer_list<short>{-32768, -1, 3, 32767}) {
        ExpectSameFlip(5, 4, mode);
    }
}

TEST_F(MoveTest, FlipMirrorsWholePixels) {
    PaintClass pic(3, 2);
    for (short i = 0; i < 6; ++i) {
        pic.SetPixel(i % 3, i / 3, static_cast<Pixel>(i) * 0x11111111);
    }
    const auto order = [&] {
        std::vector<Pixel> numbers;
        for (const Pixel pixel : PixelsOf(pic)) {
            numbers.push_back(pixel / 0x11111111);
        }
        return numbers;
    };
    pic.Flip(0);
    EXPECT_EQ(order(), (std::vector<Pixel>{3, 4, 5, 0, 1, 2}));
    pic.Flip(1);
    EXPECT_EQ(order(), (std::vector<Pixel>{5, 4, 3, 2, 1, 0}));
    pic.Flip(2);
    EXPECT_EQ(order(), (std::vector<Pixel>{0, 1, 2, 3, 4, 5}));
}

TEST_F(MoveTest, TwoFlipsOfAKindGiveBackTheImage) {
    for (short mode = 0; mode <= 2; ++mode) {
        PaintClass pic(17, 12);
        FillWithNoise(pic);
        const std::vector<Pixel> before = PixelsOf(pic);
        pic.Flip(mode);
        EXPECT_NE(PixelsOf(pic), before);
        pic.Flip(mode);
        EXPECT_EQ(PixelsOf(pic), before);
    }
}

TEST_F(MoveTest, ShiftByIsTheSameAsThePlainLoop) {
    for (int i = 0; i < 300; ++i) {
        ExpectSameShift(input.Number(1, 40), input.Number(1, 40), input.Number(-100, 100),
                        input.Number(-100, 100));
    }
    ExpectSameShift(511, 64, 13, -7);
    ExpectSameShift(1, 512, 1, 511);
}

/// Positions have 16 bits and wrap within them before they wrap around the tile.
TEST_F(MoveTest, ShiftByAnyDistanceIsTheSameAsThePlainLoop) {
    for (int i = 0; i < 300; ++i) {
        ExpectSameShift(input.Number(1, 40), input.Number(1, 40), input.AnyBytes<short>(),
                        input.AnyBytes<short>());
    }
    for (const short d : std::initializer_list<short>{-32768, -32767, -32760, 32767}) {
        ExpectSameShift(100, 90, d, d);
        ExpectSameShift(7, 9, d, d);
    }
}

TEST_F(MoveTest, ShiftByOneMovesTheContentsBack) {
    PaintClass pic(4, 3);
    FillWithNoise(pic);
    PaintClass expected(4, 3);
    CopyShifted(pic, expected, -1, 2);
    ASSERT_NE(pic.GetClone(), nullptr);
    pic.ShiftBy(1, -2);
    EXPECT_EQ(PixelsOf(pic), PixelsOf(expected));
}

TEST_F(MoveTest, ShiftByTheTilesSizeChangesNoPixel) {
    PaintClass pic(40, 30);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    ASSERT_NE(pic.GetClone(), nullptr);
    pic.ShiftBy(-40, 60);
    EXPECT_EQ(PixelsOf(pic), before);
}

TEST_F(MoveTest, ShiftByNeedsAClone) {
    PaintClass pic(4, 3);
    EXPECT_EQ(AssertionOf([&] { pic.ShiftBy(1, 1); }), "PaintClass6 / Zeile 946 !(clone != nil)");
}

}  // namespace

#include <vector>

#include "paint/PaintClass.h"
#include "paint/records/FilterParams.h"
#include "plain/PlainPlaces.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class MosaicTest : public CoreTest {
  protected:
    /// Alpha bytes included.
    void ExpectSameAsPlain(short width, short height, short blockWidth, short blockHeight) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        fast.Mosaic(blockWidth, blockHeight);
        PlainMosaic(plain, blockWidth, blockHeight);
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain))
            << width << " by " << height << " in " << blockWidth << " by " << blockHeight;
        ASSERT_TRUE(fast.changed);
    }

    RandomInput input{54};
};

TEST_F(MosaicTest, TheSameAsThePlainLoopForAnyBlockAndSize) {
    for (short blockHeight = 1; blockHeight <= 9; ++blockHeight) {
        for (short blockWidth = 1; blockWidth <= 9; ++blockWidth) {
            ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 40), blockWidth, blockHeight);
            ExpectSameAsPlain(input.Number(1, 9), input.Number(1, 9), blockWidth, blockHeight);
        }
    }
    ExpectSameAsPlain(1, 512, 3, 7);
    ExpectSameAsPlain(511, 64, 9, 8);
}

TEST_F(MosaicTest, BlocksLargerThanTheTileAreTheSameAsThePlainLoopToo) {
    for (int i = 0; i < 200; ++i) {
        ExpectSameAsPlain(input.Number(1, 12), input.Number(1, 12), input.Number(1, 60),
                          input.Number(1, 60));
    }
}

TEST_F(MosaicTest, BlocksOfAnySizeAreSafe) {
    for (int i = 0; i < 300; ++i) {
        PaintClass pic(input.Number(1, 12), input.Number(1, 12));
        FillWithNoise(pic, input.Seed());
        const auto params = input.AnyBytes<MosaicParams>();
        pic.Mosaic(params.horizontal, params.vertical);
        EXPECT_EQ(pic.changed, params.horizontal > 0 && params.vertical > 0);
    }
    PaintClass pic(3, 2);
    pic.FillColor({0xFF00, 0xFF00, 0x0100});
    pic.Mosaic(32767, 32767);
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(6, Color(255, 255, 1))) << "the sums have 64 bits";
}

TEST_F(MosaicTest, BlocksOfNoSizeChangeNothing) {
    PaintClass pic(9, 9);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    pic.Mosaic(0, 3);
    pic.Mosaic(3, -1);
    EXPECT_EQ(PixelsOf(pic), before);
}

TEST_F(MosaicTest, BlocksOfOneChangeNothingButCount) {
    PaintClass pic(9, 9);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    pic.Mosaic(1, 1);
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_TRUE(pic.changed);
}

TEST_F(MosaicTest, ABlockIsItsAverageRoundedDown) {
    PaintClass pic(3, 3);
    for (short i = 0; i < 9; ++i) {
        pic.SetPixel(i % 3, i / 3, Color(0, i == 4 ? 255 : 0, 100) | static_cast<Pixel>(i) << 24);
    }
    pic.Mosaic(3, 3);
    // The alpha byte is that of the last pixel.
    EXPECT_EQ(PixelsOf(pic), std::vector<Pixel>(9, Color(0, 28, 100) | 0x08000000));
}

/// 43 blocks of 3 come to 129 columns.
TEST_F(MosaicTest, TheLastBlockWrapsAndOverwritesTheFirstColumn) {
    PaintClass pic(128, 3);
    FillWithNoise(pic);
    pic.Mosaic(3, 3);
    EXPECT_EQ(pic.GetPixel(0, 0), pic.GetPixel(127, 0));
    EXPECT_EQ(pic.GetPixel(1, 0), pic.GetPixel(2, 0)) << "what is left of the first block";
    EXPECT_NE(pic.GetPixel(1, 0), pic.GetPixel(0, 0));
    EXPECT_NE(pic.GetPixel(2, 0), pic.GetPixel(3, 0));
}

TEST_F(MosaicTest, ABlockWiderThanTheTileCountsItsFirstColumnTwice) {
    PaintClass pic(7, 1);
    pic.FillColor({});
    pic.SetRGB(0, 0, 80, 0, 0);
    pic.SetRGB(1, 0, 0, 80, 0);
    pic.Mosaic(8, 1);
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(7, Color(20, 10, 0)));
}

TEST_F(MosaicTest, ASecondPassChangesOnlyTheEdge) {
    PaintClass pic(32, 9);
    FillWithNoise(pic);
    pic.Mosaic(3, 3);
    const std::vector<Pixel> first = PixelsOf(pic);
    pic.Mosaic(3, 3);
    const std::vector<Pixel> second = PixelsOf(pic);
    EXPECT_NE(second, first);
    for (std::size_t i = 0; i < first.size(); ++i) {
        const std::size_t x = i % 32;
        if (x >= 3 && x < 30) {
            ASSERT_EQ(second[i], first[i]);
        }
    }
}

TEST_F(MosaicTest, IsTheSameWhereverTheTileBeginsIfTheGridDoes) {
    PaintClass pic(24, 20);
    PaintClass shifted(24, 20);
    PaintClass back(24, 20);
    FillWithNoise(pic);
    CopyShifted(pic, shifted, 8, 15);
    pic.Mosaic(4, 5);
    shifted.Mosaic(4, 5);
    CopyShifted(shifted, back, -8, -15);
    EXPECT_EQ(PixelsOf(back), PixelsOf(pic));
}

TEST_F(MosaicTest, NeedsNoMemory) {
    PaintClass pic(9, 9);
    const int before = memory.Allocations();
    pic.Mosaic(4, 5);
    EXPECT_EQ(memory.Allocations(), before);
}

}  // namespace

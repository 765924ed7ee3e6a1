#include "paint/Resize.h"

#include <cfloat>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "plain/PlainPlaces.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"

namespace {

class ResizeTest : public CoreTest {
  protected:
    RandomInput input{56};
};

TEST_F(ResizeTest, CopyTiledIsTheSameAsThePlainLoop) {
    for (int i = 0; i < 100; ++i) {
        PicClass from(input.Number(1, 20), input.Number(1, 20), false);
        PicClass fast(input.Number(1, 50), input.Number(1, 50), false);
        PicClass plain(fast.grX, fast.grY, false);
        FillWithNoise(from, input.Seed());
        CopyTiled(from, fast);
        PlainCopyTiled(from, plain);
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain));
    }
}

TEST_F(ResizeTest, CopyTiledRepeatsAllOfEachPixel) {
    PicClass from(2, 1, false);
    from.SetPixel(0, 0, 0x11223344);
    from.SetPixel(1, 0, 0x55667788);
    PicClass to(4, 2, false);
    CopyTiled(from, to);
    EXPECT_EQ(PixelsOf(to), (std::vector<Pixel>{0x11223344, 0x55667788, 0x11223344, 0x55667788,
                                                0x11223344, 0x55667788, 0x11223344, 0x55667788}));
}

TEST_F(ResizeTest, CopyResampledTakesTheNearestToTheUpperLeft) {
    PicClass from(3, 2, false);
    for (short i = 0; i < 6; ++i) {
        from.SetPixel(i % 3, i / 3, static_cast<Pixel>(i) * 0x11111111);
    }
    PicClass to(6, 1, false);
    CopyResampled(from, to);
    EXPECT_EQ(PixelsOf(to),
              (std::vector<Pixel>{0, 0, 0x11111111, 0x11111111, 0x22222222, 0x22222222}));
    PicClass smaller(1, 1, false);
    CopyResampled(from, smaller);
    EXPECT_EQ(smaller.GetPixel(0, 0), 0u);
}

TEST_F(ResizeTest, TheSameSizeIsTheSamePicture) {
    for (short side = 1; side <= 512; side = static_cast<short>(side + 37)) {
        PicClass from(side, 3, false);
        PicClass to(side, 3, false);
        FillWithNoise(from);
        CopyResampled(from, to);
        ASSERT_EQ(PixelsOf(to), PixelsOf(from));
    }
}

TEST_F(ResizeTest, WiderThanAnyTextureIsResampledInStrips) {
    PicClass from(700, 2, false);
    PicClass to(1400, 2, false);
    FillWithNoise(from);
    CopyResampled(from, to);
    for (short x = 0; x < 1400; ++x) {
        ASSERT_EQ(to.GetPixel(x, 1), from.GetPixel(x / 2, 1));
    }
}

/// Every place of every pair of sides is in or next to its exact place.
TEST(ResampledSideTest, RoundingsLoseOnePlaceAtMostAndOnlyWherePlacesAreWhole) {
    int losses = 0;
    for (short oldLength = 1; oldLength <= 512; oldLength = static_cast<short>(oldLength + 7)) {
        for (short newLength = 1; newLength <= 512; ++newLength) {
            const ResampledSide side(oldLength, newLength);
            for (short x = 0; x < newLength; ++x) {
                const int loss = x * oldLength / newLength - side.Place(x);
                ASSERT_TRUE(loss == 0 || (loss == 1 && x * oldLength % newLength == 0))
                    << oldLength << " to " << newLength << " at " << x;
                losses += loss;
            }
        }
    }
    EXPECT_GT(losses, 0);
}

TEST(ResampledSideTest, TheLargestSidesStayWithinTheOld) {
    for (const short oldLength : std::initializer_list<short>{1, 2, 32766, 32767}) {
        for (const short newLength : std::initializer_list<short>{1, 3, 32766, 32767}) {
            const ResampledSide side(oldLength, newLength);
            for (int x = newLength - 1; x >= 0; x -= 997) {
                const int place = side.Place(static_cast<short>(x));
                ASSERT_GE(place, 0);
                ASSERT_LT(place, oldLength);
                ASSERT_LE(place, std::int64_t{x} * oldLength / newLength);
            }
        }
    }
}

/// The places of all sides from 1 to 512 as one number, the same in every build.
TEST(ResampledSideTest, PlacesAreTheSameInEveryBuild) {
    std::uint64_t hash = 14695981039346656037u;
    for (short oldLength = 1; oldLength <= 512; oldLength = static_cast<short>(oldLength + 5)) {
        for (short newLength = 1; newLength <= 512; newLength = static_cast<short>(newLength + 3)) {
            const ResampledSide side(oldLength, newLength);
            for (short x = 0; x < newLength; ++x) {
                hash = (hash ^ static_cast<std::uint64_t>(side.Place(x))) * 1099511628211u;
            }
        }
    }
    EXPECT_EQ(hash, 18099011177865313008u);
}

// Where the processor's own 80-bit arithmetic is at hand, at full precision.
#if LDBL_MANT_DIG == 64 && !defined(_WIN32)

TEST(ResampledSideTest, PlacesAreThoseOfTheExtendedPrecision) {
    for (short oldLength = 1; oldLength <= 512; ++oldLength) {
        for (short newLength = 1; newLength <= 512; ++newLength) {
            const ResampledSide side(oldLength, newLength);
            const long double ratio = static_cast<long double>(oldLength) / newLength;
            // Two whole places, the only kind where anything depends on the precision, and two
            // others.
            for (const int x : {newLength / 2, newLength - 1, newLength / 3, newLength / 5 * 4}) {
                ASSERT_EQ(side.Place(static_cast<short>(x)), static_cast<short>(x * ratio))
                    << oldLength << " to " << newLength << " at " << x;
            }
        }
    }
}

TEST_F(ResizeTest, CopyResampledIsTheSameAsThePlainLoop) {
    for (int i = 0; i < 200; ++i) {
        PicClass from(input.Number(1, 60), input.Number(1, 60), false);
        PicClass fast(input.Number(1, 60), input.Number(1, 60), false);
        PicClass plain(fast.grX, fast.grY, false);
        FillWithNoise(from, input.Seed());
        CopyResampled(from, fast);
        PlainCopyResampled(from, plain);
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain));
    }
}

#endif

}  // namespace

#include <algorithm>
#include <tuple>
#include <vector>

#include "paint/PaintClass.h"
#include "paint/math/Random.h"
#include "plain/PlainTwirls.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class TwirlsTest : public CoreTest {
  protected:
    void ExpectSameAsPlain(short width, short height, const TwirlsParams& params) {
        Log().clock = input.Seed();
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        ASSERT_TRUE(fast.Twirls(params));
        const std::uint32_t seedAfter = Seed();
        ASSERT_TRUE(PlainTwirls(plain, params));
        ASSERT_EQ(Seed(), seedAfter) << "as many draws";
        ASSERT_EQ(ColorsOf(fast), ColorsOf(plain))
            << width << " by " << height << ", " << params.quantity << ", " << params.size << ", "
            << params.intensity;
        ASSERT_TRUE(fast.changed);
        ASSERT_EQ(fast.clone, nullptr);
    }

    static TwirlsParams Params(int quantity, int size, int intensity) {
        TwirlsParams params;
        params.quantity = static_cast<std::int16_t>(quantity);
        params.size = static_cast<std::int16_t>(size);
        params.intensity = static_cast<std::int16_t>(intensity);
        return params;
    }

    TwirlsParams InRange() {
        return Params(input.Number(1, 100), input.Number(1, 100), input.Number(1, 100));
    }

    RandomInput input{22};
};

/// A record that makes few twirls on a large tile, so that the plain loop ends in time.
constexpr int fewTwirls = -1000;

TEST_F(TwirlsTest, TheSameAsThePlainLoopWhereATwirlOverlapsItself) {
    WithBothCompilations([this] {
        for (const auto& [width, height] :
             {std::pair<short, short>{1, 512}, {512, 1}, {7, 200}, {200, 7}, {60, 40}, {25, 70}}) {
            for (int i = 0; i < 4; ++i) {
                ExpectSameAsPlain(width, height, Params(100, 100, input.Number(1, 100)));
            }
        }
    });
}

TEST_F(TwirlsTest, TheSameAsThePlainLoopAtTheLargestTile) {
    ExpectSameAsPlain(511, 512, Params(fewTwirls, 1, 100));
    ExpectSameAsPlain(512, 509, Params(4 * fewTwirls, 100, 77));
    ExpectSameAsPlain(1500, 20, Params(fewTwirls, 100, 50));
}

/// As wide as twice the radius, or wider, in one direction or both; with few columns, and with none
/// that are turned.
TEST_F(TwirlsTest, TheSameAsThePlainLoopWhereTwirlsGoOnBehindTheEdges) {
    WithBothCompilations([this] {
        for (const auto& [width, height, size] : {std::tuple<short, short, int>{64, 64, 100},
                                                  {65, 65, 100},
                                                  {61, 67, 80},
                                                  {33, 80, 40},
                                                  {110, 50, 60},
                                                  {9, 9, 100},
                                                  {8, 17, 50},
                                                  {4, 4, 100}}) {
            for (int i = 0; i < 3; ++i) {
                ExpectSameAsPlain(width, height, Params(100, size, input.Number(1, 100)));
            }
        }
    });
}

/// Twirl after twirl smooths the picture until most sources lie among pixels of nearly one colour.
TEST_F(TwirlsTest, TheSameAsThePlainLoopWhenThePictureHasBecomeSmooth) {
    WithBothCompilations([this] {
        ExpectSameAsPlain(100, 90, Params(100, 100, 100));
        ExpectSameAsPlain(128, 128, Params(100, 1, 1));
    });
}

TEST_F(TwirlsTest, RecordsOutOfRangeAreTheSameAsThePlainLoopToo) {
    for (int i = 0; i < 300; ++i) {
        auto params = input.AnyBytes<TwirlsParams>();
        if (i % 3 == 0) {
            params.quantity = 100;
        }
        ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 40), params);
    }
    for (const int intensity : {-350, -351, -349, 0, 32767, -32768}) {
        ExpectSameAsPlain(40, 40, Params(100, 100, intensity));
    }
}

TEST_F(TwirlsTest, QuantitiesAndSizesAboveTheDialogsCountAs100) {
    const auto run = [](const TwirlsParams& params) {
        PaintClass pic(40, 40);
        FillWithNoise(pic);
        EXPECT_TRUE(pic.Twirls(params));
        return ColorsOf(pic);
    };
    const std::vector<Pixel> most = run(Params(100, 100, 50));
    for (const int above : {101, 133, 134, 166, 167, 32767}) {
        EXPECT_EQ(run(Params(above, above, 50)), most) << above;
    }
}

TEST_F(TwirlsTest, ASmallTileGetsNoTwirl) {
    const TwirlsParams least = Params(1, 50, 50);
    PaintClass small(64, 31);
    FillWithNoise(small);
    const std::vector<Pixel> before = PixelsOf(small);
    EXPECT_TRUE(small.Twirls(least));
    EXPECT_EQ(PixelsOf(small), before);
    EXPECT_EQ(Seed(), Log().clock) << "nothing drawn";
    PaintClass enough(397, 5);
    FillWithNoise(enough);
    EXPECT_TRUE(enough.Twirls(least));
    EXPECT_NE(Seed(), Log().clock);
}

TEST_F(TwirlsTest, AsManyTwirlsAsTheQuantitySays) {
    for (const auto& [quantity, twirls] : {std::pair{100, 524u}, {50, 209u}, {1, 132u}}) {
        Bar bar;
        PaintClass pic(512, 512);
        ASSERT_TRUE(pic.Twirls(Params(quantity, -1000, 1)));
        EXPECT_EQ(bar.percents.size(), twirls);
        EXPECT_EQ(bar.percents.front(), 0);
        EXPECT_EQ(bar.percents.back(), 99);
    }
}

TEST_F(TwirlsTest, ARadiusBelowTwoChangesNothing) {
    // 64 / ((100 - size) * 0.03 + 2.0) is 0 or 1.
    for (const int size : {-32768, -1500}) {
        PaintClass pic(64, 64);
        FillWithNoise(pic);
        const std::vector<Pixel> before = PixelsOf(pic);
        EXPECT_TRUE(pic.Twirls(Params(100, size, 100)));
        EXPECT_EQ(PixelsOf(pic), before);
        EXPECT_NE(Seed(), Log().clock) << "eight twirls all the same";
    }
}

/// One twirl: the pixels that it may change lie within its radius around the torus.
TEST_F(TwirlsTest, ATwirlEndsAtItsRimAndGoesOnBehindTheEdges) {
    constexpr short width = 60;
    constexpr short height = 50;
    constexpr int radius = 27;  // (60 + 50) / 2 / 2.0
    for (std::uint32_t clock = 0; clock < 20; ++clock) {
        Log().clock = clock;
        SeedRandom();
        const int cx = RandomRange(0, width);
        const int cy = RandomRange(0, height);
        PaintClass pic(width, height);
        FillWithNoise(pic);
        PaintClass before(width, height);
        CopyShifted(pic, before, 0, 0);
        // 60 * 50 / ((100 + 16) * 15 + 500) is 1.
        ASSERT_TRUE(pic.Twirls(Params(-16, 100, 100)));
        int changed = 0;
        int inside = 0;
        for (short y = 0; y < height; ++y) {
            for (short x = 0; x < width; ++x) {
                const int dx = std::min(Wrap(x - cx, width), Wrap(cx - x, width));
                const int dy = std::min(Wrap(y - cy, height), Wrap(cy - y, height));
                const bool isInside = dx * dx + dy * dy < radius * radius;
                const bool isCentre = dx == 0 && dy == 0;
                inside += isInside ? 1 : 0;
                if (pic.GetPixel(x, y) != before.GetPixel(x, y)) {
                    ++changed;
                    ASSERT_TRUE(isInside && !isCentre) << x << ", " << y;
                }
            }
        }
        EXPECT_GT(changed, inside * 9 / 10);
    }
}

TEST_F(TwirlsTest, TheSecondDecidesThePattern) {
    const auto run = [](std::uint32_t clock) {
        Log().clock = clock;
        PaintClass pic(64, 64);
        FillWithNoise(pic);
        EXPECT_TRUE(pic.Twirls(TwirlsParams{}));
        return ColorsOf(pic);
    };
    const std::vector<Pixel> first = run(7);
    EXPECT_EQ(run(7), first);
    EXPECT_NE(run(8), first);
}

/// Whichever block fails, the pixels are the same, or none is changed. `blocksNeeded` are those
/// that nothing can stand in for.
void ExpectToStandShortages(short width, short height, int blocksNeeded) {
    PaintClass expected(width, height);
    FillWithNoise(expected);
    const std::vector<Pixel> before = PixelsOf(expected);
    ASSERT_TRUE(expected.Twirls(TwirlsParams{100, 100, 100}));
    int refused = 0;
    bool hasFailed = true;
    for (int nth = 1; hasFailed; ++nth) {
        SCOPED_TRACE(nth);
        PaintClass pic(width, height);
        FillWithNoise(pic);
        const FailingHandles handles(nth);
        if (pic.Twirls(TwirlsParams{100, 100, 100})) {
            ASSERT_EQ(PixelsOf(pic), PixelsOf(expected));
        } else {
            ++refused;
            ASSERT_EQ(PixelsOf(pic), before);
        }
        ASSERT_EQ(pic.clone, nullptr);
        hasFailed = handles.Asked() >= nth;
    }
    EXPECT_EQ(refused, blocksNeeded);
}

/// The sources and a row are needed. The second tile is so low that its twirls overlap themselves.
TEST_F(TwirlsTest, WithoutMemoryItIsJustSlowerOrChangesNothing) {
    WithBothCompilations([] {
        ExpectToStandShortages(48, 48, 2);
        ExpectToStandShortages(60, 40, 2);
    });
}

/// All of the windows: each pixel through the clone's accessor.
TEST_F(TwirlsTest, WithoutMemoryForAnyWindowItIsJustSlower) {
    const int windowBytes = 51 * 51 * bytesPerPixel;  // (60 + 40) / 2 / 2.0 is 25
    PaintClass pic(60, 40);
    PaintClass slow(60, 40);
    FillWithNoise(pic);
    FillWithNoise(slow);
    ASSERT_TRUE(pic.Twirls(Params(100, 100, 100)));
    const FailingSizes handles(windowBytes);
    ASSERT_TRUE(slow.Twirls(Params(100, 100, 100)));
    EXPECT_GT(handles.Refused(), 0);
    EXPECT_EQ(PixelsOf(slow), PixelsOf(pic));
}

}  // namespace

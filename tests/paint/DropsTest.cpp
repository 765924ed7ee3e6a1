#include <algorithm>
#include <cmath>
#include <vector>

#include "paint/PaintClass.h"
#include "paint/math/Random.h"
#include "plain/PlainDrops.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

constexpr Pixel grey = Color(100, 100, 100);
/// A count outside the dialog's range, of which comes one drop.
constexpr std::int16_t oneDrop = -28;

class DropsTest : public CoreTest {
  protected:
    void ExpectSameAsPlain(short width, short height, const DropsParams& params) {
        Log().clock = input.Seed();
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        ASSERT_TRUE(fast.Drops(params));
        const std::uint32_t seedAfter = Seed();
        ASSERT_TRUE(PlainDrops(plain, params));
        ASSERT_EQ(Seed(), seedAfter) << "as many draws";
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain))
            << width << " by " << height << ", " << params.count << ", " << params.size << ", "
            << params.variation << ", " << params.coveredBlur;
        ASSERT_TRUE(fast.changed);
        ASSERT_EQ(fast.clone, nullptr);
    }

    DropsParams InRange() {
        DropsParams params;
        params.count = input.Number(0, 100);
        params.size = input.Number(0, 100);
        params.variation = input.Number(0, 100);
        params.reflection = input.Number(0, 100);
        params.emphasizeLight = input.Number(0, 1) != 0;
        params.coveredBlur = input.Number(coveredBlurNone, coveredBlurMost);
        params.coveredTone = input.Number(coveredLighter, coveredDarker);
        return params;
    }

    RandomInput input{42};
};

PaintClass& Fill(PaintClass& pic, Pixel color) {
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetPixel(x, y, color);
        }
    }
    return pic;
}

/// Returns a grey tile with drops.
std::vector<Pixel> DropsOnGrey(short width, short height, const DropsParams& params) {
    PaintClass pic(width, height);
    EXPECT_TRUE(Fill(pic, grey).Drops(params));
    return ColorsOf(pic);
}

/// Without a tone, so that only the light shows.
DropsParams OnlyLight() {
    DropsParams params;
    params.coveredTone = coveredSame;
    return params;
}

TEST_F(DropsTest, TheSameAsThePlainLoopForAnyRecordAndSize) {
    WithBothCompilations([this] {
        for (int i = 0; i < 150; ++i) {
            ExpectSameAsPlain(input.Number(1, 60), input.Number(1, 60), InRange());
        }
        // With a rounded rim.
        for (int i = 0; i < 6; ++i) {
            ExpectSameAsPlain(input.Number(70, 140), input.Number(70, 140), InRange());
        }
    });
}

TEST_F(DropsTest, TheSameAsThePlainLoopWhereADropOverlapsItself) {
    for (const auto& [width, height] :
         {std::pair<short, short>{1, 500}, {500, 1}, {2, 301}, {7, 300}, {301, 8}}) {
        DropsParams params = InRange();
        params.size = 100;
        ExpectSameAsPlain(width, height, params);
    }
}

TEST_F(DropsTest, TheSameAsThePlainLoopAtTheLargestTile) {
    DropsParams params;
    params.size = 100;
    ExpectSameAsPlain(511, 512, params);
}

TEST_F(DropsTest, RecordsOutOfRangeAreTheSameAsThePlainLoopToo) {
    for (int i = 0; i < 200; ++i) {
        ExpectSameAsPlain(input.Number(1, 24), input.Number(1, 24), input.AnyBytes<DropsParams>());
    }
    // Radii of about the tile's size and more, and divisors of 0.
    for (const int size : {110, 140, 150, 155, 160, 169, 170, 500}) {
        for (const int variation : {0, 50, -4, -8, 8}) {
            DropsParams params;
            params.count = input.Number(-40, 20);
            params.size = static_cast<std::int16_t>(size);
            params.variation = static_cast<std::int16_t>(variation);
            ExpectSameAsPlain(input.Number(30, 50), input.Number(30, 50), params);
        }
    }
}

TEST_F(DropsTest, CountsAboveTheDialogsCountAs100) {
    DropsParams params;
    params.count = 100;
    const std::vector<Pixel> most = DropsOnGrey(90, 90, params);
    params.count = 32767;
    EXPECT_EQ(DropsOnGrey(90, 90, params), most);
}

TEST_F(DropsTest, SmallTilesHaveNoLight) {
    DropsParams params = OnlyLight();
    // The mean of the sides is below 40, so the rim has no width.
    for (const int reflection : {0, 100}) {
        params.reflection = static_cast<std::int16_t>(reflection);
        EXPECT_EQ(DropsOnGrey(30, 30, params), std::vector<Pixel>(900, grey));
    }
    params.coveredTone = coveredLighter;
    std::vector<Pixel> toned = DropsOnGrey(30, 30, params);
    EXPECT_NE(std::ranges::count(toned, grey), 0);
    EXPECT_NE(std::ranges::count(toned, Color(110, 110, 110)), 0) << "the tone shows all the same";
    params.coveredTone = coveredDarker;
    toned = DropsOnGrey(30, 30, params);
    EXPECT_NE(std::ranges::count(toned, Color(90, 90, 90)), 0);
}

TEST_F(DropsTest, TinyTilesHaveNoDrops) {
    // The largest radius is 10 / 11.
    PaintClass pic(10, 10);
    FillWithNoise(pic);
    const std::vector<Pixel> before = ColorsOf(pic);
    EXPECT_TRUE(pic.Drops(DropsParams{}));
    EXPECT_EQ(ColorsOf(pic), before);
    EXPECT_EQ(pic.GetAlpha(5, 5), 255);
    DropsParams big;
    big.size = 100;
    PaintClass enough(18, 18);
    EXPECT_TRUE(Fill(enough, grey).Drops(big));
    EXPECT_NE(ColorsOf(enough), std::vector<Pixel>(18 * 18, grey));
}

TEST_F(DropsTest, TheMiddleToneAddsNone) {
    DropsParams params = OnlyLight();
    params.count = oneDrop;
    params.size = 100;
    // In the middle of a drop the field is level.
    const std::vector<Pixel> pixels = DropsOnGrey(128, 128, params);
    SetSeed(Log().clock);
    const int cx = RandomRange(0, 128);
    const int cy = RandomRange(0, 128);
    EXPECT_EQ(pixels[static_cast<std::size_t>(Wrap(cy, 128) * 128 + Wrap(cx, 128))], grey);
    EXPECT_NE(pixels, std::vector<Pixel>(128 * 128, grey)) << "but the light is there";
}

TEST_F(DropsTest, TheLightIsNeverSwitchedOff) {
    DropsParams params = OnlyLight();
    params.reflection = 0;
    EXPECT_NE(DropsOnGrey(128, 128, params), std::vector<Pixel>(128 * 128, grey));
}

TEST_F(DropsTest, TheLightFallsFromTheUpperLeft) {
    DropsParams params = OnlyLight();
    params.count = oneDrop;
    params.size = 100;
    params.variation = 0;
    params.emphasizeLight = 0;
    const std::vector<Pixel> even = DropsOnGrey(256, 256, params);
    params.emphasizeLight = 1;
    const std::vector<Pixel> emphasized = DropsOnGrey(256, 256, params);
    SetSeed(Log().clock);
    const int cx = RandomRange(0, 256);
    const int cy = RandomRange(0, 256);
    const auto at = [&](const std::vector<Pixel>& pixels, int distance) {
        const auto place =
            static_cast<std::size_t>(Wrap(cy + distance, 256) * 256 + Wrap(cx + distance, 256));
        return static_cast<int>(pixels[place] & 0xFF);
    };
    // Just inside the rim of a radius of 42.
    const int lightSide = at(even, -28) - 100;
    const int darkSide = at(even, 28) - 100;
    EXPECT_GT(lightSide, 2);
    EXPECT_LT(darkSide, -2);
    EXPECT_EQ(at(emphasized, -28) - 100, lightSide);
    EXPECT_GT(at(emphasized, 28) - 100, darkSide) << "the dark side is halved";
    EXPECT_LT(at(emphasized, 28) - 100, 0);
}

/// One drop: pixels that it changes lie within its radius around the torus, and all else stays.
TEST_F(DropsTest, ADropGoesOnBehindTheEdgesAndLeavesTheRest) {
    constexpr short width = 90;
    constexpr short height = 80;
    DropsParams params;
    params.count = oneDrop;
    params.size = 100;
    params.variation = 0;
    params.coveredBlur = coveredBlurMost;
    const int radius = 85 / 6;
    int crossings = 0;
    for (std::uint32_t clock = 0; clock < 40; ++clock) {
        Log().clock = clock;
        SetSeed(clock);
        const int cx = RandomRange(0, width);
        const int cy = RandomRange(0, height);
        crossings += cx < radius || cy < radius || cx + radius > width || cy + radius > height;
        PaintClass pic(width, height);
        PaintClass before(width, height);
        FillWithNoise(pic);
        CopyShifted(pic, before, 0, 0);
        ASSERT_TRUE(pic.Drops(params));
        int changed = 0;
        int inside = 0;
        for (short y = 0; y < height; ++y) {
            for (short x = 0; x < width; ++x) {
                const int dx = std::min(Wrap(x - cx, width), Wrap(cx - x, width));
                const int dy = std::min(Wrap(y - cy, height), Wrap(cy - y, height));
                const bool isInside = dx * dx + dy * dy < radius * radius;
                const bool isChanged =
                    ((pic.GetPixel(x, y) ^ before.GetPixel(x, y)) & 0xFFFFFF) != 0;
                ASSERT_TRUE(isInside || !isChanged) << x << ", " << y;
                inside += isInside;
                changed += isChanged;
            }
        }
        EXPECT_GT(changed, inside * 9 / 10) << clock;
    }
    EXPECT_GT(crossings, 10);
}

TEST_F(DropsTest, TheProgressCountsDropsAndBlurredRows) {
    DropsParams params;
    PaintClass pic(80, 80);
    // 40 drops; every fourth row of the height field.
    for (const auto& [coveredBlur, reports] : {std::pair{23, 40u + 20}, {24, 40u + 20 + 80}}) {
        Bar bar;
        params.coveredBlur = static_cast<std::int16_t>(coveredBlur);
        ASSERT_TRUE(pic.Drops(params));
        EXPECT_EQ(bar.percents.size(), reports);
        EXPECT_TRUE(std::ranges::is_sorted(bar.percents));
        const int total = coveredBlur == 23 ? 160 : 240;
        EXPECT_EQ(bar.percents.at(39), 78 * 100 / total);
        EXPECT_EQ(bar.percents.back(), (coveredBlur == 23 ? 156 : 239) * 100 / total);
    }
}

TEST_F(DropsTest, TheSecondDecidesThePattern) {
    const std::vector<Pixel> first = DropsOnGrey(90, 90, {});
    EXPECT_EQ(DropsOnGrey(90, 90, {}), first);
    Log().clock = 1001;
    EXPECT_NE(DropsOnGrey(90, 90, {}), first);
}

}  // namespace

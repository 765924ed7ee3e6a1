#include <algorithm>
#include <limits>
#include <vector>

#include "paint/EffectRun.h"
#include "paint/PaintClass.h"
#include "paint/math/Random.h"
#include "plain/PlainShapes.h"
#include "tests/paint/Tones.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class ShapesTest : public CoreTest {
  protected:
    void ExpectSameAsPlain(short width, short height, const ShapesParams& params) {
        Log().clock = input.Seed();
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        ASSERT_TRUE(fast.Shapes(params));
        const std::uint32_t seedAfter = Seed();
        ASSERT_TRUE(PlainShapes(plain, params));
        ASSERT_EQ(Seed(), seedAfter) << "as many draws";
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain))
            << width << " by " << height << ", kind " << params.kind << ", bevel " << params.bevel
            << ", angle " << params.angle << ", stacking " << params.stacking << ", repeat "
            << params.repeatX << ", " << params.repeatY;
        ASSERT_TRUE(fast.changed);
    }

    ShapesParams InRange() {
        ShapesParams params;
        params.kind = input.Number(1, 3);
        params.bevel = input.Number(0, 100);
        params.material = input.Number(0, 100);
        params.transparency = input.Number(0, 100);
        params.contrast = input.Number(0, 100);
        params.angle = static_cast<std::int16_t>(270 - input.Number(-180, 180));
        params.sizeX = input.Number(0, 100) / 100.0;
        params.sizeY = input.Number(0, 100) / 100.0;
        params.repeatX = input.Number(1, 4);
        params.repeatY = input.Number(1, 4);
        params.shiftX = input.Number(0, 100);
        params.shiftY = input.Number(0, 100);
        params.shiftSize = input.Number(0, 100);
        const std::int16_t stackings[] = {0, 1, shapesStacked};
        params.stacking = stackings[input.Number(0, 2)];
        params.halfShift = input.Number(0, 1) != 0;
        params.color = {static_cast<std::uint16_t>(input.Seed()),
                        static_cast<std::uint16_t>(input.Seed()),
                        static_cast<std::uint16_t>(input.Seed())};
        return params;
    }

    RandomInput input{44};
};

/// One opaque white shape in the middle, as even as can be, its size a share of the tile.
ShapesParams OneShape(std::int32_t kind, double sizeX, double sizeY) {
    ShapesParams params;
    params.kind = kind;
    params.bevel = 0;
    params.material = 0;
    params.transparency = 0;
    params.repeatX = 1;
    params.repeatY = 1;
    params.sizeX = sizeX;
    params.sizeY = sizeY;
    params.halfShift = 0;
    params.angle = 0;
    params.color = white16;
    return params;
}

/// Returns a black tile after the run step, which takes the user's angle.
std::vector<Pixel> ShapesOnBlack(short width, short height, const ShapesParams& params) {
    PaintClass pic(width, height);
    pic.FillColor(black16);
    EXPECT_TRUE(RunShapes(pic, params));
    return ColorsOf(pic);
}

Pixel PixelAt(const std::vector<Pixel>& pixels, short width, int x, int y) {
    const int height = static_cast<int>(pixels.size()) / width;
    return pixels[static_cast<std::size_t>(Wrap(y, static_cast<short>(height)) * width +
                                           Wrap(x, width))];
}

TEST_F(ShapesTest, TheSameAsThePlainLoopWhereShapesOverlapThemselves) {
    for (int i = 0; i < 40; ++i) {
        ShapesParams params = InRange();
        params.sizeX = 1.0;
        params.sizeY = 1.0;
        params.shiftSize = 100;
        params.shiftX = 100;
        params.repeatX = input.Number(1, 2);
        params.repeatY = 1;
        ExpectSameAsPlain(input.Number(3, 30), input.Number(3, 30), params);
    }
    // The margin around a cell follows its longer side, and comes round the shorter one often.
    for (const auto& [width, height] :
         {std::pair<short, short>{1, 60}, {60, 1}, {3, 70}, {70, 4}}) {
        ExpectSameAsPlain(width, height, InRange());
    }
}

TEST_F(ShapesTest, TheSameAsThePlainLoopForManyShapes) {
    ShapesParams params = InRange();
    params.repeatX = 32;
    params.repeatY = 32;
    ExpectSameAsPlain(97, 120, params);
    ExpectSameAsPlain(20, 9, params);
}

TEST_F(ShapesTest, TheSameAsThePlainLoopAtTheLargestTile) {
    WithBothCompilations([this] { ExpectSameAsPlain(512, 511, ShapesParams{}); });
}

TEST_F(ShapesTest, TheGrainOfMiddlingTilesIsThePlainLoops) {
    // Width and height of 513 to 767 together thin the grain out.
    for (const auto& [width, height] :
         {std::pair<short, short>{300, 290}, {213, 300}, {383, 383}}) {
        ShapesParams params;
        params.material = 100;
        ExpectSameAsPlain(width, height, params);
    }
}

TEST_F(ShapesTest, RecordsOutOfRangeAreTheSameAsThePlainLoopToo) {
    for (int i = 0; i < 60; ++i) {
        auto params = input.AnyBytes<ShapesParams>();
        if (i % 2 == 0) {
            params.kind = input.Number(0, 4);
            params.sizeX = 0.8;
            params.sizeY = 0.7;
        }
        if (i % 3 == 0) {
            params.stacking = shapesStacked;
        }
        if (i % 5 != 0) {
            params.repeatX = input.Number(-3, 3);
            params.repeatY = input.Number(-3, 3);
        }
        ExpectSameAsPlain(input.Number(1, 20), input.Number(1, 20), params);
    }
}

TEST_F(ShapesTest, NumbersBeyondTheDialogsCountAsItsNearest) {
    const auto run = [](double size, int repeat, int shift) {
        ShapesParams params;
        params.sizeX = size;
        params.sizeY = size;
        params.repeatX = static_cast<std::int16_t>(repeat);
        params.repeatY = static_cast<std::int16_t>(repeat);
        params.shiftX = static_cast<std::int16_t>(shift);
        params.shiftY = static_cast<std::int16_t>(shift);
        params.shiftSize = static_cast<std::int16_t>(shift);
        return ShapesOnBlack(50, 40, params);
    };
    constexpr double huge = std::numeric_limits<double>::max();
    EXPECT_EQ(run(huge, 32767, 32767), run(1.0, 32, 100));
    EXPECT_EQ(run(1.0000001, 33, 101), run(1.0, 32, 100));
    EXPECT_EQ(run(-huge, -32768, -32768), run(0.0, 1, 0));
    EXPECT_EQ(run(std::numeric_limits<double>::infinity(), 2, 0), run(1.0, 2, 0));
    EXPECT_EQ(run(std::numeric_limits<double>::quiet_NaN(), 0, -1), run(0.0, 1, 0));
}

TEST_F(ShapesTest, ARingWithoutBevelDrawsNothing) {
    ShapesParams params;
    params.kind = shapeRing;
    params.bevel = 0;
    PaintClass pic(60, 60);
    FillWithNoise(pic);
    const std::vector<Pixel> before = ColorsOf(pic);
    EXPECT_TRUE(pic.Shapes(params));
    EXPECT_EQ(ColorsOf(pic), before);
}

TEST_F(ShapesTest, WithoutBevelShapesAreFlat) {
    for (const std::int32_t kind : {shapeSquare, shapeCircle}) {
        ShapesParams params = OneShape(kind, 0.5, 0.5);
        params.color = {0x8000, 0x8000, 0x8000};
        params.contrast = 0;
        const std::vector<Pixel> dim = ShapesOnBlack(100, 100, params);
        params.contrast = 100;
        EXPECT_EQ(ShapesOnBlack(100, 100, params), dim) << "no light on them";
        EXPECT_EQ(PixelAt(dim, 100, 50, 50), Color(128, 128, 128));
        EXPECT_EQ(PixelAt(dim, 100, 50, 10), black);
        // Only their rims are softened, in the height field.
        PaintClass pic(100, 100);
        EXPECT_TRUE(RunShapes(pic, params));
        int rim = 0;
        for (const Pixel pixel : PixelsOf(pic)) {
            rim += pixel >> 24 > 30 && pixel >> 24 < 255;
        }
        EXPECT_LE(pic.GetAlpha(50, 50), 25);
        EXPECT_GT(rim, 3 * 50);
        EXPECT_LT(rim, 2 * 4 * 53);
    }
}

TEST_F(ShapesTest, ShapesWithoutSizeAreTheirCentres) {
    for (const auto& [sizeX, sizeY] : {std::pair{0.0, 0.5}, {0.5, 0.0}, {0.0, 0.0}}) {
        ShapesParams params = OneShape(shapeCircle, sizeX, sizeY);
        params.repeatX = 2;
        const std::vector<Pixel> pixels = ShapesOnBlack(80, 60, params);
        EXPECT_EQ(std::ranges::count(pixels, black), 80 * 60 - 2);
        const auto isRaised = [&](int x) {
            // Up to two percent of no size, and of half a cell: no pixel to either side.
            return PixelAt(pixels, 80, x, 30) != black || PixelAt(pixels, 80, x, 29) != black;
        };
        EXPECT_TRUE(isRaised(20) || isRaised(19));
        EXPECT_TRUE(isRaised(60) || isRaised(59));
    }
}

TEST_F(ShapesTest, FullTransparencyLeavesTheTexture) {
    ShapesParams params;
    params.transparency = 100;
    PaintClass pic(60, 60);
    FillWithNoise(pic);
    const std::vector<Pixel> before = ColorsOf(pic);
    EXPECT_TRUE(pic.Shapes(params));
    EXPECT_EQ(ColorsOf(pic), before);
}

TEST_F(ShapesTest, TransparencyIsTheOldTexturesPercentage) {
    ShapesParams params = OneShape(shapeSquare, 0.5, 0.5);
    params.transparency = 40;
    PaintClass pic(60, 60);
    pic.FillColor({0x6400, 0x6400, 0x6400});
    EXPECT_TRUE(RunShapes(pic, params));
    EXPECT_EQ(PixelAt(ColorsOf(pic), 60, 30, 30), Color(193, 193, 193)) << "100 * 0.4 + 255 * 0.6";
}

TEST_F(ShapesTest, HalfShiftMovesASingleShapeByHalfATile) {
    ShapesParams params = OneShape(shapeCircle, 0.6, 0.5);
    params.bevel = 60;
    const std::vector<Pixel> middle = ShapesOnBlack(64, 50, params);
    params.halfShift = 1;
    const std::vector<Pixel> shifted = ShapesOnBlack(64, 50, params);
    EXPECT_NE(PixelAt(middle, 64, 32, 25), black);
    EXPECT_EQ(PixelAt(middle, 64, 0, 25), black);
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 64; ++x) {
            ASSERT_EQ(PixelAt(shifted, 64, x + 32, y), PixelAt(middle, 64, x, y))
                << "around the edge";
        }
    }
}

TEST_F(ShapesTest, HalfShiftWithAnOddNumberOfRowsMovesTheFirstAndTheLast) {
    ShapesParams params = OneShape(shapeCircle, 0.4, 0.6);
    params.repeatY = 3;
    params.halfShift = 1;
    const std::vector<Pixel> pixels = ShapesOnBlack(60, 90, params);
    for (int row = 0; row < 3; ++row) {
        const int y = 15 + 30 * row;
        EXPECT_EQ(PixelAt(pixels, 60, 0, y), row == 1 ? black : white) << row;
        EXPECT_EQ(PixelAt(pixels, 60, 30, y), row == 1 ? white : black) << row;
    }
}

TEST_F(ShapesTest, NoShiftStillJittersByOneStep) {
    ShapesParams params = OneShape(shapeSquare, 1.0, 0.5);
    std::vector<std::vector<Pixel>> seen;
    for (std::uint32_t clock = 0; clock < 40; ++clock) {
        Log().clock = clock;
        const std::vector<Pixel> pixels = ShapesOnBlack(200, 200, params);
        if (std::ranges::find(seen, pixels) == seen.end()) {
            seen.push_back(pixels);
        }
    }
    EXPECT_GT(seen.size(), 4u);
    EXPECT_LE(seen.size(), 16u) << "-1 or 0 in each of four draws";
}

TEST_F(ShapesTest, TheUsersAngleTurnsClockwise) {
    ShapesParams params = OneShape(shapeSquare, 0.9, 0.2);
    const auto isOn = [&params](int degrees, int dx, int dy) {
        params.angle = static_cast<std::int16_t>(degrees);
        return PixelAt(ShapesOnBlack(100, 100, params), 100, 50 + dx, 50 + dy) != black;
    };
    EXPECT_TRUE(isOn(0, 35, 0));
    EXPECT_FALSE(isOn(0, 0, 35));
    EXPECT_TRUE(isOn(90, 0, 35));
    EXPECT_FALSE(isOn(90, 35, 0));
    // The right end goes down.
    EXPECT_TRUE(isOn(45, 25, 25));
    EXPECT_FALSE(isOn(45, 25, -25));
    EXPECT_TRUE(isOn(-45, 25, -25));
    EXPECT_TRUE(isOn(180, 35, 0));
    EXPECT_TRUE(isOn(-180, 35, 0));
}

TEST_F(ShapesTest, TheLightFallsFromTheUpperLeft) {
    ShapesParams params = OneShape(shapeCircle, 0.8, 0.8);
    params.bevel = 80;
    params.color = {0x8000, 0x8000, 0x8000};
    params.contrast = 100;
    const std::vector<Pixel> pixels = ShapesOnBlack(200, 200, params);
    const auto red = [&](int distance) {
        return PixelAt(pixels, 200, 100 + distance, 100 + distance) & 0xFF;
    };
    EXPECT_GT(red(-30), 128u);
    EXPECT_LT(red(30), 128u);
}

TEST_F(ShapesTest, OverlappingShapesAverageOrLieOnEachOther) {
    ShapesParams params = OneShape(shapeCircle, 1.0, 1.0);
    params.bevel = 100;
    params.repeatX = 2;
    params.shiftSize = 100;
    params.color = {0x8000, 0x8000, 0x8000};
    const std::vector<Pixel> blended = ShapesOnBlack(120, 60, params);
    params.stacking = 1;
    EXPECT_EQ(ShapesOnBlack(120, 60, params), blended) << "the dialog's button has no influence";
    params.stacking = shapesStacked;
    EXPECT_NE(ShapesOnBlack(120, 60, params), blended);
}

TEST_F(ShapesTest, UnknownKindsAreJustTheirCentres) {
    for (const int kind : {0, 4, -1, 1 << 30}) {
        const ShapesParams params = OneShape(kind, 0.8, 0.8);
        EXPECT_EQ(std::ranges::count(ShapesOnBlack(60, 60, params), black), 3599) << kind;
    }
}

TEST_F(ShapesTest, MaterialShowsOnSmallTilesOnly) {
    const auto run = [](short width, int material) {
        ShapesParams params;
        params.material = static_cast<std::int16_t>(material);
        return ShapesOnBlack(width, 384, params);
    };
    EXPECT_EQ(run(384, 0), run(384, 100));
    EXPECT_NE(run(383, 0), run(383, 100));
}

TEST_F(ShapesTest, TheSecondDecidesThePattern) {
    ShapesParams params;
    params.shiftX = 50;
    const std::vector<Pixel> first = ShapesOnBlack(60, 60, params);
    EXPECT_EQ(ShapesOnBlack(60, 60, params), first);
    Log().clock = 1001;
    EXPECT_NE(ShapesOnBlack(60, 60, params), first);
}

TEST_F(ShapesTest, TheProgressCountsShapesRowsAndColumns) {
    ShapesParams params;
    params.repeatX = 3;
    params.repeatY = 2;
    Bar bar;
    PaintClass pic(200, 80);
    ASSERT_TRUE(pic.Shapes(params));
    // Six shapes of ten, every fourth of 80 rows, every fifth of 200 columns.
    ASSERT_EQ(bar.percents.size(), 6u + 20 + 40);
    EXPECT_TRUE(std::ranges::is_sorted(bar.percents));
    EXPECT_EQ(bar.percents.at(5), 50 * 100 / 180);
    EXPECT_EQ(bar.percents.at(25), (60 + 76) * 100 / 180);
    EXPECT_EQ(bar.percents.back(), (60 + 80 + 39) * 100 / 180);
}

}  // namespace

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "paint/EffectRun.h"
#include "paint/PaintClass.h"
#include "paint/math/Random.h"
#include "plain/PlainDividers.h"
#include "tests/paint/Tones.h"
#include "tests/support/BusyCursor.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

const std::string noAssertion = "(no assertion failed)";
const std::string startOutside =
    "PicClass / Zeile 333 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))";

class DividersTest : public CoreTest {
  protected:
    /// Both may meet the assertion; then both must.
    void ExpectSameAsPlain(short width, short height, const DividersParams& params) {
        Log().clock = input.Seed();
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        const std::string outcome = AssertionOf([&] { fast.Dividers(params); });
        const std::uint32_t seedAfter = Seed();
        ASSERT_EQ(AssertionOf([&] { PlainDividers(plain, params); }), outcome);
        ASSERT_EQ(Seed(), seedAfter) << "as many draws";
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain)) << width << " by " << height;
        ASSERT_EQ(fast.changed, outcome == noAssertion);
    }

    DividersParams InRange() {
        DividersParams params;
        params.lines = input.Number(1, 100);
        params.direction = input.Number(0, 100);
        params.randomColors = input.Number(0, 1) != 0;
        params.antiAliased = input.Number(0, 1) != 0;
        params.transparent = input.Number(0, 1) != 0;
        params.lineWidth = input.Number(1, 20);
        params.widthVariation = input.Number(0, 100);
        params.minimalGap = input.Number(1, 20);
        params.foreground = {0x1234, 0x8765, 0xFEDC};
        params.background = {0xABCD, 0x4321, 0x00FF};
        return params;
    }

    RandomInput input{41};
};

/// Black lines of one pixel on what is there.
DividersParams Thin() {
    DividersParams params;
    params.randomColors = 0;
    params.antiAliased = 0;
    params.widthVariation = 0;
    params.foreground = black16;
    params.background = white16;
    return params;
}

/// So few tries that the run ends after its first turn, on a tile of this side.
constexpr short oneTrySide = 60;
DividersParams OneTry(DividersParams params) {
    params.lines = 2;
    return params;
}

std::vector<Pixel> DividersOf(short width, short height, const DividersParams& params) {
    PaintClass pic(width, height);
    pic.Dividers(params);
    EXPECT_TRUE(pic.changed);
    return PixelsOf(pic);
}

std::size_t CountOf(const std::vector<Pixel>& pixels, Pixel color) {
    return static_cast<std::size_t>(std::ranges::count_if(
        pixels, [color](Pixel pixel) { return (pixel & 0xFFFFFF) == color; }));
}

TEST_F(DividersTest, TheSameAsThePlainLoopForAnyRecordAndSize) {
    for (int i = 0; i < 800; ++i) {
        ExpectSameAsPlain(input.Number(1, 60), input.Number(1, 60), InRange());
    }
    for (int i = 0; i < 60; ++i) {
        ExpectSameAsPlain(input.Number(1, 3), input.Number(60, 400), InRange());
        ExpectSameAsPlain(input.Number(60, 400), input.Number(1, 3), InRange());
    }
}

TEST_F(DividersTest, TheSameAsThePlainLoopAtTheLargestTile) {
    for (const auto& [width, height] : {std::pair<short, short>{512, 512}, {511, 512}, {512, 77}}) {
        ExpectSameAsPlain(width, height, DividersParams{});
        ExpectSameAsPlain(width, height, InRange());
    }
}

TEST_F(DividersTest, AnyBytesComeToAnEndAsInThePlainLoop) {
    for (int i = 0; i < 250; ++i) {
        auto params = input.AnyBytes<DividersParams>();
        if (i % 2 == 0) {
            params.lineWidth = input.Number(-3, 3);
        }
        ExpectSameAsPlain(input.Number(1, 16), input.Number(1, 16), params);
    }
}

TEST_F(DividersTest, TheFirstLineIsAClosedRing) {
    for (const std::int16_t direction : std::initializer_list<std::int16_t>{0, 101}) {
        DividersParams params = OneTry(Thin());
        params.direction = direction;
        params.lineWidth = 3;
        const std::vector<Pixel> pixels = DividersOf(oneTrySide, oneTrySide, params);
        EXPECT_EQ(CountOf(pixels, black), 3u * oneTrySide);
        for (std::size_t i = 0; i < oneTrySide; ++i) {
            // Each row or column as the one before, and the map of what is occupied with it.
            const std::size_t here = direction == 0 ? i * oneTrySide : i;
            for (std::size_t k = 0; k < oneTrySide; ++k) {
                const std::size_t step = direction == 0 ? 1 : oneTrySide;
                ASSERT_EQ(pixels[here + k * step], pixels[here]);
            }
            ASSERT_EQ(pixels[here] >> 24, (pixels[here] & 0xFFFFFF) == black ? 255u : 0u);
        }
    }
}

TEST_F(DividersTest, LinesNeverCross) {
    // Nothing draws over the first line, the ring, if no line is wider than its tested column.
    DividersParams params = Thin();
    params.randomColors = 1;
    for (std::uint32_t clock = 0; clock < 30; ++clock) {
        Log().clock = clock;
        PaintClass ring(oneTrySide, oneTrySide);
        PaintClass full(oneTrySide, oneTrySide);
        ring.Dividers(OneTry(params));
        params.lines = 100;
        full.Dividers(params);
        int lines = 0;
        for (short y = 0; y < oneTrySide; ++y) {
            for (short x = 0; x < oneTrySide; ++x) {
                if (ring.GetAlpha(x, y) == 255) {
                    ASSERT_EQ(full.GetPixel(x, y), ring.GetPixel(x, y));
                }
                lines += full.GetAlpha(x, y) == 255 ? 1 : 0;
            }
        }
        EXPECT_GT(lines, 4 * oneTrySide) << "many more lines";
    }
}

/// The gap keeps lines of the dialog's records apart; a negative one, of a damaged record, shows
/// that drawing itself looks at the first column alone.
TEST_F(DividersTest, AWideLineMayOverwriteAnother) {
    DividersParams params = Thin();
    params.randomColors = 1;
    params.minimalGap = -3;
    params.lineWidth = 6;
    params.lines = 100;
    int overwritten = 0;
    for (std::uint32_t clock = 0; clock < 10; ++clock) {
        Log().clock = clock;
        PaintClass pic(200, 200);
        pic.Dividers(params);
        std::map<Pixel, int> area;
        for (const Pixel pixel : PixelsOf(pic)) {
            if (pixel >> 24 == 255) {
                ++area[pixel];
            }
        }
        for (const auto& [color, pixels] : area) {
            overwritten += pixels % 6 != 0 ? 1 : 0;
        }
    }
    EXPECT_GT(overwritten, 0);
}

TEST_F(DividersTest, TheOldTextureStaysBetweenTransparentLines) {
    PaintClass pic(80, 70);
    FillWithNoise(pic);
    const std::vector<Pixel> before = ColorsOf(pic);
    DividersParams params = Thin();
    params.background = {0x1000, 0x2000, 0x3000};
    pic.Dividers(params);
    const std::vector<Pixel> transparent = PixelsOf(pic);
    params.transparent = 0;
    pic.Dividers(params);
    const std::vector<Pixel> filled = PixelsOf(pic);
    for (std::size_t i = 0; i < before.size(); ++i) {
        const bool isLine = transparent[i] >> 24 == 255;
        ASSERT_EQ(transparent[i] & 0xFFFFFF, isLine ? black : before[i]);
        ASSERT_EQ(filled[i] & 0xFFFFFF, isLine ? black : Color(0x10, 0x20, 0x30));
    }
}

TEST_F(DividersTest, TheVariationOnlyWidens) {
    DividersParams params = OneTry(Thin());
    params.lineWidth = 10;
    std::vector<std::size_t> widths;
    for (std::uint32_t clock = 0; clock < 300; ++clock) {
        Log().clock = clock;
        params.widthVariation = 0;
        ASSERT_EQ(CountOf(DividersOf(oneTrySide, oneTrySide, params), black), 10u * oneTrySide);
        params.widthVariation = 50;
        widths.push_back(CountOf(DividersOf(oneTrySide, oneTrySide, params), black) / oneTrySide);
    }
    // By up to twice what the percentage says.
    EXPECT_EQ(std::ranges::min(widths), 10u);
    EXPECT_EQ(std::ranges::max(widths), 19u);
}

TEST_F(DividersTest, TheDirectionsEndsAreAllOfOneKind) {
    DividersParams params = Thin();
    params.direction = 0;
    const std::vector<Pixel> rows = DividersOf(50, 40, params);
    params.direction = 100;
    const std::vector<Pixel> columns = DividersOf(50, 40, params);
    for (std::size_t y = 0; y < 40; ++y) {
        for (std::size_t x = 0; x < 50; ++x) {
            ASSERT_EQ(rows[y * 50 + x], rows[y * 50]);
            ASSERT_EQ(columns[y * 50 + x], columns[x]);
        }
    }
    EXPECT_GT(CountOf(rows, black), 2u * 50);
    EXPECT_GT(CountOf(columns, black), 2u * 40);
}

TEST_F(DividersTest, AtDirection100OneDrawOf32768IsHorizontal) {
    DividersParams params = OneTry(Thin());
    params.direction = 100;
    std::uint32_t clock = 0;
    const auto drawsTheLast = [&clock] {
        SetSeed(clock);
        Rand();  // the width
        return RandomRange(0, 100) == 100;
    };
    while (!drawsTheLast()) {
        ++clock;
    }
    Log().clock = clock;
    const std::vector<Pixel> pixels = DividersOf(oneTrySide, oneTrySide, params);
    const auto first = std::ranges::find(pixels, black | 0xFF000000);
    EXPECT_EQ(std::count(first, first + oneTrySide, black | 0xFF000000), oneTrySide);
}

TEST_F(DividersTest, SidesOfSmoothLinesAreHalfTheirColorAndStayFree) {
    DividersParams params = OneTry(Thin());
    params.antiAliased = 1;
    params.direction = 101;
    params.foreground = {0x0000, 0x5500, 0xFF00};
    PaintClass pic(oneTrySide, oneTrySide);
    pic.Dividers(params);
    short x = 0;
    while (pic.GetAlpha(x, 0) == 0) {
        ++x;
    }
    for (short y = 0; y < oneTrySide; ++y) {
        ASSERT_EQ(pic.GetPixel(x, y), Color(0, 0x55, 0xFF) | 0xFF000000);
        for (const int side : {x - 1, x + 1}) {
            // (255 + 0) / 2, (255 + 85) / 2, (255 + 255) / 2.
            ASSERT_EQ(pic.GetPixelWrapped(static_cast<short>(side), y), Color(127, 170, 255));
        }
    }
}

TEST_F(DividersTest, SmoothSidesAverageOverANeighbouringLine) {
    DividersParams params = Thin();
    params.antiAliased = 1;
    params.minimalGap = 0;
    params.lines = 100;
    int averaged = 0;
    for (const Pixel pixel : DividersOf(100, 100, params)) {
        averaged += pixel >> 24 == 255 && (pixel & 0xFFFFFF) != black ? 1 : 0;
    }
    EXPECT_EQ(averaged, 0) << "black on black is black";
    params.randomColors = 1;
    const std::vector<Pixel> smooth = DividersOf(100, 100, params);
    params.antiAliased = 0;
    const std::vector<Pixel> hard = DividersOf(100, 100, params);
    for (std::size_t i = 0; i < hard.size(); ++i) {
        // The same lines, since the sides are not occupied.
        ASSERT_EQ(smooth[i] >> 24, hard[i] >> 24);
        averaged += hard[i] >> 24 == 255 && smooth[i] != hard[i] ? 1 : 0;
    }
    EXPECT_GT(averaged, 0);
}

TEST_F(DividersTest, AGapWiderThanTheTileFitsWhereNothingIs) {
    DividersParams params = Thin();
    params.minimalGap = 20;
    params.direction = 101;
    EXPECT_EQ(CountOf(DividersOf(10, 40, params), black), 40u) << "and nothing fits after it";
}

TEST_F(DividersTest, FewAttemptsEndAfterTheFirstTurn) {
    // 60 * 2 / 100 * 2 is 2, and a quarter of that 0 misses.
    EXPECT_EQ(CountOf(DividersOf(60, 60, OneTry(Thin())), black), 60u);
    DividersParams none = Thin();
    for (const int lines : {0, 1, -1, -50}) {
        none.lines = static_cast<std::int16_t>(lines);
        EXPECT_EQ(CountOf(DividersOf(60, 60, none), white), 3600u) << "no turn at all";
    }
}

TEST_F(DividersTest, MissesEndARunNotTheNumberOfLines) {
    // With room for everything a quarter of the tries has to fail, however many lines that takes.
    DividersParams params = Thin();
    params.minimalGap = 0;
    params.lines = 10;
    params.direction = 0;
    // 40 tries on a tile of 200 rows: lines of one row, until 10 starts were taken.
    EXPECT_GT(CountOf(DividersOf(200, 200, params), black), 40u * 200);
}

TEST_F(DividersTest, LinesWithoutWidthAreMisses) {
    for (const std::int16_t width : std::initializer_list<std::int16_t>{0, -1, -32768}) {
        DividersParams params = Thin();
        params.lineWidth = width;
        params.antiAliased = 1;
        EXPECT_EQ(CountOf(DividersOf(60, 60, params), white), 3600u);
    }
}

class DividersAssertionTest : public DividersTest, public testing::WithParamInterface<int> {};

/// The one effect that reads a drawn place as it is: a draw of just W or H ends the run.
TEST_P(DividersAssertionTest, AStartOnTheFarEdgeFailsTheAssertion) {
    const int draws = GetParam();
    std::uint32_t clock = 0;
    const auto startsOnTheEdge = [&] {
        SetSeed(clock);
        for (int i = 0; i < draws; ++i) {
            Rand();
        }
        return RandomRange(0, oneTrySide) == oneTrySide;
    };
    while (!startsOnTheEdge()) {
        ++clock;
    }
    Log().clock = clock;
    PaintClass pic(oneTrySide, oneTrySide);
    const BusyCursor cursor;
    EXPECT_EQ(AssertionOf([&] { pic.Dividers(OneTry(Thin())); }), startOutside);
    EXPECT_EQ(cursor.Arrows(), 1);
    EXPECT_FALSE(pic.changed);
    EXPECT_EQ(CountOf(PixelsOf(pic), white), 3600u);
}

// The width and the direction are drawn before x and y.
INSTANTIATE_TEST_SUITE_P(XAndY, DividersAssertionTest, testing::Values(2, 3));

TEST_F(DividersTest, ShowTheBusyCursorOnce) {
    PaintClass pic(60, 60);
    const BusyCursor cursor;
    pic.Dividers(Thin());
    EXPECT_EQ(cursor.Waits(), 1);
    EXPECT_EQ(cursor.Arrows(), 1);
}

TEST_F(DividersTest, TheSecondDecidesThePattern) {
    const std::vector<Pixel> first = DividersOf(60, 60, Thin());
    EXPECT_EQ(DividersOf(60, 60, Thin()), first);
    Log().clock = 1001;
    EXPECT_NE(DividersOf(60, 60, Thin()), first);
}

TEST_F(DividersTest, TheRunStepTakesTheRecordsColors) {
    PaintClass pic(60, 60);
    RGBColor16 editorsFore{0x7100, 0x7200, 0x7300};
    RGBColor16 editorsBack{0x7400, 0x7500, 0x7600};
    pic.SetColors(&editorsFore, &editorsBack);
    DividersParams params = OneTry(Thin());
    params.transparent = 0;
    params.foreground = {0x1100, 0x2200, 0x3300};
    params.background = {0x4400, 0x5500, 0x6600};
    RunDividers(pic, params);
    EXPECT_EQ(CountOf(PixelsOf(pic), Color(0x11, 0x22, 0x33)), 60u);
    EXPECT_EQ(CountOf(PixelsOf(pic), Color(0x44, 0x55, 0x66)), 3540u);
}

}  // namespace

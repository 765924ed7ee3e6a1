#include "base/Progress.h"
#include "paint/EffectRun.h"
#include "paint/PaintClass.h"
#include "paint/math/Random.h"
#include "plain/PlainLines.h"
#include "tests/paint/Tones.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

namespace {

/// No mode of the generator's: every stroke keeps the first one's black, and no colour is drawn.
constexpr std::uint16_t linesAllBlack = 15;

class LinesTest : public CoreTest {
  protected:
    static LinesParams Ink(std::uint16_t colorMode = linesRandom) {
        LinesParams params;
        params.appearance = linesInk;
        params.colorMode = colorMode;
        return params;
    }
};

std::vector<Pixel> LinesOf(short width, short height, const LinesParams& params) {
    PaintClass pic(width, height);
    EXPECT_NE(pic.pixelMap, nullptr);
    EXPECT_TRUE(pic.Lines(params));
    EXPECT_TRUE(pic.changed);
    return ColorsOf(pic);
}

TEST_F(LinesTest, ATileOfFewPixelsGetsNoStrokes) {
    EXPECT_EQ(LinesOf(349, 1, Ink()), std::vector<Pixel>(349, Color(127, 127, 127)));
    EXPECT_EQ(LinesOf(1, 1, Ink()), std::vector<Pixel>(1, Color(127, 127, 127)));
    EXPECT_NE(LinesOf(350, 1, Ink()), std::vector<Pixel>(350, Color(127, 127, 127)));
}

TEST_F(LinesTest, WaxSoftensTheFillAlone) {
    LinesParams wax = Ink();
    wax.appearance = linesWax;
    // 4 * 127 / 8 + 127 / 2
    EXPECT_EQ(LinesOf(10, 10, wax), std::vector<Pixel>(100, Color(126, 126, 126)));
}

TEST_F(LinesTest, TheGroundIsGreyOrTheAverageColour) {
    LinesParams average = Ink(linesAverage);
    average.color = {0x1234, 0xFFFF, 0x00FF};
    EXPECT_EQ(LinesOf(5, 5, average), std::vector<Pixel>(25, Color(0x12, 0xFF, 0)));
    const std::vector<Pixel> colors = LinesOf(100, 100, Ink());
    EXPECT_NE(std::count(colors.begin(), colors.end(), Color(127, 127, 127)), 0)
        << "the ground shows between the strokes";
}

TEST_F(LinesTest, AveragedColoursStayAroundTheirColour) {
    LinesParams average = Ink(linesAverage);
    average.color = {0xFFFF, 0, 0x7FFF};
    for (const Pixel color : LinesOf(128, 128, average)) {
        EXPECT_GE(color & 0xFF, 0xBFu);
        EXPECT_LE(color >> 8 & 0xFF, 0x40u);
        EXPECT_GE(color >> 16, 0x3Fu);
        EXPECT_LE(color >> 16, 0xC0u);
    }
}

TEST_F(LinesTest, PrecisionZeroActsAsOne) {
    LinesParams params = Ink();
    params.precision = 0;
    const std::vector<Pixel> zero = LinesOf(64, 64, params);
    params.precision = 1;
    EXPECT_EQ(LinesOf(64, 64, params), zero);
    params.precision = 2;
    EXPECT_NE(LinesOf(64, 64, params), zero);
}

TEST_F(LinesTest, FromElevenOnPrecisionChangesNothing) {
    LinesParams params = Ink();
    params.precision = 11;
    const std::vector<Pixel> eleven = LinesOf(64, 64, params);
    params.precision = 100;
    EXPECT_EQ(LinesOf(64, 64, params), eleven);
    params.precision = 10;
    EXPECT_NE(LinesOf(64, 64, params), eleven);
}

TEST_F(LinesTest, TheUsersAngleIsHandedOverTurned) {
    PaintClass run(64, 64);
    LinesParams params = Ink();
    params.angle = 45;
    EXPECT_TRUE(RunLines(run, params));
    params.angle = 135;
    EXPECT_EQ(LinesOf(64, 64, params), ColorsOf(run));
}

/// How often a pixel's neighbour in the given direction has its colour.
int EqualNeighbours(const PaintClass& pic, int dx, int dy) {
    int equal = 0;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const Pixel neighbour =
                pic.GetPixelWrapped(static_cast<short>(x + dx), static_cast<short>(y + dy));
            equal += (pic.GetPixel(x, y) & 0xFFFFFF) == (neighbour & 0xFFFFFF) ? 1 : 0;
        }
    }
    return equal;
}

TEST_F(LinesTest, StrokesRunAlongTheUsersLine) {
    struct Case {
        short angle;
        int dx;
        int dy;
    };
    for (const Case& c : {Case{0, 0, -1}, {90, 1, 0}, {-90, -1, 0}, {180, 0, 1}, {45, 1, -1}}) {
        PaintClass pic(256, 256);
        LinesParams params = Ink();
        params.angle = c.angle;
        RunLines(pic, params);
        // Across the stroke: the direction turned by a right angle.
        EXPECT_GT(EqualNeighbours(pic, c.dx, c.dy), 2 * EqualNeighbours(pic, -c.dy, c.dx))
            << c.angle;
    }
}

TEST_F(LinesTest, StrokesSetOutWhereTheUserPoints) {
    struct Case {
        short angle;
        short width;
        short height;
        int dx;
        int dy;
    };
    // One pixel wide, so that the first stroke cannot leave the line, and twice as long as it.
    for (const Case& c :
         {Case{0, 1, 699, 0, -1}, {180, 1, 699, 0, 1}, {90, 699, 1, 1, 0}, {-90, 699, 1, -1, 0}}) {
        LinesParams params = Ink(linesAllBlack);
        params.precision = 100;
        params.angle = c.angle;
        for (std::uint32_t second = 0; second < 50; ++second) {
            Log().clock = second;
            PaintClass pic(c.width, c.height);
            RunLines(pic, params);
            SetSeed(second);
            const std::int32_t x = RandomRange(0, c.width);
            const std::int32_t y = RandomRange(0, c.height);
            // A stroke a little faster than a pixel a step leaves gaps of one.
            const auto ahead = [&](int steps) {
                return pic.GetPixelWrapped(static_cast<short>(x + steps * c.dx),
                                           static_cast<short>(y + steps * c.dy)) &
                       0xFFFFFF;
            };
            EXPECT_TRUE(ahead(20) == black || ahead(21) == black) << c.angle << " " << second;
        }
    }
}

TEST_F(LinesTest, AStrokeMayStartOneBeyondTheEdge) {
    constexpr short width = 40;
    std::uint32_t second = 0;
    do {
        SetSeed(++second);
    } while (RandomRange(0, width) != width);
    Log().clock = second;
    PaintClass fast(width, 31);
    PaintClass plain(width, 31);
    ASSERT_TRUE(fast.Lines(Ink(linesAllBlack)));
    ASSERT_TRUE(PlainLines(plain, Ink(linesAllBlack)));
    EXPECT_EQ(ColorsOf(fast), ColorsOf(plain));
}

TEST_F(LinesTest, TheSeamIsLikeAnyOtherColumnOrRow) {
    constexpr short width = 61;
    constexpr short height = 47;
    struct Case {
        short angle;
        int dx;
        int dy;
    };
    for (const Case& c : {Case{90, 1, 0}, {0, 0, 1}}) {
        LinesParams params = Ink();
        params.angle = c.angle;
        int acrossSeam = 0;
        int inside = 0;
        for (std::uint32_t second = 0; second < 40; ++second) {
            Log().clock = second;
            PaintClass pic(width, height);
            RunLines(pic, params);
            for (short y = 0; y < height; ++y) {
                for (short x = 0; x < width; ++x) {
                    const auto nextX = static_cast<short>(x + c.dx);
                    const auto nextY = static_cast<short>(y + c.dy);
                    const Pixel difference = pic.GetPixel(x, y) ^ pic.GetPixelWrapped(nextX, nextY);
                    const int goesOn = (difference & 0xFFFFFF) == 0 ? 1 : 0;
                    (nextX == width || nextY == height ? acrossSeam : inside) += goesOn;
                }
            }
        }
        const double perPlace = inside / static_cast<double>(c.dx != 0 ? width - 1 : height - 1);
        EXPECT_NEAR(acrossSeam / perPlace, 1.0, 0.1) << c.angle;
    }
}

TEST_F(LinesTest, TheSecondDecidesThePattern) {
    Log().clock = 5;
    const std::vector<Pixel> first = LinesOf(64, 64, LinesParams{});
    EXPECT_EQ(LinesOf(64, 64, LinesParams{}), first);
    Log().clock = 6;
    EXPECT_NE(LinesOf(64, 64, LinesParams{}), first);
}

TEST_F(LinesTest, InkLeavesTheAlphaBytes) {
    PaintClass pic(64, 64);
    pic.SetAllAlpha(37);
    pic.Lines(Ink());
    for (short y = 0; y < 64; ++y) {
        for (short x = 0; x < 64; ++x) {
            ASSERT_EQ(pic.GetAlpha(x, y), 37);
        }
    }
}

TEST_F(LinesTest, InkLeavesDifferentAlphaBytesAtAnySize) {
    // The narrowest ones have no room for a canvas.
    for (short width = 1; width <= 40; ++width) {
        PaintClass pic(width, 37);
        PaintClass before(width, 37);
        FillWithNoise(pic);
        FillWithNoise(before);
        pic.Lines(Ink());
        for (short y = 0; y < 37; ++y) {
            for (short x = 0; x < width; ++x) {
                ASSERT_EQ(pic.GetAlpha(x, y), before.GetAlpha(x, y)) << x << ", " << y;
            }
        }
    }
}

TEST_F(LinesTest, InkNeedsNoCloneAndLeavesNone) {
    const std::vector<Pixel> colors = LinesOf(61, 47, Ink());
    for (int failing = 0; failing <= 2; ++failing) {
        PaintClass pic(61, 47);
        memory.FailAllocation(failing);
        EXPECT_TRUE(pic.Lines(Ink())) << failing;
        memory.FailAllocation(0);
        EXPECT_EQ(ColorsOf(pic), colors) << failing;
        EXPECT_EQ(pic.clone, nullptr) << failing;
        EXPECT_TRUE(pic.changed) << failing;
    }
}

TEST_F(LinesTest, AToolsCloneIsOverwrittenAndNotKept) {
    for (const std::uint16_t appearance : {linesInk, linesWax}) {
        LinesParams params = Ink();
        params.appearance = appearance;
        const std::vector<Pixel> colors = LinesOf(61, 47, params);
        PaintClass pic(61, 47);
        ASSERT_NE(pic.GetClone(), nullptr);
        FillWithNoise(*pic.GetClone());
        EXPECT_TRUE(pic.Lines(params));
        EXPECT_EQ(ColorsOf(pic), colors);
        EXPECT_EQ(pic.clone, nullptr);
    }
}

TEST_F(LinesTest, AnUnknownColourModeKeepsTheColourBeforeTheFirst) {
    const std::vector<Pixel> colors = LinesOf(64, 64, Ink(linesAllBlack));
    for (const Pixel color : colors) {
        EXPECT_TRUE(color == Color(127, 127, 127) || color == black);
    }
    EXPECT_NE(std::count(colors.begin(), colors.end(), black), 0);
}

TEST_F(LinesTest, WithoutMemoryForTheCloneTheStrokesAreUndone) {
    PaintClass pic(64, 64);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    ASSERT_TRUE(pic.SaveUndo());
    memory.FailAllocation(1);
    EXPECT_FALSE(pic.Lines(LinesParams{}));
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_EQ(pic.clone, nullptr);
    EXPECT_TRUE(Log().faults.empty());
}

void ExpectSameAsPlain(short width, short height, const LinesParams& params) {
    PaintClass fast(width, height);
    PaintClass plain(width, height);
    ASSERT_TRUE(fast.Lines(params));
    const std::uint32_t seedAfter = Seed();
    ASSERT_TRUE(PlainLines(plain, params));
    ASSERT_EQ(Seed(), seedAfter) << "as many draws";
    ASSERT_EQ(ColorsOf(fast), ColorsOf(plain)) << width << " by " << height;
}

TEST_F(LinesTest, TheSameAsThePlainLoopForAnyRecordAndSize) {
    std::mt19937 generator(2);
    const auto pick = [&](int lo, int hi) {
        return static_cast<int>(generator() % static_cast<unsigned>(hi - lo + 1)) + lo;
    };
    std::vector<std::pair<short, short>> sizes = {
        {1, 1},     {1, 512},   {512, 1},   {349, 1},   {350, 1},   {7, 50},   {2, 175},
        {511, 512}, {512, 511}, {512, 512}, {3, 3},     {8192, 2},  {8193, 2}, {1, 9000},
        {32767, 1}, {32767, 1}, {32767, 1}, {32766, 1}, {1, 32767}, {5, 8192}, {5, 8193}};
    while (sizes.size() < 1200) {
        sizes.emplace_back(pick(1, 70), pick(1, 70));
    }
    WithBothCompilations([&] {
        for (const auto& [width, height] : sizes) {
            LinesParams params;
            params.precision = static_cast<short>(pick(-12, 15));
            params.appearance = static_cast<std::uint16_t>(pick(9, 10));
            params.colorMode = static_cast<std::uint16_t>(pick(11, 14));
            params.angle = static_cast<short>(pick(-180, 360));
            params.color = {static_cast<std::uint16_t>(generator()),
                            static_cast<std::uint16_t>(generator()),
                            static_cast<std::uint16_t>(generator())};
            Log().clock = static_cast<std::uint32_t>(generator());
            ExpectSameAsPlain(width, height, params);
        }
    });
}

TEST_F(LinesTest, RecordsOutOfRangeAreTheSameAsThePlainLoopToo) {
    std::mt19937 generator(3);
    for (int i = 0; i < 500; ++i) {
        LinesParams params;
        unsigned char* const bytes = reinterpret_cast<unsigned char*>(&params);
        for (std::size_t b = 0; b < sizeof params; ++b) {
            bytes[b] = static_cast<unsigned char>(generator());
        }
        ExpectSameAsPlain(40, 31, params);
    }
}

// The wax pass by itself.

class SoftenTest : public CoreTest {
  protected:
    static bool Soften(PaintClass& pic) {
        ShowClass progress(100);
        bool abortFlag = false;
        return pic.Soften(0, &progress, &abortFlag);
    }
};

TEST_F(SoftenTest, FlatColoursOfOddValueFallByOne) {
    PaintClass pic(4, 4);
    pic.FillColor({0xFFFF, 0x6400, 0x6500});
    EXPECT_TRUE(Soften(pic));
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(16, Color(254, 100, 100)));
}

TEST_F(SoftenTest, MatchesThePlainLoopAtEverySmallSize) {
    for (short height = 1; height <= 9; ++height) {
        for (short width = 1; width <= 40; ++width) {
            PaintClass fast(width, height);
            PaintClass plain(width, height);
            FillWithNoise(fast, static_cast<unsigned>(width * 100 + height));
            FillWithNoise(plain, static_cast<unsigned>(width * 100 + height));
            ASSERT_TRUE(Soften(fast));
            ASSERT_TRUE(PlainSoften(plain));
            ASSERT_EQ(ColorsOf(fast), ColorsOf(plain)) << width << " by " << height;
        }
    }
}

TEST_F(SoftenTest, IsTheSameWhereverTheTileBegins) {
    PaintClass pic(33, 17);
    PaintClass shifted(33, 17);
    FillWithNoise(pic);
    const auto shift = [](const PaintClass& from, PaintClass& to, int dx, int dy) {
        for (short y = 0; y < from.grY; ++y) {
            for (short x = 0; x < from.grX; ++x) {
                to.SetPixelWrapped(static_cast<short>(x + dx), static_cast<short>(y + dy),
                                   from.GetPixel(x, y));
            }
        }
    };
    shift(pic, shifted, 5, 11);
    ASSERT_TRUE(Soften(pic));
    ASSERT_TRUE(Soften(shifted));
    PaintClass back(33, 17);
    shift(shifted, back, -5, -11);
    EXPECT_EQ(ColorsOf(back), ColorsOf(pic));
}

TEST_F(SoftenTest, WithoutTheCloneNothingChanges) {
    PaintClass pic(20, 20);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    memory.FailAllocation(1);
    EXPECT_FALSE(Soften(pic));
    EXPECT_EQ(PixelsOf(pic), before);
}

// Progress, as the editor's bar shows it.

TEST_F(LinesTest, ReportsStrokesByFourAndRowsByFive) {
    const Bar bar;
    PaintClass pic(64, 64);
    pic.Lines(LinesParams{});
    // 64 * 64 / 350 = 11 fours of strokes, and 64 / 5 = 12 of a total of 23; rows 0 to 60.
    ASSERT_EQ(bar.percents.size(), 11u + 13u);
    EXPECT_EQ(bar.percents.front(), 0);
    EXPECT_EQ(bar.percents[10], 10 * 100 / 23);
    EXPECT_EQ(bar.percents[11], 11 * 100 / 23);
    EXPECT_EQ(bar.percents.back(), 100);
    EXPECT_GT(Log().arrowCursors, 0);
}

TEST_F(LinesTest, InkReportsItsStrokesOnly) {
    const Bar bar;
    PaintClass pic(64, 64);
    pic.Lines(Ink());
    ASSERT_EQ(bar.percents.size(), 11u);
    EXPECT_EQ(bar.percents.front(), 0);
    EXPECT_EQ(bar.percents.back(), 10 * 100 / 11);
}

}  // namespace

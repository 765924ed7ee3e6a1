#include <set>
#include <vector>

#include "paint/PaintClass.h"
#include "paint/math/Random.h"
#include "paint/records/FilterParams.h"
#include "plain/PlainColors.h"
#include "tests/support/Bar.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class NoiseTest : public CoreTest {
  protected:
    /// Alpha bytes and draws included.
    void ExpectSameAsPlain(short width, short height, short amount, int mode) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        Log().clock = input.Seed();
        fast.Noise(amount, mode);
        const std::uint32_t state = Seed();
        PlainNoise(plain, amount, mode);
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain)) << amount << " percent of " << mode;
        ASSERT_EQ(state, Seed());
        ASSERT_TRUE(fast.changed);
    }

    /// The colours that a flat tile takes.
    static std::set<Pixel> ColorsAfter(unsigned grey, int mode) {
        PaintClass pic(100, 100);
        const auto component = static_cast<std::uint16_t>(grey << 8);
        pic.FillColor({component, component, component});
        pic.Noise(100, mode);
        const std::vector<Pixel> colors = ColorsOf(pic);
        return {colors.begin(), colors.end()};
    }

    RandomInput input{51};
};

bool IsGrey(Pixel color) {
    return color == Color(color & 0xFF, color & 0xFF, color & 0xFF);
}

TEST_F(NoiseTest, TheSameAsThePlainLoopForAnyRecordAndSize) {
    WithBothCompilations([this] {
        for (int i = 0; i < 400; ++i) {
            ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 40), input.Number(0, 100),
                              input.Number(0, 2));
        }
        ExpectSameAsPlain(1, 512, 50, 0);
        ExpectSameAsPlain(512, 1, 50, 1);
        ExpectSameAsPlain(511, 64, 100, 2);
        ExpectSameAsPlain(257, 300, 99, 0);
    });
}

TEST_F(NoiseTest, TheSameAsThePlainLoopForRecordsOfAnyBytes) {
    for (int i = 0; i < 300; ++i) {
        const auto params = input.AnyBytes<NoiseParams>();
        ExpectSameAsPlain(input.Number(1, 20), input.Number(1, 20), params.amount,
                          i % 2 == 0 ? params.mode : i % 3);
    }
}

/// Every value of a channel, so that each side of each margin comes up.
TEST_F(NoiseTest, TheSameAsThePlainLoopAtTheMargins) {
    for (int mode = 0; mode < 3; ++mode) {
        PaintClass fast(256, 3);
        PaintClass plain(256, 3);
        for (short y = 0; y < 3; ++y) {
            for (short x = 0; x < 256; ++x) {
                const auto value = static_cast<unsigned char>(x);
                fast.SetRGB(x, y, value, y == 0 ? value : 128, y == 2 ? 0 : value);
            }
        }
        CopyShifted(fast, plain, 0, 0);
        fast.Noise(100, mode);
        PlainNoise(plain, 100, mode);
        ASSERT_EQ(ColorsOf(fast), ColorsOf(plain)) << mode;
    }
}

TEST_F(NoiseTest, MiddleGreyStaysGrey) {
    // Up to 16 steps each way in each of the two passes; the second begins at the first's result.
    const std::set<Pixel> colors = ColorsAfter(128, noiseGrey);
    EXPECT_GT(colors.size(), 20u);
    for (const Pixel color : colors) {
        EXPECT_TRUE(IsGrey(color));
        EXPECT_GE(color & 0xFF, 128u - 32u);
        EXPECT_LE(color & 0xFF, 128u + 32u);
    }
}

TEST_F(NoiseTest, BlackOnlyBecomesLighterGrey) {
    for (const Pixel color : ColorsAfter(0, noiseGrey)) {
        EXPECT_TRUE(IsGrey(color));
        // 0 to 15 in one pass.
        EXPECT_LE(color & 0xFF, 31u);
    }
}

TEST_F(NoiseTest, WhiteOnlyBecomesDarkerGrey) {
    for (const Pixel color : ColorsAfter(255, noiseGrey)) {
        EXPECT_TRUE(IsGrey(color));
        EXPECT_GE(color & 0xFF, 239u - 16u);
    }
}

TEST_F(NoiseTest, BlackBecomesDarkColorsWhereItIsReallyColorful) {
    bool hasColor = false;
    for (const Pixel color : ColorsAfter(0, noiseColorful)) {
        for (const unsigned channel : {color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF}) {
            EXPECT_LE(channel, 31u);
        }
        hasColor = hasColor || !IsGrey(color);
    }
    EXPECT_TRUE(hasColor);
}

TEST_F(NoiseTest, EachPixelIsTriedTwice) {
    PaintClass pic(300, 300);
    pic.FillColor({0x8000, 0x8000, 0x8000});
    pic.Noise(1, noiseColorful);
    const std::vector<Pixel> colors = ColorsOf(pic);
    const auto kept = std::count(colors.begin(), colors.end(), Color(128, 128, 128));
    const double changed = 1.0 - static_cast<double>(kept) / 90000;
    EXPECT_NEAR(changed, 0.02, 0.004);
}

TEST_F(NoiseTest, TheSameSecondGivesTheSameNoise) {
    const auto run = [](std::uint32_t second) {
        Log().clock = second;
        PaintClass pic(30, 30);
        pic.Noise(50, noiseColored);
        return ColorsOf(pic);
    };
    EXPECT_EQ(run(7), run(7));
    EXPECT_NE(run(7), run(8));
}

TEST_F(NoiseTest, ReportsEverySixthRowOfBothPassesAndTheEnd) {
    Bar bar;
    PaintClass pic(4, 10);
    pic.Noise(50, noiseGrey);
    // 0, 6, 10, 16 and 20 of 20.
    EXPECT_EQ(bar.percents, (std::vector<short>{0, 30, 50, 80, 100}));
}

TEST_F(NoiseTest, NeedsNoMemory) {
    PaintClass pic(10, 10);
    const int before = memory.Allocations();
    pic.Noise(50, noiseGrey);
    EXPECT_EQ(memory.Allocations(), before);
}

}  // namespace

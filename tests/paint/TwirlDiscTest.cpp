#include "paint/kernels/TwirlDisc.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <tuple>
#include <vector>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/TwirlTorus.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"

namespace {

/// The disc's rows against the exact path for all of their sources.
class TwirlDiscTest : public CoreTest {
  protected:
    void SetUp() override {
        CoreTest::SetUp();
        if (!HasAvx2()) {
            GTEST_SKIP() << "a processor without AVX2";
        }
    }

    static TwirlDisc Disc(int radius, double twist = 4.5) {
        return {static_cast<short>(radius), radius / twist};
    }

    /// Those that the disc writes in a square, as a twirl that overlaps itself, or large ones, that
    /// cannot write, row by row.
    static void ExpectSameAsTheExactPath(TwirlDisc& disc, const PicClass& pic, int cx, int cy) {
        const int radius = disc.Radius();
        const int side = 2 * radius + 1;
        TileWindow from(side, side);
        TileWindow to(side, side);
        from.Copy(pic, cx - radius, cy - radius);
        std::fill_n(to.Row(0), side * side, guard);
        disc.Write({from.Row(0), to.Row(0), side, side, side, 0, 0, radius, cx, cy});
        for (int dy = -radius; dy <= radius; ++dy) {
            const std::vector<Pixel> expected = RowWithGuards(disc, from, dy, cx, cy);
            const std::vector<Pixel> actual(to.Row(dy + radius), to.Row(dy + radius) + side);
            const auto difference = std::mismatch(actual.begin(), actual.end(), expected.begin());
            ASSERT_EQ(actual, expected)
                << "radius " << radius << ", centre " << cx << ", " << cy << ", row " << dy
                << ", column " << difference.first - actual.begin();
        }
    }

    /// A row of the square as the exact path reads it.
    static std::vector<Pixel> RowWithGuards(TwirlDisc& disc, const TileWindow& from, int dy, int cx,
                                            int cy) {
        const int radius = disc.Radius();
        std::vector<Pixel> row(static_cast<std::size_t>(2 * radius + 1), guard);
        if (std::abs(dy) < radius) {
            const std::ptrdiff_t first = radius - disc.HalfWidth(dy);
            from.Read(disc.Row(dy, cx, cy), reinterpret_cast<unsigned char*>(row.data() + first));
        }
        return row;
    }

    /// All 32 bits, row by row.
    static void TwirlExactly(PicClass& pic, TwirlDisc& disc, int cx, int cy) {
        const int radius = disc.Radius();
        const int side = 2 * radius + 1;
        TileWindow from(side, side);
        from.Copy(pic, cx - radius, cy - radius);
        for (int dy = 1 - radius; dy < radius; ++dy) {
            const std::vector<Pixel> row = RowWithGuards(disc, from, dy, cx, cy);
            for (int dx = -disc.HalfWidth(dy); dx <= disc.HalfWidth(dy); ++dx) {
                if (dx != 0 || dy != 0) {
                    pic.SetPixelWrapped(static_cast<short>(cx + dx), static_cast<short>(cy + dy),
                                        row[static_cast<std::size_t>(radius + dx)]);
                }
            }
        }
    }

    /// A coordinate on a tile of any size up to 515, often next to 0 or to a power of two, where
    /// the doubles' last bits change.
    int Centre() {
        if (input.Number(0, 1) == 0) {
            return input.Number(0, 515);
        }
        const int power = input.Number(0, 1) == 0 ? 1 << input.Number(0, 9) : 0;
        return power + input.Number(0, 2);
    }

    /// The disc looks around the torus, so the picture may be smaller than the coordinates.
    void ExpectSameAtManyCentres(TwirlDisc& disc, const PicClass& pic, int centres) {
        for (int i = 0; i < centres; ++i) {
            ExpectSameAsTheExactPath(disc, pic, Centre(), Centre());
        }
    }

    static void Fill(PicClass& pic, const std::function<Pixel(int x, int y)>& colorAt) {
        for (short y = 0; y < pic.grY; ++y) {
            for (short x = 0; x < pic.grX; ++x) {
                pic.SetPixel(x, y, colorAt(x, y));
            }
        }
    }

    /// Each channel `low` or one of `count` above it.
    Pixel ColorNear(int low, int count) {
        const auto channel = [&] {
            return static_cast<unsigned>(low + input.Number(0, count - 1));
        };
        return Color(channel(), channel(), channel()) | 0xAB000000;
    }

    static constexpr Pixel guard = 0xABCDEF01;
    RandomInput input{17};
};

TEST_F(TwirlDiscTest, NoiseInDiscsOfAllSmallSizes) {
    PicClass pic(90, 70, false);
    FillWithNoise(pic);
    for (int radius = 1; radius <= 60; ++radius) {
        TwirlDisc disc = Disc(radius, input.Number(351, 450) / 100.0);
        ASSERT_TRUE(disc.CanWrite());
        ExpectSameAtManyCentres(disc, pic, 6);
    }
}

TEST_F(TwirlDiscTest, NoiseInLargeDiscs) {
    PicClass pic(512, 512, false);
    FillWithNoise(pic);
    EXPECT_FALSE(Disc(largestEstimatedRadius + 1).CanWrite());
    for (const int radius : {256, largestEstimatedRadius}) {
        TwirlDisc disc = Disc(radius);
        ExpectSameAtManyCentres(disc, pic, 4);
    }
}

/// The doubles' roundings alone decide between each value and the one below.
TEST_F(TwirlDiscTest, FlatPicturesOfAllValues) {
    constexpr int radius = 40;
    TwirlDisc disc = Disc(radius);
    PicClass pic(61, 53, false);
    for (int value = 0; value < 256; ++value) {
        Fill(pic, [&](int, int) { return ColorNear(value, 1); });
        ExpectSameAtManyCentres(disc, pic, 6);
        ExpectSameAsTheExactPath(disc, pic, input.Number(0, 20), input.Number(0, 20));
    }
}

TEST_F(TwirlDiscTest, NearlyFlatPictures) {
    constexpr int radius = 60;
    PicClass pic(61, 53, false);
    for (int i = 0; i < 40; ++i) {
        TwirlDisc disc = Disc(radius, input.Number(351, 450) / 100.0);
        const int count = input.Number(2, 4);
        const int low = input.Number(0, 256 - count);
        Fill(pic, [&](int, int) { return ColorNear(low, count); });
        ExpectSameAtManyCentres(disc, pic, 10);
    }
}

/// Cells of which two opposite sides or corners are the same.
TEST_F(TwirlDiscTest, StripesCheckersAndGradients) {
    constexpr int radius = 60;
    TwirlDisc disc = Disc(radius);
    PicClass pic(64, 64, false);
    const std::vector<std::function<int(int x, int y)>> patterns = {
        [](int x, int) { return x; },
        [](int, int y) { return y; },
        [](int x, int y) { return x + y; },
        [](int x, int y) { return x - y; },
        [](int x, int y) { return (x + y) % 2; },
        [](int x, int) { return x % 2 * 2; },
        [](int x, int y) { return x * y; },
        [](int x, int y) { return x / 3 + y / 5; }};
    for (const auto& pattern : patterns) {
        for (const unsigned base : {0u, 100u, 253u}) {
            Fill(pic, [&](int x, int y) {
                const auto value = static_cast<unsigned>(pattern(x, y));
                return Color((base + value) & 255, (base + value / 4) & 255, (value ^ 255) & 255);
            });
            ExpectSameAtManyCentres(disc, pic, 6);
        }
    }
}

/// Where a coordinate is negative, channels go beyond black and white.
TEST_F(TwirlDiscTest, BlackAndWhiteNoiseAndSinglePixels) {
    constexpr int radius = 60;
    TwirlDisc disc = Disc(radius);
    PicClass pic(64, 50, false);
    for (const int chance : {1, 40}) {
        Fill(pic, [&](int, int) {
            return input.Number(0, chance) == 0 ? Color(255, 0, 255) : Color(0, 255, 0);
        });
        ExpectSameAtManyCentres(disc, pic, 12);
    }
}

TEST_F(TwirlDiscTest, SourcesWithoutACodeAreLeftToTheExactPath) {
    constexpr double low = 0.000005;
    constexpr double high = 1 - low;
    SourceCode code{};
    EXPECT_FALSE(TurnedSource(high, high, 5, &code));
    EXPECT_FALSE(TurnedSource(high - 3, low + 2, 5, &code));
    EXPECT_FALSE(TurnedSource(low - 1, high, 5, &code));
    EXPECT_FALSE(TurnedSource(0.5, -2 + 1e-7, 5, &code));
    EXPECT_FALSE(TurnedSource(-1e-7, 0.5, 5, &code));
    EXPECT_TRUE(TurnedSource(0.75, -1.5, 5, &code));
    EXPECT_EQ(code.cell, SpotAt(5, 3));
    EXPECT_EQ(code.fraction, 0x20002000u);
}

/// Against the doubles themselves. 0 has no limits: no way from it is decided.
TEST_F(TwirlDiscTest, WaysFromCoordinates) {
    const auto expectLimits = [](int coordinate, int low, int high) {
        const RoundingLimits limits = LimitsAt(coordinate);
        EXPECT_EQ(limits.low, low) << coordinate;
        EXPECT_EQ(limits.high, high) << coordinate;
        EXPECT_EQ(limits.isPositive != 0, coordinate > 0) << coordinate;
        for (int way = low - 2; way <= high + 2 && coordinate != 0; ++way) {
            const double place = coordinate + way / stillUnit;
            ASSERT_EQ(place < coordinate, way < low) << coordinate << ", " << way;
            ASSERT_EQ(place > coordinate, way > high) << coordinate << ", " << way;
        }
    };
    expectLimits(0, -32768, -32768);
    expectLimits(1, 0, 0);
    expectLimits(2, 0, 1);
    expectLimits(3, -1, 1);
    expectLimits(64, -16, 32);
    expectLimits(100, -32, 32);
    expectLimits(-1, 0, 0);
    expectLimits(-2, -1, 0);
    expectLimits(-256, -128, 64);
    expectLimits(-511, -128, 128);
}

TEST_F(TwirlDiscTest, FarFromTheOrigin) {
    constexpr int radius = 30;
    TwirlDisc disc = Disc(radius);
    PicClass pic(50, 40, false);
    FillWithNoise(pic);
    for (const int cx : {1020, 1024, 2048, 2050, 2999}) {
        ExpectSameAsTheExactPath(disc, pic, cx, 20);
    }
}

TEST_F(TwirlDiscTest, OnATorusOnlyTheDiscsChange) {
    for (const auto& [width, height, radius] :
         {std::tuple<short, short, int>{64, 64, 32}, {70, 41, 20}, {45, 90, 7}, {16, 16, 8}}) {
        TwirlDisc disc = Disc(radius);
        PicClass expected(width, height, false);
        FillWithNoise(expected);
        ASSERT_TRUE(TwirlTorus::Fits(expected, radius));
        TwirlTorus torus(expected);
        PicClass actual(width, height, false);
        for (int i = 0; i < 20; ++i) {
            const int cx = input.Number(0, width - 1);
            const int cy = input.Number(0, height - 1);
            TwirlExactly(expected, disc, cx, cy);
            torus.Twirl(disc, cx, cy);
            torus.CopyTo(actual);
            ASSERT_EQ(PixelsOf(actual), PixelsOf(expected))
                << width << " by " << height << ", centre " << cx << ", " << cy << ", twirl " << i;
        }
    }
}

TEST_F(TwirlDiscTest, OnATorusFitWhatDoesNotOverlapAndHasSixteenBits) {
    const auto fits = [](int width, int height, int radius) {
        const PicClass tile(static_cast<short>(width), static_cast<short>(height), false);
        return TwirlTorus::Fits(tile, radius);
    };
    EXPECT_TRUE(fits(64, 64, 32));
    EXPECT_FALSE(fits(63, 64, 32));
    EXPECT_FALSE(fits(64, 63, 32));
    EXPECT_TRUE(fits(16383, 2, 1));
    EXPECT_FALSE(fits(16384, 2, 1));
    EXPECT_FALSE(fits(2, 16384, 1));
}

}  // namespace

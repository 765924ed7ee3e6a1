#include "paint/kernels/TwirlDisc.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"

namespace {

/// The disc's rows against the exact path for all of their sources.
class TwirlDiscTest : public CoreTest {
  protected:
    static TwirlDisc Disc(int radius, double twist = 4.5) {
        return {static_cast<short>(radius), radius / twist};
    }

    static void ExpectSameAsTheExactPath(TwirlDisc& disc, int radius, const PicClass& pic, int cx,
                                         int cy) {
        const int side = 2 * radius + 1;
        TileWindow ofDisc(side, side);
        TileWindow whole(side, side);
        disc.Place(pic, cx, cy, ofDisc);
        whole.Copy(pic, cx - radius, cy - radius);
        for (int dy = 1 - radius; dy < radius; ++dy) {
            const Positions sources = disc.Row(dy, cx, cy);
            const auto count = static_cast<std::size_t>(sources.count);
            std::vector<Pixel> expected(count + 1, guard);
            std::vector<Pixel> actual(count + 1, guard);
            whole.Read(sources, reinterpret_cast<unsigned char*>(expected.data()));
            disc.ReadRow(dy, actual.data());
            const auto difference = std::mismatch(actual.begin(), actual.end(), expected.begin());
            ASSERT_EQ(actual, expected)
                << "radius " << radius << ", centre " << cx << ", " << cy << ", row " << dy
                << ", pixel " << difference.first - actual.begin();
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
    void ExpectSameAtManyCentres(TwirlDisc& disc, int radius, const PicClass& pic, int centres) {
        for (int i = 0; i < centres; ++i) {
            ExpectSameAsTheExactPath(disc, radius, pic, Centre(), Centre());
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
        ASSERT_FALSE(disc.Failed());
        ExpectSameAtManyCentres(disc, radius, pic, 6);
    }
}

TEST_F(TwirlDiscTest, NoiseInLargeDiscs) {
    PicClass pic(512, 512, false);
    FillWithNoise(pic);
    for (const int radius : {256, largestEstimatedRadius, largestEstimatedRadius + 1}) {
        TwirlDisc disc = Disc(radius);
        ExpectSameAtManyCentres(disc, radius, pic, 4);
    }
}

/// The doubles' roundings alone decide between each value and the one below.
TEST_F(TwirlDiscTest, FlatPicturesOfAllValues) {
    constexpr int radius = 40;
    TwirlDisc disc = Disc(radius);
    PicClass pic(61, 53, false);
    for (int value = 0; value < 256; ++value) {
        Fill(pic, [&](int, int) { return ColorNear(value, 1); });
        ExpectSameAtManyCentres(disc, radius, pic, 6);
        ExpectSameAsTheExactPath(disc, radius, pic, input.Number(0, 20), input.Number(0, 20));
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
        ExpectSameAtManyCentres(disc, radius, pic, 10);
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
            ExpectSameAtManyCentres(disc, radius, pic, 6);
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
        ExpectSameAtManyCentres(disc, radius, pic, 12);
    }
}

TEST_F(TwirlDiscTest, FractionsWithoutACodeAreLeftToTheExactPath) {
    constexpr double low = 0.000005;
    constexpr double high = 1 - low;
    EXPECT_EQ(TurnedSource(high, high, 5).fraction, onlyExact);
    EXPECT_EQ(TurnedSource(high - 3, low + 2, 5).fraction, onlyExact);
    EXPECT_EQ(TurnedSource(low - 1, high, 5).fraction, onlyExact);
    EXPECT_EQ(TurnedSource(0.5, -2 + 1e-7, 5).fraction, onlyExact);
    EXPECT_EQ(TurnedSource(-1e-7, 0.5, 5).fraction, onlyExact);
    EXPECT_EQ(TurnedSource(0.75, -1.5, 5).fraction, 0x20002000u);
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
        ExpectSameAsTheExactPath(disc, radius, pic, cx, 20);
    }
}

}  // namespace

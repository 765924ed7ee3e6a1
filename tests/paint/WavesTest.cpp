#include <initializer_list>
#include <vector>

#include "paint/PaintClass.h"
#include "paint/math/Random.h"
#include "plain/PlainWaves.h"
#include "tests/support/BusyCursor.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

WavesParams Forms(std::int16_t formX, std::int16_t formY) {
    WavesParams params;
    params.formX = formX;
    params.formY = formY;
    return params;
}

class WavesTest : public CoreTest {
  protected:
    /// Alpha bytes and draws included.
    void ExpectSameAsPlain(short width, short height, const WavesParams& params) {
        PaintClass fast(width, height);
        PaintClass plain(width, height);
        FillWithNoise(fast, input.Seed());
        CopyShifted(fast, plain, 0, 0);
        const std::uint32_t seed = input.Seed();
        SetSeed(seed);
        fast.Waves(params);
        const std::uint32_t seedAfter = Seed();
        SetSeed(seed);
        ASSERT_TRUE(PlainWaves(plain, params));
        ASSERT_EQ(Seed(), seedAfter) << "as many draws";
        ASSERT_EQ(PixelsOf(fast), PixelsOf(plain))
            << width << " by " << height << ", forms " << params.formX << " and " << params.formY;
        ASSERT_TRUE(fast.changed);
        ASSERT_EQ(fast.clone, nullptr);
    }

    WavesParams InRange() {
        constexpr std::int16_t forms[] = {waveNone, waveSine, waveSawtooth, waveSquare, waveRandom};
        WavesParams params;
        params.formX = forms[input.Number(0, 4)];
        params.heightX = input.Number(1, 100);
        params.countX = input.Number(1, 20);
        params.formY = forms[input.Number(0, 4)];
        params.heightY = input.Number(1, 100);
        params.countY = input.Number(1, 20);
        params.interpolate = input.Number(0, 7) != 0 ? 1 : 0;
        return params;
    }

    RandomInput input{21};
};

TEST_F(WavesTest, TheSameAsThePlainLoopForAnyRecordAndSize) {
    WithBothCompilations([this] {
        for (int i = 0; i < 1000; ++i) {
            ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 40), InRange());
        }
        for (const auto& [width, height] :
             {std::pair<short, short>{1, 1}, {1, 512}, {512, 1}, {129, 3}, {256, 5}, {3, 511}}) {
            for (int i = 0; i < 10; ++i) {
                ExpectSameAsPlain(width, height, InRange());
            }
        }
    });
}

TEST_F(WavesTest, TheSameAsThePlainLoopAtTheLargestTile) {
    WavesParams params;
    params.countX = 20;
    params.heightY = 100;
    ExpectSameAsPlain(512, 511, params);
    ExpectSameAsPlain(511, 512, Forms(waveSawtooth, waveSquare));
    ExpectSameAsPlain(512, 512, Forms(waveRandom, waveRandom));
}

TEST_F(WavesTest, RecordsOutOfRangeAreTheSameAsThePlainLoopToo) {
    constexpr std::int16_t forms[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, -1};
    constexpr std::int16_t numbers[] = {0, 1, -1, 100, 101, -32768, 32767};
    for (int i = 0; i < 1000; ++i) {
        auto params = input.AnyBytes<WavesParams>();
        params.formX = forms[input.Number(0, 9)];
        params.formY = forms[input.Number(0, 9)];
        if (i % 3 == 0) {
            params.countX = numbers[input.Number(0, 6)];
            params.countY = numbers[input.Number(0, 6)];
        }
        if (i % 4 == 0) {
            params.interpolate = 1;
        }
        ExpectSameAsPlain(input.Number(1, 30), input.Number(1, 30), params);
    }
}

TEST_F(WavesTest, PlacesBeyondSixteenBitsAreTheSameAsThePlainLoopToo) {
    WavesParams params = Forms(waveSquare, waveSquare);
    params.heightX = 32767;
    params.heightY = -32768;
    ExpectSameAsPlain(900, 3, params);
    ExpectSameAsPlain(3, 900, params);
    ExpectSameAsPlain(1200, 2, Forms(waveRandom, waveSine));
}

/// (2a + b + c) / 4
std::vector<Pixel> Softened(const PicClass& pic) {
    std::vector<Pixel> colors;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const unsigned char* a = pic.PixelAddress(x, y);
            const unsigned char* b = pic.PixelAddressWrapped(static_cast<short>(x + 1), y);
            const unsigned char* c = pic.PixelAddressWrapped(x, static_cast<short>(y + 1));
            unsigned rgb[3];
            for (int i = 0; i < 3; ++i) {
                rgb[i] = static_cast<unsigned>(2 * a[i] + b[i] + c[i]) / 4;
            }
            colors.push_back(Color(rgb[0], rgb[1], rgb[2]));
        }
    }
    return colors;
}

TEST_F(WavesTest, WithoutAnyWaveEachRunSoftensABit) {
    PaintClass pic(17, 13);
    FillWithNoise(pic);
    for (int run = 0; run < 3; ++run) {
        const std::vector<Pixel> softened = Softened(pic);
        pic.Waves(Forms(waveNone, waveNone));
        ASSERT_EQ(ColorsOf(pic), softened);
    }
}

TEST_F(WavesTest, AWaveformOutsideTheTableActsAsNone) {
    for (const std::int16_t form : std::initializer_list<std::int16_t>{-1, 0, 2, 6, 8, 32767}) {
        PaintClass pic(9, 8);
        FillWithNoise(pic);
        const std::vector<Pixel> softened = Softened(pic);
        pic.Waves(Forms(form, form));
        ASSERT_EQ(ColorsOf(pic), softened) << form;
    }
}

TEST_F(WavesTest, WithoutAnyWaveItIsTheSameWhereverTheTileBegins) {
    PaintClass pic(23, 31);
    PaintClass shifted(23, 31);
    PaintClass back(23, 31);
    FillWithNoise(pic);
    CopyShifted(pic, shifted, 7, 19);
    pic.Waves(Forms(waveNone, waveNone));
    shifted.Waves(Forms(waveNone, waveNone));
    CopyShifted(shifted, back, -7, -19);
    EXPECT_EQ(ColorsOf(back), ColorsOf(pic));
}

/// Two copies of the tile side by side, with the wave's height halved: each half must come out as
/// the single tile does, so nothing shows where they meet. Only where the wave moves to the right:
/// left of the first column the rule of reading turns round. A sum of larger numbers keeps fewer
/// bits, which can cost a channel one step.
TEST_F(WavesTest, TheSeamClosesAcrossTheShift) {
    for (const std::int16_t form : {waveSine, waveSquare}) {
        WavesParams params = Forms(form, waveNone);
        params.heightX = 96;
        params.countX = 1;
        PaintClass single(21, 30);
        PaintClass twice(42, 30);
        FillWithNoise(single);
        for (short y = 0; y < 30; ++y) {
            for (short x = 0; x < 42; ++x) {
                twice.SetPixel(x, y, single.GetPixelWrapped(x, y));
            }
        }
        single.Waves(params);
        params.heightX = 48;
        twice.Waves(params);
        for (short y = 0; y < 15; ++y) {
            for (short x = 0; x < 42; ++x) {
                for (int c = 0; c < 3; ++c) {
                    ASSERT_NEAR(twice.PixelAddress(x, y)[c], single.PixelAddressWrapped(x, y)[c], 1)
                        << form << " at " << x << ", " << y;
                }
            }
        }
    }
}

TEST_F(WavesTest, ASquareWaveMovesHalfThePeriodEachWay) {
    // Height 100 is an eighth of the width; read at the nearest pixel.
    WavesParams params = Forms(waveSquare, waveNone);
    params.heightX = 100;
    params.countX = 1;
    params.interpolate = 0;
    PaintClass pic(16, 8);
    FillWithNoise(pic);
    PaintClass before(16, 8);
    CopyShifted(pic, before, 0, 0);
    pic.Waves(params);
    for (short y = 0; y < 8; ++y) {
        for (short x = 0; x < 16; ++x) {
            const int source = y >= 4 ? x - 2 : x + 2;
            ASSERT_EQ(pic.GetPixel(x, y), before.GetPixelWrapped(static_cast<short>(source), y));
        }
    }
}

TEST_F(WavesTest, RandomShiftsAreSmallAndToOneSide) {
    // 512 * 100 / 8 hundredths of a pixel: a white column shows up to 64 columns to its left.
    WavesParams params = Forms(waveRandom, waveNone);
    params.heightX = 100;
    PaintClass pic(512, 40);
    pic.FillColor({});
    for (short y = 0; y < 40; ++y) {
        pic.SetRGB(30, y, 255, 255, 255);
    }
    pic.Waves(params);
    int lit = 0;
    for (short y = 0; y < 40; ++y) {
        for (short x = 0; x < 512; ++x) {
            if ((pic.GetPixel(x, y) & 0xFFFFFF) != 0) {
                ++lit;
                ASSERT_TRUE(x <= 30 || x >= 30 + 512 - 65) << x;
            }
        }
    }
    EXPECT_GT(lit, 40);
}

TEST_F(WavesTest, TakesNoSeed) {
    const auto run = [] {
        PaintClass pic(16, 16);
        FillWithNoise(pic);
        pic.Waves(Forms(waveRandom, waveRandom));
        return ColorsOf(pic);
    };
    SetSeed(5);
    const std::vector<Pixel> first = run();
    EXPECT_NE(run(), first) << "goes on from the last draw";
    SetSeed(5);
    EXPECT_EQ(run(), first);
    SetSeed(5);
    PaintClass pic(16, 16);
    pic.Waves(WavesParams{});
    EXPECT_EQ(Seed(), 5u) << "the other waveforms draw nothing";
}

TEST_F(WavesTest, AlphaBytesStayUnlessWholePixelsAreTaken) {
    PaintClass pic(20, 20);
    for (short y = 0; y < 20; ++y) {
        for (short x = 0; x < 20; ++x) {
            pic.SetAlpha(x, y, static_cast<unsigned char>(x * 10 + y));
        }
    }
    pic.Waves(WavesParams{});
    for (short y = 0; y < 20; ++y) {
        for (short x = 0; x < 20; ++x) {
            ASSERT_EQ(pic.GetAlpha(x, y), x * 10 + y);
        }
    }
}

TEST_F(WavesTest, TickTheBusyCursorForEachRow) {
    PaintClass pic(4, 5);
    {
        const BusyCursor cursor;
        pic.Waves(WavesParams{});
        EXPECT_EQ(cursor.Waits(), 1 + 5);
        EXPECT_EQ(cursor.Arrows(), 1);
    }
    memory.FailAllocation(1);
    const BusyCursor cursor;
    pic.Waves(WavesParams{});
    EXPECT_EQ(cursor.Waits(), 1) << "no row";
    EXPECT_EQ(cursor.Arrows(), 1);
}

TEST_F(WavesTest, WithoutMemoryForTheWindowItIsJustSlower) {
    PaintClass pic(40, 30);
    PaintClass slow(40, 30);
    FillWithNoise(pic);
    FillWithNoise(slow);
    pic.Waves(WavesParams{});
    const FailingHandles handles(2);
    slow.Waves(WavesParams{});
    EXPECT_EQ(handles.Asked(), 2);
    EXPECT_EQ(PixelsOf(slow), PixelsOf(pic));
}

}  // namespace

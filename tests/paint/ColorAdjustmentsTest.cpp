#include <initializer_list>
#include <vector>

#include "paint/PaintClass.h"
#include "paint/records/FilterParams.h"
#include "plain/PlainColors.h"
#include "tests/support/BusyCursor.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

class ColorAdjustmentsTest : public CoreTest {
  protected:
    /// Runs both on a picture of few colours, where greys and equal channels abound, or of any.
    template <typename Fast, typename Plain>
    void ExpectSame(short width, short height, Fast fast, Plain plain) {
        PaintClass pic(width, height);
        PaintClass reference(width, height);
        FillWithNoise(pic, input.Seed());
        if (input.Number(0, 1) == 0) {
            for (int i = 0; i < width * height * bytesPerPixel; ++i) {
                pic.Base()[i] = static_cast<unsigned char>(pic.Base()[i] % 3 * 127);
            }
        }
        CopyShifted(pic, reference, 0, 0);
        fast(pic);
        plain(reference);
        ASSERT_EQ(PixelsOf(pic), PixelsOf(reference)) << width << " by " << height;
        ASSERT_TRUE(pic.changed);
        ASSERT_EQ(pic.clone, nullptr);
    }

    void ExpectSameSaturation(short width, short height, short saturation) {
        SCOPED_TRACE(saturation);
        ExpectSame(
            width, height, [&](PaintClass& pic) { pic.Saturation(saturation); },
            [&](PaintClass& pic) { PlainSaturation(pic, saturation); });
    }
    void ExpectSameContrast(short width, short height, const BrightContrParams& params) {
        SCOPED_TRACE(testing::Message() << params.contrast << ", " << params.brightness);
        ExpectSame(
            width, height,
            [&](PaintClass& pic) { pic.BrightnessContrast(params.contrast, params.brightness); },
            [&](PaintClass& pic) {
                PlainBrightnessContrast(pic, params.contrast, params.brightness);
            });
    }
    void ExpectSameAddColor(short width, short height, const AddColorParams& params) {
        SCOPED_TRACE(params.opacity);
        ExpectSame(
            width, height, [&](PaintClass& pic) { pic.AddColor(params.color, params.opacity); },
            [&](PaintClass& pic) { PlainAddColor(pic, params.color, params.opacity); });
    }

    RandomInput input{52};
};

TEST_F(ColorAdjustmentsTest, TheRecordsStartWithTheDialogsDefaults) {
    EXPECT_EQ(SaturationParams{}.saturation, 60);
    EXPECT_EQ(BrightContrParams{}.brightness, 50);
    EXPECT_EQ(BrightContrParams{}.contrast, 50);
    EXPECT_EQ(AddColorParams{}.opacity, 10);
    EXPECT_EQ(AddColorParams{}.color, (RGBColor16{32767, 32767, 32767}));
}

TEST_F(ColorAdjustmentsTest, TheSameAsThePlainLoopsForAnyRecordAndSize) {
    WithBothCompilations([&] {
        for (int i = 0; i < 400; ++i) {
            const short width = input.Number(1, 40);
            const short height = input.Number(1, 20);
            ExpectSameSaturation(width, height, input.Number(0, 100));
            ExpectSameContrast(
                width, height,
                {.brightness = input.Number(0, 100), .contrast = input.Number(0, 100)});
            AddColorParams params = input.AnyBytes<AddColorParams>();
            params.opacity = input.Number(1, 100);
            ExpectSameAddColor(width, height, params);
        }
        ExpectSameSaturation(512, 100, 77);
        ExpectSameSaturation(1, 512, 3);
        ExpectSameContrast(511, 64, {.brightness = 61, .contrast = 80});
        ExpectSameAddColor(511, 64, {});
    });
}

TEST_F(ColorAdjustmentsTest, TheSameAsThePlainLoopsForRecordsOfAnyBytes) {
    for (int i = 0; i < 300; ++i) {
        const short width = input.Number(1, 20);
        const short height = input.Number(1, 20);
        ExpectSameSaturation(width, height, input.AnyBytes<SaturationParams>().saturation);
        ExpectSameContrast(width, height, input.AnyBytes<BrightContrParams>());
        ExpectSameAddColor(width, height, input.AnyBytes<AddColorParams>());
    }
}

TEST_F(ColorAdjustmentsTest, TheSameAsThePlainLoopForEveryHue) {
    WithBothCompilations([] {
        for (const short saturation : std::initializer_list<short>{0, 37, 50, 100}) {
            PaintClass pic(128, 64);
            PaintClass reference(128, 64);
            for (short y = 0; y < 64; ++y) {
                for (short x = 0; x < 128; ++x) {
                    const auto across = static_cast<unsigned char>(x * 2);
                    const auto down = static_cast<unsigned char>(y * 4);
                    pic.SetRGB(x, y, across, down, static_cast<unsigned char>(across ^ down));
                }
            }
            CopyShifted(pic, reference, 0, 0);
            pic.Saturation(saturation);
            PlainSaturation(reference, saturation);
            ASSERT_EQ(ColorsOf(pic), ColorsOf(reference)) << saturation;
        }
    });
}

Pixel Saturated(Pixel color, short saturation) {
    PaintClass pic(1, 1);
    pic.SetPixel(0, 0, color);
    pic.Saturation(saturation);
    return pic.GetPixel(0, 0) & 0xFFFFFF;
}

TEST_F(ColorAdjustmentsTest, TheMiddleOfSaturationMayLoseAStep) {
    int changed = 0;
    for (unsigned red = 0; red < 256; red += 5) {
        for (unsigned green = 0; green < 256; green += 5) {
            const Pixel after = Saturated(Color(red, green, 77), 50);
            const unsigned before[3] = {red, green, 77};
            for (int c = 0; c < 3; ++c) {
                const unsigned loss = before[c] - (after >> 8 * c & 0xFF);
                ASSERT_LE(loss, 1u);
                changed += loss == 1 ? 1 : 0;
            }
        }
    }
    EXPECT_GT(changed, 0);
}

TEST_F(ColorAdjustmentsTest, TheLeastSaturationTakesOffOneHalf) {
    EXPECT_EQ(Saturated(Color(255, 0, 0), 0), Color(191, 63, 63));
    EXPECT_EQ(Saturated(Color(150, 100, 100), 0), Color(125, 125, 125));
}

TEST_F(ColorAdjustmentsTest, RaisingTheSaturationTintsGreysRed) {
    EXPECT_EQ(Saturated(Color(128, 128, 128), 60), Color(140, 115, 115));
    EXPECT_EQ(Saturated(Color(128, 128, 128), 40), Color(128, 128, 128));
}

TEST_F(ColorAdjustmentsTest, BrightnessAndContrastInTheMiddleChangeNothing) {
    PaintClass pic(40, 40);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    pic.BrightnessContrast(BrightContrParams{}.contrast, BrightContrParams{}.brightness);
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_TRUE(pic.changed);
}

TEST_F(ColorAdjustmentsTest, WithoutContrastAllIsMiddleGrey) {
    PaintClass pic(40, 40);
    FillWithNoise(pic);
    pic.BrightnessContrast(0, 90);
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(1600, Color(128, 128, 128)));
}

TEST_F(ColorAdjustmentsTest, BrightnessIsClampedBeforeContrast) {
    PaintClass pic(1, 1);
    pic.SetRGB(0, 0, 200, 10, 128);
    // Half the contrast: 255, 110 and 228 go half of their way to 128.
    pic.BrightnessContrast(25, 100);
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>{Color(191, 119, 178)});
}

TEST_F(ColorAdjustmentsTest, AFullOpacityIsTheColor) {
    PaintClass pic(40, 40);
    FillWithNoise(pic);
    pic.AddColor({0x12FF, 0x7FFF, 0xFF00}, 100);
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(1600, Color(0x12, 0x7F, 0xFF)));
}

TEST_F(ColorAdjustmentsTest, TheLeastOpacityMovesOnlyChannelsFarAway) {
    PaintClass pic(1, 1);
    pic.SetRGB(0, 0, 99, 100, 227);
    pic.AddColor({0, 0, 0x7F00}, 1);
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>{Color(99, 99, 226)});
}

TEST_F(ColorAdjustmentsTest, OpacityGoesTowardsTheColorFromBothSides) {
    PaintClass pic(1, 1);
    pic.SetRGB(0, 0, 0, 255, 127);
    pic.AddColor({0x7FFF, 0x7FFF, 0x7FFF}, 10);
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>{Color(12, 243, 127)});
}

TEST_F(ColorAdjustmentsTest, TickTheBusyCursorAfterEachRow) {
    const auto ticksOf = [](auto operation) {
        PaintClass pic(3, 4);
        const BusyCursor cursor;
        operation(pic);
        EXPECT_EQ(cursor.Arrows(), cursor.Waits() != 0 ? 1 : 0);
        return cursor.Waits() - 1;
    };
    EXPECT_EQ(ticksOf([](PaintClass& pic) { pic.Saturation(50); }), 4);
    EXPECT_EQ(ticksOf([](PaintClass& pic) { pic.BrightnessContrast(50, 50); }), 4);
    EXPECT_EQ(ticksOf([](PaintClass& pic) { pic.AddColor(white16, 50); }), 4);
    EXPECT_EQ(ticksOf([](PaintClass& pic) { pic.Invert(); }), -1) << "shows none";
}

TEST_F(ColorAdjustmentsTest, InvertIsTheSameAsThePlainLoop) {
    WithBothCompilations([&] {
        for (int i = 0; i < 100; ++i) {
            ExpectSame(
                input.Number(1, 40), input.Number(1, 10), [](PaintClass& pic) { pic.Invert(); },
                [](PaintClass& pic) { PlainInvert(pic); });
        }
    });
}

TEST_F(ColorAdjustmentsTest, InvertTwiceGivesBackTheImage) {
    PaintClass pic(33, 7);
    FillWithNoise(pic);
    const std::vector<Pixel> before = PixelsOf(pic);
    const int allocations = memory.Allocations();
    pic.Invert();
    EXPECT_NE(PixelsOf(pic), before);
    pic.Invert();
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_EQ(memory.Allocations(), allocations);
}

}  // namespace

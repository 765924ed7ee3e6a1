#include "paint/kernels/ColorModel.h"

#include <cmath>
#include <limits>
#include <vector>

#include "plain/PlainColorModel.h"
#include "tests/support/Compilations.h"
#include "tests/support/Pictures.h"

namespace {

ColorHLS HLSOf(unsigned char red, unsigned char green, unsigned char blue) {
    const unsigned char rgb[3] = {red, green, blue};
    ColorHLS color;
    RGBToHLS(rgb, &color);
    return color;
}

Pixel PixelOf(const ColorHLS& color) {
    unsigned char rgb[3];
    HLSToRGB(&color, rgb);
    return Color(rgb[0], rgb[1], rgb[2]);
}

Pixel PlainPixelOf(const ColorHLS& color) {
    unsigned char rgb[3];
    PlainHLSToRGB({color.hue, color.lightness, color.saturation}, rgb);
    return Color(rgb[0], rgb[1], rgb[2]);
}

/// A byte of each kind: the ends, the middle, and what lies between.
std::vector<unsigned char> SomeBytes(int step) {
    std::vector<unsigned char> bytes{1, 127, 128, 254, 255};
    for (int value = 0; value < 255; value += step) {
        bytes.push_back(static_cast<unsigned char>(value));
    }
    return bytes;
}

}  // namespace

TEST(ColorModel, PureColorsHaveTheHuesOfTheCircle) {
    EXPECT_EQ(HLSOf(255, 0, 0).hue, 0.0);
    EXPECT_EQ(HLSOf(255, 255, 0).hue, 60.0);
    EXPECT_EQ(HLSOf(0, 255, 0).hue, 120.0);
    EXPECT_EQ(HLSOf(0, 255, 255).hue, 180.0);
    EXPECT_EQ(HLSOf(0, 0, 255).hue, 240.0);
    EXPECT_EQ(HLSOf(255, 0, 255).hue, 300.0);
    EXPECT_EQ(HLSOf(255, 0, 0).lightness, 0.5);
    EXPECT_EQ(HLSOf(255, 0, 0).saturation, 1.0);
}

TEST(ColorModel, GreysHaveNeitherHueNorSaturation) {
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const ColorHLS color = HLSOf(byte, byte, byte);
        EXPECT_EQ(color.hue, 0.0);
        EXPECT_EQ(color.saturation, 0.0);
        EXPECT_EQ(color.lightness, (byte * 0.00392156862745098 + byte * 0.00392156862745098) * 0.5);
    }
}

TEST(ColorModel, TheSameAsThePlainForm) {
    for (const unsigned char red : SomeBytes(5)) {
        for (const unsigned char green : SomeBytes(5)) {
            for (const unsigned char blue : SomeBytes(5)) {
                const unsigned char rgb[3] = {red, green, blue};
                const ColorHLS color = HLSOf(red, green, blue);
                const PlainHLS plain = PlainRGBToHLS(rgb);
                ASSERT_EQ(color.hue, plain.hue);
                ASSERT_EQ(color.lightness, plain.lightness);
                ASSERT_EQ(color.saturation, plain.saturation);
                ASSERT_EQ(PixelOf(color), PlainPixelOf(color));
            }
        }
    }
}

TEST(ColorModel, GoingThereAndBackLosesOneStepAtMost) {
    int losses = 0;
    for (const unsigned char red : SomeBytes(7)) {
        for (const unsigned char green : SomeBytes(7)) {
            for (const unsigned char blue : SomeBytes(7)) {
                const Pixel back = PixelOf(HLSOf(red, green, blue));
                const unsigned char before[3] = {red, green, blue};
                for (int c = 0; c < 3; ++c) {
                    const int loss = before[c] - static_cast<int>(back >> 8 * c & 0xFF);
                    ASSERT_GE(loss, 0);
                    ASSERT_LE(loss, 1);
                    losses += loss;
                }
            }
        }
    }
    EXPECT_GT(losses, 0);
}

TEST(ColorModel, WithoutSaturationOnlyTheLightnessCounts) {
    for (const double hue : {0.0, 60.0, 200.0, 360.0, 900.0, -500.0}) {
        EXPECT_EQ(PixelOf({hue, 0.5, 0.0}), Color(127, 127, 127));
        EXPECT_EQ(PixelOf({hue, 1.0, 0.0}), Color(255, 255, 255));
    }
}

TEST(ColorModel, TheHueComesBackByOneTurn) {
    EXPECT_EQ(PixelOf({-120.0, 0.5, 1.0}), Color(0, 0, 255));
    EXPECT_EQ(PixelOf({480.0, 0.5, 1.0}), Color(0, 255, 0));
    EXPECT_EQ(PixelOf({360.0, 0.5, 1.0}), Color(255, 0, 0));
}

/// A blue of -254 degrees stands at -374, and so at -14 after its one turn: below the foot of the
/// slope.
TEST(ColorModel, AHueTurnedFurtherKeepsTheLowBitsOfItsChannels) {
    const Pixel color = PixelOf({-254.0, 0.5, 1.0});
    const int blue = static_cast<int>(255.0 * ((1.0 - 0.0) * -14.0 * (1.0 / 60.0) + 0.0));
    EXPECT_EQ(blue, -59);
    EXPECT_EQ(color >> 16 & 0xFF, 256u - 59u);
    EXPECT_EQ(color, PlainPixelOf({-254.0, 0.5, 1.0}));
}

TEST(ColorModel, TheSameAsThePlainFormAtAnyHue) {
    for (double hue = -700.0; hue <= 700.0; hue += 2.5) {
        for (const double lightness : {0.0, 0.1, 0.5, 0.50000001, 0.7, 1.0}) {
            for (const double saturation : {0.0, 0.000001, 0.3, 1.0}) {
                const ColorHLS color{hue, lightness, saturation};
                ASSERT_EQ(PixelOf(color), PlainPixelOf(color)) << hue;
            }
        }
    }
}

TEST(ColorModel, NumbersBeyondAllBoundsAreBlack) {
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    EXPECT_EQ(PixelOf({nothing, nothing, nothing}), Color(0, 0, 0));
    EXPECT_EQ(PixelOf({0.0, endless, 1.0}), Color(0, 0, 0));
    EXPECT_EQ(PixelOf({-1e300, 0.5, 1.0}), Color(0, 0, 0));
}

#include "host/record/ColorServices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "hostapi/Results.h"

namespace host {

namespace {

using Components = std::array<int, 4>;

Components Converted(hostapi::ColorSpace from, hostapi::ColorSpace to, const Components& color) {
    std::int16_t components[4];
    for (std::size_t i = 0; i < 4; ++i) {
        components[i] = static_cast<std::int16_t>(color[i]);
    }
    EXPECT_TRUE(ConvertColor(from, to, components));
    return {components[0], components[1], components[2], components[3]};
}

hostapi::ColorServicesInfo Request(std::int16_t selector, std::int16_t from, std::int16_t to,
                                   const Components& color = {}) {
    hostapi::ColorServicesInfo info{};
    info.infoSize = sizeof(info);
    info.selector = selector;
    info.sourceSpace = from;
    info.resultSpace = to;
    for (std::size_t i = 0; i < 4; ++i) {
        info.colorComponents[i] = static_cast<std::int16_t>(color[i]);
    }
    return info;
}

Components ColorOf(const hostapi::ColorServicesInfo& info) {
    const std::int16_t* c = info.colorComponents;
    return {c[0], c[1], c[2], c[3]};
}

/// Red foreground, blue background, a picture of 2 by 2 pixels at (-10, -20).
class ColorServicesTest : public testing::Test {
  protected:
    ColorServicesTest() : picture(MakePicture(2, 2, 4, 0)) {
        std::uint8_t* pixel = picture.Pixel(1, 0);
        pixel[0] = 10;
        pixel[1] = 20;
        pixel[2] = 30;
        source.foreground[0] = 255;
        source.background[2] = 255;
        source.picture = &picture;
        source.origin = {-20, -10};
    }

    Picture picture;
    ColorSource source{};
};

}  // namespace

TEST(ConvertColorTest, KnownColors) {
    using namespace hostapi;
    const Components orange = {255, 128, 0, 0};
    EXPECT_EQ(Converted(colorSpaceRGB, colorSpaceHSB, orange), (Components{21, 255, 255, 0}));
    EXPECT_EQ(Converted(colorSpaceRGB, colorSpaceHSL, orange), (Components{21, 255, 128, 0}));
    EXPECT_EQ(Converted(colorSpaceRGB, colorSpaceCMYK, orange), (Components{0, 127, 255, 0}));
    EXPECT_EQ(Converted(colorSpaceRGB, colorSpaceGrey, orange), (Components{151, 0, 0, 0}));
    // L 67, a 43, b 74 under D50.
    const Components lab = Converted(colorSpaceRGB, colorSpaceLab, orange);
    EXPECT_NEAR(lab[0], 67.7 * 2.55, 2);
    EXPECT_NEAR(lab[1], 128 + 47, 3);
    EXPECT_NEAR(lab[2], 128 + 75, 3);
    EXPECT_EQ(Converted(colorSpaceRGB, colorSpaceXYZ, {255, 255, 255, 0}),
              (Components{246, 255, 210, 0}));
    EXPECT_EQ(Converted(colorSpaceRGB, colorSpaceLab, {255, 255, 255, 0}),
              (Components{255, 128, 128, 0}));
    EXPECT_EQ(Converted(colorSpaceCMYK, colorSpaceRGB, {0, 0, 0, 255}), (Components{0, 0, 0, 0}));
    EXPECT_EQ(Converted(colorSpaceGrey, colorSpaceRGB, {77, 1, 2, 3}), (Components{77, 77, 77, 0}));
    EXPECT_EQ(Converted(colorSpaceHSB, colorSpaceRGB, {170, 255, 255, 0}),
              (Components{0, 0, 255, 0}));
}

TEST(ConvertColorTest, ThereAndBackIsNearlyTheSame) {
    using namespace hostapi;
    struct Tolerance {
        ColorSpace space;
        int components;
    };
    // Lab and XYZ have few steps in the dark; 8 bits of them are several of RGB there.
    const Tolerance tolerances[] = {{colorSpaceRGB, 0},
                                    {colorSpaceHSB, 4},
                                    {colorSpaceCMYK, 2},
                                    {colorSpaceHSL, 6},
                                    {colorSpaceLab, 14}};
    for (const Tolerance& tolerance : tolerances) {
        for (int r = 0; r <= 255; r += 51) {
            for (int g = 0; g <= 255; g += 51) {
                for (int b = 0; b <= 255; b += 51) {
                    const Components there =
                        Converted(colorSpaceRGB, tolerance.space, {r, g, b, 0});
                    const Components back = Converted(tolerance.space, colorSpaceRGB, there);
                    EXPECT_NEAR(back[0], r, tolerance.components) << tolerance.space;
                    EXPECT_NEAR(back[1], g, tolerance.components) << tolerance.space;
                    EXPECT_NEAR(back[2], b, tolerance.components) << tolerance.space;
                }
            }
        }
    }
}

/// The hue by the six orders that the components can have, in 255ths of a turn.
double HueOf(int r, int g, int b) {
    const auto rise = [](int least, int middle, int most) {
        return static_cast<double>(middle - least) / (most - least);
    };
    double sixths = 0.0;
    if (r == g && g == b)
        sixths = 0.0;
    else if (r >= g && g >= b)
        sixths = rise(b, g, r);
    else if (g >= r && r >= b)
        sixths = 2.0 - rise(b, r, g);
    else if (g >= b && b >= r)
        sixths = 2.0 + rise(r, b, g);
    else if (b >= g && g >= r)
        sixths = 4.0 - rise(r, g, b);
    else if (b >= r && r >= g)
        sixths = 4.0 + rise(g, r, b);
    else
        sixths = 6.0 - rise(g, b, r);
    return sixths * 255.0 / 6.0;
}

/// So that a conversion that does nothing is none that comes back.
TEST(ConvertColorTest, EachSpaceHasItsOwnComponents) {
    using namespace hostapi;
    for (int r = 0; r <= 255; r += 51) {
        for (int g = 0; g <= 255; g += 51) {
            for (int b = 0; b <= 255; b += 51) {
                SCOPED_TRACE(testing::Message() << r << ", " << g << ", " << b);
                const int most = std::max({r, g, b});
                const int least = std::min({r, g, b});
                const double spread = most - least;
                const double share = most == 0 ? 0.0 : spread / most * 255.0;
                const Components hsb = Converted(colorSpaceRGB, colorSpaceHSB, {r, g, b, 0});
                EXPECT_NEAR(hsb[0], HueOf(r, g, b), 0.51);
                EXPECT_NEAR(hsb[1], share, 0.51);
                EXPECT_EQ(hsb[2], most);
                const double room = 255.0 - std::abs(most + least - 255.0);
                const Components hsl = Converted(colorSpaceRGB, colorSpaceHSL, {r, g, b, 0});
                EXPECT_NEAR(hsl[0], HueOf(r, g, b), 0.51);
                EXPECT_NEAR(hsl[1], room == 0.0 ? 0.0 : spread / room * 255.0, 0.51);
                EXPECT_NEAR(hsl[2], (most + least) / 2.0, 0.51);
                const Components cmyk = Converted(colorSpaceRGB, colorSpaceCMYK, {r, g, b, 0});
                EXPECT_EQ(cmyk[3], 255 - most);
                const auto ink = [most](int light) {
                    return most == 0 ? 0.0 : 255.0 * (most - light) / most;
                };
                EXPECT_NEAR(cmyk[0], ink(r), 0.51);
                EXPECT_NEAR(cmyk[1], ink(g), 0.51);
                EXPECT_NEAR(cmyk[2], ink(b), 0.51);
                const Components grey = Converted(colorSpaceRGB, colorSpaceGrey, {r, g, b, 0});
                EXPECT_NEAR(grey[0], 0.299 * r + 0.587 * g + 0.114 * b, 0.51);
            }
        }
    }
}

TEST(ConvertColorTest, ComponentsOutsideTheRangeAreCut) {
    EXPECT_EQ(Converted(hostapi::colorSpaceRGB, hostapi::colorSpaceRGB, {-5, 300, 7, 9}),
              (Components{0, 255, 7, 0}));
}

TEST(ConvertColorTest, UnknownSpacesAreRefused) {
    std::int16_t components[4] = {1, 2, 3, 4};
    EXPECT_FALSE(ConvertColor(-1, 0, components));
    EXPECT_FALSE(ConvertColor(0, 7, components));
    EXPECT_EQ(components[3], 4);
}

TEST_F(ColorServicesTest, Converts) {
    auto info = Request(hostapi::colorServicesConvertColor, hostapi::colorSpaceRGB,
                        hostapi::colorSpaceCMYK, {255, 0, 0, 0});
    EXPECT_EQ(ServeColor(&info, source), hostapi::noErr);
    EXPECT_EQ(ColorOf(info), (Components{0, 255, 255, 0}));
    EXPECT_EQ(info.resultGamutInfoValid, 0);
}

TEST_F(ColorServicesTest, ChoosingGivesTheColorAsItIsWithoutAUser) {
    auto info = Request(hostapi::colorServicesChooseColor, hostapi::colorSpaceRGB,
                        hostapi::colorSpaceChosen, {1, 2, 3, 0});
    EXPECT_EQ(ServeColor(&info, source), hostapi::noErr);
    EXPECT_EQ(ColorOf(info), (Components{1, 2, 3, 0}));
    EXPECT_EQ(info.resultSpace, hostapi::colorSpaceRGB);
}

TEST_F(ColorServicesTest, ChoosingAsksTheUser) {
    source.chooseColor = [](std::uint8_t(&color)[3]) {
        EXPECT_EQ(color[0], 1);
        color[0] = 255;
        color[1] = color[2] = 0;
        return true;
    };
    auto info = Request(hostapi::colorServicesChooseColor, hostapi::colorSpaceRGB,
                        hostapi::colorSpaceHSB, {1, 2, 3, 0});
    EXPECT_EQ(ServeColor(&info, source), hostapi::noErr);
    EXPECT_EQ(ColorOf(info), (Components{0, 255, 255, 0}));
    source.chooseColor = [](std::uint8_t(&)[3]) { return false; };
    EXPECT_EQ(ServeColor(&info, source), hostapi::userCanceledErr);
}

TEST_F(ColorServicesTest, SamplesThePictureInTheFiltersCoordinates) {
    hostapi::Point point{-20, -9};
    auto info = Request(hostapi::colorServicesSamplePoint, 0, hostapi::colorSpaceRGB);
    info.selectorParameter.globalSamplePoint = &point;
    EXPECT_EQ(ServeColor(&info, source), hostapi::noErr);
    EXPECT_EQ(ColorOf(info), (Components{10, 20, 30, 0}));
    for (hostapi::Point outside : {hostapi::Point{-21, -9}, {-18, -9}, {-20, -11}, {-20, -8}}) {
        info.selectorParameter.globalSamplePoint = &outside;
        EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
    }
    info.selectorParameter.globalSamplePoint = nullptr;
    EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
}

TEST_F(ColorServicesTest, KnowsTwoSpecialColors) {
    auto info = Request(hostapi::colorServicesGetSpecialColor, 0, hostapi::colorSpaceRGB);
    info.selectorParameter.specialColorID = 0;
    EXPECT_EQ(ServeColor(&info, source), hostapi::noErr);
    EXPECT_EQ(ColorOf(info), (Components{255, 0, 0, 0}));
    info.selectorParameter.specialColorID = 1;
    info.resultSpace = hostapi::colorSpaceChosen;
    EXPECT_EQ(ServeColor(&info, source), hostapi::noErr);
    EXPECT_EQ(ColorOf(info), (Components{0, 0, 255, 0}));
    info.selectorParameter.specialColorID = 2;
    EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
}

TEST_F(ColorServicesTest, RefusesRecordsThatAreNotSound) {
    EXPECT_EQ(ServeColor(nullptr, source), hostapi::filterBadParameters);
    const auto sound = Request(hostapi::colorServicesConvertColor, 0, 0);
    auto info = sound;
    info.infoSize -= 1;
    EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
    info = sound;
    info.infoSize += 8;
    EXPECT_EQ(ServeColor(&info, source), hostapi::noErr);
    info = sound;
    info.reserved = &info;
    EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
    info = sound;
    info.reservedSourceSpaceInfo = &info;
    EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
    info = sound;
    info.reservedResultSpaceInfo = &info;
    EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
    for (std::int16_t selector : {std::int16_t{-1}, std::int16_t{4}}) {
        info = sound;
        info.selector = selector;
        EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
    }
    info = sound;
    info.resultSpace = 7;
    EXPECT_EQ(ServeColor(&info, source), hostapi::filterBadParameters);
}

TEST_F(ColorServicesTest, MayRefuseAllButChoosing) {
    source.refuseAllButChoosing = true;
    for (std::int16_t selector = 0; selector < 4; ++selector) {
        auto info = Request(selector, 0, 0);
        EXPECT_EQ(ServeColor(&info, source),
                  selector == 0 ? hostapi::noErr : hostapi::errPlugInHostInsufficient);
    }
}

}  // namespace host

#include "base/HostServices.h"

#include <cstring>

#include "host/record/ColorServices.h"
#include "hostapi/Results.h"
#include "tests/support/CoreTest.h"

namespace {

// The modes with the number of their components and their colour space.
struct Mode {
    hostapi::ImageMode mode;
    int components;
    std::int16_t space;
};
constexpr Mode modes[] = {
    {hostapi::imageModeGrey, 1, hostapi::colorSpaceGrey},
    {hostapi::imageModeRGB, 3, hostapi::colorSpaceRGB},
    {hostapi::imageModeCMYK, 4, hostapi::colorSpaceCMYK},
    {hostapi::imageModeHSL, 3, hostapi::colorSpaceHSL},
    {hostapi::imageModeHSB, 3, hostapi::colorSpaceHSB},
    {hostapi::imageModeLab, 3, hostapi::colorSpaceLab},
};

class ConvertColorsTest : public CoreTest {
  protected:
    ConvertColorsTest() {
        infos.clear();
        failAt = -1;
        record.colorServices = [](hostapi::ColorServicesInfo* info) -> std::int16_t {
            infos.push_back(*info);
            if (static_cast<int>(infos.size()) - 1 == failAt) {
                return -30901;
            }
            for (std::int16_t& component : info->colorComponents) {
                component = static_cast<std::int16_t>(component + 1);
            }
            return 0;
        };
    }

    static inline std::vector<hostapi::ColorServicesInfo> infos;
    static inline int failAt = -1;
};

TEST_F(ConvertColorsTest, EachColourIsARequestOfItsOwn) {
    for (const Mode& from : modes) {
        for (const Mode& to : modes) {
            if (from.mode == to.mode) {
                continue;
            }
            infos.clear();
            const std::uint8_t source[] = {10, 20, 30, 40, 50, 60, 70, 80};
            std::uint8_t target[9];
            std::memset(target, 0xEE, sizeof target);
            ASSERT_EQ(ConvertColors(from.mode, to.mode, 2, source, target), 0);
            ASSERT_EQ(infos.size(), 2u);
            for (int i = 0; i < 2; ++i) {
                const hostapi::ColorServicesInfo& info = infos[static_cast<std::size_t>(i)];
                EXPECT_EQ(info.infoSize, static_cast<std::int32_t>(sizeof info));
                EXPECT_EQ(info.selector, 1);
                EXPECT_EQ(info.sourceSpace, from.space);
                EXPECT_EQ(info.resultSpace, to.space);
                EXPECT_EQ(info.resultGamutInfoValid, 0);
                EXPECT_EQ(info.resultInGamut, 0);
                EXPECT_EQ(info.reservedSourceSpaceInfo, nullptr);
                EXPECT_EQ(info.reservedResultSpaceInfo, nullptr);
                EXPECT_EQ(info.reserved, nullptr);
                EXPECT_EQ(info.selectorParameter.pickerPrompt, nullptr);
                for (int c = 0; c < 4; ++c) {
                    const int expected = c < from.components ? source[i * from.components + c] : 0;
                    EXPECT_EQ(info.colorComponents[c], expected);
                    if (c < to.components) {
                        EXPECT_EQ(target[i * to.components + c], expected + 1);
                    }
                }
            }
            EXPECT_EQ(target[2 * to.components], 0xEE) << "a byte too many";
        }
    }
}

TEST_F(ConvertColorsTest, EqualModesAreNoRequest) {
    const std::uint8_t source[4] = {1, 2, 3, 4};
    std::uint8_t target[4] = {9, 9, 9, 9};
    const auto expectNothing = [&](hostapi::ImageMode mode) {
        EXPECT_EQ(ConvertColors(mode, mode, 1, source, target), 0);
        EXPECT_EQ(target[0] + target[1] + target[2] + target[3], 36);
    };
    for (const Mode& mode : modes) {
        expectNothing(mode.mode);
    }
    record.colorServices = nullptr;
    expectNothing(hostapi::imageModeRGB);
    filterRecord = nullptr;
    expectNothing(hostapi::imageModeRGB);
    EXPECT_TRUE(infos.empty());
}

TEST_F(ConvertColorsTest, StopsAtTheHostsFirstError) {
    failAt = 2;
    const std::uint8_t source[] = {10, 20, 30, 40};
    std::uint8_t target[12];
    std::memset(target, 0xEE, sizeof target);
    EXPECT_EQ(ConvertColors(hostapi::imageModeGrey, hostapi::imageModeRGB, 4, source, target),
              -30901);
    EXPECT_EQ(infos.size(), 3u);
    EXPECT_EQ(target[0], 11);
    EXPECT_EQ(target[3], 21);
    for (int i = 6; i < 12; ++i) {
        EXPECT_EQ(target[i], 0xEE);
    }
}

TEST_F(ConvertColorsTest, ModesWithoutAColourSpaceAreRefused) {
    const std::uint8_t source[4] = {1, 2, 3, 4};
    std::uint8_t target[4] = {9, 9, 9, 9};
    for (const int number : {0, 2, 7, 8, 10, -1}) {
        const auto mode = static_cast<hostapi::ImageMode>(number);
        EXPECT_EQ(ConvertColors(mode, hostapi::imageModeRGB, 1, source, target), -30100);
        EXPECT_EQ(ConvertColors(hostapi::imageModeRGB, mode, 1, source, target), -30100);
    }
    EXPECT_TRUE(infos.empty());
}

TEST_F(ConvertColorsTest, NoColoursAreNoRequest) {
    EXPECT_EQ(ConvertColors(hostapi::imageModeRGB, hostapi::imageModeLab, 0, nullptr, nullptr), 0);
    EXPECT_TRUE(infos.empty());
}

TEST_F(ConvertColorsTest, ComponentsBeyondAByteAreClamped) {
    record.colorServices = [](hostapi::ColorServicesInfo* info) -> std::int16_t {
        info->colorComponents[0] = -5;
        info->colorComponents[1] = 256;
        info->colorComponents[2] = 255;
        return 0;
    };
    const std::uint8_t source = 1;
    std::uint8_t target[3];
    ASSERT_EQ(ConvertColors(hostapi::imageModeGrey, hostapi::imageModeRGB, 1, &source, target), 0);
    EXPECT_EQ(target[0], 0);
    EXPECT_EQ(target[1], 255);
    EXPECT_EQ(target[2], 255);
}

TEST_F(ConvertColorsTest, AStrictHostServesAllModes) {
    static bool refuses;
    refuses = false;
    record.colorServices = [](hostapi::ColorServicesInfo* info) {
        host::ColorSource source{};
        source.refuseAllButChoosing = refuses;
        return host::ServeColor(info, source);
    };
    for (const Mode& from : modes) {
        for (const Mode& to : modes) {
            if (from.mode == to.mode) {
                continue;
            }
            const std::uint8_t source[4] = {200, 100, 50, 25};
            std::int16_t components[4] = {};
            std::copy_n(source, from.components, components);
            ASSERT_TRUE(host::ConvertColor(from.space, to.space, components));
            std::uint8_t target[4];
            ASSERT_EQ(ConvertColors(from.mode, to.mode, 1, source, target), 0);
            for (int c = 0; c < to.components; ++c) {
                EXPECT_EQ(target[c], components[c]) << from.mode << " to " << to.mode;
            }
        }
    }
    refuses = true;
    std::uint8_t target[3];
    const std::uint8_t grey = 5;
    EXPECT_EQ(ConvertColors(hostapi::imageModeGrey, hostapi::imageModeRGB, 1, &grey, target),
              -30900);
}

}  // namespace

#include "paint/kernels/ChannelMaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/Compilations.h"

namespace {

/// Pixels whose bytes together take all values, more than go through a map at a time.
std::vector<unsigned char> AllBytes() {
    std::vector<unsigned char> bytes;
    for (int i = 0; i < 4 * 259; ++i) {
        bytes.push_back(static_cast<unsigned char>(i / 4 + i % 4 * 64));
    }
    return bytes;
}

template <typename Map>
std::vector<unsigned char> Mapped(const Map& map) {
    std::vector<unsigned char> bytes = AllBytes();
    map.MapRow(bytes.data(), static_cast<int>(bytes.size() / 4));
    return bytes;
}

/// All bytes with `change(byte, channel)` of their colours.
template <typename Change>
std::vector<unsigned char> Expected(Change change) {
    std::vector<unsigned char> bytes = AllBytes();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % 4 != 3) {
            bytes[i] = static_cast<unsigned char>(change(bytes[i], i % 4));
        }
    }
    return bytes;
}

void ExpectContrast(int offset, double steepness) {
    const auto expected = Expected([&](int c, std::size_t /*channel*/) {
        const int brighter = std::clamp(c + offset, 0, 255);
        return std::clamp(static_cast<int>((brighter - 128) * steepness + 128.0), 0, 255);
    });
    WithBothCompilations([&] {
        ASSERT_EQ(Mapped(ContrastMap(offset, steepness)), expected) << offset << " " << steepness;
    });
}

void ExpectColor(const RGBColor16& color, double share) {
    const int goals[3] = {color.red >> 8, color.green >> 8, color.blue >> 8};
    const auto expected = Expected([&](int c, std::size_t channel) {
        return c - static_cast<int>((c - goals[channel]) * share);
    });
    WithBothCompilations([&] { ASSERT_EQ(Mapped(ColorMap(color, share)), expected) << share; });
}

}  // namespace

TEST(ChannelMaps, EveryContrastIsRight) {
    for (int contrast = 0; contrast <= 100; ++contrast) {
        for (const int offset : {-100, -98, -2, 0, 2, 64, 100}) {
            ExpectContrast(offset, contrast * 0.01 * 2.0);
        }
    }
}

TEST(ChannelMaps, EveryBrightnessIsRight) {
    for (int brightness = 0; brightness <= 100; ++brightness) {
        ExpectContrast(brightness * 2 - 100, 1.0);
        ExpectContrast(brightness * 2 - 100, 1.4);
    }
}

TEST(ChannelMaps, ContrastsBeyondTheDialogsAreRightToo) {
    for (const double steepness : {-655.36, -1.0, -0.01, 0.0001, 2.0001, 3.9999, 4.0, 655.34}) {
        for (const int offset : {-65636, -300, 0, 300, 65434}) {
            ExpectContrast(offset, steepness);
        }
    }
}

TEST(ChannelMaps, EveryOpacityIsRight) {
    for (int opacity = 0; opacity <= 100; ++opacity) {
        ExpectColor({0x0000, 0xFFFF, 0x7FFF}, opacity * 0.01);
        ExpectColor({0x01FF, 0x3C00, 0xFE00}, opacity * 0.01);
    }
}

TEST(ChannelMaps, OpacitiesBeyondTheDialogsAreRightToo) {
    for (const double share : {-327.68, -0.01, 1.01, 2.0, 327.67}) {
        ExpectColor({0x0000, 0xFFFF, 0x7FFF}, share);
    }
}

#include "paint/kernels/ChannelMaps.h"

#include <algorithm>

#include "paint/kernels/PixelBytes.h"

// Three look-ups a pixel take 0.23 ms for 512 by 512 pixels. Computing the maps in 16 bits, many
// channels at a time, took 0.14; nobody feels the difference.
void ChannelMap::MapRow(unsigned char* pixels, int count) const {
    for (int i = 0; i < count; ++i) {
        const Pixel pixel = LoadPixel(pixels, i);
        StorePixel(pixels, i,
                   tables[0][RedOf(pixel)] | tables[1][GreenOf(pixel)] | tables[2][BlueOf(pixel)] |
                       (pixel & alphaMask));
    }
}

ContrastMap::ContrastMap(int offset, double steepness) {
    for (int c = 0; c < channelCount; ++c) {
        Fill(c, [&](int value) {
            const int brighter = std::clamp(value + offset, 0, 255);
            return std::clamp(static_cast<int>((brighter - 128) * steepness + 128.0), 0, 255);
        });
    }
}

ColorMap::ColorMap(const RGBColor16& color, double share) {
    const unsigned char goals[channelCount] = {HighByte(color.red), HighByte(color.green),
                                               HighByte(color.blue)};
    for (int c = 0; c < channelCount; ++c) {
        Fill(c, [&](int value) { return value - static_cast<int>((value - goals[c]) * share); });
    }
}

#include "paint/kernels/ColorModel.h"

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/SaturateWide.h"
#include "raster/Truncation.h"

// Both outcomes of a choice are computed and one is taken, so that the compiler can do several
// pixels at a time. For that it must be free to divide where no result is wanted
// (-fno-trapping-math, in CMakeLists.txt); no bit of a result depends on it.

namespace {

struct Channels {
    double red;
    double green;
    double blue;
};

double Larger(double a, double b) {
    return a > b ? a : b;
}

double Smaller(double a, double b) {
    return a < b ? a : b;
}

/// Channels from 0 to 1.
ColorHLS ToHLS(double red, double green, double blue) {
    const double most = Larger(Larger(red, green), blue);
    const double least = Smaller(Smaller(red, green), blue);
    const double sum = most + least;
    const double range = most - least;
    const double lightness = sum * 0.5;
    const double lightRange = (2.0 - most) - least;
    const bool isGrey = most == least;
    double possibleRange = lightness > 0.5 ? lightRange : sum;
    possibleRange = isGrey ? 1.0 : possibleRange;
    const double afterBlue = red - green;
    const double afterGreen = blue - red;
    const double afterRed = green - blue;
    double offset = green == most ? afterGreen : afterBlue;
    offset = red == most ? afterRed : offset;
    double start = green == most ? 2.0 : 4.0;
    start = red == most ? 0.0 : start;
    const double hue = (offset / (isGrey ? 1.0 : range) + start) * 60.0;
    const double turned = hue + 360.0;
    return {hue < 0.0 ? turned : hue, lightness, range / possibleRange};
}

/// One channel, 0 to 255 unless the hue lies beyond 0 to 360: `high` for 120 degrees, `low` for
/// 120 degrees, and slopes of 60 degrees between them.
double ChannelAt(double low, double high, double hue) {
    const double lessATurn = hue - 360.0;
    const double moreATurn = hue + 360.0;
    double h = hue < 0.0 ? moreATurn : hue;
    h = hue > 360.0 ? lessATurn : h;
    const double toTheEnd = 240.0 - h;
    const double fromTheFoot = h < 60.0 ? h : toTheEnd;
    const double slope = (high - low) * fromTheFoot * (1.0 / 60.0) + low;
    double value = h < 240.0 ? slope : low;
    value = h < 180.0 ? high : value;
    value = h < 60.0 ? slope : value;
    return 255.0 * value;
}

/// Channels as of ChannelAt.
Channels ToChannels(const ColorHLS& color) {
    const double lightness = color.lightness;
    const double saturation = color.saturation;
    const double lightHigh = (lightness + saturation) - lightness * saturation;
    const double darkHigh = (1.0 + saturation) * lightness;
    double high = lightness > 0.5 ? lightHigh : darkHigh;
    double low = 2.0 * lightness - high;
    // The lightness as it is, without the roundings above; for every hue.
    high = saturation == 0.0 ? lightness : high;
    low = saturation == 0.0 ? lightness : low;
    return {ChannelAt(low, high, color.hue + 120.0), ChannelAt(low, high, color.hue),
            ChannelAt(low, high, color.hue - 120.0)};
}

constexpr double perByte = 0.00392156862745098;  // 1 / 255

ColorHLS PixelToHLS(Pixel pixel) {
    return ToHLS(RedOf(pixel) * perByte, GreenOf(pixel) * perByte, BlueOf(pixel) * perByte);
}

/// The channels of a row's colours are far within 32 bits, whatever the record.
Pixel WithHLS(Pixel pixel, const ColorHLS& color) {
    const Channels channels = ToChannels(color);
    return WithColor(pixel, static_cast<int>(channels.red), static_cast<int>(channels.green),
                     static_cast<int>(channels.blue));
}

void SaturateLoop(unsigned char* pixels, int count, double delta) {
    for (int i = 0; i < count; ++i) {
        const Pixel pixel = LoadPixel(pixels, i);
        ColorHLS color = PixelToHLS(pixel);
        color.saturation = Larger(Smaller(color.saturation + delta, 1.0), 0.0);
        StorePixel(pixels, i, WithHLS(pixel, color));
    }
}

void TurnHueLoop(const unsigned char* pixels, const unsigned char* other, unsigned char* out,
                 int count, double share) {
    for (int i = 0; i < count; ++i) {
        ColorHLS color = PixelToHLS(LoadPixel(pixels, i));
        const int grey = GreyOf(LoadPixel(other, i));
        color.hue += static_cast<int>((grey - 128) * 2.0 * share);
        StorePixel(out, i, WithHLS(LoadPixel(out, i), color));
    }
}

/// Takes any double: hues from outside the program's own loops are unbounded.
unsigned char LowByte(double value) {
    return static_cast<unsigned char>(TruncateToShort(value));
}

}  // namespace

void RGBToHLS(const unsigned char* rgb, ColorHLS* out) {
    *out = ToHLS(rgb[0] * perByte, rgb[1] * perByte, rgb[2] * perByte);
}

void HLSToRGB(const ColorHLS* in, unsigned char* rgb) {
    const Channels channels = ToChannels(*in);
    rgb[0] = LowByte(channels.red);
    rgb[1] = LowByte(channels.green);
    rgb[2] = LowByte(channels.blue);
}

void SaturateRow(unsigned char* pixels, int count, double delta) {
    ForThisProcessor<SaturateLoop, SaturateWide>(pixels, count, delta);
}

void TurnHueRow(const unsigned char* pixels, const unsigned char* other, unsigned char* out,
                int count, double share) {
    ForThisProcessor<TurnHueLoop>(pixels, other, out, count, share);
}

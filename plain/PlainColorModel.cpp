#include "plain/PlainColorModel.h"

#include <algorithm>
#include <cstdint>

namespace {

double Value(double m1, double m2, double h) {
    if (h > 360.0) {
        h = h - 360.0;
    } else if (h < 0.0) {
        h = h + 360.0;
    }
    if (h < 60.0) {
        return (m2 - m1) * h * (1.0 / 60.0) + m1;
    }
    if (h < 180.0) {
        return m2;
    }
    if (h < 240.0) {
        return (m2 - m1) * (240.0 - h) * (1.0 / 60.0) + m1;
    }
    return m1;
}

unsigned char LowByte(double value) {
    return static_cast<unsigned char>(static_cast<std::int64_t>(value));
}

}  // namespace

PlainHLS PlainRGBToHLS(const unsigned char* rgb) {
    const double r = rgb[0] * 0.00392156862745098;
    const double g = rgb[1] * 0.00392156862745098;
    const double b = rgb[2] * 0.00392156862745098;
    const double mx = std::max({r, g, b});
    const double mn = std::min({r, g, b});
    PlainHLS hls{0.0, (mx + mn) * 0.5, 0.0};
    if (mx == mn) {
        return hls;
    }
    if (hls.lightness > 0.5) {
        hls.saturation = (mx - mn) / ((2.0 - mx) - mn);
    } else {
        hls.saturation = (mx - mn) / (mx + mn);
    }
    const double d = mx - mn;
    if (r == mx) {
        hls.hue = (g - b) / d;
    } else if (g == mx) {
        hls.hue = (b - r) / d + 2.0;
    } else {
        hls.hue = (r - g) / d + 4.0;
    }
    hls.hue = hls.hue * 60.0;
    if (hls.hue < 0.0) {
        hls.hue = hls.hue + 360.0;
    }
    return hls;
}

void PlainHLSToRGB(const PlainHLS& hls, unsigned char* rgb) {
    if (hls.saturation == 0.0) {
        rgb[0] = rgb[1] = rgb[2] = LowByte(255.0 * hls.lightness);
        return;
    }
    double m2 = (1.0 + hls.saturation) * hls.lightness;
    if (hls.lightness > 0.5) {
        m2 = (hls.lightness + hls.saturation) - hls.lightness * hls.saturation;
    }
    const double m1 = 2.0 * hls.lightness - m2;
    rgb[0] = LowByte(255.0 * Value(m1, m2, hls.hue + 120.0));
    rgb[1] = LowByte(255.0 * Value(m1, m2, hls.hue));
    rgb[2] = LowByte(255.0 * Value(m1, m2, hls.hue - 120.0));
}

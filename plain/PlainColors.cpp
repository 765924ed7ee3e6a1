#include "plain/PlainColors.h"

#include <algorithm>
#include <cstdlib>

#include "paint/math/Random.h"
#include "plain/PlainColorModel.h"

namespace {

using Channels = unsigned char[3];

void Split(Pixel pixel, Channels& channels) {
    for (int c = 0; c < 3; ++c) {
        channels[c] = static_cast<unsigned char>(pixel >> 8 * c);
    }
}

/// Puts what `change` makes of each pixel's channels into the raster.
template <typename Change>
void ForEachPixel(PaintClass& pic, const PicClass& source, Change change) {
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            Channels channels;
            Split(source.GetPixel(x, y), channels);
            change(channels, x, y);
            pic.SetRGB(x, y, channels[0], channels[1], channels[2]);
        }
    }
}

template <typename Change>
void ThroughClone(PaintClass& pic, Change change) {
    const PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return;
    }
    pic.CopyToClone();
    ForEachPixel(pic, *clone,
                 [&](Channels& channels, short /*x*/, short /*y*/) { change(channels); });
    pic.DeleteClone();
}

unsigned char Clamped(int value) {
    return static_cast<unsigned char>(std::clamp(value, 0, 255));
}

// Noise, on the bytes shifted left by 8.

int DrawBetween(int lo, int hi) {
    return RandomRange(0, hi - lo) + lo;
}

void DisturbGrey(int (&values)[3]) {
    int d = RandomSpread(4000);
    int lo = -4000;
    int hi = 4000;
    for (const int value : values) {
        if (value <= 4000) {
            lo = std::max(lo, -value);
        }
        if (value >= 61534) {
            hi = std::min(hi, 65535 - value);
        }
    }
    if (lo != -4000 || hi != 4000) {
        d = DrawBetween(lo, hi);
        if (std::abs(d) < (hi - lo) / 2) {
            d = DrawBetween(lo, hi);
        }
    }
    for (int& value : values) {
        value = static_cast<std::uint16_t>(value + d);
    }
}

void DisturbColored(int (&values)[3]) {
    const int s = RandomSpread(2000);
    for (int& value : values) {
        if (value < 6001) {
            value = RandomRange(0, 6000);
        } else if (value > 59533) {
            value = RandomRange(59534, 65535);
        } else {
            value = value + RandomSpread(2000) + s;
        }
    }
}

void DisturbColorful(int (&values)[3]) {
    for (int& value : values) {
        if (value < 8001) {
            value = RandomRange(0, 8000);
        } else if (value > 57533) {
            value = RandomRange(57534, 65535);
        } else {
            value = value + RandomSpread(4000);
        }
    }
}

void Disturb(int (&values)[3], int mode) {
    switch (mode) {
        case 0:
            DisturbGrey(values);
            break;
        case 1:
            DisturbColored(values);
            break;
        case 2:
            DisturbColorful(values);
            break;
        default:
            break;
    }
}

// Combine.

int GreyOf(const Channels& channels) {
    return (channels[0] + channels[1] + channels[2]) / 3;
}

void Blend(Channels& t, const Channels& o, int a) {
    for (int c = 0; c < 3; ++c) {
        t[c] = static_cast<unsigned char>((o[c] * a + t[c] * (100 - a)) / 100);
    }
}

void Structure(Channels& t, const Channels& o, int a) {
    const int d = static_cast<int>((GreyOf(o) - 128) * 2.0 * a * 0.01);
    for (unsigned char& channel : t) {
        channel = Clamped(channel + d);
    }
}

void TurnHue(Channels& t, const Channels& o, int a) {
    PlainHLS hls = PlainRGBToHLS(t);
    hls.hue += static_cast<int>((GreyOf(o) - 128) * 2.0 * (a * 0.01));
    PlainHLSToRGB(hls, t);
}

}  // namespace

void PlainNoise(PaintClass& pic, short amount, int mode) {
    SeedRandom();
    for (int pass = 0; pass < 2; ++pass) {
        ForEachPixel(pic, pic, [&](Channels& channels, short /*x*/, short /*y*/) {
            if (RandomRange(0, 100) < amount) {
                int values[3] = {channels[0] << 8, channels[1] << 8, channels[2] << 8};
                Disturb(values, mode);
                for (int c = 0; c < 3; ++c) {
                    channels[c] = static_cast<unsigned char>(values[c] >> 8);
                }
            }
        });
    }
}

void PlainSaturation(PaintClass& pic, short saturation) {
    const double delta = saturation * 0.01 - 0.5;
    ThroughClone(pic, [&](Channels& channels) {
        PlainHLS hls = PlainRGBToHLS(channels);
        hls.saturation += delta;
        if (hls.saturation > 1.0) {
            hls.saturation = 1.0;
        }
        if (hls.saturation < 0.0) {
            hls.saturation = 0.0;
        }
        PlainHLSToRGB(hls, channels);
    });
}

void PlainBrightnessContrast(PaintClass& pic, short contrast, short brightness) {
    const int offset = brightness * 2 - 100;
    const double k = contrast * 0.01 * 2.0;
    ThroughClone(pic, [&](Channels& channels) {
        for (unsigned char& channel : channels) {
            const int c = Clamped(channel + offset);
            channel = Clamped(static_cast<int>((c - 128) * k + 128.0));
        }
    });
}

void PlainAddColor(PaintClass& pic, const RGBColor16& color, short opacity) {
    const double a = opacity * 0.01;
    const int k[3] = {color.red >> 8, color.green >> 8, color.blue >> 8};
    ThroughClone(pic, [&](Channels& channels) {
        for (int c = 0; c < 3; ++c) {
            channels[c] = static_cast<unsigned char>(channels[c] -
                                                     static_cast<int>((channels[c] - k[c]) * a));
        }
    });
}

void PlainInvert(PaintClass& pic) {
    ForEachPixel(pic, pic, [](Channels& channels, short /*x*/, short /*y*/) {
        for (unsigned char& channel : channels) {
            channel = static_cast<unsigned char>(255 - channel);
        }
    });
}

void PlainCombine(PaintClass& pic, const CombineRecord& record) {
    ForEachPixel(pic, *record.target, [&](Channels& channels, short x, short y) {
        Channels other;
        Split(record.other->GetPixel(x, y), other);
        switch (record.mode) {
            case 1:
                Blend(channels, other, record.amount);
                break;
            case 2:
                Structure(channels, other, record.amount);
                break;
            case 3:
                TurnHue(channels, other, record.amount);
                break;
            default:
                break;
        }
    });
}

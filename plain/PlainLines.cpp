#include "plain/PlainLines.h"

#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "raster/Truncation.h"

namespace {

std::uint16_t ClampedSum(int component, short spread) {
    double value = static_cast<double>(component) + spread;
    if (value < 0.0) {
        value = 0.0;
    }
    if (value > 65535.0) {
        value = 65535.0;
    }
    return static_cast<std::uint16_t>(value);
}

void DrawColor(const LinesParams& params, int rgb[3]) {
    if (params.colorMode == 11) {
        for (int c = 0; c < 3; ++c) {
            rgb[c] = RandomRange(0, 65535);
        }
    } else if (params.colorMode == 12) {
        for (int c = 0; c < 3; ++c) {
            rgb[c] = RandomRange(1000, 52000);
        }
    } else if (params.colorMode == 13) {
        for (int c = 0; c < 3; ++c) {
            rgb[c] = RandomRange(25000, 65535);
        }
        switch (RandomRange(0, 8)) {
            case 1:
                rgb[0] = RandomRange(0, 32000);
                break;
            case 2:
                rgb[1] = RandomRange(0, 32000);
                break;
            case 3:
                rgb[2] = RandomRange(0, 32000);
                break;
            case 4:
                rgb[0] = RandomRange(0, 32000);
                rgb[1] = RandomRange(0, 32000);
                break;
            case 5:
                rgb[0] = RandomRange(0, 32000);
                rgb[2] = RandomRange(0, 32000);
                break;
            case 6:
                rgb[1] = RandomRange(0, 32000);
                rgb[2] = RandomRange(0, 32000);
                break;
            default:
                break;
        }
    } else if (params.colorMode == 14) {
        const short red = RandomSpread(16384);
        const short green = RandomSpread(16384);
        const short blue = RandomSpread(16384);
        rgb[0] = ClampedSum(params.color.red, red);
        rgb[1] = ClampedSum(params.color.green, green);
        rgb[2] = ClampedSum(params.color.blue, blue);
    }
}

}  // namespace

bool PlainLines(PaintClass& pic, const LinesParams& params) {
    double p = params.precision;
    if (p == 0.0) {
        p = 1.0;
    }
    const auto strokes = static_cast<short>(pic.grY * pic.grX / 350 * 4);
    const RGBColor16 grey{0x7FFF, 0x7FFF, 0x7FFF};
    const RGBColor16& ground = params.colorMode == 14 ? params.color : grey;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetRGB(x, y, static_cast<unsigned char>(ground.red >> 8),
                       static_cast<unsigned char>(ground.green >> 8),
                       static_cast<unsigned char>(ground.blue >> 8));
        }
    }
    SeedRandom();
    int rgb[3] = {0, 0, 0};
    for (short s = 0; s < strokes; ++s) {
        DrawColor(params, rgb);
        double x = RandomRange(0, pic.grX);
        double y = RandomRange(0, pic.grY);
        double dx = ExactSin(DegreesToRadians(params.angle));
        double dy = ExactCos(DegreesToRadians(params.angle));
        for (int step = 0; step < 350; ++step) {
            if (RandomRange(0, 8) == 4) {
                const auto n = static_cast<short>(TruncateToShort(10.0 / p) + 4);
                dx = dx + RandomSpread(n) * 0.01;
                dy = dy + RandomSpread(n) * 0.01;
            }
            x = x + dx;
            y = y + dy;
            unsigned char* pixel = pic.PixelAddressWrapped(TruncateToShort(x), TruncateToShort(y));
            for (int c = 0; c < 3; ++c) {
                pixel[c] = static_cast<unsigned char>(rgb[c] >> 8);
            }
        }
    }
    return params.appearance != 9 || PlainSoften(pic);
}

bool PlainSoften(PaintClass& pic) {
    PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return false;
    }
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const unsigned char* centre = pic.PixelAddressWrapped(x, y);
            const unsigned char* right = pic.PixelAddressWrapped(static_cast<short>(x + 1), y);
            const unsigned char* left = pic.PixelAddressWrapped(static_cast<short>(x - 1), y);
            const unsigned char* above = pic.PixelAddressWrapped(x, static_cast<short>(y - 1));
            const unsigned char* below = pic.PixelAddressWrapped(x, static_cast<short>(y + 1));
            Pixel out = 0;
            for (int c = 0; c < 3; ++c) {
                const int sum = right[c] + left[c] + above[c] + below[c];
                out |= static_cast<Pixel>(sum / 8 + centre[c] / 2) << (8 * c);
            }
            clone->SetPixel(x, y, out);
        }
    }
    pic.CopyFromClone();
    pic.DeleteClone();
    return true;
}

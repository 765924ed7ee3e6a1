#include "plain/PlainWaves.h"

#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "raster/Truncation.h"

namespace {

/// A coordinate moved by one waveform. `p` is the other coordinate `other` within its period, and
/// `range` how far random draws go.
double Moved(short coordinate, short other, double p, std::int16_t form, std::int16_t count,
             double period, double step, double amplitude, int range) {
    switch (form) {
        case 3:
            return coordinate + ExactSin(other * count * step) * amplitude;
        case 4:
            if (p >= period * 0.5) {
                const short divisor = TruncateToShort(period);
                int remainder = 0;
                if (divisor != 0) {
                    remainder = TruncateToShort(period - p) % divisor;
                }
                return coordinate - (remainder / period) * amplitude * 4.0;
            }
            return coordinate - (p / period) * amplitude * 4.0;
        case 5:
            if (p >= period * 0.5) {
                return coordinate - amplitude;
            }
            return coordinate + amplitude;
        case 7:
            return coordinate + RandomRange(0, range) * 0.01;
        default:
            return coordinate;
    }
}

/// A period of 0 or less would loop forever; it is not subtracted.
double WithinPeriod(short coordinate, double period) {
    double p = coordinate;
    while (period > 0 && p > period) {
        p = p - period;
    }
    return p;
}

}  // namespace

bool PlainWaves(PaintClass& pic, const WavesParams& params) {
    const short width = pic.grX;
    const short height = pic.grY;
    const double stepY = 6.283185307179586 / height;
    const double periodY = height / static_cast<double>(params.countX);
    const double ampX = width * params.heightX * 0.00125;
    const double stepX = 6.283185307179586 / width;
    const double periodX = width / static_cast<double>(params.countY);
    const double ampY = height * params.heightY * 0.00125;
    const PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return false;
    }
    pic.CopyToClone();
    for (short y = 0; y < height; ++y) {
        const double py = WithinPeriod(y, periodY);
        for (short x = 0; x < width; ++x) {
            const double px = WithinPeriod(x, periodX);
            const double sx = Moved(x, y, py, params.formX, params.countX, periodY, stepY, ampX,
                                    width * params.heightX / 8);
            const double sy = Moved(y, x, px, params.formY, params.countY, periodX, stepX, ampY,
                                    height * params.heightY / 8);
            if (params.interpolate == 1) {
                unsigned char rgb[3];
                clone->GetPixelInterpolated(sx, sy, rgb);
                pic.SetRGB(x, y, rgb[0], rgb[1], rgb[2]);
            } else {
                pic.SetPixel(x, y,
                             clone->GetPixelWrapped(TruncateToShort(sx), TruncateToShort(sy)));
            }
        }
    }
    pic.DeleteClone();
    return true;
}

#include "plain/PlainDrops.h"

#include <algorithm>
#include <cmath>

#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "plain/PlainBlur.h"
#include "raster/Truncation.h"

namespace {

short Short(int value) {
    return static_cast<short>(value);
}

void PlainDrop(PaintClass& pic, int cx, int cy, int R, int edge) {
    // Only a damaged record has a radius of more than two tiles; what is further away is never
    // higher than a copy of the same pixel that is nearer.
    const int reachY = std::min(R, 2 * pic.grY);
    const int reachX = std::min(R, 2 * pic.grX);
    for (int y = cy - reachY; y <= cy + reachY - 1; ++y) {
        for (int x = cx - reachX; x <= cx + reachX - 1; ++x) {
            const double square =
                static_cast<double>(cx - x) * (cx - x) + static_cast<double>(cy - y) * (cy - y);
            const short s = TruncateToShort(std::sqrt(square));
            if (s >= R) {
                continue;
            }
            const int k = R - s;
            unsigned char v = 0;
            if (k <= edge) {
                const short t = TruncateToShort(255.0 - (static_cast<double>(k) / edge) * 255.0);
                v = CosineProfile(static_cast<unsigned char>(t & 0xFF));
            }
            if (v < pic.GetAlphaWrapped(Short(x), Short(y))) {
                pic.SetAlphaWrapped(Short(x), Short(y), v);
            }
        }
    }
}

void PlainRender(PaintClass& pic, const DropsParams& params, int edge) {
    const int light = params.reflection + 20;
    const short T = ReliefThreshold(edge);
    double tone = 0.0;
    if (params.coveredTone == 27) {
        tone = 10.0;
    }
    if (params.coveredTone == 29) {
        tone = -10.0;
    }
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            unsigned char* const p = pic.PixelAddress(x, y);
            const int a = p[3];
            const int b = pic.GetAlphaWrapped(Short(x + 1), Short(y + 1));
            double shade =
                (light + 5.0) * edge * (a - b) * 0.00392156862745098 * 0.6666666666666666;
            if (params.emphasizeLight != 0 && shade < 0) {
                shade = shade * 0.5;
            }
            shade = shade + tone;
            for (int c = 0; c < 3; ++c) {
                const int q = std::clamp<int>(TruncateToShort(p[c] + shade), 0, 255);
                if (a < T) {
                    p[c] = static_cast<unsigned char>(q);
                } else if (a != 255) {
                    const double f = (255.0 - a) / (255 - T);
                    p[c] = static_cast<unsigned char>(TruncateToShort(q * f + p[c] * (1.0 - f)));
                }
            }
        }
    }
}

}  // namespace

bool PlainDrops(PaintClass& pic, const DropsParams& params) {
    const int avg = (pic.grX + pic.grY) / 2;
    // More than 100 counts as 100, and a divisor of 0 as 1.
    const int n = (params.count > 100 ? 100 : params.count) / 2 + 15;
    const int d = 16 - params.size / 10;
    const int dMin = params.variation / 4 + d;
    const int rMax = avg / (d == 0 ? 1 : d);
    const int rMin = avg / (dMin == 0 ? 1 : dMin);
    const int edge = avg / 40;
    SeedRandom();
    pic.SetAllAlpha(255);
    for (int i = 0; i < n; ++i) {
        const short cx = Short(RandomRange(0, pic.grX));
        const short cy = Short(RandomRange(0, pic.grY));
        const short R = Short(RandomRange(rMin, rMax));
        PlainDrop(pic, cx, cy, R, edge);
    }
    if (!PlainBlur(pic, avg * 0.0078125, 2)) {
        return false;
    }
    const double radii[] = {avg * 0.00390625, avg * 0.0078125, avg * 0.015625};
    if (params.coveredBlur >= 24 && params.coveredBlur <= 26 &&
        !PlainBlur(pic, radii[params.coveredBlur - 24], 3)) {
        return false;
    }
    PlainRender(pic, params, edge);
    pic.SetDirty();
    return true;
}

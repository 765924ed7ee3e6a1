#include "plain/PlainTwirls.h"

#include <algorithm>
#include <cmath>

#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "raster/Truncation.h"

namespace {

void PlainTwirl(PaintClass& pic, short cx, short cy, short radius, double q) {
    for (int dx = -radius; dx <= radius - 1; ++dx) {
        for (int dy = -radius; dy <= radius - 1; ++dy) {
            const double dist = std::sqrt(static_cast<double>(dx * dx + dy * dy));
            if (!(dist < radius) || dist == 0.0) {
                continue;  // the centre follows at the end
            }
            const double t = (radius - dist) / q;
            const double twist = t * t * t * t;
            double alpha;
            if (dx >= 0) {
                alpha = ExactAsin(dy / dist);
            } else if (dy >= 0) {
                alpha = ExactAcos(dx / dist);
            } else {
                alpha = 6.283185307179586 - ExactAcos(dx / dist);
            }
            const double b = DegreesToRadians(TruncateToShort(twist)) + alpha;
            const double sx = cx + ExactCos(b) * dist;
            const double sy = cy + ExactSin(b) * dist;
            unsigned char rgb[3];
            pic.clone->GetPixelInterpolated(sx, sy, rgb);
            std::copy_n(
                rgb, 3,
                pic.PixelAddressWrapped(static_cast<short>(cx + dx), static_cast<short>(cy + dy)));
        }
    }
    pic.SetPixelWrapped(cx, cy, pic.clone->GetPixelWrapped(cx, cy));
}

}  // namespace

bool PlainTwirls(PaintClass& pic, const TwirlsParams& params) {
    if (pic.GetClone() == nullptr) {
        return false;
    }
    SeedRandom();
    // More than 100 counts as 100.
    const int quantity = params.quantity > 100 ? 100 : params.quantity;
    const int size = params.size > 100 ? 100 : params.size;
    const auto n = static_cast<short>((pic.grY * pic.grX) / ((100 - quantity) * 15 + 500));
    const short radius = TruncateToShort(((pic.grY + pic.grX) / 2) / ((100 - size) * 0.03 + 2.0));
    const double q = radius / (params.intensity * 0.01 + 3.5);
    for (short i = 0; i < n; ++i) {
        pic.CopyToClone();
        const auto cx = static_cast<short>(RandomRange(0, pic.grX));
        const auto cy = static_cast<short>(RandomRange(0, pic.grY));
        PlainTwirl(pic, cx, cy, radius, q);
    }
    pic.DeleteClone();
    return true;
}

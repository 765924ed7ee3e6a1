#include "plain/PlainSkew.h"

#include "raster/Truncation.h"

namespace {

void PlainSkewPixel(PaintClass& pic, short x, short y, double dx, double dy, bool nearest) {
    const PicClass& clone = *pic.clone;
    if (nearest) {
        pic.SetPixel(x, y,
                     clone.GetPixelWrapped(static_cast<short>(x + TruncateToShort(dx)),
                                           static_cast<short>(y + TruncateToShort(dy))));
    } else {
        unsigned char rgb[3];
        clone.GetPixelInterpolated(x + dx, y + dy, rgb);
        pic.SetRGB(x, y, rgb[0], rgb[1], rgb[2]);
    }
}

}  // namespace

bool PlainSkew(PaintClass& pic, std::int32_t direction, bool nearest) {
    if (pic.GetClone() == nullptr) {
        return false;
    }
    pic.CopyToClone();
    if (direction == 0 || direction == 1) {
        for (short y = 0; y < pic.grY; ++y) {
            const double s = static_cast<double>(y) * pic.grX / pic.grY;
            for (short x = 0; x < pic.grX; ++x) {
                PlainSkewPixel(pic, x, y, direction == 0 ? -s : s, 0, nearest);
            }
        }
    } else if (direction == 2 || direction == 3) {
        for (short x = 0; x < pic.grX; ++x) {
            const double s = static_cast<double>(x) * pic.grY / pic.grX;
            for (short y = 0; y < pic.grY; ++y) {
                PlainSkewPixel(pic, x, y, 0, direction == 2 ? -s : s, nearest);
            }
        }
    }
    pic.DeleteClone();
    return true;
}

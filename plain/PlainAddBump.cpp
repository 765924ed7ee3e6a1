#include "plain/PlainAddBump.h"

#include <vector>

#include "raster/Truncation.h"

void PlainSmoothAlpha(PaintClass& pic) {
    std::vector<unsigned char> plane;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const int neighbours = pic.GetAlphaWrapped(static_cast<short>(x + 1), y) +
                                   pic.GetAlphaWrapped(static_cast<short>(x - 1), y) +
                                   pic.GetAlphaWrapped(x, static_cast<short>(y - 1)) +
                                   pic.GetAlphaWrapped(x, static_cast<short>(y + 1));
            plane.push_back(static_cast<unsigned char>(neighbours / 8 + pic.GetAlpha(x, y) / 2));
        }
    }
    std::size_t place = 0;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetAlpha(x, y, plane[place++]);
        }
    }
}

void PlainAddBump(PaintClass& pic) {
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const unsigned char* const p = pic.PixelAddress(x, y);
            pic.SetAlpha(x, y, static_cast<unsigned char>(p[0] / 3 + p[1] / 3 + p[2] / 3));
        }
    }
    PlainSmoothAlpha(pic);
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const double d =
                static_cast<double>(pic.GetAlpha(x, y)) -
                pic.GetAlphaWrapped(static_cast<short>(x + 1), static_cast<short>(y + 1));
            unsigned char* const pixel = pic.PixelAddress(x, y);
            for (int c = 0; c < 3; ++c) {
                const double v = pixel[c] + d;
                if (v > 255.0) {
                    pixel[c] = 255;
                } else if (v < 0.0) {
                    pixel[c] = 0;
                } else {
                    pixel[c] = static_cast<unsigned char>(TruncateToShort(v));
                }
            }
        }
    }
}

#include "plain/PlainPlaces.h"

#include <cstdint>

namespace {

short Short(int value) {
    return static_cast<short>(value);
}

void MosaicBlock(PaintClass& pic, int x, int y, short blockWidth, short blockHeight) {
    std::uint64_t sums[3] = {0, 0, 0};
    unsigned char alpha = 0;
    for (int j = 0; j < blockHeight; ++j) {
        for (int i = 0; i < blockWidth; ++i) {
            const unsigned char* const pixel =
                pic.PixelAddress(Wrap(x + i, pic.grX), Wrap(y + j, pic.grY));
            for (int c = 0; c < 3; ++c) {
                sums[c] += pixel[c];
            }
            alpha = pixel[3];
        }
    }
    Pixel average = static_cast<Pixel>(alpha) << 24;
    for (int c = 0; c < 3; ++c) {
        const std::uint64_t channel = (sums[c] / static_cast<std::uint64_t>(blockWidth)) /
                                      static_cast<std::uint64_t>(blockHeight);
        average |= static_cast<Pixel>(channel) << 8 * c;
    }
    for (int j = 0; j < blockHeight; ++j) {
        for (int i = 0; i < blockWidth; ++i) {
            pic.SetPixel(Wrap(x + i, pic.grX), Wrap(y + j, pic.grY), average);
        }
    }
}

void Swap(PaintClass& pic, short x1, short y1, short x2, short y2) {
    const Pixel first = pic.GetPixel(x1, y1);
    pic.SetPixel(x1, y1, pic.GetPixel(x2, y2));
    pic.SetPixel(x2, y2, first);
}

}  // namespace

void PlainMosaic(PaintClass& pic, short blockWidth, short blockHeight) {
    for (int y = 0; y < pic.grY; y += blockHeight) {
        for (int x = 0; x < pic.grX; x += blockWidth) {
            MosaicBlock(pic, x, y, blockWidth, blockHeight);
        }
    }
}

void PlainFlip(PaintClass& pic, short mode) {
    if (mode == 0 || mode == 2) {
        for (short x = 0; x < pic.grX; ++x) {
            for (short y = 0; y < pic.grY / 2; ++y) {
                Swap(pic, x, y, x, Short(pic.grY - y - 1));
            }
        }
    }
    if (mode == 1 || mode == 2) {
        for (short x = 0; x < pic.grX / 2; ++x) {
            for (short y = 0; y < pic.grY; ++y) {
                Swap(pic, x, y, Short(pic.grX - x - 1), y);
            }
        }
    }
}

void PlainShiftBy(PaintClass& pic, short dx, short dy) {
    pic.CopyToClone();
    for (short x = 0; x < pic.grX; ++x) {
        for (short y = 0; y < pic.grY; ++y) {
            pic.SetPixelWrapped(Short(x - dx), Short(y - dy), pic.clone->GetPixel(x, y));
        }
    }
}

void PlainCopyTiled(const PicClass& from, PicClass& to) {
    for (short x = 0; x < to.grX; ++x) {
        for (short y = 0; y < to.grY; ++y) {
            to.SetPixel(x, y, from.GetPixel(Short(x % from.grX), Short(y % from.grY)));
        }
    }
}

void PlainCopyResampled(const PicClass& from, PicClass& to) {
    const long double ratioX = static_cast<long double>(from.grX) / to.grX;
    const long double ratioY = static_cast<long double>(from.grY) / to.grY;
    for (short x = 0; x < to.grX; ++x) {
        for (short y = 0; y < to.grY; ++y) {
            to.SetPixel(
                x, y,
                from.GetPixel(static_cast<short>(x * ratioX), static_cast<short>(y * ratioY)));
        }
    }
}

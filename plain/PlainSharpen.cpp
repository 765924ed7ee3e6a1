#include "plain/PlainSharpen.h"

#include <algorithm>

namespace {

constexpr int kernel[3][3] = {{-4587, -6554, -4587}, {-6554, 110100, -6554}, {-4587, -6554, -4587}};

unsigned char SharpenedAt(const PicClass& pic, short x, short y, int channel) {
    int sum = 0;
    for (int k = 0; k < 3; ++k) {
        for (int j = 0; j < 3; ++j) {
            const unsigned char* const pixel = pic.PixelAddressWrapped(
                static_cast<short>(x + j - 1), static_cast<short>(y + k - 1));
            sum += pixel[channel] * kernel[k][j];
        }
    }
    return static_cast<unsigned char>(std::clamp(sum >> 16, 0, 255));
}

}  // namespace

bool PlainSharpen(PaintClass& pic) {
    PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return false;
    }
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            clone->SetRGB(x, y, SharpenedAt(pic, x, y, 0), SharpenedAt(pic, x, y, 1),
                          SharpenedAt(pic, x, y, 2));
        }
    }
    pic.CopyFromClone();
    pic.DeleteClone();
    return true;
}

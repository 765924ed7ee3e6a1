#include "paint/kernels/WrappedPlane.h"

#include <cstring>

namespace {

std::size_t RowSize(const PicClass& pic, int left, int right) {
    return static_cast<std::size_t>(left + pic.grX + right);
}

}  // namespace

WrappedPlane::WrappedPlane(const PicClass& pic, int channel, int left, int right)
    : height(pic.grY),
      margin(left),
      stride(RowSize(pic, left, right)),
      block(stride * static_cast<std::size_t>(pic.grY) + slack) {
    if (Failed()) {
        return;
    }
    unsigned char* const bytes = block.Values();
    for (short y = 0; y < height; ++y) {
        FillRow(pic.PixelAddress(0, y), channel, pic.grX, right,
                bytes + static_cast<std::size_t>(y) * stride + left);
    }
    std::memset(bytes + stride * static_cast<std::size_t>(height), 0, slack);
}

/// The margins are filled from the tile outwards, so that they may read what they just wrote.
void WrappedPlane::FillRow(const unsigned char* pixels, int channel, short width, int right,
                           unsigned char* row) const {
    for (int x = 0; x < width; ++x) {
        row[x] = pixels[x * bytesPerPixel + channel];
    }
    for (int x = width; x < width + right; ++x) {
        row[x] = row[x - width];
    }
    for (int x = -1; x >= -margin; --x) {
        row[x] = row[x + width];
    }
}

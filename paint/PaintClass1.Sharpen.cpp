// Convolutions: Sharpen.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "raster/HandleArray.h"

namespace {

/// (6554 * a + 4587 * b) >> 16, from the halves of the products: with 16 bits a lane, the processor
/// takes two thirds of the time that 32 need.
short WeightedHigh(short a, short b) {
    const auto lowA = static_cast<std::uint16_t>(6554 * a);
    const auto low = static_cast<std::uint16_t>(lowA + static_cast<std::uint16_t>(4587 * b));
    const auto highA = static_cast<short>(6554 * a >> 16);
    const auto highB = static_cast<short>(4587 * b >> 16);
    const int carry = low < lowA ? 1 : 0;
    return static_cast<short>(highA + highB + carry);
}

/// The weights 110100, -6554 and -4587 of the nine pixels in 16.16, which come to 65536, as
/// 65536 * c + 6554 * (4 * c - sides) + 4587 * (4 * c - corners).
unsigned char Sharpened(int centre, int sides, int corners) {
    const auto againstSides = static_cast<short>(4 * centre - sides);
    const auto againstCorners = static_cast<short>(4 * centre - corners);
    const auto sharper = static_cast<short>(centre + WeightedHigh(againstSides, againstCorners));
    return static_cast<unsigned char>(std::clamp<short>(sharper, 0, 255));
}

struct ThreeRows {
    const std::uint16_t* above;
    const std::uint16_t* row;
    const std::uint16_t* below;
};

/// Computes all four bytes of each pixel: the alpha byte has no meaning afterwards, and a loop that
/// need not skip it is vectorized.
void SharpenLoop(const ThreeRows& rows, unsigned char* __restrict out, int bytes) {
    const auto [above, row, below] = rows;
    for (int i = 0; i < bytes; ++i) {
        const int left = i - bytesPerPixel;
        const int right = i + bytesPerPixel;
        out[i] = Sharpened(row[i], above[i] + below[i] + row[left] + row[right],
                           above[left] + above[right] + below[left] + below[right]);
    }
}

void WidenLoop(const unsigned char* __restrict bytes, std::uint16_t* __restrict wide, int count) {
    for (int i = 0; i < count; ++i) {
        wide[i] = bytes[i];
    }
}

/// Three rows of the raster that follow each other, in 16 bits, so that a byte is widened once and
/// not for each of its nine sums. Each has the pixel from the other edge at either end.
class RowWindow {
  public:
    explicit RowWindow(const PicClass& newPic) : pic(newPic), block(3 * Stride()) {
        if (Failed()) {
            return;
        }
        std::uint16_t* const start = block.Values() + bytesPerPixel;
        above = start;
        row = start + Stride();
        below = start + 2 * Stride();
    }

    /// True if there was no memory.
    bool Failed() const { return block.Failed(); }

    /// Moves the window down: row y, wrapped, becomes the lowest of the three.
    void Take(int y) {
        std::uint16_t* const free = above;
        above = row;
        row = below;
        below = free;
        Widen(pic.PixelAddressWrapped(0, static_cast<short>(y)), below);
    }

    ThreeRows Rows() const { return {above, row, below}; }

  private:
    std::size_t Stride() const {
        return static_cast<std::size_t>(pic.RowBytes() + 2 * bytesPerPixel);
    }

    void Widen(const unsigned char* bytes, std::uint16_t* wide) const {
        const int count = pic.RowBytes();
        ForThisProcessor<WidenLoop>(bytes, wide, count);
        std::copy_n(wide + count - bytesPerPixel, bytesPerPixel, wide - bytesPerPixel);
        std::copy_n(wide, bytesPerPixel, wide + count);
    }

    const PicClass& pic;
    HandleArray<std::uint16_t> block;
    std::uint16_t* above = nullptr;
    std::uint16_t* row = nullptr;
    std::uint16_t* below = nullptr;
};

}  // namespace

bool PaintClass::Sharpen() {
    ShowClass progress(static_cast<short>(grY / 5));
    PicClass* const target = GetClone();
    if (target == nullptr) {
        return false;
    }
    RowWindow window(*this);
    if (window.Failed()) {
        DeleteClone();
        return false;
    }
    window.Take(-1);
    window.Take(0);
    for (short y = 0; y < grY; ++y) {
        if (y % 5 == 0) {
            progress.Report(static_cast<short>(y / 5));
        }
        window.Take(y + 1);
        ForThisProcessor<SharpenLoop>(window.Rows(), target->PixelAddress(0, y), RowBytes());
    }
    CopyFromClone();
    DeleteClone();
    Unlock();
    SetDirty();
    return true;
}

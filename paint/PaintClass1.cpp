// Convolutions: Blur, Sharpen, Add Bump. Motion Blur is in PaintClass1.MotionBlur.cpp.
#include <algorithm>
#include <optional>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/BlurKernel.h"
#include "paint/kernels/BlurSums.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/WrappedPlane.h"
#include "raster/HandleClass.h"
#include "raster/Truncation.h"

namespace {

constexpr int redByte = 0;
constexpr int greenByte = 1;
constexpr int blueByte = 2;
constexpr int alphaByte = 3;

constexpr unsigned char flatGround = 255;

// Blur.

enum BlurMode : short { blurAllPixels = 1, blurAlpha = 2, blurWhereAlpha = 3 };

/// What a pass of Blur works with.
struct BlurRun {
    PaintClass& pic;
    const BlurKernel& kernel;
    ShowClass& progress;
    short rowOffset;
    bool* abortFlag;

    /// Reports the row. True if the work is to end.
    bool EndsAt(short y) const {
        *abortFlag = progress.Report(static_cast<short>(y + rowOffset));
        return *abortFlag;
    }
};

struct Span {
    int first;
    int count;
};

bool IsFlat(const unsigned char* row, int x) {
    return row[x * bytesPerPixel + alphaByte] == flatGround;
}

/// The first span from `x` on that ends in pixels whose alpha byte is below 255. A short stretch of
/// 255 within it costs less than two spans. `count` is 0 if there is none.
Span NextRaisedSpan(const unsigned char* row, int x, int width) {
    constexpr int longestGap = 16;
    while (x < width && IsFlat(row, x)) {
        ++x;
    }
    int end = x;
    for (int i = x; i < width && i - end < longestGap; ++i) {
        if (!IsFlat(row, i)) {
            end = i + 1;
        }
    }
    return {x, end - x};
}

/// Brings the sums of three channels, in 8.24, to the pixels whose alpha byte is not `kept`. No
/// alpha byte is 256.
void StoreColorsLoop(const std::uint32_t* const sums[3], unsigned char* __restrict pixels,
                     int count, Pixel kept) {
    const std::uint32_t* const red = sums[0];
    const std::uint32_t* const green = sums[1];
    const std::uint32_t* const blue = sums[2];
    for (int i = 0; i < count; ++i) {
        const Pixel old = LoadPixel(pixels, i);
        const Pixel blurred =
            red[i] >> 24 | (green[i] >> 24) << 8 | (blue[i] >> 24) << 16 | (old & 0xFF000000);
        StorePixel(pixels, i, old >> 24 == kept ? old : blurred);
    }
}

void BlurColorSpan(BlurSums& blurSums, const WrappedPlane planes[3], short y, const Span& span,
                   unsigned char* row, Pixel kept) {
    const std::uint32_t* sums[3];
    for (int c = redByte; c <= blueByte; ++c) {
        sums[c] = blurSums.Sum(planes[c], y, span.first, span.count, c);
    }
    ForThisProcessor<StoreColorsLoop>(sums, row + span.first * bytesPerPixel, span.count, kept);
}

/// Blurs a row of colours from the planes into the clone's row, which still is as the texture's.
void BlurColorRow(BlurSums& sums, const WrappedPlane planes[3], short y, unsigned char* row,
                  short width, BlurMode mode) {
    if (mode == blurAllPixels) {
        constexpr Pixel none = 256;
        BlurColorSpan(sums, planes, y, {0, width}, row, none);
        return;
    }
    Span span = NextRaisedSpan(row, 0, width);
    while (span.count > 0) {
        BlurColorSpan(sums, planes, y, span, row, flatGround);
        span = NextRaisedSpan(row, span.first + span.count, width);
    }
}

/// Every pixel is computed from the unfiltered colours, which the planes hold. The alpha bytes
/// stay.
bool BlurColors(const BlurRun& run, BlurMode mode) {
    PaintClass& pic = run.pic;
    PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return false;
    }
    BlurSums sums(run.kernel, pic.grX);
    const WrappedPlane planes[3] = {{pic, redByte, sums.Margin(), sums.Margin()},
                                    {pic, greenByte, sums.Margin(), sums.Margin()},
                                    {pic, blueByte, sums.Margin(), sums.Margin()}};
    if (sums.failed || planes[0].failed || planes[1].failed || planes[2].failed) {
        pic.DeleteClone();
        return false;
    }
    pic.CopyToClone();
    for (short y = 0; y < pic.grY; ++y) {
        if (run.EndsAt(y)) {
            pic.DeleteClone();
            return true;
        }
        BlurColorRow(sums, planes, y, clone->PixelAddress(0, y), pic.grX, mode);
    }
    pic.CopyFromClone();
    pic.DeleteClone();
    pic.SetDirty();
    return true;
}

void BlurAlphaSpan(BlurSums& blurSums, const WrappedPlane& plane, short y, const Span& span,
                   unsigned char* row) {
    const std::uint32_t* const sums = blurSums.Sum(plane, y, span.first, span.count, 0);
    unsigned char* alpha = row + span.first * bytesPerPixel + alphaByte;
    for (int i = 0; i < span.count; ++i, alpha += bytesPerPixel) {
        if (*alpha != flatGround) {
            *alpha = static_cast<unsigned char>(sums[i] >> 24);
        }
    }
}

bool BlurAlphaBytes(const BlurRun& run) {
    PaintClass& pic = run.pic;
    BlurSums sums(run.kernel, pic.grX);
    const WrappedPlane plane(pic, alphaByte, sums.Margin(), sums.Margin());
    if (sums.failed || plane.failed) {
        return false;
    }
    for (short y = 0; y < pic.grY; ++y) {
        if (y % 4 == 0 && run.EndsAt(y)) {
            return true;
        }
        unsigned char* const row = pic.PixelAddress(0, y);
        Span span = NextRaisedSpan(row, 0, pic.grX);
        while (span.count > 0) {
            BlurAlphaSpan(sums, plane, y, span, row);
            span = NextRaisedSpan(row, span.first + span.count, pic.grX);
        }
    }
    pic.SetDirty();
    return true;
}

}  // namespace

bool PaintClass::Blur(double radius, short mode, ShowClass* progress, short rowOffset,
                      bool* abortFlag) {
    *abortFlag = false;
    if (mode < blurAllPixels || mode > blurWhereAlpha) {
        return false;
    }
    const BlurKernel kernel(radius);
    if (kernel.failed) {
        return false;
    }
    std::optional<ShowClass> ownProgress;
    if (progress == nullptr) {
        progress = &ownProgress.emplace(grY);
        rowOffset = 0;
    }
    const BlurRun run{*this, kernel, *progress, rowOffset, abortFlag};
    const bool done =
        mode == blurAlpha ? BlurAlphaBytes(run) : BlurColors(run, static_cast<BlurMode>(mode));
    Unlock();
    return done;
}

// Sharpen.

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

/// All four bytes of each pixel: the alpha byte means nothing afterwards, and a loop that need not
/// leave it out runs several pixels at a time.
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
    explicit RowWindow(const PicClass& newPic)
        : failed(false), pic(newPic), block(3 * Stride() * sizeof(std::uint16_t)) {
        if (block.failed) {
            failed = true;
            return;
        }
        auto* const start = static_cast<std::uint16_t*>(block.Lock()) + bytesPerPixel;
        above = start;
        row = start + Stride();
        below = start + 2 * Stride();
    }

    /// True if there was no memory.
    bool failed;

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
    HandleClass block;
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
    if (window.failed) {
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

// Add Bump.

namespace {

/// `above`, `row` and `below` are alpha bytes, with a margin on either side.
void SmoothAlphaLoop(const unsigned char* __restrict above, const unsigned char* __restrict row,
                     const unsigned char* __restrict below, unsigned char* __restrict pixels,
                     int count) {
    for (int x = 0; x < count; ++x) {
        const int neighbours = row[x + 1] + row[x - 1] + above[x] + below[x];
        const auto alpha = static_cast<Pixel>(neighbours / 8 + row[x] / 2);
        StorePixel(pixels, x, (LoadPixel(pixels, x) & 0x00FFFFFF) | alpha << 24);
    }
}

}  // namespace

bool PaintClass::SmoothAlpha(short rowOffset, ShowClass* progress, bool* abortFlag) {
    *abortFlag = false;
    const WrappedPlane plane(*this, alphaByte, 1, 1);
    if (plane.failed) {
        return false;
    }
    for (short y = 0; y < grY; ++y) {
        if (y % 10 == 0) {
            progress->Report(static_cast<short>(y + rowOffset));
        }
        ForThisProcessor<SmoothAlphaLoop>(plane.Row(y - 1), plane.Row(y), plane.Row(y + 1),
                                          PixelAddress(0, y), grX);
    }
    Unlock();
    SetDirty();
    return true;
}

namespace {

Pixel Lightened(Pixel pixel, int shift, int difference) {
    const int channel = static_cast<int>(pixel >> shift & 0xFF);
    return static_cast<Pixel>(std::clamp(channel + difference, 0, 255)) << shift;
}

/// Adds to the colours how far the pixel's alpha byte lies above the neighbour's.
Pixel Bumped(Pixel pixel, Pixel neighbour) {
    const int difference = static_cast<int>(pixel >> 24) - static_cast<int>(neighbour >> 24);
    return Lightened(pixel, 0, difference) | Lightened(pixel, 8, difference) |
           Lightened(pixel, 16, difference) | (pixel & 0xFF000000);
}

/// The neighbours are one to the right in `below`, which may be the row itself. In place: the
/// alpha bytes, all that is read of a neighbour, stay.
void BumpLoop(unsigned char* row, const unsigned char* below, int count) {
    for (int x = 0; x < count; ++x) {
        StorePixel(row, x, Bumped(LoadPixel(row, x), LoadPixel(below, x + 1)));
    }
}

}  // namespace

bool PaintClass::AddBump() {
    ShowClass progress(static_cast<short>(2 * grY));
    bool abortFlag = false;
    AlphaFromGrey();
    if (!SmoothAlpha(0, &progress, &abortFlag)) {
        return false;
    }
    for (short y = 0; y < grY; ++y) {
        if (y % 10 == 0) {
            progress.Report(static_cast<short>(y + grY));
        }
        unsigned char* const row = PixelAddress(0, y);
        const unsigned char* const below = PixelAddressWrapped(0, static_cast<short>(y + 1));
        const int last = grX - 1;
        ForThisProcessor<BumpLoop>(row, below, last);
        StorePixel(row, last, Bumped(LoadPixel(row, last), LoadPixel(below, 0)));
    }
    Unlock();
    SetDirty();
    return true;
}

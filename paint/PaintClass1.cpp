// Convolutions: Blur. Motion Blur, Sharpen and Add Bump are in PaintClass1.MotionBlur.cpp,
// .Sharpen.cpp and .AddBump.cpp.
#include <algorithm>
#include <optional>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/BlurKernel.h"
#include "paint/kernels/BlurSums.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/WideConvolution.h"
#include "paint/kernels/WrappedPlane.h"

namespace {

constexpr unsigned char flatGround = 255;

enum BlurMode : short { blurAllPixels = 1, blurAlpha = 2, blurWhereAlpha = 3 };

/// The parameters of a pass of Blur.
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

/// Finds the first span from `x` on that begins and ends with alpha bytes below 255. A short
/// stretch of 255 within it costs less than two spans. `count` is 0 if there is none.
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

/// Stores the sums of three channels, in 8.24, in the pixels whose alpha byte is not `kept`; 256
/// keeps none.
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

/// Blurs a row of colours from the planes into the clone's row, which still equals the texture's.
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

/// Blurs all colours by a square so large that only a damaged record has it: one like the tile
/// would take seconds weight by weight.
class WideBlur {
  public:
    explicit WideBlur(const BlurRun& newRun) : run(newRun), convolution(run.kernel) {}

    /// True if there was no memory.
    bool Failed() const { return convolution.Failed(); }

    /// Into the clone, which equals the texture. True if the work has ended early.
    bool Run() const {
        for (int top = 0; top < run.pic.grY; top += convolution.SumSide()) {
            for (int y = top; y < EndOfBlock(top, run.pic.grY); ++y) {
                if (run.EndsAt(static_cast<short>(y))) {
                    return true;
                }
            }
            for (int left = 0; left < run.pic.grX; left += convolution.SumSide()) {
                for (int c = redByte; c <= blueByte; ++c) {
                    LoadBlock(left, top, c);
                    convolution.Run();
                    StoreBlock(left, top, c);
                }
            }
        }
        return false;
    }

  private:
    int EndOfBlock(int start, short size) const {
        return std::min<int>(start + convolution.SumSide(), size);
    }

    /// The pixels from half a square to the left of and above the block on.
    void LoadBlock(int left, int top, int channel) const {
        const int half = run.kernel.Half();
        for (int y = 0; y < WideConvolution::side; ++y) {
            const unsigned char* const row =
                run.pic.PixelAddress(0, Wrap(top + y - half, run.pic.grY));
            std::uint32_t* const numbers = convolution.Row(y);
            int place = Wrap(left - half, run.pic.grX);
            for (int x = 0; x < WideConvolution::side; ++x) {
                numbers[x] = row[place * bytesPerPixel + channel];
                place = place + 1 == run.pic.grX ? 0 : place + 1;
            }
        }
    }

    void StoreBlock(int left, int top, int channel) const {
        for (int y = top; y < EndOfBlock(top, run.pic.grY); ++y) {
            unsigned char* const row = run.pic.clone->PixelAddress(0, static_cast<short>(y));
            const std::uint32_t* const sums = convolution.Row(y - top);
            for (int x = left; x < EndOfBlock(left, run.pic.grX); ++x) {
                row[x * bytesPerPixel + channel] = static_cast<unsigned char>(sums[x - left] >> 24);
            }
        }
    }

    const BlurRun& run;
    WideConvolution convolution;
};

/// True if it has blurred, or ended early: not without memory, nor where it takes longer.
bool BlurWidely(const BlurRun& run) {
    PaintClass& pic = run.pic;
    if (!WideConvolution::Pays(run.kernel, pic.grX, pic.grY) || pic.GetClone() == nullptr) {
        return false;
    }
    const WideBlur blur(run);
    if (blur.Failed()) {
        return false;
    }
    pic.CopyToClone();
    if (!blur.Run()) {
        pic.CopyFromClone();
        pic.SetDirty();
    }
    pic.DeleteClone();
    return true;
}

/// Every pixel is computed from the unfiltered colours, which the planes hold. The alpha bytes
/// stay.
bool BlurColors(const BlurRun& run, BlurMode mode) {
    PaintClass& pic = run.pic;
    if (mode == blurAllPixels && BlurWidely(run)) {
        return true;
    }
    PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return false;
    }
    BlurSums sums(run.kernel, pic.grX);
    const WrappedPlane planes[3] = {{pic, redByte, sums.Margin(), sums.Margin()},
                                    {pic, greenByte, sums.Margin(), sums.Margin()},
                                    {pic, blueByte, sums.Margin(), sums.Margin()}};
    if (sums.Failed() || planes[0].Failed() || planes[1].Failed() || planes[2].Failed()) {
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
    if (sums.Failed() || plane.Failed()) {
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
    if (kernel.Failed()) {
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

// The generators.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/PaintColors.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/LinesStrokes.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "raster/Truncation.h"

namespace {

constexpr RGBColor16 linesGround{0x7FFF, 0x7FFF, 0x7FFF};

std::uint16_t RandomComponent(std::int32_t lo, std::int32_t hi) {
    return static_cast<std::uint16_t>(RandomRange(lo, hi));
}

/// Red is drawn first, then green, then blue.
RGBColor16 RandomColor(std::int32_t lo, std::int32_t hi) {
    RGBColor16 color;
    color.red = RandomComponent(lo, hi);
    color.green = RandomComponent(lo, hi);
    color.blue = RandomComponent(lo, hi);
    return color;
}

/// A bright colour; in six draws of eight one channel or a pair of them is darkened.
RGBColor16 BrightColor() {
    RGBColor16 color = RandomColor(25000, 65535);
    const std::int32_t k = RandomRange(0, 8);
    if (k == 1 || k == 4 || k == 5) {
        color.red = RandomComponent(0, 32000);
    }
    if (k == 2 || k == 4 || k == 6) {
        color.green = RandomComponent(0, 32000);
    }
    if (k == 3 || k == 5 || k == 6) {
        color.blue = RandomComponent(0, 32000);
    }
    return color;
}

std::uint16_t Scattered(std::uint16_t component, short spread) {
    return static_cast<std::uint16_t>(std::clamp(component + spread, 0, 0xFFFF));
}

/// A colour around the given one. All three spreads are drawn before any is used.
RGBColor16 ColorAround(const RGBColor16& color) {
    constexpr short width = 16384;
    const short red = RandomSpread(width);
    const short green = RandomSpread(width);
    const short blue = RandomSpread(width);
    return {Scattered(color.red, red), Scattered(color.green, green), Scattered(color.blue, blue)};
}

/// A colour mode outside the table keeps the colour of the stroke before.
void ChooseStrokeColor(const LinesParams& params, RGBColor16& color) {
    switch (params.colorMode) {
        case linesRandom:
            color = RandomColor(0, 65535);
            break;
        case linesDark:
            color = RandomColor(1000, 52000);
            break;
        case linesBright:
            color = BrightColor();
            break;
        case linesAverage:
            color = ColorAround(params.color);
            break;
        default:
            break;
    }
}

/// How far one drift can turn a stroke, for RandomSpread. Precision 0 counts as 1, and from 11 on
/// nothing changes any more.
short DriftWidth(std::int16_t precision) {
    const double p = precision != 0 ? precision : 1.0;
    return static_cast<short>(TruncateToShort(10.0 / p) + 4);
}

/// Whether a step with this draw drifts: RandomRange(0, 8) is 4 for the draws from 16384 to 20479.
bool IsDrift(std::uint32_t state) {
    return (state >> 28 & 7) == 4;
}

/// Draws one stroke step by step, on a tile of any size.
void DrawStroke(PaintClass& pic, const RGBColor16& color, const StrokeHabit& habit) {
    const unsigned char rgb[3] = {HighByte(color.red), HighByte(color.green), HighByte(color.blue)};
    RandomGenerator random(Seed());
    double x = random.Range(0, pic.grX);
    double y = random.Range(0, pic.grY);
    double dx = habit.dx;
    double dy = habit.dy;
    WrappedWalk column(pic.grX);
    WrappedWalk row(pic.grY);
    for (int step = 0; step < stepsPerStroke; ++step) {
        random.Rand();
        if (IsDrift(random.State())) {
            dx += random.Spread(habit.driftWidth) * 0.01;
            dy += random.Spread(habit.driftWidth) * 0.01;
        }
        x += dx;
        y += dy;
        const int place = row.Place(TruncateToShort(y)) * pic.RowBytes() +
                          column.Place(TruncateToShort(x)) * bytesPerPixel;
        std::memcpy(pic.Base() + place, rgb, sizeof rgb);
    }
    SetSeed(random.State());
}

/// The strokes of a run. A later one overwrites what lies below it.
class LinesRun {
  public:
    LinesRun(PaintClass& newPic, const LinesParams& newParams, short newStrokes,
             ShowClass& newProgress)
        : pic(newPic), params(newParams), strokes(newStrokes), progress(newProgress) {
        const double radians = DegreesToRadians(params.angle);
        habit = {ExactSin(radians), ExactCos(radians), DriftWidth(params.precision)};
    }

    // False if they were stopped.

    /// In a canvas that takes the place of the pixels of `memory`.
    bool DrawInCanvas(const PicClass& memory) {
        const StrokeCanvas canvas(memory, RasterColor(Ground()));
        StrokeBatch batch(habit, canvas);
        for (short first = 0; first < strokes; first += StrokeBatch::size) {
            if (IsStoppedAt(first)) {
                return false;
            }
            for (int number = first + 1; number <= first + StrokeBatch::size; ++number) {
                ChooseStrokeColor(params, color);
                canvas.SetColor(number, RasterColor(color));
                batch.Add();
            }
            batch.Draw(first + 1);
        }
        canvas.Paint(pic);
        return true;
    }

    bool DrawOneByOne() {
        pic.FillColor(Ground());
        for (short stroke = 0; stroke < strokes; ++stroke) {
            if (stroke % strokesPerReport == 0 && IsStoppedAt(stroke)) {
                return false;
            }
            ChooseStrokeColor(params, color);
            DrawStroke(pic, color, habit);
        }
        return true;
    }

  private:
    static constexpr int strokesPerReport = 4;
    static_assert(StrokeBatch::size == strokesPerReport);

    const RGBColor16& Ground() const {
        return params.colorMode == linesAverage ? params.color : linesGround;
    }
    bool IsStoppedAt(short stroke) {
        return progress.Report(static_cast<short>(stroke / strokesPerReport));
    }

    PaintClass& pic;
    const LinesParams& params;
    const short strokes;
    ShowClass& progress;
    StrokeHabit habit{};
    RGBColor16 color = black16;
};

}  // namespace

bool PaintClass::Lines(const LinesParams& params) {
    // Always a multiple of 4.
    const auto strokes = static_cast<short>(grY * grX / stepsPerStroke * 4);
    const bool wax = params.appearance == linesWax;
    ShowClass progress(static_cast<short>(strokes / 4 + (wax ? grY / 5 : 0)));
    bool abortFlag = false;
    SeedRandom();
    LinesRun run(*this, params, strokes, progress);
    const PicClass* const memory = GetClone();
    const bool fits = memory != nullptr && StrokeCanvas::Fits(*memory, strokes);
    if (!(fits ? run.DrawInCanvas(*memory) : run.DrawOneByOne())) {
        DeleteClone();
        SwapUndo();
        return true;
    }
    if (!wax) {
        DeleteClone();
    } else if (memory == nullptr ||
               !Soften(static_cast<short>(strokes / 4), &progress, &abortFlag)) {
        SwapUndo();
        return abortFlag;
    }
    Unlock();
    SetDirty();
    return true;
}

namespace {

unsigned char Softened(int neighbours, unsigned char centre) {
    return static_cast<unsigned char>(neighbours / 8 + centre / 2);
}

/// One row of the wax pass, over all four bytes of each pixel: the alpha byte has no meaning
/// afterwards, and a loop that need not skip it is vectorized.
void SoftenRow(const unsigned char* above, const unsigned char* row, const unsigned char* below,
               unsigned char* __restrict out, short width) {
    constexpr int step = bytesPerPixel;
    for (const int x : {0, width - 1}) {
        const unsigned char* const left = row + Wrap(x - 1, width) * step;
        const unsigned char* const right = row + Wrap(x + 1, width) * step;
        for (int i = x * step; i < (x + 1) * step; ++i) {
            const int channel = i - x * step;
            out[i] = Softened(above[i] + below[i] + left[channel] + right[channel], row[i]);
        }
    }
    for (int i = step; i < (width - 1) * step; ++i) {
        out[i] = Softened(above[i] + below[i] + row[i - step] + row[i + step], row[i]);
    }
}

}  // namespace

bool PaintClass::Soften(short rowOffset, ShowClass* progress, bool* abortFlag) {
    PicClass* const softened = GetClone();
    if (softened == nullptr) {
        return false;
    }
    for (short y = 0; y < grY; ++y) {
        if (y % 5 == 0 && progress->Report(static_cast<short>(y / 5 + rowOffset))) {
            *abortFlag = true;
            DeleteClone();
            return false;
        }
        ForThisProcessor<SoftenRow>(
            PixelAddressWrapped(0, static_cast<short>(y - 1)), PixelAddress(0, y),
            PixelAddressWrapped(0, static_cast<short>(y + 1)), softened->PixelAddress(0, y), grX);
    }
    CopyFromClone();
    DeleteClone();
    SetDirty();
    return true;
}

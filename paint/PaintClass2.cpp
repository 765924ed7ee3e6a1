// The generators.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "raster/Truncation.h"

namespace {

constexpr int stepsPerStroke = 350;
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

struct Direction {
    double dx;
    double dy;
};

/// A stroke's start takes two draws, each step one, and each drift two more.
constexpr int startDraws = 2;
constexpr int mostDraws = startDraws + 3 * stepsPerStroke;

/// Whether a step with this draw drifts: RandomRange(0, 8) is 4 for the draws from 16384 to 20479.
bool IsDrift(std::uint32_t state) {
    return (state >> 28 & 7) == 4;
}

/// How the direction drifts after a draw; takes two more.
void Drift(Direction& direction, RandomGenerator& random, short driftWidth) {
    direction.dx += random.Spread(driftWidth) * 0.01;
    direction.dy += random.Spread(driftWidth) * 0.01;
}

/// Walks one stroke step by step, on a tile of any size.
void WalkStroke(PaintClass& pic, const unsigned char (&rgb)[3], Direction direction,
                short driftWidth) {
    RandomGenerator random(Seed());
    double x = random.Range(0, pic.grX);
    double y = random.Range(0, pic.grY);
    unsigned char* const base = pic.Base();
    const std::int32_t rowBytes = pic.RowBytes();
    WrappedWalk column(pic.grX);
    WrappedWalk row(pic.grY);
    for (int step = 0; step < stepsPerStroke; ++step) {
        random.Rand();
        if (IsDrift(random.State())) {
            Drift(direction, random, driftWidth);
        }
        x += direction.dx;
        y += direction.dy;
        const int place = row.Place(TruncateToShort(y)) * rowBytes +
                          column.Place(TruncateToShort(x)) * bytesPerPixel;
        std::memcpy(base + place, rgb, sizeof rgb);
    }
    SetSeed(random.State());
}

/// All draws that a stroke may take, at once.
struct StrokeDraws {
    constexpr StrokeDraws() {
        std::uint32_t factor = 1;
        std::uint32_t addend = 0;
        for (int i = 0; i < mostDraws; ++i) {
            factor *= RandomGenerator::factor;
            addend = addend * RandomGenerator::factor + RandomGenerator::addend;
            factors[i] = factor;
            addends[i] = addend;
        }
    }

    std::uint32_t factors[mostDraws] = {};
    std::uint32_t addends[mostDraws] = {};
};

constexpr StrokeDraws strokeDraws;

/// The states after each of the draws.
void StatesLoop(std::uint32_t seed, std::uint32_t* __restrict states) {
    for (int i = 0; i < mostDraws; ++i) {
        states[i] = seed * strokeDraws.factors[i] + strokeDraws.addends[i];
    }
}

struct StrokePositions {
    double x[stepsPerStroke];
    double y[stepsPerStroke];
};

/// Where the steps of a stroke are in a tile: bytes from its first pixel on.
struct StrokePlaces {
    std::int32_t width;
    std::int32_t height;
    std::int32_t rowBytes;
    std::int32_t places[stepsPerStroke];
};

/// Wrap(coordinate, size), as `perSize` is 1 / size: the quotient is truncated rightly but next to
/// a whole number, which for coordinates below 2^15 is only where the remainder is 0 and may become
/// `size` either way.
std::int32_t WrapBy(std::int32_t coordinate, std::int32_t size, float perSize) {
    const auto quotient = static_cast<std::int32_t>(static_cast<float>(coordinate) * perSize);
    std::int32_t place = coordinate - quotient * size;
    place += place < 0 ? size : 0;
    return place >= size ? place - size : place;
}

void PlacesLoop(const StrokePositions& positions, StrokePlaces& stroke) {
    const float perWidth = 1.0F / static_cast<float>(stroke.width);
    const float perHeight = 1.0F / static_cast<float>(stroke.height);
    for (int i = 0; i < stepsPerStroke; ++i) {
        const auto x = static_cast<std::int32_t>(positions.x[i]);
        const auto y = static_cast<std::int32_t>(positions.y[i]);
        stroke.places[i] = WrapBy(y, stroke.height, perHeight) * stroke.rowBytes +
                           WrapBy(x, stroke.width, perWidth) * bytesPerPixel;
    }
}

/// Draws strokes, overwriting what lies below them. The drift stays in the direction for the rest
/// of a stroke, which may so speed up or slow down.
class StrokeRun {
  public:
    StrokeRun(PaintClass& newPic, Direction newDirection, short newDriftWidth)
        : pic(newPic), direction(newDirection), driftWidth(newDriftWidth) {
        stroke.width = pic.grX;
        stroke.height = pic.grY;
        stroke.rowBytes = pic.RowBytes();
    }

    void Draw(const RGBColor16& color) {
        const unsigned char rgb[3] = {HighByte(color.red), HighByte(color.green),
                                      HighByte(color.blue)};
        const Pixel ink = WithColor(0, rgb[0], rgb[1], rgb[2]);
        if (pic.grX > largestSide || pic.grY > largestSide) {
            WalkStroke(pic, rgb, direction, driftWidth);
            return;
        }
        FindPositions();
        ForThisProcessor<PlacesLoop>(positions, stroke);
        for (const std::int32_t place : stroke.places) {
            // Whole pixels: single bytes would be three times as many to write.
            unsigned char* const pixel = pic.Base() + place;
            StorePixel(pixel, 0, (LoadPixel(pixel, 0) & alphaMask) | ink);
        }
    }

  private:
    /// On such a tile no stroke leaves 16 bits: a step is longer than 1 by at most 0.15 for each
    /// drift, 53.5 after 350 of them, and 350 such steps are 18,725 pixels.
    static constexpr short largestSide = 8192;

    void FindPositions() {
        ForThisProcessor<StatesLoop>(Seed(), states);
        RandomGenerator start(Seed());
        double x = start.Range(0, pic.grX);
        double y = start.Range(0, pic.grY);
        Direction now = direction;
        int next = startDraws;
        for (int step = 0; step < stepsPerStroke; ++step) {
            if (IsDrift(states[next])) {
                RandomGenerator random(states[next]);
                Drift(now, random, driftWidth);
                next += 2;
            }
            ++next;
            x += now.dx;
            y += now.dy;
            positions.x[step] = x;
            positions.y[step] = y;
        }
        SetSeed(states[next - 1]);
    }

    PaintClass& pic;
    Direction direction;
    short driftWidth;
    std::uint32_t states[mostDraws];
    StrokePositions positions;
    StrokePlaces stroke;
};

}  // namespace

bool PaintClass::Lines(const LinesParams& params) {
    const auto strokes = static_cast<short>(grY * grX / stepsPerStroke * 4);
    const bool wax = params.appearance == linesWax;
    FillColor(params.colorMode == linesAverage ? params.color : linesGround);
    ShowClass progress(static_cast<short>(strokes / 4 + (wax ? grY / 5 : 0)));
    bool abortFlag = false;
    SeedRandom();
    const double radians = DegreesToRadians(params.angle);
    StrokeRun run(*this, {ExactSin(radians), ExactCos(radians)}, DriftWidth(params.precision));
    RGBColor16 color = black16;
    for (short stroke = 0; stroke < strokes; ++stroke) {
        if (stroke % 4 == 0 && progress.Report(static_cast<short>(stroke / 4))) {
            SwapUndo();
            return true;
        }
        ChooseStrokeColor(params, color);
        run.Draw(color);
    }
    if (wax && !Soften(static_cast<short>(strokes / 4), &progress, &abortFlag)) {
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

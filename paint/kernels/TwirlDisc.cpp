#include "paint/kernels/TwirlDisc.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "paint/math/EffectMath.h"
#include "paint/math/ExactMath.h"
#include "raster/Truncation.h"

namespace {

/// Pixels that the exact path reads at a time.
constexpr int chunkSize = 64;

double AngleOf(int dx, int dy, double distance) {
    if (dx >= 0) {
        return ExactAsin(dy / distance);
    }
    const double angle = ExactAcos(dx / distance);
    return dy >= 0 ? angle : 6.283185307179586 - angle;
}

}  // namespace

TwirlDisc::TwirlDisc(short newRadius, double newQuotient)
    : radius(newRadius),
      quotient(newQuotient),
      keepsAll(radius <= largestKept),
      rowSize(static_cast<std::size_t>(std::max(1, 2 * radius - 1))),
      places(2 * rowSize * (keepsAll ? rowSize : 1)),
      codes(keepsAll ? 2 * rowSize * rowSize : 0),
      parts(keepsAll ? rowSize : 0) {
    for (int dy = 1 - radius; dy < radius && keepsAll && !Failed(); ++dy) {
        ComputeRow(dy);
        if (HasCodes()) {
            EncodeRow(dy);
        }
    }
}

int TwirlDisc::HalfWidth(int dy) const {
    return static_cast<int>(std::sqrt(static_cast<double>(radius * radius - dy * dy - 1)));
}

std::size_t TwirlDisc::RowNumber(int dy) const {
    return static_cast<std::size_t>(keepsAll ? dy + radius - 1 : 0);
}

double* TwirlDisc::RowPlaces(int dy) const {
    return places.Values() + RowNumber(dy) * 2 * rowSize;
}

std::uint32_t* TwirlDisc::RowCells(int dy) const {
    return codes.Values() + RowNumber(dy) * 2 * rowSize;
}

void TwirlDisc::ComputeRow(int dy) {
    const int halfWidth = HalfWidth(dy);
    double* x = RowPlaces(dy);
    double* y = x + rowSize;
    for (int dx = -halfWidth; dx <= halfWidth; ++dx) {
        Rotate(dx, dy, x++, y++);
    }
}

void TwirlDisc::Rotate(int dx, int dy, double* x, double* y) const {
    if (dx == 0 && dy == 0) {
        // The centre has no angle; the twirl puts it back unchanged.
        *x = 0;
        *y = 0;
        return;
    }
    const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
    const double t = (radius - distance) / quotient;
    const short twist = TruncateToShort(t * t * t * t);
    const SinCos turned = ExactSinCos(DegreesToRadians(twist) + AngleOf(dx, dy, distance));
    *x = turned.cos * distance;
    *y = turned.sin * distance;
}

/// The still sources before the first turned one and after the last have codes as such; those
/// between, as after a twist by a whole turn, are too near to whole numbers for the estimates.
void TwirlDisc::EncodeRow(int dy) {
    const int halfWidth = HalfWidth(dy);
    const int count = 2 * halfWidth + 1;
    const double* const x = RowPlaces(dy);
    const double* const y = x + rowSize;
    SourceCode code{};
    const auto isStill = [&](int i) { return StillSource(x[i], y[i], i - halfWidth, dy, &code); };
    const auto store = [&](int i) {
        RowCells(dy)[i] = code.cell;
        RowFractions(dy)[i] = code.fraction;
    };
    int first = 0;
    for (; first < count && isStill(first); ++first) {
        store(first);
    }
    int end = count;
    for (; end > first && isStill(end - 1); --end) {
        store(end - 1);
    }
    for (int i = first; i < end; ++i) {
        code = TurnedSource(x[i], y[i], radius);
        store(i);
    }
    parts.Values()[RowNumber(dy)] = {first, end};
}

Positions TwirlDisc::Row(int dy, int centreX, int centreY) {
    if (!keepsAll) {
        ComputeRow(dy);
    }
    const double* const x = RowPlaces(dy);
    return {static_cast<double>(centreX), static_cast<double>(centreY), x, x + rowSize,
            2 * HalfWidth(dy) + 1};
}

/// A source lies within the disc, so the pixels around it are at most one outside.
void TwirlDisc::Place(const PicClass& tile, int newCx, int newCy, TileWindow& newWindow) {
    cx = newCx;
    cy = newCy;
    window = &newWindow;
    newWindow.MoveTo(cx - radius, cy - radius);
    for (int dy = -radius; dy <= radius; ++dy) {
        const int nearest = std::max(0, std::abs(dy) - 1);
        const int half = std::min(radius, (nearest < radius ? HalfWidth(nearest) : 0) + 1);
        newWindow.CopyRow(tile, dy + radius, radius - half, 2 * half + 1);
    }
    if (HasCodes()) {
        limits.Place(cx, radius);
    }
}

SourceRun TwirlDisc::Run(int dy, int first, int end) const {
    return {RowCells(dy) + first, RowFractions(dy) + first, first, end - first};
}

void TwirlDisc::ReadRow(int dy, Pixel* out) {
    if (!HasCodes() || !HasTwirlEstimates()) {
        window->Read(Row(dy, cx, cy), reinterpret_cast<unsigned char*>(out));
        return;
    }
    const TurnedPart part = parts.Values()[RowNumber(dy)];
    UndecidedPixels undecided;
    ReadTurnedRun(dy, part.first, part.end, out, &undecided);
    // The places of these few are far from each other in memory.
    const double* const x = RowPlaces(dy);
    for (int i = 0; i < undecided.count; ++i) {
        __builtin_prefetch(x + undecided.numbers[i]);
        __builtin_prefetch(x + rowSize + undecided.numbers[i]);
    }
    ReadStillRun(dy, 0, part.first, out, &undecided);
    ReadStillRun(dy, part.end, 2 * HalfWidth(dy) + 1, out, &undecided);
    ReadExactly(dy, &undecided, out);
}

DiscWindow TwirlDisc::Window() const {
    return {window->Row(0), window->Columns(), radius, cx, cy};
}

void TwirlDisc::ReadStillRun(int dy, int first, int end, Pixel* out,
                             UndecidedPixels* undecided) const {
    if (end - first < shortestEstimatedRun) {
        ReadRunExactly(dy, first, end, out);
        return;
    }
    ReadStill(Window(), limits, dy, -HalfWidth(dy), Run(dy, first, end), out, undecided);
}

void TwirlDisc::ReadTurnedRun(int dy, int first, int end, Pixel* out,
                              UndecidedPixels* undecided) const {
    if (end - first < shortestEstimatedRun) {
        ReadRunExactly(dy, first, end, out);
        return;
    }
    ReadTurned(Window(), Run(dy, first, end), out, undecided);
}

void TwirlDisc::ReadRunExactly(int dy, int first, int end, Pixel* out) const {
    const double* const x = RowPlaces(dy) + first;
    window->Read({static_cast<double>(cx), static_cast<double>(cy), x, x + rowSize, end - first},
                 reinterpret_cast<unsigned char*>(out + first));
}

/// A still source's place follows from its code, which is nearer in memory.
void TwirlDisc::PlacesOf(int dy, const std::int32_t* pixels, int count, double* x,
                         double* y) const {
    const TurnedPart part = parts.Values()[RowNumber(dy)];
    const double* const rowX = RowPlaces(dy);
    const double* const rowY = rowX + rowSize;
    const std::uint32_t* const fractions = RowFractions(dy);
    const int left = -HalfWidth(dy);
    for (int i = 0; i < count; ++i) {
        const int pixel = pixels[i];
        if (part.first <= pixel && pixel < part.end) {
            x[i] = rowX[pixel];
            y[i] = rowY[pixel];
        } else {
            StillPlace(fractions[pixel], left + pixel, dy, &x[i], &y[i]);
        }
    }
}

/// Groups of fewer than four pixels would be read by slower code, so the last pixel is read more
/// often than once.
void TwirlDisc::ReadExactly(int dy, UndecidedPixels* pixels, Pixel* out) const {
    if (pixels->count == 0) {
        return;
    }
    std::fill_n(pixels->numbers + pixels->count, 3, pixels->numbers[pixels->count - 1]);
    for (int i = 0; i < pixels->count; i += chunkSize) {
        const int count = std::clamp(pixels->count - i, 4, chunkSize);
        const std::int32_t* const numbers = pixels->numbers + i;
        double x[chunkSize];
        double y[chunkSize];
        PlacesOf(dy, numbers, count, x, y);
        Pixel colors[chunkSize];
        window->Read({static_cast<double>(cx), static_cast<double>(cy), x, y, count},
                     reinterpret_cast<unsigned char*>(colors));
        for (int j = 0; j < count; ++j) {
            out[numbers[j]] = colors[j];
        }
    }
}

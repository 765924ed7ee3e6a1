// The paint tools: what a stroke lays down along its path. The fill and the gradient are in
// PaintClass6.Fill.cpp and PaintClass6.Gradient.cpp.
//
// Positions lie anywhere; each becomes a pixel by truncation, by its low 16 bits and then around
// the torus.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/PaintColors.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/StampRow.h"
#include "raster/Truncation.h"

using hostapi::Point;

unsigned char brushTable[brushTableSide][brushTableSide];

namespace {

// The brush. The alpha byte of a pixel is the coverage that the stroke has reached there so far,
// and the clone the texture before the stroke, so stamps that overlap don't build up.

/// Full in the middle of the disc, falling to nothing at its rim. `dx` and `dy` lead from the
/// centre.
unsigned char RoundCoverage(int dx, int dy, int radius) {
    const double beyondRim = std::sqrt(static_cast<double>(dx * dx + dy * dy)) - radius;
    if (beyondRim > 0.0) {
        return 0;
    }
    const double coverage = -(beyondRim / radius) * 300.0;
    // The one pixel of radius 0 is no number, and full.
    return coverage < 255.0 ? static_cast<unsigned char>(coverage) : 255;
}

/// Mixes the colour into what was there before the stroke, where the coverage grows.
void Cover(unsigned char* pixel, const unsigned char* before, Pixel color, unsigned char coverage) {
    if (pixel[3] >= coverage) {
        return;
    }
    for (int c = 0; c < 3; ++c) {
        const unsigned char paint = static_cast<unsigned char>(color >> 8 * c);
        pixel[c] = static_cast<unsigned char>(productTable[before[c]][255 - coverage] +
                                              productTable[paint][coverage]);
    }
    pixel[3] = coverage;
}

// The rubber stamp. The alpha byte of a pixel is the smallest distance from the stroke so far, of
// which 256 is the stamp's radius.

constexpr int largestStampRadius = 10;

/// The columns, or rows, that a stamp touches.
class StampSpan {
  public:
    /// `centre` is at most largestCentre either way. `offset` leads to the source.
    StampSpan(double centre, int radius, short offset, short size) {
        const auto first = static_cast<int>(centre - radius);
        for (int place = first; place < centre + radius; ++place) {
            const double distance = centre - place;
            squares[count] = distance * distance;
            reaches[count] = StampReach(squares[count], radius);
            ++count;
        }
        FillPlaces(targets, first, size);
        FillPlaces(sources, first + offset, size);
    }

    static constexpr double largestCentre = 1e9;

    /// The end of the run of places from `start` on without a seam in targets or sources.
    int EndOfRun(int start) const {
        int end = start + 1;
        while (end < count && targets[end] == targets[end - 1] + 1 &&
               sources[end] == sources[end - 1] + 1) {
            ++end;
        }
        return end;
    }

    int count = 0;
    /// Squared distances from the centre.
    double squares[2 * largestStampRadius + 1];
    /// For StampRow.
    std::uint16_t reaches[2 * largestStampRadius + 1];
    short targets[2 * largestStampRadius + 1];
    short sources[2 * largestStampRadius + 1];

  private:
    void FillPlaces(short* places, int first, short size) const {
        int place = 0;
        for (int i = 0; i < count; ++i) {
            const auto coordinate = static_cast<short>(first + i);
            // Positions have 16 bits: the lowest follows the highest.
            const bool goesOn = i > 0 && coordinate != std::numeric_limits<short>::min();
            place = goesOn ? place + 1 : Wrap(coordinate, size);
            place = place == size ? 0 : place;
            places[i] = static_cast<short>(place);
        }
    }
};

/// False also for NaN.
bool IsInReach(double centre) {
    return std::fabs(centre) <= StampSpan::largestCentre;
}

}  // namespace

void PaintClass::MakeRoundBrush(short size) {
    Assert(size <= brushTableSide, "PaintClass6 / Zeile 42 !(radius <= 20)");
    const int radius = size / 2;
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j) {
            brushTable[i][j] = RoundCoverage(i - radius, j - radius, radius);
        }
    }
}

void PaintClass::MakeSquareBrush(short size) {
    Assert(size <= brushTableSide, "PaintClass6 / Zeile 60 !(radius <= 20)");
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j) {
            const bool isRim = i == 0 || j == 0 || i == size - 1 || j == size - 1;
            brushTable[i][j] = isRim ? 127 : 255;
        }
    }
}

void PaintClass::StampBrush(double x, double y, PaintClass* pic) {
    if (pic->clone == nullptr) {
        return;
    }
    // A larger size makes no table.
    const int radius = std::min<int>(pic->brushSize, brushTableSide) / 2;
    // Lifted by one tile, so that positions a little to the left of or above the tile are not
    // truncated the other way.
    const double centreX = pic->grX + x;
    const double centreY = pic->grY + y;
    short columns[brushTableSide];
    for (int i = 0; i < 2 * radius; ++i) {
        columns[i] = Wrap(TruncateToShort(i - radius + centreX), pic->grX);
    }
    const Pixel color = RasterColor(ForegroundOf(*pic));
    for (int j = 0; j < 2 * radius; ++j) {
        const short row = Wrap(TruncateToShort(j - radius + centreY), pic->grY);
        unsigned char* const pixels = pic->PixelAddress(0, row);
        const unsigned char* const before = pic->clone->PixelAddress(0, row);
        for (int i = 0; i < 2 * radius; ++i) {
            const int byte = columns[i] * bytesPerPixel;
            Cover(pixels + byte, before + byte, color, brushTable[i][j]);
        }
    }
}

void PaintClass::StampClone(double x, double y, PaintClass* pic) {
    // Above 20, which no dialog sets, a size counts as 20. A radius of 0 reaches no pixel.
    const int radius = std::min<int>(pic->stampSize / 2, largestStampRadius);
    const double centreX = pic->grX + x;
    const double centreY = pic->grY + y;
    if (pic->clone == nullptr || radius < 1 || !IsInReach(centreX) || !IsInReach(centreY)) {
        return;
    }
    const StampSpan columns(centreX, radius, pic->stampOffsetH, pic->grX);
    const StampSpan rows(centreY, radius, pic->stampOffsetV, pic->grY);
    const int firstEnd = columns.EndOfRun(0);
    // In this order: the source is the texture as the stamp itself has left it so far.
    for (int j = 0; j < rows.count; ++j) {
        unsigned char* const pixels = pic->PixelAddress(0, rows.targets[j]);
        const unsigned char* const before = pic->clone->PixelAddress(0, rows.targets[j]);
        const unsigned char* const sources = pic->PixelAddress(0, rows.sources[j]);
        for (int start = 0, end = firstEnd; start < columns.count; start = end) {
            end = start == 0 ? firstEnd : columns.EndOfRun(start);
            const int byte = columns.targets[start] * bytesPerPixel;
            StampPixels({pixels + byte, before + byte,
                         sources + columns.sources[start] * bytesPerPixel, end - start,
                         columns.squares + start, rows.squares[j], static_cast<double>(radius),
                         columns.reaches + start, rows.reaches[j]});
        }
    }
}

void PaintClass::PlotPixel(short x, short y, PaintClass* pic) {
    StorePixel(pic->PixelAddressWrapped(x, y), 0, RasterColor(ForegroundOf(*pic)));
}

void PaintClass::WalkLine(Point from, Point to, WalkCallback callback, PaintClass* pic) {
    const double dx = to.h - from.h;
    const double dy = to.v - from.v;
    // In 16 bits: a segment beyond them is a negative number of steps, and none at all.
    const short steps = TruncateToShort(std::sqrt(dx * dx + dy * dy));
    if (steps == 0) {
        callback(from.h, from.v, pic);
        return;
    }
    for (int i = 0; i <= steps; ++i) {
        callback(from.h + i * (dx / steps), from.v + i * (dy / steps), pic);
    }
}

void PaintClass::TraceLine(Point from, Point to, TraceCallback callback, PaintClass* pic) {
    const int width = std::abs(to.h - from.h);
    const int height = std::abs(to.v - from.v);
    const int signX = to.h > from.h ? 1 : -1;
    const int signY = to.v > from.v ? 1 : -1;
    const int major = std::max(width, height);
    const int minor = std::min(width, height);
    int error = 2 * minor - major;
    int j = 0;
    callback(from.h, from.v, pic);
    for (int i = 1; i <= major; ++i) {
        if (error > 0) {
            ++j;
            error += 2 * (minor - major);
        } else {
            error += 2 * minor;
        }
        const int dx = width > height ? i : j;
        const int dy = width > height ? j : i;
        callback(static_cast<short>(from.h + signX * dx), static_cast<short>(from.v + signY * dy),
                 pic);
    }
}

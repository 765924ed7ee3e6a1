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
#include "paint/kernels/StampDisc.h"
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

/// False also for NaN.
bool IsInReach(double centre) {
    return std::fabs(centre) <= largestStampCentre;
}

/// As previous centre, this far away from a stamp: none.
constexpr double nothingLeftOut = 4 * largestStampRadius;

template <typename Callback>
void ForEachStep(Point from, Point to, Callback callback) {
    const double dx = to.h - from.h;
    const double dy = to.v - from.v;
    // In 16 bits: a segment beyond them is a negative number of steps, and none at all.
    const short steps = TruncateToShort(std::sqrt(dx * dx + dy * dy));
    if (steps == 0) {
        callback(from.h, from.v);
        return;
    }
    for (int i = 0; i <= steps; ++i) {
        callback(from.h + i * (dx / steps), from.v + i * (dy / steps));
    }
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
    pic->LayStampAt(x, y, x + nothingLeftOut, y);
}

void PaintClass::LayStampAt(double x, double y, double previousX, double previousY) {
    // Above 20, which no dialog sets, a size counts as 20. A radius of 0 reaches no pixel.
    const int radius = std::min<int>(stampSize / 2, largestStampRadius);
    const double centreX = grX + x;
    const double centreY = grY + y;
    if (clone == nullptr || radius < 1 || !IsInReach(centreX) || !IsInReach(centreY)) {
        return;
    }
    LayStamp({PixelAddress(0, 0), clone->PixelAddress(0, 0), grX, grY, centreX, centreY,
              grX + previousX, grY + previousY, radius, stampOffsetH, stampOffsetV});
}

void PaintClass::StampLine(Point from, Point to, PaintClass* pic) {
    double previousX = from.h + nothingLeftOut;
    double previousY = from.v;
    ForEachStep(from, to, [&](double x, double y) {
        pic->LayStampAt(x, y, previousX, previousY);
        previousX = x;
        previousY = y;
    });
}

void PaintClass::PlotPixel(short x, short y, PaintClass* pic) {
    StorePixel(pic->PixelAddressWrapped(x, y), 0, RasterColor(ForegroundOf(*pic)));
}

void PaintClass::WalkLine(Point from, Point to, WalkCallback callback, PaintClass* pic) {
    ForEachStep(from, to, [=](double x, double y) { callback(x, y, pic); });
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

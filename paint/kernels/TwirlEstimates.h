// Colours between pixels by integers, for the disc of a twirl, on processors with AVX2.
//
// A twirl reads each pixel's colour at the place (cx + x, cy + y), where (cx, cy) is the twirl's
// centre and (x, y) an offset that all twirls of a run share. GetPixelInterpolated defines the
// colour: four times a channel is
//
//     (1 - fy) (A + B) + (C + D) fy + (1 - fx) (A + C) + (B + D) fx
//       = A + B + C + D + (D - A) (fx + fy - 1) + (B - C) (fx - fy)
//
// with the pixels A B above C D around the place and its fractions fx and fy. Only the integer part
// of a quarter of it counts. The estimates compute the sum in integers and tell where the roundings
// of the doubles, or their own, might lead to another integer part.
//
// Two kinds of sources differ in what is to be known of them:
//
// - Turned sources lie anywhere between pixels. Their fractions are known to 16 bits.
// - Still sources are their own pixels but for the roundings of sine and cosine: where the twist is
//   below one degree, some 40 % of a disc. Whether such a place is rounded to the pixel, or lies a
//   trillionth beside it in another cell, depends on the centre.
//
// docs/exactness.md has the bounds.
#pragma once

#include <cstdint>

#include "raster/PicClass.h"

/// The largest radius whose sources have codes.
constexpr int largestEstimatedRadius = 362;

/// True on processors that have the estimates. Elsewhere ReadTurned and ReadStill must not be
/// called.
bool HasTwirlEstimates();

/// A source as the estimates know it: each number holds 16 bits for x and, above them, for y.
struct SourceCode {
    /// The upper left pixel around the offset, from (-radius, -radius) on. 0 for a still source.
    std::uint32_t cell;
    /// Turned: fx + fy - 1 and fx - fy in units of 2^-15, or `onlyExact`.
    /// Still: the way from the pixel to the offset in units of 2^-52.
    std::uint32_t fraction;
};

/// Units of the ways of still sources, as parts of a pixel: 2 to the 52nd.
constexpr double stillUnit = 4503599627370496.0;

/// The fraction of sources that are left to the exact path.
constexpr std::uint32_t onlyExact = 0x80008000;

/// Returns the code of any offset, both parts of which are between -radius and radius.
SourceCode TurnedSource(double x, double y, int radius);
/// Makes the code of an offset that is (dx, dy) but for roundings. False if it is none.
bool StillSource(double x, double y, int dx, int dy, SourceCode* code);

/// The offset of a still source from its code, to the bit.
inline void StillPlace(std::uint32_t fraction, int dx, int dy, double* x, double* y) {
    constexpr double unit = 1 / stillUnit;
    *x = dx + static_cast<std::int16_t>(fraction & 0xFFFF) * unit;
    *y = dy + static_cast<std::int16_t>(fraction >> 16) * unit;
}

/// The codes of a run of pixels in a row.
struct SourceRun {
    const std::uint32_t* cells;
    const std::uint32_t* fractions;
    /// The number of the first pixel in its row, and how many there are.
    int first;
    int count;
};

/// The numbers of pixels of a row that only the exact path can decide. A pixel can be in it twice.
struct UndecidedPixels {
    /// A row's pixels, in three runs of which each reads up to 7 twice, and a group that is written
    /// and not counted.
    std::int32_t numbers[2 * largestEstimatedRadius + 3 * 7 + 8];
    int count = 0;
};

/// The tile around a centre: 2 radius + 1 rows of `columns` pixels, the first at (cx - radius,
/// cy - radius).
struct DiscWindow {
    const Pixel* pixels;
    int columns;
    int radius;
    int cx;
    int cy;
};

/// Limits of short ways from a whole coordinate, in units of 2^-52, between which the roundings of
/// doubles lead back to it. 16 bits are used of each.
struct RoundingLimits {
    /// A way below it leads to a place below the coordinate,
    std::int32_t low;
    /// one above it to a place above; any other is rounded away.
    std::int32_t high;
    /// All bits are set for a coordinate above 0.
    std::int32_t isPositive;
};

RoundingLimits LimitsAt(int coordinate);

/// For each column of a disc, from dx = -radius on, its RoundingLimits.
struct ColumnLimits {
    void Place(int cx, int radius);

    std::int32_t low[2 * largestEstimatedRadius + 1];
    std::int32_t high[2 * largestEstimatedRadius + 1];
    std::int32_t isPositive[2 * largestEstimatedRadius + 1];
};

/// Both write the colours of the run, with the alpha byte 0, to the pixels out[run.first] and so
/// on, and list those that they cannot decide, whatever is written there. `run` has 8 pixels or
/// more.
void ReadTurned(const DiscWindow& window, const SourceRun& run, Pixel* out,
                UndecidedPixels* undecided);
/// `left` is the dx of the row's pixel 0.
void ReadStill(const DiscWindow& window, const ColumnLimits& limits, int dy, int left,
               const SourceRun& run, Pixel* out, UndecidedPixels* undecided);
constexpr int shortestEstimatedRun = 8;

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
// of the doubles, or their own, might lead to another integer part: those few pixels take the exact
// path, in doubles.
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

#include <cstddef>
#include <cstdint>

#include "raster/PicClass.h"

/// The largest radius whose sources have codes.
constexpr int largestEstimatedRadius = 362;

/// Pixels that are estimated at a time.
constexpr int estimatedGroup = 8;

/// True on processors that have the estimates. Elsewhere none of the functions that read must be
/// called.
bool HasTwirlEstimates();

/// A pixel of the square around a disc: its column, from dx = -radius on, in the lower 16 bits and
/// its row above them.
using Spot = std::uint32_t;

constexpr Spot SpotAt(int column, int row) {
    return static_cast<Spot>(column & 0xFFFF) | static_cast<Spot>(row) << 16;
}

/// A turned source as the estimates know it.
struct SourceCode {
    /// The upper left pixel around the offset.
    Spot cell;
    /// fx + fy - 1 in the lower 16 bits and fx - fy above them, in units of 2^-15.
    std::uint32_t fraction;
};

/// Makes the code of any offset, both parts of which are between -radius and radius. False if only
/// the exact path can decide its colour. Then the code leads to some pixel of the square.
bool TurnedSource(double x, double y, int radius, SourceCode* code);

/// The codes of the sources of eight neighbours in a row: one line of a cache.
struct TurnedGroup {
    Spot cells[estimatedGroup];
    std::uint32_t fractions[estimatedGroup];
};

/// Units of the ways of still sources, as parts of a pixel: 2 to the 52nd.
constexpr double stillUnit = 4503599627370496.0;

/// Makes the code of an offset that is (dx, dy) but for roundings: the way to it in units of 2^-52,
/// across in the lower 16 bits and down above them. False if it is none.
bool StillSource(double x, double y, int dx, int dy, std::uint32_t* way);

/// Two pictures of one shape: the twirl reads one of them and writes the other. Both hold the
/// disc's square around the torus of `columns` by `rows` pixels.
struct TwirlPlanes {
    /// The largest side. A pixel's number takes two factors of 15 bits.
    static constexpr int sideLimit = 16383;

    /// The pixel (0, 0). Each row of `from` goes on with its first pixel, and its last one is found
    /// before it; below the last row is the first one again. A square that does not wrap needs
    /// none of these.
    const Pixel* from;
    Pixel* to;
    /// Pixels from a row to the next, below 2^15.
    int pitch;
    /// Both are at least 2 radius.
    int columns;
    int rows;
    /// The square's upper left pixel.
    int left;
    int top;
    int radius;
    /// The twirl's centre, which decides how the places are rounded.
    int cx;
    int cy;
};

/// Pixels that only the exact path can decide. A pixel can be in it twice.
struct UndecidedSpots {
    static constexpr int fullSize = 1024;

    bool IsFull() const { return count >= fullSize; }

    /// The room of one that is nearly full: a row's pixels and the last group again, and a group
    /// that is written and not counted.
    static constexpr int capacity = fullSize + 2 * largestEstimatedRadius + 4 * estimatedGroup;

    Spot spots[capacity];
    int count = 0;
};

/// The same of still sources, with their ways.
struct UndecidedStill : UndecidedSpots {
    std::uint32_t ways[capacity];
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

/// For each column of a disc, from dx = -radius on, its RoundingLimits, in the upper 16 bits.
struct ColumnLimits {
    void Place(int cx, int radius);

    std::int32_t low[2 * largestEstimatedRadius + 1];
    std::int32_t high[2 * largestEstimatedRadius + 1];
    std::int32_t isPositive[2 * largestEstimatedRadius + 1];
};

// All of these write colours with the alpha byte 0. The first two list the pixels that they cannot
// decide, whatever is written there.

/// Most groups that ReadTurned takes.
constexpr int mostTurnedGroups = 32;

/// `spots` has the first pixel of each group, and may be read up to 7 groups further.
void ReadTurned(const TwirlPlanes& planes, const TurnedGroup* groups, const Spot* spots, int count,
                UndecidedSpots* undecided);
/// Reads a run of pixels of a row from `first` on, 8 or more, that does not wrap. `ways` are
/// theirs.
void ReadStill(const TwirlPlanes& planes, const ColumnLimits& limits, Spot first,
               const std::uint32_t* ways, int count, UndecidedStill* undecided);

/// The sources of all pixels of the square, each row's offsets across and after them those down.
struct SpotPlaces {
    const double* values;
    /// Pixels of a row.
    int rowSize;
};

/// Loads the places of the listed pixels from `first` on into the processor's cache: they lie far
/// from each other.
void PrefetchPlaces(const SpotPlaces& places, const UndecidedSpots& undecided, int first);

// The exact path.

/// Reads pixels whose sources are at the offsets (x, y). Up to three more of each array are read:
/// if `count` is no multiple of four, they must be pixels of the disc, too.
void ReadPlaces(const TwirlPlanes& planes, const Spot* spots, const double* x, const double* y,
                int count);
/// Both read the listed pixels, and empty the list.
void ReadTurnedExactly(const TwirlPlanes& planes, const SpotPlaces& places,
                       UndecidedSpots* undecided);
void ReadStillExactly(const TwirlPlanes& planes, UndecidedStill* undecided);

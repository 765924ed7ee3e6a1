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
// docs/exactness.md has the bounds. TwirlCodes makes the sources' codes; TwirlTurned, TwirlStill
// and TwirlExact have a kernel each.
#pragma once

#include <cstdint>

#include "paint/kernels/TwirlCodes.h"
#include "raster/PicClass.h"

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

// All of these need AVX2 (HasAvx2 in Dispatch.h), and write colours with the alpha byte 0. The
// first two list the pixels that they cannot decide, whatever is written there.

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

// The codes of a twirl's sources, in integers, for TwirlEstimates: offsets from the centre, which
// all twirls of a run share, and the limits of roundings, which each centre has of its own.
#pragma once

#include <cstdint>

/// The largest radius whose sources have codes.
constexpr int largestEstimatedRadius = 362;

/// Pixels that are estimated at a time.
constexpr int estimatedGroup = 8;

/// Two numbers of 16 bits.
constexpr std::uint32_t Halves(int low, int high) {
    return static_cast<std::uint32_t>(low & 0xFFFF) | static_cast<std::uint32_t>(high) << 16;
}

/// A pixel of the square around a disc: its column, from dx = -radius on, in the lower 16 bits and
/// its row above them.
using Spot = std::uint32_t;

constexpr Spot SpotAt(int column, int row) {
    return Halves(column, row);
}

// Turned sources lie anywhere between pixels.

/// Bits after the point of a turned source's fractions.
constexpr int fractionBits = 15;

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

// Still sources are their own pixels but for a way, the roundings of sine and cosine.

/// Units of the ways of still sources, as parts of a pixel: 2 to the 52nd.
constexpr double stillUnit = 4503599627370496.0;

/// Makes the code of an offset that is (dx, dy) but for roundings: the way to it in units of 2^-52,
/// across in the lower 16 bits and down above them. False if it is none.
bool StillSource(double x, double y, int dx, int dy, std::uint32_t* way);

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

/// The same as they are compared with ways in the upper halves of 32 bits. The lower ones, which
/// have no meaning, make no way greater than the limit.
constexpr RoundingLimits InUpperHalves(const RoundingLimits& limits) {
    return {limits.low * 65536, limits.high * 65536 + 65535, limits.isPositive};
}

/// For each column of a disc, from dx = -radius on, its RoundingLimits, in the upper halves.
struct ColumnLimits {
    /// Sets those of a disc around a centre in column `cx`.
    void Place(int cx, int radius);

    std::int32_t low[2 * largestEstimatedRadius + 1];
    std::int32_t high[2 * largestEstimatedRadius + 1];
    std::int32_t isPositive[2 * largestEstimatedRadius + 1];
};

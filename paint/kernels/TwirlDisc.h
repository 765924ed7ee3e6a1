// The sources of a twirl's disc, and their colours.
//
// Where the pixels come from is the same for all twirls of a run but for the centre, so the places
// are computed once. The colour between pixels is defined by GetPixelInterpolated: the exact path,
// in doubles. On processors with AVX2 most colours are decided by integers (TwirlEstimates), and
// only what these leave open takes the exact path, so the colours are the same to the bit.
#pragma once

#include <cstdint>
#include <optional>

#include "paint/kernels/TileWindow.h"
#include "paint/kernels/TwirlEstimates.h"
#include "raster/HandleArray.h"

/// The pixels within the radius: rows dy = 1 - radius to radius - 1 of the columns
/// dx = -HalfWidth(dy) to HalfWidth(dy).
class TwirlDisc {
  public:
    /// `newRadius` is 0 or more, `newQuotient` what turns a distance from the rim into a twist.
    TwirlDisc(short newRadius, double newQuotient);

    /// True if there was no memory.
    bool Failed() const { return places.Failed(); }

    int Radius() const { return radius; }
    int HalfWidth(int dy) const;

    /// The sources of row dy of a twirl around (cx, cy).
    Positions Row(int dy, int cx, int cy);

    /// Whether Write may be called: not for large discs, without memory, or on processors that have
    /// no estimates.
    bool CanWrite() const { return hasCodes; }
    /// Writes all pixels of the disc, with the alpha byte 0. The planes' radius is the disc's.
    void Write(const TwirlPlanes& planes) const;

  private:
    /// The largest radius whose whole table is kept: half the side of a tile of 724 by 724 pixels.
    /// Its table takes 13 MB. A larger radius computes each row when it is needed.
    static constexpr int largestKept = largestEstimatedRadius;

    /// The columns of the square, from dx = -radius on, that are in a row of the disc, and those
    /// among them that are turned. The others are still.
    struct RowParts {
        int first;
        int firstTurned;
        int endTurned;
        int end;
    };

    std::size_t RowNumber(int dy) const;
    double* RowPlaces(int dy) const;
    std::uint32_t* RowWays(int dy) const { return ways.Values() + RowNumber(dy) * rowSize; }

    /// The common properties of the pixels (dx, dy) and (dx, -dy): their distance from the centre,
    /// their twist in radians, and the arc that makes their angle.
    struct Polar {
        double distance;
        double twist;
        double arc;
    };

    void ComputeRows(int dy);
    void ComputeRow(int dy);
    Polar PolarOf(int dx, int dy) const;
    void Rotate(const Polar& polar, int dx, int dy) const;
    void Encode();
    RowParts EncodeStill(int dy);
    int CountGroups() const;
    template <typename Take>
    void ForEachUncoded(Take take) const;
    bool ListUncoded();
    bool AllocateGroups();
    void EncodeTurned();
    void EncodeStrip(int strip);
    void EncodeGroup(int row, int column);
    SpotPlaces Places() const { return {places.Values(), static_cast<int>(rowSize)}; }

    void WriteStill(const TwirlPlanes& planes) const;
    void WriteTurned(const TwirlPlanes& planes) const;

    int radius;
    double quotient;
    bool keepsAll;
    /// Pixels of a row of the square around the disc.
    std::size_t rowSize;
    /// For each row of the square its sources across, then down.
    HandleArray<double> places;

    // The codes, if there are any.

    bool hasCodes = false;
    /// For each row of the disc.
    HandleArray<RowParts> parts;
    /// For each pixel of the square the way of its still source.
    HandleArray<std::uint32_t> ways;
    /// The turned sources in strips, and the first pixel of each group.
    std::optional<HandleArray<TurnedGroup>> groups;
    std::optional<HandleArray<Spot>> groupSpots;
    int groupCount = 0;
    /// The turned sources without a code, the last of them up to four times: where they are used
    /// and their offsets across and down.
    std::optional<HandleArray<Spot>> uncodedSpots;
    std::optional<HandleArray<double>> uncodedX;
    std::optional<HandleArray<double>> uncodedY;
    int uncodedCount = 0;
};

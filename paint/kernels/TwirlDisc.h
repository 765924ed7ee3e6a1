// The colours of a twirl's disc, a row at a time.
//
// Where the pixels come from is the same for all twirls of a run but for the centre, so the places
// are computed once. The colour between pixels is defined by GetPixelInterpolated: the exact path,
// in doubles. On processors with AVX2 most colours are decided by integers (TwirlEstimates), and
// only what these leave open takes the exact path, so the colours are the same to the bit.
#pragma once

#include <cstdint>

#include "paint/kernels/TileWindow.h"
#include "paint/kernels/TwirlEstimates.h"
#include "raster/HandleArray.h"

/// The pixels within the radius are kept by rows from dy = 1 - radius to radius - 1, which hold the
/// columns dx = -HalfWidth(dy) to HalfWidth(dy).
class TwirlDisc {
  public:
    /// `newRadius` is 0 or more, `newQuotient` what turns a distance from the rim into a twist.
    TwirlDisc(short newRadius, double newQuotient);

    /// True if there was no memory.
    bool Failed() const { return places.Failed(); }

    int HalfWidth(int dy) const;

    /// The sources of row dy of a twirl around (cx, cy).
    Positions Row(int dy, int cx, int cy);

    /// Selects the twirl around (newCx, newCy) for ReadRow. Copies what it reads of the tile to
    /// `newWindow`, a square of 2 radius + 1 pixels, which is borrowed until the next call.
    void Place(const PicClass& tile, int newCx, int newCy, TileWindow& newWindow);
    /// Writes the colours of row dy, with the alpha byte 0, to 2 HalfWidth(dy) + 1 pixels.
    void ReadRow(int dy, Pixel* out);

  private:
    /// The largest radius whose whole table is kept: half the side of a tile of 724 by 724 pixels.
    /// Its table takes 12 MB. A larger radius computes each row when it is needed.
    static constexpr int largestKept = largestEstimatedRadius;

    /// The numbers of a row's pixels that are turned; those before and after it are still.
    struct TurnedPart {
        int first;
        int end;
    };

    std::size_t RowNumber(int dy) const;
    double* RowPlaces(int dy) const;
    std::uint32_t* RowCells(int dy) const;
    std::uint32_t* RowFractions(int dy) const { return RowCells(dy) + rowSize; }
    bool HasCodes() const { return keepsAll && !codes.Failed() && !parts.Failed(); }

    void ComputeRow(int dy);
    void Rotate(int dx, int dy, double* x, double* y) const;
    void EncodeRow(int dy);
    DiscWindow Window() const;
    SourceRun Run(int dy, int first, int end) const;
    void ReadStillRun(int dy, int first, int end, Pixel* out, UndecidedPixels* undecided) const;
    void ReadTurnedRun(int dy, int first, int end, Pixel* out, UndecidedPixels* undecided) const;
    /// The exact path for the pixels of row dy from `first` to before `end`.
    void ReadRunExactly(int dy, int first, int end, Pixel* out) const;
    /// The offsets of the sources of some pixels of row dy.
    void PlacesOf(int dy, const std::int32_t* pixels, int count, double* x, double* y) const;
    void ReadExactly(int dy, UndecidedPixels* pixels, Pixel* out) const;

    int radius;
    double quotient;
    bool keepsAll;
    /// Pixels of the longest row.
    std::size_t rowSize;
    /// For each row its sources across, then down.
    HandleArray<double> places;
    /// For each row its cells, then its fractions.
    HandleArray<std::uint32_t> codes;
    HandleArray<TurnedPart> parts;
    ColumnLimits limits;
    int cx = 0;
    int cy = 0;
    const TileWindow* window = nullptr;
};

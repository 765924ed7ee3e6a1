// One row of a rubber stamp, several pixels at a time.
#pragma once

#include <cstdint>

/// One row of a stamp without a seam.
struct StampRow {
    /// The texture's pixels that the stamp touches; the same of the texture before the stroke; and
    /// those that are copied, which may be the same pixels or overlap them. `count` of each.
    unsigned char* pixels;
    const unsigned char* before;
    const unsigned char* sources;
    int count;
    /// Squared distances from the centre, in pixels: those of the columns, and the row's, which
    /// comes to each.
    const double* columnSquares;
    double rowSquare;
    double radius;
    /// The same as StampReach has them.
    const std::uint16_t* columnReach;
    std::uint16_t rowReach;
};

/// A squared distance by which pixels are left out before anything is computed for them: in 256ths
/// of the radius, rounded down by more than the roundings of the distances. A distance is not
/// below an alpha byte whose square is not above the sum of its column's and its row's.
std::uint16_t StampReach(double square, double radius);

/// Mixes each source with what was there before the stroke, where the stroke comes nearer: where
/// the distance, of which 256 is the radius, is below the pixel's alpha byte, which it then
/// becomes. One pixel after the other, as a source may be a pixel that the stamp has just written.
void StampPixels(const StampRow& row);

// One row of a rubber stamp, several pixels at a time.
#pragma once

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
};

/// Mixes each source with what was there before the stroke, where the stroke comes nearer: where
/// the distance, of which 256 is the radius, is below the pixel's alpha byte, which it then
/// becomes. One pixel after the other, as a source may be a pixel that the stamp has just written.
void StampPixels(const StampRow& row);

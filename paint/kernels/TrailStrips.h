// Short trails that cross the rows, summed in strips of columns that lean with the trails: every
// pixel is read and widened once, and the sums of all trails that meet it stay in registers.
#pragma once

#include <cstddef>

/// The columns of a strip.
constexpr int stripColumns = 4;

/// A tile whose trails run down its rows, or the rest of one from some row on.
struct TrailTile {
    /// Row 0, and the bytes from each row to the next: negative where the trails go upwards.
    unsigned char* pixels;
    std::ptrdiff_t rowStep;
    int width;
    int height;
    /// -1, 0 or 1: the columns that a trail moves by in each row.
    int lean;
    /// Copies of the `length` - 1 rows that follow the last one, or of all if they are fewer and
    /// follow it again and again, one after the other.
    const unsigned char* nextRows;
    /// The weight of each place of a trail, stripColumns times over.
    const double* weights;
    int length;
};

/// The longest trails that SumTrailStrips takes.
constexpr int longestStripTrail = 6;

/// Replaces the pixels of the strip that begins at column `first` of row 0 by the weighted sums of
/// those from them along their trails, in their order, each channel truncated, with the alpha byte
/// of the trail's last. Every stripColumns-th column from 0 on begins a strip; no strip reads what
/// another one writes. For trails of 2 to longestStripTrail pixels.
void SumTrailStrip(const TrailTile& tile, int first);

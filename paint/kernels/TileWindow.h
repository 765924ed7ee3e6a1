// A copy of a part of the tile, which the distortions read between pixels while they write the
// tile itself.
#pragma once

#include "raster/HandleArray.h"
#include "raster/PicClass.h"

/// Places between pixels: sums of an origin and an offset for each.
struct Positions {
    double originX;
    double originY;
    const double* x;
    const double* y;
    int count;
};

class TileWindow {
  public:
    /// The sides of the largest window.
    static constexpr int sideLimit = 32767;

    /// Room for `newColumns` by `newRows` pixels, which may be more than the tile has.
    TileWindow(int newColumns, int newRows);

    /// True if there was no memory, or a side is out of range.
    bool Failed() const { return pixels == nullptr; }

    /// Copies the part of the torus whose top left pixel is at (newLeft, newTop).
    void Copy(const PicClass& tile, int newLeft, int newTop);
    /// The same in parts: first the place, then pixels of a row of the window.
    void MoveTo(int newLeft, int newTop) {
        left = newLeft;
        top = newTop;
    }
    void CopyRow(const PicClass& tile, int row, int first, int count);

    int Columns() const { return columns; }
    /// The pixels of the window's row `row`, 0 to `newRows` - 1.
    const Pixel* Row(int row) const { return pixels + static_cast<std::ptrdiff_t>(row) * columns; }
    Pixel* Row(int row) { return pixels + static_cast<std::ptrdiff_t>(row) * columns; }

    // Both write the colour that GetPixelInterpolated gives at each position, to the bit, and the
    // alpha byte 0. `out` takes `positions.count` pixels and must not lie in the window.

    /// The four pixels around each position must lie in the window.
    void Read(const Positions& positions, unsigned char* out) const;
    /// For a window at (0, 0) that has one column and one row more than the tile: any positions
    /// around the torus, below 32767 in size.
    void ReadWrapped(const Positions& positions, unsigned char* out) const;

  private:
    int columns;
    int rows;
    int left = 0;
    int top = 0;
    HandleArray<Pixel> block;
    /// Null for a window that failed.
    Pixel* pixels = nullptr;
};

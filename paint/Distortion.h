// Shared by Waves, Twirls and Skew: the sources of a run of pixels, and the ways to read them.
//
// Each distortion reads the tile as it was between its pixels, through a window if there is memory
// for one, else through the clone, and writes the tile in place.
#pragma once

#include "paint/PaintClass.h"
#include "paint/kernels/TileWindow.h"
#include "raster/HandleArray.h"

/// Pixels that are read and written at a time, so that they stay in the processor's cache.
constexpr int distortionChunk = 128;

/// For each column its number and how far down or up its pixels are moved, in pixels.
class ColumnTable {
  public:
    /// No column is moved.
    explicit ColumnTable(short width);

    /// True if there was no memory. Then there are no values.
    bool Failed() const { return values.Failed(); }

    double Shift(int column) const { return shifts[column]; }
    void SetShift(int column, double shift) { shifts[column] = shift; }

    /// The sources of `count` pixels of row `y` from column `first` on, where the row is moved
    /// sideways by `rowShift`, and each column down by its own shift.
    Positions PartOfRow(double rowShift, short y, int first, int count) const;

  private:
    HandleArray<double> values;
    double* numbers = nullptr;
    double* shifts = nullptr;
};

/// A window over the whole tile, with the right and lower neighbours of its last pixels.
class WholeTile : public TileWindow {
  public:
    explicit WholeTile(const PicClass& tile);
};

/// Keeps the tile in the clone, for positions that no window can read. False without memory.
bool KeepInClone(PaintClass& pic);
/// Reads between the clone's pixels through its accessor. The alpha bytes become 0.
void ReadOneByOne(const PicClass& clone, const Positions& positions, unsigned char* out);
/// Copies the clone's pixel at each truncated position, all 32 bits.
void WriteNearest(const PicClass& clone, const Positions& positions, unsigned char* row);

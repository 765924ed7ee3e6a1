// The scaled copy of the texture that the drawing area shows at any zoom but 1.
//
// Nearest neighbour in both directions, without smoothing: target pixel (i, j) is the source pixel
// (trunc(i * (sw / dw)), trunc(j * (sh / dh))). One copy is kept from draw to draw, so the repeats
// of one pass cost one scaling.
#pragma once

#include "hostapi/Suites.h"
#include "raster/HostBuffer.h"
#include "raster/PicClass.h"

class ScaledCopy {
  public:
    /// The tile's size on the screen, and how often it is repeated in the copy; all at least 1.
    struct Size {
        int width;
        int height;
        int columns = 1;
        int rows = 1;
    };

    /// Forgets the copy, since the texture may have changed. Its block is kept for the next one of
    /// the same size: a stroke makes one at every poll of the mouse.
    void Discard();
    /// Gives the block back, too.
    void Free();
    /// Makes a copy of that size, unless there is one. False without memory; there is no copy then.
    bool Make(const PicClass& pic, const Size& size);
    /// Makes a copy of the part alone, which may reach over the edges of the tile into its repeats:
    /// its corner is one tile at most above and to the left of the tile's. A block that is larger
    /// is kept. `size` is the tile's; its repeats count no more than the part. As Make.
    bool MakePart(const PicClass& pic, const Size& size, const hostapi::VRect& part);
    /// Describes the copy for the host; valid until the next Make or Discard. Three bytes a pixel,
    /// red, green, blue, without gaps.
    const hostapi::PSPixelMap& Map() const { return map; }

  private:
    bool Fill(const PicClass& pic, const Size& size, const hostapi::VRect& part);
    bool Allocate(int width, int height);

    hostapi::PSPixelMap map{};
    HostBuffer buffer;
};

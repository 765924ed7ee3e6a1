// A tile that twirls are made on, one after the other.
//
// Each twirl reads the tile as the one before it left it. So there are two copies of the tile, of
// which a twirl reads one and writes the other: nothing but what the last two discs changed is
// copied between them.
#pragma once

#include "paint/kernels/TwirlDisc.h"
#include "raster/HandleArray.h"
#include "raster/PicClass.h"

class TwirlTorus {
  public:
    /// True if no disc of this radius overlaps itself around the tile, and the sides are not above
    /// the estimates' limit.
    static bool Fits(const PicClass& tile, int radius);

    /// Copies the tile.
    explicit TwirlTorus(const PicClass& tile);

    /// True if there was no memory.
    bool Failed() const { return first.Failed() || second.Failed(); }

    /// Turns the disc around (cx, cy), a pixel of the tile, which stays what it was. The disc must
    /// be able to write, and fit.
    void Twirl(const TwirlDisc& disc, int cx, int cy);

    /// Copies the pixels to the tile, or another of its size.
    void CopyTo(PicClass& tile) const;

  private:
    /// Pixels of a row, which can go on around the torus.
    struct Span {
        int first;
        int count;
    };

    /// The pixels that a twirl writes; none without a disc.
    struct Written {
        const TwirlDisc* disc;
        int cx;
        int cy;
    };

    /// `start` is the pixel (0, 0) of a copy.
    Pixel* Row(Pixel* start, int y) const { return start + static_cast<std::ptrdiff_t>(y) * pitch; }

    Span SpanOf(const Written& written, int y) const;
    void CopyRest(const Written& next);
    void CopyAround(int y, Span span);
    void RepeatEdges(Pixel* start) const;

    int columns;
    int rows;
    int pitch;
    /// Each row has a pixel before it and one after it, and there is a row below the last.
    HandleArray<Pixel> first;
    HandleArray<Pixel> second;
    /// The pixel (0, 0) of each copy.
    Pixel* from = nullptr;
    Pixel* to = nullptr;
    Written last = {nullptr, 0, 0};
};

// The paint tools: the fill. The alpha byte of a pixel tells whether the region has reached it.
#include <cstdlib>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/PaintColors.h"
#include "paint/kernels/PixelBytes.h"
#include "raster/HandleArray.h"

using hostapi::Point;

namespace {

constexpr unsigned char reached = 0;
constexpr unsigned char notReached = 255;

/// Wraps any 16-bit coordinate by a table: the fill visits places in no order, and a division for
/// each would take most of its time.
class WrapTable {
  public:
    explicit WrapTable(short size) : places(count) {
        std::uint16_t place = static_cast<std::uint16_t>(Wrap(lowest, size));
        for (int coordinate = lowest; coordinate < -lowest && !Failed(); ++coordinate) {
            places.Values()[static_cast<std::uint16_t>(coordinate)] = place;
            ++place;
            place = place == size ? std::uint16_t{0} : place;
        }
    }

    /// True if there was no memory.
    bool Failed() const { return places.Failed(); }

    int operator[](short coordinate) const {
        return places.Values()[static_cast<std::uint16_t>(coordinate)];
    }

  private:
    static constexpr int lowest = -32768;
    static constexpr std::size_t count = 65536;

    HandleArray<std::uint16_t> places;
};

/// Grows a region of similar colour in rings, one queue entry for each of its pixels.
class FloodRegion {
  public:
    explicit FloodRegion(PaintClass& newPic)
        : pic(newPic),
          columns(pic.grX),
          rows(pic.grY),
          capacity(static_cast<std::size_t>(pic.grX) * static_cast<std::size_t>(pic.grY) +
                   spareEntries),
          queue(capacity) {}

    /// True if there was no memory.
    bool Failed() const { return columns.Failed() || rows.Failed() || queue.Failed(); }

    void Grow(Point start, short newThreshold) {
        threshold = newThreshold;
        paint = RasterColor(ForegroundOf(pic));
        unsigned char* const first = At(start.h, start.v);
        seed = LoadPixel(first, 0);
        Take(first, start);
        for (std::size_t next = 0; next < end; ++next) {
            Assert(end + 18 < capacity,
                   "PaintClass6 / Zeile 810 !((pos + 18) < (size / sizeof (Point)))");
            const Point place = queue.Values()[next];
            Visit(static_cast<short>(place.h + 1), place.v);
            Visit(static_cast<short>(place.h - 1), place.v);
            Visit(place.h, static_cast<short>(place.v + 1));
            Visit(place.h, static_cast<short>(place.v - 1));
        }
    }

  private:
    static constexpr std::size_t spareEntries = 19;

    unsigned char* At(short x, short y) const {
        return pic.Base() + rows[y] * pic.RowBytes() + columns[x] * bytesPerPixel;
    }

    /// The place is queued unwrapped: where its 16 bits overflow makes a difference.
    void Visit(short x, short y) {
        unsigned char* const pixel = At(x, y);
        if (pixel[3] == notReached && IsSimilar(LoadPixel(pixel, 0))) {
            Take(pixel, {.v = y, .h = x});
        }
    }

    bool IsSimilar(Pixel pixel) const {
        return std::abs(RedOf(pixel) - RedOf(seed)) + std::abs(GreenOf(pixel) - GreenOf(seed)) +
                   std::abs(BlueOf(pixel) - BlueOf(seed)) <=
               threshold;
    }

    void Take(unsigned char* pixel, Point place) {
        StorePixel(pixel, 0, paint | Pixel{reached} << 24);
        queue.Values()[end++] = place;
    }

    PaintClass& pic;
    WrapTable columns;
    WrapTable rows;
    /// Entries of the queue.
    std::size_t capacity;
    HandleArray<Point> queue;
    std::size_t end = 0;
    /// The colour at the start, and how far a colour may be from it.
    Pixel seed = 0;
    short threshold = 0;
    Pixel paint = 0;
};

/// A row of pixels with the rows above and below it.
struct Neighbourhood {
    const unsigned char* above;
    unsigned char* row;
    const unsigned char* below;

    /// Not 0 if the region has not reached one of the three pixels of the column.
    Pixel OpenAt(int x) const {
        return (LoadPixel(above, x) | LoadPixel(row, x) | LoadPixel(below, x)) & alphaMask;
    }

    /// The pixel becomes a mix of the eight around it.
    void Mix(int left, int x, int right) const {
        for (int c = 0; c < 3; ++c) {
            const int l = left * bytesPerPixel + c;
            const int m = x * bytesPerPixel + c;
            const int r = right * bytesPerPixel + c;
            row[m] = static_cast<unsigned char>(0.17 * (above[m] + row[l] + row[r] + below[m]) +
                                                0.08 * (above[l] + above[r] + below[l] + below[r]));
        }
    }
};

void SoftenContourRow(const Neighbourhood& rows, int width) {
    Pixel openLeft = rows.OpenAt(width - 1);
    Pixel openHere = rows.OpenAt(0);
    for (int x = 0; x < width; ++x) {
        const int right = x + 1 == width ? 0 : x + 1;
        const Pixel openRight = rows.OpenAt(right);
        if ((openLeft | openHere | openRight) != 0 &&
            rows.row[x * bytesPerPixel + 3] != notReached) {
            rows.Mix(x == 0 ? width - 1 : x - 1, x, right);
        }
        openLeft = openHere;
        openHere = openRight;
    }
}

/// In place: the pixels after a mixed pixel read its new colour.
void SoftenContour(PaintClass& pic) {
    for (short y = 0; y < pic.grY; ++y) {
        const Neighbourhood rows{pic.PixelAddress(0, Wrap(y - 1, pic.grY)), pic.PixelAddress(0, y),
                                 pic.PixelAddress(0, Wrap(y + 1, pic.grY))};
        SoftenContourRow(rows, pic.grX);
    }
}

}  // namespace

bool PaintClass::FloodFill(Point start) {
    const CursorClass cursor;
    SetAllAlpha(notReached);
    FloodRegion region(*this);
    if (region.Failed()) {
        return false;
    }
    region.Grow(start, static_cast<short>(fillTolerance * 255 / 100));
    if (fillAntiAlias == 1) {
        SoftenContour(*this);
    }
    Unlock();
    SetDirty();
    return true;
}

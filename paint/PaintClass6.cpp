// The paint tools: what a stroke lays down along its path, the fill and the gradient.
//
// Positions lie anywhere; each becomes a pixel by truncation, by its low 16 bits and then around
// the torus.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/PixelBytes.h"
#include "raster/HandleClass.h"
#include "raster/Truncation.h"

using hostapi::Point;

unsigned char brushTable[brushTableSide][brushTableSide];

namespace {

/// The colour as the raster has it, with the alpha byte 0.
Pixel RasterColor(const RGBColor16& color) {
    return WithColor(0, HighByte(color.red), HighByte(color.green), HighByte(color.blue));
}

/// A texture that no editor holds has no colours: it is painted black on white.
const RGBColor16& ForegroundOf(const PaintClass& pic) {
    return pic.foreColor != nullptr ? *pic.foreColor : black16;
}

const RGBColor16& BackgroundOf(const PaintClass& pic) {
    return pic.backColor != nullptr ? *pic.backColor : white16;
}

// The brush. The alpha byte of a pixel is the coverage that the stroke has reached there so far,
// and the clone the texture before the stroke, so stamps that overlap don't build up.

/// Full in the middle of the disc, falling to nothing at its rim. `dx` and `dy` lead from the
/// centre.
unsigned char RoundCoverage(int dx, int dy, int radius) {
    const double beyondRim = std::sqrt(static_cast<double>(dx * dx + dy * dy)) - radius;
    if (beyondRim > 0.0) {
        return 0;
    }
    const double coverage = -(beyondRim / radius) * 300.0;
    // The one pixel of radius 0 is no number, and full.
    return coverage < 255.0 ? static_cast<unsigned char>(coverage) : 255;
}

/// Mixes the colour into what was there before the stroke, where the coverage grows.
void Cover(unsigned char* pixel, const unsigned char* before, Pixel color, unsigned char coverage) {
    if (pixel[3] >= coverage) {
        return;
    }
    for (int c = 0; c < 3; ++c) {
        const unsigned char paint = static_cast<unsigned char>(color >> 8 * c);
        pixel[c] = static_cast<unsigned char>(productTable[before[c]][255 - coverage] +
                                              productTable[paint][coverage]);
    }
    pixel[3] = coverage;
}

// The rubber stamp. The alpha byte of a pixel is the smallest distance from the stroke so far, of
// which 256 is the stamp's radius.

constexpr int largestStampRadius = 10;

/// The columns that a stamp touches, or its rows.
class StampSpan {
  public:
    /// `centre` is at most largestCentre either way. `offset` leads to the source.
    StampSpan(double centre, int radius, short offset, short size) {
        for (int place = static_cast<int>(centre - radius); place < centre + radius; ++place) {
            const double distance = centre - place;
            squares[count] = distance * distance;
            targets[count] = Wrap(static_cast<short>(place), size);
            sources[count] = Wrap(static_cast<short>(place + offset), size);
            ++count;
        }
    }

    static constexpr double largestCentre = 1e9;

    int count = 0;
    /// Of the distances from the centre.
    double squares[2 * largestStampRadius + 1];
    short targets[2 * largestStampRadius + 1];
    short sources[2 * largestStampRadius + 1];
};

/// False for what is not a number, too.
bool IsInReach(double centre) {
    return std::fabs(centre) <= StampSpan::largestCentre;
}

/// Mixes the source with what was there before the stroke, where the stroke comes nearer. The
/// source may be the pixel itself.
void Copy(unsigned char* pixel, const unsigned char* before, const unsigned char* source,
          double distance) {
    if (!(distance < pixel[3])) {
        return;
    }
    pixel[3] = static_cast<unsigned char>(distance);
    const double share = distance * 0.00390625;
    for (int c = 0; c < 3; ++c) {
        pixel[c] = static_cast<unsigned char>(source[c] * (1.0 - share) + before[c] * share);
    }
}

}  // namespace

void PaintClass::MakeRoundBrush(short size) {
    Assert(size <= brushTableSide, "PaintClass6 / Zeile 42 !(radius <= 20)");
    const int radius = size / 2;
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j) {
            brushTable[i][j] = RoundCoverage(i - radius, j - radius, radius);
        }
    }
}

void PaintClass::MakeSquareBrush(short size) {
    Assert(size <= brushTableSide, "PaintClass6 / Zeile 60 !(radius <= 20)");
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j) {
            const bool isRim = i == 0 || j == 0 || i == size - 1 || j == size - 1;
            brushTable[i][j] = isRim ? 127 : 255;
        }
    }
}

void PaintClass::StampBrush(double x, double y, PaintClass* pic) {
    if (pic->clone == nullptr) {
        return;
    }
    // A larger size makes no table.
    const int radius = std::min<int>(pic->brushSize, brushTableSide) / 2;
    // Lifted by one tile, so that positions a little to the left of or above the tile are not
    // truncated the other way.
    const double centreX = pic->grX + x;
    const double centreY = pic->grY + y;
    short columns[brushTableSide];
    for (int i = 0; i < 2 * radius; ++i) {
        columns[i] = Wrap(TruncateToShort(i - radius + centreX), pic->grX);
    }
    const Pixel color = RasterColor(ForegroundOf(*pic));
    for (int j = 0; j < 2 * radius; ++j) {
        const short row = Wrap(TruncateToShort(j - radius + centreY), pic->grY);
        unsigned char* const pixels = pic->PixelAddress(0, row);
        const unsigned char* const before = pic->clone->PixelAddress(0, row);
        for (int i = 0; i < 2 * radius; ++i) {
            const int byte = columns[i] * bytesPerPixel;
            Cover(pixels + byte, before + byte, color, brushTable[i][j]);
        }
    }
}

void PaintClass::StampClone(double x, double y, PaintClass* pic) {
    // Above 20, which no dialog sets, a size counts as 20. A radius of 0 reaches no pixel.
    const int radius = std::min<int>(pic->stampSize / 2, largestStampRadius);
    const double centreX = pic->grX + x;
    const double centreY = pic->grY + y;
    if (pic->clone == nullptr || radius < 1 || !IsInReach(centreX) || !IsInReach(centreY)) {
        return;
    }
    const StampSpan columns(centreX, radius, pic->stampOffsetH, pic->grX);
    const StampSpan rows(centreY, radius, pic->stampOffsetV, pic->grY);
    // In this order: the source is the texture as the stamp itself has left it so far.
    for (int j = 0; j < rows.count; ++j) {
        unsigned char* const pixels = pic->PixelAddress(0, rows.targets[j]);
        const unsigned char* const before = pic->clone->PixelAddress(0, rows.targets[j]);
        const unsigned char* const sources = pic->PixelAddress(0, rows.sources[j]);
        for (int i = 0; i < columns.count; ++i) {
            const double distance = std::sqrt(columns.squares[i] + rows.squares[j]);
            const int byte = columns.targets[i] * bytesPerPixel;
            Copy(pixels + byte, before + byte, sources + columns.sources[i] * bytesPerPixel,
                 256.0 * distance / radius);
        }
    }
}

void PaintClass::PlotPixel(short x, short y, PaintClass* pic) {
    StorePixel(pic->PixelAddressWrapped(x, y), 0, RasterColor(ForegroundOf(*pic)));
}

void PaintClass::WalkLine(Point from, Point to, WalkCallback callback, PaintClass* pic) {
    const double dx = to.h - from.h;
    const double dy = to.v - from.v;
    // In 16 bits: a segment beyond them is a negative number of steps, and none at all.
    const short steps = TruncateToShort(std::sqrt(dx * dx + dy * dy));
    if (steps == 0) {
        callback(from.h, from.v, pic);
        return;
    }
    for (int i = 0; i <= steps; ++i) {
        callback(from.h + i * (dx / steps), from.v + i * (dy / steps), pic);
    }
}

void PaintClass::TraceLine(Point from, Point to, TraceCallback callback, PaintClass* pic) {
    const int width = std::abs(to.h - from.h);
    const int height = std::abs(to.v - from.v);
    const int signX = to.h > from.h ? 1 : -1;
    const int signY = to.v > from.v ? 1 : -1;
    const int major = std::max(width, height);
    const int minor = std::min(width, height);
    int error = 2 * minor - major;
    int j = 0;
    callback(from.h, from.v, pic);
    for (int i = 1; i <= major; ++i) {
        if (error > 0) {
            ++j;
            error += 2 * (minor - major);
        } else {
            error += 2 * minor;
        }
        const int dx = width > height ? i : j;
        const int dy = width > height ? j : i;
        callback(static_cast<short>(from.h + signX * dx), static_cast<short>(from.v + signY * dy),
                 pic);
    }
}

// The fill. The alpha byte of a pixel tells whether the region has reached it.

namespace {

constexpr unsigned char reached = 0;
constexpr unsigned char notReached = 255;

/// Where in the tile a coordinate of 16 bits lies, for all of them: the fill asks in no order, and
/// a division each time would take most of its time.
class WrapTable {
  public:
    explicit WrapTable(short size) : block(count * sizeof(std::uint16_t)), failed(block.failed) {
        if (failed) {
            return;
        }
        places = static_cast<std::uint16_t*>(block.Lock());
        std::uint16_t place = static_cast<std::uint16_t>(Wrap(lowest, size));
        for (int coordinate = lowest; coordinate < -lowest; ++coordinate) {
            places[static_cast<std::uint16_t>(coordinate)] = place;
            ++place;
            place = place == size ? std::uint16_t{0} : place;
        }
    }

    int operator[](short coordinate) const {
        return places[static_cast<std::uint16_t>(coordinate)];
    }

  private:
    static constexpr int lowest = -32768;
    static constexpr std::size_t count = 65536;

    HandleClass block;
    std::uint16_t* places = nullptr;

  public:
    /// True if there was no memory.
    bool failed;
};

/// Grows a region of similar colour in rings, one queue entry for each of its pixels.
class FloodRegion {
  public:
    explicit FloodRegion(PaintClass& newPic)
        : pic(newPic),
          columns(pic.grX),
          rows(pic.grY),
          size(static_cast<std::size_t>(pic.grX) * static_cast<std::size_t>(pic.grY) *
                   sizeof(Point) +
               spareEntries * sizeof(Point)),
          block(size),
          failed(columns.failed || rows.failed || block.failed) {
        queue = failed ? nullptr : static_cast<Point*>(block.Lock());
    }

    void Grow(Point start, short newThreshold) {
        threshold = newThreshold;
        paint = RasterColor(ForegroundOf(pic));
        unsigned char* const first = At(start.h, start.v);
        seed = LoadPixel(first, 0);
        Take(first, start);
        for (std::size_t next = 0; next < end; ++next) {
            Assert(end + 18 < size / sizeof(Point),
                   "PaintClass6 / Zeile 810 !((pos + 18) < (size / sizeof (Point)))");
            const Point place = queue[next];
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

    /// The place is kept as it is, around the torus or not: in 16 bits it is of consequence where
    /// it runs over.
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
        queue[end++] = place;
    }

    PaintClass& pic;
    WrapTable columns;
    WrapTable rows;
    /// Of the queue, in bytes.
    std::size_t size;
    HandleClass block;
    Point* queue = nullptr;
    std::size_t end = 0;
    /// The colour at the start, and how far a colour may be from it.
    Pixel seed = 0;
    short threshold = 0;
    Pixel paint = 0;

  public:
    /// True if there was no memory.
    bool failed;
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

/// In place: a mixed pixel counts as it is for those behind it.
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
    if (region.failed) {
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

// The gradient.

namespace {

/// The colours along a gradient, the foreground at the end where the drag began.
class Ramp {
  public:
    Ramp(const PaintClass& pic, int from, int to)
        : first(std::min(from, to)),
          last(std::max(from, to)),
          start(to < from ? BackgroundOf(pic) : ForegroundOf(pic)),
          end(to < from ? ForegroundOf(pic) : BackgroundOf(pic)) {}

    /// The first place that still shows on a tile of this size: a ramp that is longer than the tile
    /// goes around and paints over itself.
    int FirstShown(int size) const { return std::max(first, last - size); }
    /// Not painted itself.
    int Last() const { return last; }

    Pixel At(int place) const {
        const double share = static_cast<double>(place - first) / (last - first);
        return RasterColor({Mix(start.red, end.red, share), Mix(start.green, end.green, share),
                            Mix(start.blue, end.blue, share)});
    }

  private:
    static std::uint16_t Mix(std::uint16_t a, std::uint16_t b, double share) {
        return static_cast<std::uint16_t>(TruncateToShort(a + (b - a) * share));
    }

    int first;
    int last;
    RGBColor16 start;
    RGBColor16 end;
};

/// The alpha byte stays.
void StoreColor(unsigned char* row, int x, Pixel color) {
    StorePixel(row, x, (color & ~alphaMask) | (LoadPixel(row, x) & alphaMask));
}

void PaintRows(PaintClass& pic, const Ramp& ramp) {
    for (int place = ramp.FirstShown(pic.grY); place < ramp.Last(); ++place) {
        unsigned char* const row = pic.PixelAddress(0, Wrap(place, pic.grY));
        const Pixel color = ramp.At(place);
        for (int x = 0; x < pic.grX; ++x) {
            StoreColor(row, x, color);
        }
    }
}

/// The first row shows the colours; the others take them from there, a stretch at a time.
void PaintColumns(PaintClass& pic, const Ramp& ramp) {
    int place = ramp.FirstShown(pic.grX);
    while (place < ramp.Last()) {
        const short left = Wrap(place, pic.grX);
        const int count = std::min(ramp.Last() - place, pic.grX - left);
        unsigned char* const first = pic.PixelAddress(left, 0);
        for (int i = 0; i < count; ++i) {
            StoreColor(first, i, ramp.At(place + i));
        }
        for (short y = 1; y < pic.grY; ++y) {
            unsigned char* const row = pic.PixelAddress(left, y);
            for (int i = 0; i < count; ++i) {
                StoreColor(row, i, LoadPixel(first, i));
            }
        }
        place += count;
    }
}

}  // namespace

void PaintClass::Gradient(Point from, Point to) {
    AssertLocked(lockedAtPixelAddressWrapped);
    if (from.h == to.h) {
        PaintRows(*this, Ramp(*this, from.v, to.v));
    } else {
        Assert(from.v == to.v, "PaintClass6 / Zeile 579 !(false)");
        PaintColumns(*this, Ramp(*this, from.h, to.h));
    }
    Unlock();
    SetDirty();
}

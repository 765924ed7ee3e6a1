// The distortions. Each reads the tile as it was between its pixels, through a window if there is
// memory for one, else through the clone, and writes the tile in place.
#include <algorithm>
#include <cmath>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/TileWindow.h"
#include "paint/math/EffectMath.h"
#include "paint/math/ExactMath.h"
#include "paint/math/Random.h"
#include "raster/HandleClass.h"
#include "raster/Truncation.h"

namespace {

/// Pixels that are read and written at a time, so that they stay in the processor's cache.
constexpr int chunkSize = 128;

/// A block of doubles, for what is computed once a run.
class DoubleBlock {
  public:
    explicit DoubleBlock(std::size_t count) : block(count * sizeof(double)) {}

    /// True if there was no memory.
    bool Failed() const { return block.failed; }
    double* Values() { return static_cast<double*>(block.Lock()); }

  private:
    HandleClass block;
};

/// Through the clone's own accessor, for what no window can read. The alpha bytes become 0.
void ReadOneByOne(const PicClass& clone, const Positions& positions, unsigned char* out) {
    for (int i = 0; i < positions.count; ++i) {
        unsigned char* const pixel = out + i * bytesPerPixel;
        clone.GetPixelInterpolated(positions.originX + positions.x[i],
                                   positions.originY + positions.y[i], pixel);
        pixel[3] = 0;
    }
}

/// For each column its number and how far down or up its pixels are moved.
class ColumnTable {
  public:
    /// No column is moved.
    explicit ColumnTable(short width) : block(2 * static_cast<std::size_t>(width)) {
        if (Failed()) {
            return;
        }
        numbers = block.Values();
        shifts = numbers + width;
        for (short x = 0; x < width; ++x) {
            numbers[x] = x;
            shifts[x] = 0;
        }
    }

    bool Failed() const { return block.Failed(); }

  private:
    DoubleBlock block;

  public:
    double* numbers = nullptr;
    double* shifts = nullptr;
};

/// The sources of a part of row y that is moved sideways by `rowShift`, and by columns down.
Positions PartOfRow(const ColumnTable& table, double rowShift, short y, int first, int count) {
    return {rowShift, static_cast<double>(y), table.numbers + first, table.shifts + first, count};
}

// Waves.

/// One of the two waves: how far pixels are moved along one axis, by their place on the other.
class Wave {
  public:
    /// A wave over `length` pixels that moves them on an axis of `reach` pixels.
    Wave(std::int16_t newForm, std::int16_t height, std::int16_t newCount, short length,
         short reach)
        : form(newForm),
          count(newCount),
          step(6.283185307179586 / length),
          period(static_cast<double>(length) / newCount),
          amplitude(reach * height * 0.00125),
          drawLimit(reach * height / 8) {}

    /// Whether each pixel draws a shift of its own.
    bool IsRandom() const { return form == waveRandom; }
    double DrawShift() const { return RandomRange(0, drawLimit) * 0.01; }

    /// A waveform outside the table moves nothing; a random one moves nothing here.
    double ShiftAt(short place) const {
        switch (form) {
            case waveSine:
                return ExactSin(place * count * step) * amplitude;
            case waveSawtooth:
                return -Sawtooth(PlaceInPeriod(place));
            case waveSquare:
                return PlaceInPeriod(place) >= period * 0.5 ? -amplitude : amplitude;
            default:
                return 0;
        }
    }

  private:
    /// By repeated subtraction, each rounded; a whole period is left standing. A period below 0,
    /// which only a damaged record has, is never taken off.
    double PlaceInPeriod(short place) const {
        double rest = place;
        while (rest > period && period > 0) {
            rest -= period;
        }
        return rest;
    }

    /// From 0 to twice the amplitude and back. The way back counts in whole pixels; a period below
    /// one pixel leaves no remainder.
    double Sawtooth(double rest) const {
        if (!(rest >= period * 0.5)) {
            return rest / period * amplitude * 4.0;
        }
        const short whole = TruncateToShort(period);
        const int remainder = whole != 0 ? TruncateToShort(period - rest) % whole : 0;
        return remainder / period * amplitude * 4.0;
    }

    std::int16_t form;
    std::int16_t count;
    double step;
    double period;
    double amplitude;
    std::int32_t drawLimit;
};

/// Where the pixels of each row come from.
class WavePlaces {
  public:
    WavePlaces(const WavesParams& params, short newWidth, short newHeight)
        : width(newWidth),
          height(newHeight),
          horizontal(params.formX, params.heightX, params.countX, height, width),
          vertical(params.formY, params.heightY, params.countY, width, height),
          table(width) {
        for (short x = 0; x < width && !Failed(); ++x) {
            table.shifts[x] = vertical.ShiftAt(x);
            largestShift = std::max(largestShift, std::fabs(table.shifts[x]));
        }
        for (short place = 0; place < height; ++place) {
            largestRowShift = std::max(largestRowShift, std::fabs(horizontal.ShiftAt(place)));
        }
    }

    /// True if there was no memory.
    bool Failed() const { return table.Failed(); }

    void BeginRow(short newY) {
        y = newY;
        rowShift = horizontal.ShiftAt(y);
    }

    /// Whether 16 bits hold all positions, and their neighbours.
    bool AreOrdinary() const {
        constexpr double limit = 32767.0;
        constexpr double largestDraw = 656.0;
        return largestRowShift + largestDraw + width < limit &&
               largestShift + largestDraw + height < limit;
    }

    /// The part from column `first` on. Draws for each pixel in turn, first across, then down.
    Positions Part(int first) {
        const int count = std::min(chunkSize, width - first);
        Positions part = PartOfRow(table, rowShift, y, first, count);
        if (horizontal.IsRandom() || vertical.IsRandom()) {
            Draw(first, count);
        }
        if (horizontal.IsRandom()) {
            part.x = drawnX;
        }
        if (vertical.IsRandom()) {
            part.originY = 0;
            part.y = drawnY;
        }
        return part;
    }

  private:
    void Draw(int first, int count) {
        for (int i = 0; i < count; ++i) {
            if (horizontal.IsRandom()) {
                drawnX[i] = first + i + horizontal.DrawShift();
            }
            if (vertical.IsRandom()) {
                drawnY[i] = y + vertical.DrawShift();
            }
        }
    }

    short width;
    short height;
    Wave horizontal;
    Wave vertical;
    ColumnTable table;
    double largestShift = 0;
    double largestRowShift = 0;
    short y = 0;
    double rowShift = 0;
    double drawnX[chunkSize];
    double drawnY[chunkSize];
};

/// The alpha bytes stay.
void WriteColors(const unsigned char* __restrict colors, unsigned char* __restrict row, int count) {
    constexpr Pixel colorMask = 0x00FFFFFF;
    for (int i = 0; i < count; ++i) {
        Pixel color;
        Pixel old;
        std::memcpy(&color, colors + i * bytesPerPixel, sizeof color);
        std::memcpy(&old, row + i * bytesPerPixel, sizeof old);
        color = (color & colorMask) | (old & ~colorMask);
        std::memcpy(row + i * bytesPerPixel, &color, sizeof color);
    }
}

/// All 32 bits.
void WriteNearest(const PicClass& clone, const Positions& positions, unsigned char* row) {
    for (int i = 0; i < positions.count; ++i) {
        const Pixel pixel =
            clone.GetPixelWrapped(TruncateToShort(positions.originX + positions.x[i]),
                                  TruncateToShort(positions.originY + positions.y[i]));
        std::memcpy(row + i * bytesPerPixel, &pixel, sizeof pixel);
    }
}

/// Keeps the tile in the clone, for what is not read through a window. False without memory.
bool KeepInClone(PaintClass& pic) {
    if (pic.GetClone() == nullptr) {
        return false;
    }
    pic.CopyToClone();
    return true;
}

/// A window over the whole tile, and what its right and lower neighbours need.
class WholeTile : public TileWindow {
  public:
    explicit WholeTile(const PicClass& tile) : TileWindow(tile.grX + 1, tile.grY + 1) {
        if (!failed) {
            Copy(tile, 0, 0);
        }
    }
};

}  // namespace

void PaintClass::Waves(const WavesParams& params) {
    CursorClass cursor;
    if (!HasRoomForClone()) {
        return;
    }
    WavePlaces places(params, grX, grY);
    const WholeTile window(*this);
    const bool interpolates = params.interpolate == 1;
    const bool throughWindow = interpolates && !window.failed && places.AreOrdinary();
    if (places.Failed() || (!throughWindow && !KeepInClone(*this))) {
        DeleteClone();
        return;
    }
    for (short y = 0; y < grY; ++y) {
        cursor.Tick();
        places.BeginRow(y);
        for (int first = 0; first < grX; first += chunkSize) {
            const Positions part = places.Part(first);
            unsigned char* const row = PixelAddress(static_cast<short>(first), y);
            unsigned char colors[chunkSize * bytesPerPixel];
            if (throughWindow) {
                window.ReadWrapped(part, colors);
            } else if (interpolates) {
                ReadOneByOne(*clone, part, colors);
            } else {
                WriteNearest(*clone, part, row);
                continue;
            }
            WriteColors(colors, row, part.count);
        }
    }
    Unlock();
    DeleteClone();
    SetDirty();
}

namespace {

// Twirls.

/// Where the pixels of a twirl come from, as offsets from its centre: the same for all twirls of a
/// run. The pixels within the radius are kept by rows from dy = 1 - radius to radius - 1, which
/// hold the columns dx = -HalfWidth(dy) to HalfWidth(dy).
class TwirlTable {
  public:
    /// `newRadius` is 0 or more, `newQuotient` what turns a distance from the rim into a twist.
    TwirlTable(short newRadius, double newQuotient)
        : radius(newRadius),
          quotient(newQuotient),
          rowSize(2 * static_cast<std::size_t>(std::max(1, 2 * radius - 1))),
          keepsAll(radius <= largestKept),
          block(keepsAll ? rowSize * rowSize / 2 : rowSize) {
        for (int dy = 1 - radius; dy < radius && keepsAll && !Failed(); ++dy) {
            ComputeRow(dy);
        }
    }

    /// True if there was no memory.
    bool Failed() const { return block.Failed(); }

    int HalfWidth(int dy) const {
        return static_cast<int>(std::sqrt(static_cast<double>(radius * radius - dy * dy - 1)));
    }

    /// The sources of row dy of a twirl around (cx, cy).
    Positions Row(int dy, int cx, int cy) {
        if (!keepsAll) {
            ComputeRow(dy);
        }
        const double* const x = RowStart(dy);
        return {static_cast<double>(cx), static_cast<double>(cy), x, x + rowSize / 2,
                2 * HalfWidth(dy) + 1};
    }

  private:
    /// That of tiles of 724 by 724 pixels, whose table takes 8 MB. In larger ones each row is
    /// computed whenever it is needed.
    static constexpr int largestKept = 362;

    double* RowStart(int dy) {
        const int row = keepsAll ? dy + radius - 1 : 0;
        return block.Values() + static_cast<std::size_t>(row) * rowSize;
    }

    void ComputeRow(int dy) {
        const int halfWidth = HalfWidth(dy);
        double* x = RowStart(dy);
        double* y = x + rowSize / 2;
        for (int dx = -halfWidth; dx <= halfWidth; ++dx) {
            Rotate(dx, dy, x++, y++);
        }
    }

    void Rotate(int dx, int dy, double* x, double* y) const {
        if (dx == 0 && dy == 0) {
            // No angle; the twirl puts the centre back.
            *x = 0;
            *y = 0;
            return;
        }
        const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
        const double t = (radius - distance) / quotient;
        const short twist = TruncateToShort(t * t * t * t);
        const SinCos turned = ExactSinCos(DegreesToRadians(twist) + AngleOf(dx, dy, distance));
        *x = turned.cos * distance;
        *y = turned.sin * distance;
    }

    static double AngleOf(int dx, int dy, double distance) {
        if (dx >= 0) {
            return ExactAsin(dy / distance);
        }
        const double angle = ExactAcos(dx / distance);
        return dy >= 0 ? angle : 6.283185307179586 - angle;
    }

    int radius;
    double quotient;
    /// Doubles a row: first across, then down.
    std::size_t rowSize;
    bool keepsAll;
    DoubleBlock block;
};

/// How many twirls, and how large. Above 100, which only a damaged record has, both fields count as
/// 100: without a bound the work would have none.
short TwirlCount(const TwirlsParams& params, short width, short height) {
    const int quantity = std::min<int>(params.quantity, 100);
    return static_cast<short>(height * width / ((100 - quantity) * 15 + 500));
}

short TwirlRadius(const TwirlsParams& params, short width, short height) {
    const int size = std::min<int>(params.size, 100);
    return TruncateToShort((height + width) / 2 / ((100 - size) * 0.03 + 2.0));
}

/// Writes the rows of one twirl around (cx, cy) from what was copied before. Where a large twirl
/// overlaps itself around the torus the last write stands; it overlaps in one direction only, so
/// going by rows leaves the same as going by columns.
template <typename Read>
void WriteTwirl(PicClass& pic, TwirlTable& table, int radius, int cx, int cy, Read read) {
    for (int dy = 1 - radius; dy < radius; ++dy) {
        Positions rest = table.Row(dy, cx, cy);
        const short y = Wrap(cy + dy, pic.grY);
        short x = Wrap(cx - table.HalfWidth(dy), pic.grX);
        while (rest.count > 0) {
            Positions part = rest;
            part.count = std::min(rest.count, pic.grX - x);
            read(part, pic.PixelAddress(x, y));
            rest.x += part.count;
            rest.y += part.count;
            rest.count -= part.count;
            x = 0;
        }
    }
}

}  // namespace

bool PaintClass::Twirls(const TwirlsParams& params) {
    if (GetClone() == nullptr) {
        return false;
    }
    SeedRandom();
    const short count = TwirlCount(params, grX, grY);
    const short radius = TwirlRadius(params, grX, grY);
    TwirlTable table(radius, radius / (params.intensity * 0.01 + 3.5));
    if (table.Failed()) {
        DeleteClone();
        return false;
    }
    ShowClass progress(count);
    TileWindow window(2 * radius + 1, 2 * radius + 1);
    for (short i = 0; i < count; ++i) {
        progress.Report(i);
        const auto cx = static_cast<short>(RandomRange(0, grX));
        const auto cy = static_cast<short>(RandomRange(0, grY));
        const Pixel centre = GetPixelWrapped(cx, cy);
        if (!window.failed) {
            // All that this twirl reads.
            window.Copy(*this, cx - radius, cy - radius);
            WriteTwirl(*this, table, radius, cx, cy,
                       [&](const Positions& part, unsigned char* out) { window.Read(part, out); });
        } else {
            CopyToClone();
            WriteTwirl(*this, table, radius, cx, cy,
                       [&](const Positions& part, unsigned char* out) {
                           ReadOneByOne(*clone, part, out);
                       });
        }
        SetPixelWrapped(cx, cy, centre);
    }
    Unlock();
    DeleteClone();
    SetDirty();
    return true;
}

namespace {

// Skew.

/// Where the far end of the lines goes.
enum SkewDirection : std::int32_t { rowsRight = 0, rowsLeft = 1, columnsDown = 2, columnsUp = 3 };

/// By how much line `line` is moved: all together by the tile's `reach`, a bit more each line.
double SkewShift(std::int32_t direction, short line, short lines, short reach) {
    const double shift = static_cast<double>(line) * reach / lines;
    return direction == rowsRight || direction == columnsDown ? -shift : shift;
}

bool IsWhole(double value) {
    return value == std::trunc(value);
}

/// (2a + b + c) / 4 of each channel: what lies on the grid, read between pixels.
Pixel SoftenedOnGrid(Pixel a, Pixel b, Pixel c) {
    constexpr Pixel mask = 0x00FF00FF;
    const Pixel redBlue = 2 * (a & mask) + (b & mask) + (c & mask);
    const Pixel greenAlpha = 2 * (a >> 8 & mask) + (b >> 8 & mask) + (c >> 8 & mask);
    return (redBlue >> 2 & mask) | (greenAlpha >> 2 & mask) << 8;
}

/// `count` pixels whose sources stand side by side on the grid. In place, too: a pixel is written
/// after all that read it.
void SoftenLoop(const Pixel* source, const Pixel* below, unsigned char* out, int count) {
    for (int i = 0; i < count; ++i) {
        const Pixel pixel = SoftenedOnGrid(source[i], source[i + 1], below[i]);
        std::memcpy(out + i * bytesPerPixel, &pixel, sizeof pixel);
    }
}

void SoftenRun(const Pixel* source, const Pixel* below, unsigned char* out, int count) {
    ForThisProcessor<SoftenLoop>(source, below, out, count);
}

/// Takes a pixel from each of the places, numbered along the rows of an image of `total` pixels,
/// and moves the places down by `columns`, around the torus. As quick as with AVX2's own reads from
/// many places.
void TakePixels(const Pixel* image, std::int32_t* places, unsigned char* out, int count,
                std::int32_t columns, std::int32_t total) {
    for (int i = 0; i < count; ++i) {
        const std::int32_t place = places[i];
        std::memcpy(out + i * bytesPerPixel, image + place, sizeof(Pixel));
        const std::int32_t next = place + columns;
        places[i] = next >= total ? next - total : next;
    }
}

/// One run of the effect.
class SkewRun {
  public:
    SkewRun(PaintClass& newPic, std::int32_t newDirection, bool readsNearest)
        : pic(newPic),
          direction(newDirection),
          nearest(readsNearest),
          table(pic.grX),
          window(pic),
          throughWindow(!window.failed && std::max(pic.grX, pic.grY) <= largestSide) {}

    /// True if there was no memory.
    bool Failed() const { return table.Failed(); }
    /// Whether the tile is to be kept in the clone.
    bool ReadsClone() const { return !throughWindow; }

    void MoveRows(ShowClass& progress) {
        for (short y = 0; y < pic.grY; ++y) {
            if (y % reportStep == 0) {
                progress.Report(y);
            }
            const double shift = Rounded(SkewShift(direction, y, pic.grY, pic.grX));
            if (throughWindow && IsWhole(shift)) {
                WriteWholeRow(y, Wrap(static_cast<int>(shift), pic.grX));
            } else {
                WritePart(shift, y, 0, pic.grX);
            }
        }
    }

    /// By strips of columns, within which the rows of memory are followed.
    void MoveColumns(ShowClass& progress) {
        bool allWhole = true;
        for (short x = 0; x < pic.grX; ++x) {
            table.shifts[x] = Rounded(SkewShift(direction, x, pic.grX, pic.grY));
            allWhole = allWhole && IsWhole(table.shifts[x]);
        }
        const bool takesWhole = throughWindow && allWhole;
        if (takesWhole && !nearest) {
            SoftenWindow();
        }
        for (int first = 0; first < pic.grX; first += chunkSize) {
            const int count = std::min(chunkSize, pic.grX - first);
            ReportColumns(progress, first, count);
            if (takesWhole) {
                WriteWholeColumns(first, count);
                continue;
            }
            for (short y = 0; y < pic.grY; ++y) {
                WritePart(0, y, first, count);
            }
        }
    }

  private:
    static constexpr short reportStep = 5;
    /// Moved by a whole tile, what lies on such a side stays within 16 bits.
    static constexpr short largestSide = 16383;

    /// The nearest pixel is found by whole pixels.
    double Rounded(double shift) const { return nearest ? TruncateToShort(shift) : shift; }

    unsigned char* Target(int x, short y) const {
        return pic.PixelAddress(static_cast<short>(x), y);
    }

    static void ReportColumns(ShowClass& progress, int first, int count) {
        for (int x = first; x < first + count; ++x) {
            if (x % reportStep == 0) {
                progress.Report(static_cast<short>(x));
            }
        }
    }

    void WritePart(double rowShift, short y, int first, int count) const {
        const Positions part = PartOfRow(table, rowShift, y, first, count);
        if (throughWindow) {
            window.ReadWrapped(part, Target(first, y));
        } else if (nearest) {
            WriteNearest(*pic.clone, part, Target(first, y));
        } else {
            ReadOneByOne(*pic.clone, part, Target(first, y));
        }
    }

    /// The row from column `start` of its source on. 40 times as fast as reading between pixels;
    /// on square tiles every row is whole.
    void WriteWholeRow(short y, short start) const {
        const int beforeSeam = pic.grX - start;
        WriteWholeRun(y, start, Target(0, y), beforeSeam);
        WriteWholeRun(y, 0, Target(0, y) + beforeSeam * bytesPerPixel, start);
    }

    void WriteWholeRun(short y, short start, unsigned char* out, int count) const {
        if (nearest) {
            std::memcpy(out, window.Row(y) + start,
                        static_cast<std::size_t>(count) * sizeof(Pixel));
        } else {
            SoftenRun(window.Row(y) + start, window.Row(y + 1) + start, out, count);
        }
    }

    /// Reads every pixel of the tile on the grid, once for all columns.
    void SoftenWindow() {
        for (int y = 0; y < pic.grY; ++y) {
            Pixel* const row = window.Row(y);
            SoftenRun(row, window.Row(y + 1), reinterpret_cast<unsigned char*>(row), pic.grX);
        }
    }

    /// Where all columns are moved by whole pixels, as on square tiles.
    void WriteWholeColumns(int first, int count) const {
        const std::int32_t columns = pic.grX + 1;
        std::int32_t places[chunkSize];
        for (int i = 0; i < count; ++i) {
            const auto shift = static_cast<int>(table.shifts[first + i]);
            places[i] = Wrap(shift, pic.grY) * columns + first + i;
        }
        for (short y = 0; y < pic.grY; ++y) {
            TakePixels(window.Row(0), places, Target(first, y), count, columns, pic.grY * columns);
        }
    }

    PaintClass& pic;
    std::int32_t direction;
    bool nearest;
    ColumnTable table;
    WholeTile window;
    bool throughWindow;
};

}  // namespace

bool PaintClass::Skew(std::int32_t direction, bool nearest) {
    const bool movesRows = direction == rowsRight || direction == rowsLeft;
    const bool movesColumns = direction == columnsDown || direction == columnsUp;
    const short total = movesRows ? grY : grX;
    ShowClass progress(total);
    if (!HasRoomForClone()) {
        return false;
    }
    SkewRun run(*this, direction, nearest);
    if (run.Failed() || (run.ReadsClone() && !KeepInClone(*this))) {
        DeleteClone();
        return false;
    }
    if (movesRows) {
        run.MoveRows(progress);
    } else if (movesColumns) {
        run.MoveColumns(progress);
    }
    Unlock();
    DeleteClone();
    progress.Report(total);
    SetDirty();
    return true;
}

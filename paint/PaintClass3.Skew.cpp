// The distortions: Skew.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/Progress.h"
#include "paint/Distortion.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "raster/Truncation.h"

namespace {

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
          throughWindow(!window.Failed() && std::max(pic.grX, pic.grY) <= largestSide) {}

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
            table.SetShift(x, Rounded(SkewShift(direction, x, pic.grX, pic.grY)));
            allWhole = allWhole && IsWhole(table.Shift(x));
        }
        const bool takesWhole = throughWindow && allWhole;
        if (takesWhole && !nearest) {
            SoftenWindow();
        }
        for (int first = 0; first < pic.grX; first += distortionChunk) {
            const int count = std::min(distortionChunk, pic.grX - first);
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
        const Positions part = table.PartOfRow(rowShift, y, first, count);
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
        std::int32_t places[distortionChunk];
        for (int i = 0; i < count; ++i) {
            const auto shift = static_cast<int>(table.Shift(first + i));
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

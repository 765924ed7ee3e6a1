// The distortions: Skew.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/Progress.h"
#include "paint/Distortion.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/ShearMix.h"
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

/// The pixels around the positions of a part of a row, whose columns are moved up or down.
struct ShearedColumns {
    Pixel at[distortionChunk];
    Pixel right[distortionChunk];
    Pixel below[distortionChunk];
    Pixel diagonal[distortionChunk];
    std::int32_t fractions[distortionChunk];
};

/// The row of each position in a tile of `rows` rows, and what is left of the position.
void PlaceLoop(const Positions& part, std::int32_t rows, std::int32_t* __restrict places,
               std::int32_t* __restrict fractions) {
    for (int i = 0; i < part.count; ++i) {
        const double y = part.originY + part.y[i];
        const auto whole = static_cast<std::int32_t>(y);
        fractions[i] = static_cast<std::int32_t>((y - whole) * shearFractionScale);
        const std::int32_t fromTop = whole < 0 ? whole + rows : whole;
        places[i] = fromTop >= rows ? fromTop - rows : fromTop;
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
            } else if (throughWindow && !nearest) {
                WriteShearedRow(shift, y);
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
                if (throughWindow && !nearest) {
                    WriteShearedColumns(y, first, count);
                } else {
                    WritePart(0, y, first, count);
                }
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

    /// A row between pixels: first the pixels whose position is below 0, which are truncated
    /// towards it.
    void WriteShearedRow(double shift, short y) const {
        int negative = 0;
        while (negative < pic.grX && shift + negative < 0.0) {
            ++negative;
        }
        WriteShearedPart(shift, y, 0, negative);
        WriteShearedPart(shift, y, negative, pic.grX);
    }

    /// The pixels from column `first` to before `end`, whose positions are all on one side of 0. So
    /// their sources stand side by side, unless a sum rounds to a whole number.
    void WriteShearedPart(double shift, short y, int first, int end) const {
        if (first == end) {
            return;
        }
        const auto whole = static_cast<int>(shift + first);
        const double fraction = shift + first - whole;
        constexpr double nearWhole = 0x1p-30;
        if (std::fabs(fraction) < nearWhole || std::fabs(fraction) > 1.0 - nearWhole) {
            WritePart(shift, y, first, end - first);
            return;
        }
        std::int32_t fractions[distortionChunk];
        std::fill_n(fractions, distortionChunk,
                    static_cast<std::int32_t>(fraction * shearFractionScale));
        int place = Wrap(whole, pic.grX);
        while (first < end) {
            const Pixel* const at = window.Row(y) + place;
            const Pixel* const below = window.Row(y + 1) + place;
            const int count = std::min({end - first, pic.grX - place, distortionChunk});
            Mix({at, at + 1, below, below + 1, fractions, count}, shift, y, first);
            first += count;
            place = place + count == pic.grX ? 0 : place + count;
        }
    }

    /// A part of a row whose columns are moved up or down.
    void WriteShearedColumns(short y, int first, int count) const {
        std::int32_t places[distortionChunk];
        ShearedColumns sources;
        const Positions part = table.PartOfRow(0, y, first, count);
        ForThisProcessor<PlaceLoop>(part, int{pic.grY}, places, sources.fractions);
        for (int i = 0; i < count; ++i) {
            const Pixel* const at = window.Row(places[i]) + first + i;
            const Pixel* const below = at + pic.grX + 1;
            sources.at[i] = at[0];
            sources.right[i] = at[1];
            sources.below[i] = below[0];
            sources.diagonal[i] = below[1];
        }
        Mix({sources.at, sources.below, sources.right, sources.diagonal, sources.fractions, count},
            0, y, first);
    }

    /// Writes the pixels of a run; those of groups that remain undecided exactly.
    void Mix(const ShearedRun& run, double rowShift, short y, int first) const {
        unsigned char undecided[distortionChunk / shearGroup];
        MixSheared(run, Target(first, y), undecided);
        for (int i = 0; i < run.count; i += shearGroup) {
            if (undecided[i / shearGroup] != 0) {
                WritePart(rowShift, y, first + i, std::min(shearGroup, run.count - i));
            }
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

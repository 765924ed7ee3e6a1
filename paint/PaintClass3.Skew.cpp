// The distortions: Skew.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/Progress.h"
#include "paint/Distortion.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/ShearMix.h"
#include "paint/kernels/Transpose.h"
#include "raster/Truncation.h"

namespace {

/// Where the far end of the lines goes.
enum SkewDirection : std::int32_t { rowsRight = 0, rowsLeft = 1, columnsDown = 2, columnsUp = 3 };

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

/// `count` pixels whose sources stand side by side on the grid.
void SoftenLoop(const Pixel* source, const Pixel* below, unsigned char* out, int count) {
    for (int i = 0; i < count; ++i) {
        const Pixel pixel = SoftenedOnGrid(source[i], source[i + 1], below[i]);
        std::memcpy(out + i * bytesPerPixel, &pixel, sizeof pixel);
    }
}

void SoftenRun(const Pixel* source, const Pixel* below, unsigned char* out, int count) {
    ForThisProcessor<SoftenLoop>(source, below, out, count);
}

/// The lines that are moved, rows or columns, and the way along them.
struct SkewAxes {
    explicit SkewAxes(const PicClass& pic, std::int32_t newDirection)
        : direction(newDirection),
          areColumns(direction == columnsDown || direction == columnsUp),
          lines(areColumns ? pic.grX : pic.grY),
          length(areColumns ? pic.grY : pic.grX) {}

    bool AreRows() const { return direction == rowsRight || direction == rowsLeft; }
    /// By how much a line is moved: all together by the tile's other side, a bit more each line.
    double Shift(int line) const {
        const double shift = static_cast<double>(line) * length / lines;
        return direction == rowsRight || direction == columnsDown ? -shift : shift;
    }

    std::int32_t direction;
    bool areColumns;
    short lines;
    short length;
};

/// A window over the tile in which the lines are rows.
class LineWindow : public TileWindow {
  public:
    LineWindow(const PicClass& tile, const SkewAxes& axes)
        : TileWindow(axes.length + 1, axes.lines + 1) {
        if (Failed()) {
            return;
        }
        if (axes.areColumns) {
            CopyColumns(tile);
        } else {
            Copy(tile, 0, 0);
        }
    }

  private:
    void CopyColumns(const PicClass& tile) {
        const std::ptrdiff_t lineBytes = (tile.grY + 1) * std::ptrdiff_t{bytesPerPixel};
        TransposePixels({tile.PixelAddress(0, 0), tile.RowBytes()},
                        {reinterpret_cast<unsigned char*>(Row(0)), lineBytes}, tile.grX, tile.grY);
        for (int x = 0; x < tile.grX; ++x) {
            Row(x)[tile.grY] = Row(x)[0];
        }
        std::copy_n(Row(0), tile.grY + 1, Row(tile.grX));
    }
};

/// Moves lines that are read through a window.
class LineShear {
  public:
    LineShear(const LineWindow& newWindow, const ColumnTable& newTable, short newLength,
              bool readsNearest)
        : window(newWindow), table(newTable), length(newLength), nearest(readsNearest) {}

    /// Writes the pixels from `first` to before `end` of a line that is moved by `shift`.
    void Write(double shift, short line, int first, int end, unsigned char* out) const {
        if (IsWhole(shift)) {
            WriteWhole(line, Wrap(static_cast<int>(shift) + first, length), end - first, out);
            return;
        }
        // Positions below 0 are truncated towards it.
        const auto negative =
            std::clamp(shift < 0.0 ? static_cast<int>(std::ceil(-shift)) : 0, first, end);
        WriteSheared(shift, line, first, negative, out);
        WriteSheared(shift, line, negative, end, out + (negative - first) * bytesPerPixel);
    }

  private:
    /// From place `start` of the source on. 40 times as fast as reading between pixels; on square
    /// tiles every line is whole.
    void WriteWhole(short line, int start, int count, unsigned char* out) const {
        while (count > 0) {
            const int run = std::min(count, length - start);
            const Pixel* const at = window.Row(line) + start;
            if (nearest) {
                std::memcpy(out, at, static_cast<std::size_t>(run) * sizeof(Pixel));
            } else {
                SoftenRun(at, window.Row(line + 1) + start, out, run);
            }
            out += run * bytesPerPixel;
            count -= run;
            start = 0;
        }
    }

    /// Positions that are all on one side of 0. So their sources stand side by side, unless a sum
    /// rounds to a whole number.
    void WriteSheared(double shift, short line, int first, int end, unsigned char* out) const {
        if (first == end) {
            return;
        }
        const auto whole = static_cast<int>(shift + first);
        const double fraction = shift + first - whole;
        constexpr double nearWhole = 0x1p-30;
        if (std::fabs(fraction) < nearWhole || std::fabs(fraction) > 1.0 - nearWhole) {
            ReadExactly(shift, line, first, end - first, out);
            return;
        }
        const auto units = static_cast<std::int32_t>(fraction * shearFractionScale);
        int place = Wrap(whole, length);
        while (first < end) {
            const int count = std::min({end - first, length - place, distortionChunk});
            Pixel undecided[distortionChunk + exactPixels] = {};
            MixSheared({window.Row(line) + place, window.Row(line + 1) + place, units, count}, out,
                       undecided);
            for (int i = 0; i < count; i += exactPixels) {
                if (IsAnySet(undecided + i)) {
                    ReadExactly(shift, line, first + i, std::min(exactPixels, count - i),
                                out + i * bytesPerPixel);
                }
            }
            first += count;
            out += count * bytesPerPixel;
            place = place + count == length ? 0 : place + count;
        }
    }

    /// Pixels that are read exactly together.
    static constexpr int exactPixels = 8;

    static bool IsAnySet(const Pixel* undecided) {
        std::uint64_t pairs[exactPixels / 2];
        std::memcpy(pairs, undecided, sizeof pairs);
        return (pairs[0] | pairs[1] | pairs[2] | pairs[3]) != 0;
    }

    /// The two axes take the same part in a colour between pixels, to the bit, so columns can be
    /// read as rows.
    void ReadExactly(double shift, short line, int first, int count, unsigned char* out) const {
        window.ReadWrapped(table.PartOfRow(shift, line, first, count), out);
    }

    const LineWindow& window;
    const ColumnTable& table;
    short length;
    bool nearest;
};

/// One run of the effect.
class SkewRun {
  public:
    SkewRun(PaintClass& newPic, const SkewAxes& newAxes, bool readsNearest)
        : pic(newPic),
          axes(newAxes),
          nearest(readsNearest),
          table(std::max(pic.grX, pic.grY)),
          window(pic, axes),
          throughWindow(!window.Failed() && std::max(pic.grX, pic.grY) <= largestSide) {}

    /// True if there was no memory.
    bool Failed() const { return table.Failed(); }
    /// Whether the tile is to be kept in the clone.
    bool ReadsClone() const { return !throughWindow; }

    void MoveRows(ShowClass& progress) {
        const LineShear shear(window, table, axes.length, nearest);
        for (short y = 0; y < pic.grY; ++y) {
            Report(progress, y);
            const double shift = Rounded(axes.Shift(y));
            if (throughWindow) {
                shear.Write(shift, y, 0, pic.grX, pic.PixelAddress(0, y));
            } else {
                ReadClone(shift, y);
            }
        }
    }

    void MoveColumns(ShowClass& progress) {
        if (throughWindow) {
            for (int first = 0; first < pic.grX; first += stripColumns) {
                MoveStrip(first, std::min(stripColumns, pic.grX - first), progress);
            }
            return;
        }
        for (short x = 0; x < pic.grX; ++x) {
            Report(progress, x);
            table.SetShift(x, Rounded(axes.Shift(x)));
        }
        for (short y = 0; y < pic.grY; ++y) {
            ReadClone(0, y);
        }
    }

  private:
    /// Moved by a whole tile, what lies on such a side stays within 16 bits.
    static constexpr short largestSide = 16383;
    /// Columns that are moved together, a line of the processor's cache in a row of the tile, and
    /// how much of them at a time.
    static constexpr int stripColumns = 16;
    static constexpr int stripRows = 512;

    static void Report(ShowClass& progress, int line) {
        constexpr int reportStep = 5;
        if (line % reportStep == 0) {
            progress.Report(static_cast<short>(line));
        }
    }

    /// The nearest pixel is found by whole pixels.
    double Rounded(double shift) const { return nearest ? TruncateToShort(shift) : shift; }

    void MoveStrip(int first, int count, ShowClass& progress) const {
        const LineShear shear(window, table, axes.length, nearest);
        for (int x = first; x < first + count; ++x) {
            Report(progress, x);
        }
        for (int top = 0; top < pic.grY; top += stripRows) {
            const int bottom = std::min<int>(top + stripRows, pic.grY);
            unsigned char strip[stripColumns * stripRows * bytesPerPixel];
            const std::ptrdiff_t lineBytes = (bottom - top) * std::ptrdiff_t{bytesPerPixel};
            for (int i = 0; i < count; ++i) {
                const auto x = static_cast<short>(first + i);
                shear.Write(Rounded(axes.Shift(x)), x, top, bottom, strip + i * lineBytes);
            }
            TransposePixels({strip, lineBytes},
                            {pic.PixelAddress(static_cast<short>(first), static_cast<short>(top)),
                             pic.RowBytes()},
                            bottom - top, count);
        }
    }

    /// A row whose columns are moved as the table says.
    void ReadClone(double rowShift, short y) const {
        const Positions row = table.PartOfRow(rowShift, y, 0, pic.grX);
        if (nearest) {
            WriteNearest(*pic.clone, row, pic.PixelAddress(0, y));
        } else {
            ReadOneByOne(*pic.clone, row, pic.PixelAddress(0, y));
        }
    }

    PaintClass& pic;
    SkewAxes axes;
    bool nearest;
    ColumnTable table;
    LineWindow window;
    bool throughWindow;
};

}  // namespace

bool PaintClass::Skew(std::int32_t direction, bool nearest) {
    const SkewAxes axes(*this, direction);
    const short total = axes.AreRows() ? grY : grX;
    ShowClass progress(total);
    if (!HasRoomForClone()) {
        return false;
    }
    SkewRun run(*this, axes, nearest);
    if (run.Failed() || (run.ReadsClone() && !KeepInClone(*this))) {
        DeleteClone();
        return false;
    }
    if (axes.AreRows()) {
        run.MoveRows(progress);
    } else if (axes.areColumns) {
        run.MoveColumns(progress);
    }
    Unlock();
    DeleteClone();
    progress.Report(total);
    SetDirty();
    return true;
}

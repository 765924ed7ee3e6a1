// Motion Blur: trails of falling weights, summed in doubles.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/TrailRows.h"
#include "paint/kernels/TrailStrips.h"
#include "raster/HandleArray.h"

namespace {

constexpr int colorCount = 3;

struct Step {
    int dx;
    int dy;
};

/// Clockwise from the top. A code outside the table stays on the pixel.
Step StepOf(short direction) {
    constexpr Step steps[] = {{0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}};
    return direction >= 0 && direction < 8 ? steps[direction] : Step{0, 0};
}

/// Falling weights that come to 1 together. They are summed from the last to the first: the other
/// order rounds to another sum.
void FillWeights(double* weights, short length) {
    double sum = 0.0;
    for (int k = 0; k < length; ++k) {
        const double weight = static_cast<double>(k + 1) / length;
        weights[length - 1 - k] = weight;
        sum += weight;
    }
    for (int k = 0; k < length; ++k) {
        weights[k] /= sum;
    }
}

// The sums of neighbouring pixels. Each grows in the order of its trail, whatever the number of
// pixels at a time.

constexpr int groupSize = 16;

using Vector2 = double __attribute__((vector_size(16)));
using Vector4 = double __attribute__((vector_size(32)));

template <typename Vector>
void AddWeighted(Vector& sum, const double* values, double weight) {
    Vector vector;
    std::memcpy(&vector, values, sizeof vector);
    sum += vector * weight;
}

/// Four vectors' worth of sums, which stay in registers along the trail.
template <typename Vector>
void SumVectors(const double* const* samples, std::ptrdiff_t at, const double* weights, int length,
                double* sums) {
    constexpr int lanes = sizeof(Vector) / sizeof(double);
    Vector first{};
    Vector second{};
    Vector third{};
    Vector fourth{};
    for (int place = 0; place < length; ++place) {
        const double* const values = samples[place] + at;
        const double weight = weights[place];
        AddWeighted(first, values, weight);
        AddWeighted(second, values + lanes, weight);
        AddWeighted(third, values + 2 * lanes, weight);
        AddWeighted(fourth, values + 3 * lanes, weight);
    }
    std::memcpy(sums, &first, sizeof first);
    std::memcpy(sums + lanes, &second, sizeof second);
    std::memcpy(sums + 2 * lanes, &third, sizeof third);
    std::memcpy(sums + 3 * lanes, &fourth, sizeof fourth);
}

/// The sources of the pixels of one row.
struct TrailRow {
    /// For each place of the trails the red values from column 0 on; green and blue follow at
    /// distances of `colorStride`.
    const double* const* samples;
    std::ptrdiff_t colorStride;
    const double* weights;
    int length;
    /// The alpha bytes at the last place.
    const unsigned char* alpha;
};

/// Truncates sums that lie in 0 .. 255 and a little more.
void StoreGroup(const double (&sums)[colorCount][groupSize], const unsigned char* alpha,
                unsigned char* pixels, int count) {
    for (int i = 0; i < count; ++i) {
        const int color = static_cast<int>(sums[0][i]) | static_cast<int>(sums[1][i]) << 8 |
                          static_cast<int>(sums[2][i]) << 16;
        StorePixel(pixels, i, static_cast<Pixel>(color) | static_cast<Pixel>(alpha[i]) << 24);
    }
}

template <typename Vector>
void BlurRowLoop(const TrailRow& row, unsigned char* pixels, int width) {
    constexpr int atOnce = 4 * sizeof(Vector) / sizeof(double);
    for (int x = 0; x < width; x += groupSize) {
        double sums[colorCount][groupSize];
        for (int c = 0; c < colorCount; ++c) {
            for (int i = 0; i < groupSize; i += atOnce) {
                SumVectors<Vector>(row.samples, c * row.colorStride + x + i, row.weights,
                                   row.length, sums[c] + i);
            }
        }
        unsigned char* const group = pixels + x * bytesPerPixel;
        if (width - x >= groupSize) {
            StoreGroup(sums, row.alpha + x, group, groupSize);
        } else {
            StoreGroup(sums, row.alpha + x, group, width - x);
        }
    }
}

// The rows that the trails of one row run through.

/// The channels of a row, each with a margin on one side.
struct Channels {
    double* colors[colorCount];
    unsigned char* alpha;
};

void WidenLoop(const unsigned char* pixels, const Channels& out, int count) {
    double* __restrict const red = out.colors[0];
    double* __restrict const green = out.colors[1];
    double* __restrict const blue = out.colors[2];
    unsigned char* __restrict const alpha = out.alpha;
    for (int i = 0; i < count; ++i) {
        const Pixel pixel = LoadPixel(pixels, i);
        red[i] = RedOf(pixel);
        green[i] = GreenOf(pixel);
        blue[i] = BlueOf(pixel);
        alpha[i] = static_cast<unsigned char>(pixel >> 24);
    }
}

/// Rows widened to doubles, once for all the trails that meet them. The tile wraps around in a
/// margin before or after the row, depending on the direction of the trails, and after it to the
/// end of the last group.
class RowRing {
  public:
    RowRing(int newWidth, int newDepth, int reachLeft, int reachRight)
        : width(newWidth),
          before(reachLeft),
          after((width + groupSize - 1) / groupSize * groupSize - width + reachRight),
          fits(Fits(newDepth)),
          colors(Size(newDepth, colorCount)),
          alphas(Size(newDepth, 1)) {}

    /// True if there was no memory.
    bool Failed() const { return !fits || colors.Failed() || alphas.Failed(); }

    std::ptrdiff_t Stride() const { return std::ptrdiff_t{before} + width + after; }

    void Load(int slot, const unsigned char* pixels) {
        const Channels row = Row(slot);
        ForThisProcessor<WidenLoop>(pixels, row, width);
        for (double* color : row.colors) {
            FillMargins(color);
        }
        FillMargins(row.alpha);
    }

    /// Pointers to column 0.
    Channels Row(int slot) const {
        double* const red = colors.Values() + slot * colorCount * Stride() + before;
        return {{red, red + Stride(), red + 2 * Stride()},
                alphas.Values() + slot * Stride() + before};
    }

  private:
    static constexpr int bytesPerPlace = colorCount * sizeof(double) + 1;

    /// Trails longer than the dialogs give can need more memory than there are addresses.
    bool Fits(int depth) const {
        constexpr double most = 1 << 30;
        return static_cast<double>(Stride()) * depth * bytesPerPlace <= most;
    }

    std::size_t Size(int depth, int channels) const {
        return fits ? static_cast<std::size_t>(Stride() * depth * channels) : 0;
    }

    template <typename Value>
    void FillMargins(Value* row) const {
        for (int x = -1; x >= -before; --x) {
            row[x] = row[x + width];
        }
        for (int x = width; x < width + after; ++x) {
            row[x] = row[x - width];
        }
    }

    int width;
    int before;
    int after;
    bool fits;
    HandleArray<double> colors;
    HandleArray<unsigned char> alphas;
};

/// One run, row by row against the direction of the trails, so that a row is blurred in place after
/// all other rows have read it, except those that wrap around, for which the first rows are kept.
class TrailRun {
  public:
    TrailRun(PaintClass& newPic, short newLength, short direction)
        : pic(newPic),
          length(newLength),
          step(StepOf(direction)),
          depth(step.dy == 0 ? 1 : std::min<int>(length, pic.grY)),
          weights(static_cast<std::size_t>(length)),
          samples(static_cast<std::size_t>(length)),
          kept(static_cast<std::size_t>(depth * pic.RowBytes())),
          ring(pic.grX, depth, step.dx < 0 ? Reach() : 0, step.dx > 0 ? Reach() : 0) {
        if (!Failed()) {
            FillWeights(weights.Values(), length);
        }
    }

    bool Failed() const {
        return weights.Failed() || samples.Failed() || kept.Failed() || ring.Failed();
    }

    void Run(CursorClass& cursor) {
        for (int i = 0; i + 1 < depth; ++i) {
            std::memcpy(kept.Values() + i * pic.RowBytes(), PixelRow(i),
                        static_cast<std::size_t>(pic.RowBytes()));
            ring.Load(i, PixelRow(i));
        }
        for (int i = 0; i < pic.grY; ++i) {
            // A ring of the whole tile is full for good with its last row.
            if (depth < pic.grY || i == 0) {
                LoadRow(i + depth - 1);
            }
            BlurRow(i);
            cursor.Tick();
        }
    }

  private:
    /// How far the trails extend sideways, in columns of the tile.
    int Reach() const { return std::min<int>(length, pic.grX) - 1; }

    /// Row `i` of the run: along the trails, from an edge of the tile.
    unsigned char* PixelRow(int i) const {
        return pic.PixelAddress(0, static_cast<short>(step.dy < 0 ? pic.grY - 1 - i : i));
    }

    void LoadRow(int i) {
        const bool isBlurred = i >= pic.grY;
        ring.Load(i % depth,
                  isBlurred ? kept.Values() + (i - pic.grY) * pic.RowBytes() : PixelRow(i));
    }

    void BlurRow(int i) {
        Channels row{};
        std::ptrdiff_t shift = 0;
        for (int place = 0; place < length; ++place) {
            row = ring.Row((i + place * std::abs(step.dy)) % depth);
            shift = step.dx * (place % pic.grX);
            samples.Values()[place] = row.colors[0] + shift;
        }
        const TrailRow trails{samples.Values(), ring.Stride(), weights.Values(), length,
                              row.alpha + shift};
        ForThisProcessor<BlurRowLoop<Vector2>, BlurRowLoop<Vector4>>(trails, PixelRow(i), pic.grX);
    }

    PaintClass& pic;
    short length;
    Step step;
    /// How many rows a trail meets.
    int depth;
    HandleArray<double> weights;
    HandleArray<const double*> samples;
    HandleArray<unsigned char> kept;
    RowRing ring;
};

/// A run over short trails that cross the rows: in integers, row by row, until too many channels
/// are left to doubles, and the rest in strips of doubles, which take no longer for one picture
/// than for another. Both blur in place, so that one can go on where the other ended.
class ShortRun {
  public:
    static bool Takes(short length, short direction) {
        return length >= 2 && length <= longestStripTrail && StepOf(direction).dy != 0;
    }

    ShortRun(PaintClass& newPic, short newLength, short direction)
        : pic(newPic),
          length(newLength),
          step(StepOf(direction)),
          keptRows(std::min(length - 1, int{pic.grY})),
          weights(static_cast<std::size_t>(length * stripColumns)),
          kept(static_cast<std::size_t>(keptRows * pic.RowBytes())),
          rows(pic.grX, length, step.dx) {}

    bool Failed() const { return weights.Failed() || kept.Failed() || rows.Failed(); }

    void Run(CursorClass& cursor) {
        FillWeights(weights.Values(), length);
        KeepRows();
        const int done = HasAvx2() && pic.grX >= trailRowGroup ? RunRows(cursor) : 0;
        if (done < pic.grY) {
            RunStrips(done, cursor);
        }
    }

  private:
    /// Row `y` of the run: along the trails, from an edge of the tile.
    unsigned char* PixelRow(int y) const {
        return pic.PixelAddress(0, static_cast<short>(step.dy < 0 ? pic.grY - 1 - y : y));
    }

    /// The first rows, which trails from the last ones reach.
    void KeepRows() {
        for (int y = 0; y < keptRows; ++y) {
            std::memcpy(kept.Values() + y * pic.RowBytes(), PixelRow(y),
                        static_cast<std::size_t>(pic.RowBytes()));
        }
    }

    void LoadRow(int y) {
        rows.Load(y, y < pic.grY ? PixelRow(y) : kept.Values() + y % pic.grY * pic.RowBytes());
    }

    /// Returns in which row it ended.
    int RunRows(CursorClass& cursor) {
        const TrailWeights shared(weights.Values(), length);
        for (int y = 0; y < length - 1; ++y) {
            LoadRow(y);
        }
        // With so many channels in doubles a row takes as long as in strips.
        const int affordable = pic.grX * 3 / 8;
        // Beyond those. A few rows that have most channels in doubles are no reason to change over.
        int excess = 0;
        for (int y = 0; y < pic.grY; ++y) {
            if (excess > excessRows * pic.grX && CanEndAt(y)) {
                return y;
            }
            LoadRow(y + length - 1);
            excess = std::max(0, excess + rows.Blur(y, shared, PixelRow(y)) - affordable);
            cursor.Tick();
        }
        return pic.grY;
    }

    /// True if the trails from row `y` on pass the end of the tile no more than once.
    bool CanEndAt(int y) const { return pic.grY - y >= length; }

    /// All rows from `first` on.
    void RunStrips(int first, CursorClass& cursor) {
        for (int i = length * stripColumns - 1; i >= 0; --i) {
            weights.Values()[i] = weights.Values()[i / stripColumns];
        }
        const TrailTile tile = TileFrom(first);
        int ticks = 0;
        for (int column = 0; column < tile.width; column += stripColumns) {
            SumTrailStrip(tile, column);
            // One for each row, as far as the run has come.
            for (; ticks < tile.height * std::min(column + stripColumns, tile.width) / tile.width;
                 ++ticks) {
                cursor.Tick();
            }
        }
    }

    TrailTile TileFrom(int row) const {
        return {PixelRow(row),    std::ptrdiff_t{step.dy} * pic.RowBytes(),
                pic.grX,          pic.grY - row,
                step.dx,          kept.Values(),
                weights.Values(), length};
    }

    static constexpr int excessRows = 4;
    static_assert(longestStripTrail == longestRowTrail);

    PaintClass& pic;
    short length;
    Step step;
    int keptRows;
    HandleArray<double> weights;
    HandleArray<unsigned char> kept;
    TrailRows rows;
};

template <typename Run>
bool RunTrails(PaintClass& pic, short length, short direction, CursorClass& cursor) {
    Run run(pic, length, direction);
    if (run.Failed()) {
        return false;
    }
    run.Run(cursor);
    return true;
}

}  // namespace

bool PaintClass::MotionBlur(short length, short direction) {
    if (length < 1) {
        return true;
    }
    CursorClass cursor;
    if (!HasRoomForClone()) {
        return false;
    }
    const auto runTrails =
        ShortRun::Takes(length, direction) ? RunTrails<ShortRun> : RunTrails<TrailRun>;
    const bool succeeded = runTrails(*this, length, direction, cursor);
    DeleteClone();
    if (succeeded) {
        Unlock();
        SetDirty();
    }
    return succeeded;
}

#include "paint/kernels/TrailStrips.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"

namespace {

constexpr int lanes = stripColumns;
constexpr int colorCount = 3;

using Doubles = double __attribute__((vector_size(lanes * sizeof(double))));
using Integers = std::int32_t __attribute__((vector_size(lanes * sizeof(std::int32_t))));

/// The way of a strip down the tile: `count` pixels from `column` on, around the torus.
class StripWalk {
  public:
    StripWalk(const TrailTile& newTile, int firstColumn)
        : tile(newTile),
          row(newTile.pixels),
          column(firstColumn),
          count(std::min(lanes, newTile.width - firstColumn)) {}

    /// From here on, the rows in which the strip has all its pixels side by side.
    int RowsInOnePiece() const {
        const int last = tile.width - lanes;
        if (count < lanes || column > last) {
            return 0;
        }
        if (tile.lean == 0) {
            return tile.height;
        }
        return tile.lean > 0 ? last - column + 1 : column + 1;
    }
    unsigned char* Pixels() const { return row + column * bytesPerPixel; }

    /// `pixels` are as many as the strip has columns; those beyond them mean nothing.
    void Load(const unsigned char* sourceRow, Integers& pixels) const {
        for (int i = 0; i < lanes; ++i) {
            pixels[i] = static_cast<std::int32_t>(LoadPixel(sourceRow, Place(i)));
        }
    }
    const unsigned char* Row() const { return row; }
    void Store(const Integers& pixels) const {
        for (int i = 0; i < count; ++i) {
            StorePixel(row, Place(i), static_cast<Pixel>(pixels[i]));
        }
    }

    void Advance(int rows) {
        row += rows * tile.rowStep;
        column += rows * tile.lean;
        column += column < 0 ? tile.width : 0;
        column -= column >= tile.width ? tile.width : 0;
    }

  private:
    int Place(int lane) const { return (column + lane) % tile.width; }

    const TrailTile& tile;
    unsigned char* row;
    int column;
    int count;
};

/// One by one, which becomes one instruction; converting the whole vector would become four.
void Widen(const Integers& values, Doubles& widened) {
    widened = Doubles{static_cast<double>(values[0]), static_cast<double>(values[1]),
                      static_cast<double>(values[2]), static_cast<double>(values[3])};
}

/// The sums of the trails that the strip's walk is on, for each color: entry k has had k + 1
/// pixels.
template <std::size_t length>
class StripSums {
  public:
    explicit StripSums(const double* newWeights) : weights(newWeights) {}

    /// Adds a row of the strip to all trails. `pixels` become what the trails that end there come
    /// to.
    void Add(Integers& pixels) {
        const Integers source = pixels;
        pixels = source & static_cast<std::int32_t>(alphaMask);
        for (int c = 0; c < colorCount; ++c) {
            const Integers color = source >> 8 * c & 0xFF;
            Doubles values;
            Widen(color, values);
            Doubles ended = values;
            Weigh(length - 1, ended);
            ended += sums[c][length - 2];
            for (std::size_t k = length - 2; k > 0; --k) {
                Doubles weighted = values;
                Weigh(k, weighted);
                sums[c][k] = sums[c][k - 1] + weighted;
            }
            sums[c][0] = values;
            Weigh(0, sums[c][0]);
            pixels |= __builtin_convertvector(ended, Integers) << 8 * c;
        }
    }

  private:
    void Weigh(std::size_t k, Doubles& values) const {
        Doubles weight;
        std::memcpy(&weight, weights + k * lanes, sizeof weight);
        values *= weight;
    }

    /// In memory: the registers are full of sums.
    const double* weights;
    Doubles sums[colorCount][length - 1] = {};
};

/// The first rows come again after the last ones.
const unsigned char* KeptRow(const TrailTile& tile, int y) {
    return tile.nextRows + std::ptrdiff_t{y % tile.height} * tile.width * bytesPerPixel;
}

/// `rows` rows in which neither what is read nor what is written meets an edge. Rows of the largest
/// tile fall on few lines of the nearest cache, so they are fetched a little before they are read:
/// a sixth of the time. Many more at once would push each other out.
template <std::size_t length>
void SumRows(StripSums<length>& sums, const unsigned char* source, unsigned char* target,
             std::ptrdiff_t step, int rows) {
    constexpr int rowsAhead = 8;
    for (int i = 0; i < rows; ++i) {
        Integers pixels;
        __builtin_prefetch(source + rowsAhead * step);
        std::memcpy(&pixels, source, sizeof pixels);
        sums.Add(pixels);
        std::memcpy(target, &pixels, sizeof pixels);
        source += step;
        target += step;
    }
}

/// In place: a row of the strip is written after all its trails have read it, except those from
/// the last rows, which find the first ones kept.
template <std::size_t length>
void SumStripLoop(const TrailTile& tile, int firstColumn) {
    constexpr int lag = static_cast<int>(length) - 1;
    const std::ptrdiff_t step = tile.rowStep + tile.lean * bytesPerPixel;
    StripSums<length> sums(tile.weights);
    StripWalk source(tile, firstColumn);
    StripWalk target(tile, firstColumn);
    for (int y = 0; y < tile.height + lag;) {
        const int rows =
            std::min({source.RowsInOnePiece(), target.RowsInOnePiece(), tile.height - y});
        if (y >= lag && rows > 0) {
            SumRows(sums, source.Pixels(), target.Pixels(), step, rows);
            source.Advance(rows);
            target.Advance(rows);
            y += rows;
            continue;
        }
        Integers pixels;
        source.Load(y < tile.height ? source.Row() : KeptRow(tile, y), pixels);
        sums.Add(pixels);
        source.Advance(1);
        if (y >= lag) {
            target.Store(pixels);
            target.Advance(1);
        }
        ++y;
    }
}

}  // namespace

void SumTrailStrip(const TrailTile& tile, int first) {
    switch (tile.length) {
        case 2:
            return ForThisProcessor<SumStripLoop<2>>(tile, first);
        case 3:
            return ForThisProcessor<SumStripLoop<3>>(tile, first);
        case 4:
            return ForThisProcessor<SumStripLoop<4>>(tile, first);
        case 5:
            return ForThisProcessor<SumStripLoop<5>>(tile, first);
        default:
            return ForThisProcessor<SumStripLoop<longestStripTrail>>(tile, first);
    }
}

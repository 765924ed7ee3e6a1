#include "paint/kernels/TileWindow.h"

#include <immintrin.h>

#include <algorithm>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/QuadMix.h"

// The arithmetic in doubles is written twice, in vectors of two, here, and, for AVX2, of four; the
// integer code around it is shared.

namespace {

using quads::groupSize;

// Integers.

/// Numbers the pixels of a window along its rows.
class WindowPlaces {
  public:
    WindowPlaces(int left, int top, int columns)
        : left4(_mm_set1_epi32(left)),
          top4(_mm_set1_epi32(top)),
          columns4(_mm_set1_epi32(columns)) {}

    [[gnu::always_inline]] __m128i Numbers(__m128i x, __m128i y) const {
        // Both factors have 15 bits, which this multiplication takes from the lower halves.
        return _mm_add_epi32(_mm_madd_epi16(_mm_sub_epi32(y, top4), columns4),
                             _mm_sub_epi32(x, left4));
    }

  private:
    __m128i left4;
    __m128i top4;
    __m128i columns4;
};

/// Takes coordinates below 32768 in size to places along one side of the tile, as Wrap() does.
class WrappedAxis {
  public:
    explicit WrappedAxis(int size)
        : wholeTiles(_mm_set1_epi32((32768 / size + 1) * size)),
          inverse(_mm_set1_ps(1.0f / static_cast<float>(size))),
          size4(_mm_set1_ps(static_cast<float>(size))) {}

    /// All numbers stay below 2^17, so singles hold them exactly; the half keeps the quotient's
    /// error away from whole numbers.
    [[gnu::always_inline]] __m128i Places(__m128i coordinates) const {
        const __m128 positive = _mm_cvtepi32_ps(_mm_add_epi32(coordinates, wholeTiles));
        const __m128 middle = _mm_add_ps(positive, _mm_set1_ps(0.5f));
        const __m128i tiles = _mm_cvttps_epi32(_mm_mul_ps(middle, inverse));
        const __m128 tileStart = _mm_mul_ps(_mm_cvtepi32_ps(tiles), size4);
        return _mm_cvttps_epi32(_mm_sub_ps(positive, tileStart));
    }

  private:
    /// As many pixels as make every coordinate positive.
    __m128i wholeTiles;
    __m128 inverse;
    __m128 size4;
};

/// Numbers the pixels of a window that has one column and one row more than the tile.
class WrappedPlaces {
  public:
    WrappedPlaces(int columns, int rows)
        : across(columns - 1), down(rows - 1), columns4(_mm_set1_epi32(columns)) {}

    [[gnu::always_inline]] __m128i Numbers(__m128i x, __m128i y) const {
        return _mm_add_epi32(_mm_madd_epi16(down.Places(y), columns4), across.Places(x));
    }

  private:
    WrappedAxis across;
    WrappedAxis down;
    __m128i columns4;
};

void StoreFour(__m128i pixels, unsigned char* out) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), pixels);
}

// Doubles, two at a time.

struct Pairs {
    __m128d low;
    __m128d high;
};

Pairs LoadPairs(double origin, const double* values) {
    const __m128d origin2 = _mm_set1_pd(origin);
    return {_mm_add_pd(origin2, _mm_loadu_pd(values)),
            _mm_add_pd(origin2, _mm_loadu_pd(values + 2))};
}

__m128i Truncated(const Pairs& values) {
    return _mm_unpacklo_epi64(_mm_cvttpd_epi32(values.low), _mm_cvttpd_epi32(values.high));
}

Pairs PairsOf(__m128i integers) {
    return {_mm_cvtepi32_pd(integers), _mm_cvtepi32_pd(_mm_unpackhi_epi64(integers, integers))};
}

Pairs Minus(const Pairs& a, const Pairs& b) {
    return {_mm_sub_pd(a.low, b.low), _mm_sub_pd(a.high, b.high)};
}

__m128d Mix(__m128d first, __m128d second, __m128d fraction) {
    const __m128d rest = _mm_sub_pd(_mm_set1_pd(1.0), fraction);
    return _mm_add_pd(_mm_mul_pd(rest, first), _mm_mul_pd(second, fraction));
}

__m128i MixPairs(const quads::Sums& sums, const Pairs& fx, const Pairs& fy) {
    const Pairs above = PairsOf(sums.above);
    const Pairs below = PairsOf(sums.below);
    const Pairs left = PairsOf(sums.left);
    const Pairs right = PairsOf(sums.right);
    return Truncated(
        {_mm_add_pd(Mix(above.low, below.low, fy.low), Mix(left.low, right.low, fx.low)),
         _mm_add_pd(Mix(above.high, below.high, fy.high), Mix(left.high, right.high, fx.high))});
}

template <typename Places>
void ReadGroups(const Pixel* pixels, std::ptrdiff_t columns, const Places& places,
                const Positions& at, unsigned char* out) {
    for (int i = 0; i < at.count; i += groupSize) {
        // The last group begins early rather than to be a smaller one.
        const int first = std::min(i, at.count - groupSize);
        const Pairs x = LoadPairs(at.originX, at.x + first);
        const Pairs y = LoadPairs(at.originY, at.y + first);
        const __m128i wholeX = Truncated(x);
        const __m128i wholeY = Truncated(y);
        const Pairs fx = Minus(x, PairsOf(wholeX));
        const Pairs fy = Minus(y, PairsOf(wholeY));
        const quads::Corners corners =
            quads::LoadCorners(pixels, columns, places.Numbers(wholeX, wholeY));
        const quads::Sums redBlue = quads::SumsOfRedAndBlue(corners);
        StoreFour(quads::PixelsOf(MixPairs(quads::LowerHalf(redBlue), fx, fy),
                                  MixPairs(quads::SumsOfGreen(corners), fx, fy),
                                  MixPairs(quads::UpperHalf(redBlue), fx, fy)),
                  out + first * bytesPerPixel);
    }
}

// Doubles, four at a time.

template <typename Places>
[[gnu::target("avx2")]] void ReadGroupsWide(const Pixel* pixels, std::ptrdiff_t columns,
                                            const Places& places, const Positions& at,
                                            unsigned char* out) {
    for (int i = 0; i < at.count; i += groupSize) {
        const int first = std::min(i, at.count - groupSize);
        const __m256d x = _mm256_add_pd(_mm256_set1_pd(at.originX), _mm256_loadu_pd(at.x + first));
        const __m256d y = _mm256_add_pd(_mm256_set1_pd(at.originY), _mm256_loadu_pd(at.y + first));
        const __m128i wholeX = _mm256_cvttpd_epi32(x);
        const __m128i wholeY = _mm256_cvttpd_epi32(y);
        const __m256d fx = _mm256_sub_pd(x, _mm256_cvtepi32_pd(wholeX));
        const __m256d fy = _mm256_sub_pd(y, _mm256_cvtepi32_pd(wholeY));
        const quads::Corners corners =
            quads::LoadCorners(pixels, columns, places.Numbers(wholeX, wholeY));
        StoreFour(quads::ColorsBetween(corners, fx, fy), out + first * bytesPerPixel);
    }
}

template <typename Places>
void ReadAll(const Pixel* pixels, int columns, const Places& places, const Positions& at,
             unsigned char* out) {
    if (at.count >= groupSize) {
        ForThisProcessor<ReadGroups<Places>, ReadGroupsWide<Places>>(pixels, columns, places, at,
                                                                     out);
    } else if (at.count > 0) {
        // A few are read as a group of which only they are kept.
        double x[groupSize];
        double y[groupSize];
        for (int i = 0; i < groupSize; ++i) {
            x[i] = at.x[std::min(i, at.count - 1)];
            y[i] = at.y[std::min(i, at.count - 1)];
        }
        unsigned char group[groupSize * bytesPerPixel];
        ReadGroups(pixels, columns, places, {at.originX, at.originY, x, y, groupSize}, group);
        std::copy_n(group, at.count * bytesPerPixel, out);
    }
}

std::size_t PixelCount(int columns, int rows) {
    return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
}

bool IsSide(int length) {
    return length >= 1 && length <= TileWindow::sideLimit;
}

}  // namespace

TileWindow::TileWindow(int newColumns, int newRows)
    : columns(newColumns),
      rows(newRows),
      block(IsSide(columns) && IsSide(rows) ? PixelCount(columns, rows) : 0) {
    if (IsSide(columns) && IsSide(rows)) {
        pixels = block.Values();
    }
}

void TileWindow::Copy(const PicClass& tile, int newLeft, int newTop) {
    MoveTo(newLeft, newTop);
    for (int row = 0; row < rows; ++row) {
        CopyRow(tile, row, 0, columns);
    }
}

void TileWindow::CopyRow(const PicClass& tile, int row, int first, int count) {
    const unsigned char* const source = tile.PixelAddress(0, Wrap(top + row, tile.grY));
    Pixel* target = Row(row) + first;
    int from = Wrap(left + first, tile.grX);
    while (count > 0) {
        const int run = std::min(count, tile.grX - from);
        std::memcpy(target, source + from * bytesPerPixel,
                    static_cast<std::size_t>(run * bytesPerPixel));
        target += run;
        count -= run;
        from = 0;
    }
}

void TileWindow::Read(const Positions& positions, unsigned char* out) const {
    ReadAll(pixels, columns, WindowPlaces(left, top, columns), positions, out);
}

void TileWindow::ReadWrapped(const Positions& positions, unsigned char* out) const {
    ReadAll(pixels, columns, WrappedPlaces(columns, rows), positions, out);
}

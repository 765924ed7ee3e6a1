#include "paint/kernels/StampRow.h"

#include <emmintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"

namespace {

constexpr int lanes = 4;

using Doubles = double __attribute__((vector_size(lanes * sizeof(double))));
using Integers = std::int32_t __attribute__((vector_size(lanes * sizeof(std::int32_t))));

/// Vectors of two values, the width of the processor's own instructions.
struct Halves {
    explicit Halves(const Doubles& values) {
        double single[lanes];
        std::memcpy(single, &values, sizeof values);
        first = _mm_loadu_pd(single);
        second = _mm_loadu_pd(single + 2);
    }

    __m128d first;
    __m128d second;
};

/// The square roots, rounded to the nearest doubles.
void TakeRoots(Doubles& values) {
    const Halves halves(values);
    double single[lanes];
    _mm_storeu_pd(single, _mm_sqrt_pd(halves.first));
    _mm_storeu_pd(single + 2, _mm_sqrt_pd(halves.second));
    std::memcpy(&values, single, sizeof values);
}

/// For each value, all bits of an integer if it is below the limit.
void CompareBelow(const Doubles& values, const Doubles& limits, Integers& mask) {
    const Halves value(values);
    const Halves limit(limits);
    const __m128 first = _mm_castpd_ps(_mm_cmplt_pd(value.first, limit.first));
    const __m128 second = _mm_castpd_ps(_mm_cmplt_pd(value.second, limit.second));
    // The low half of each.
    const __m128 all = _mm_shuffle_ps(first, second, 0x88);
    std::memcpy(&mask, &all, sizeof mask);
}

bool IsAnyBelow(const Doubles& values, const Doubles& limits) {
    const Halves value(values);
    const Halves limit(limits);
    const __m128d any =
        _mm_or_pd(_mm_cmplt_pd(value.first, limit.first), _mm_cmplt_pd(value.second, limit.second));
    return _mm_movemask_pd(any) != 0;
}

/// One by one, which becomes one instruction; converting the whole vector would become four.
void Widen(const Integers& values, Doubles& widened) {
    widened = Doubles{static_cast<double>(values[0]), static_cast<double>(values[1]),
                      static_cast<double>(values[2]), static_cast<double>(values[3])};
}

/// A single pixel.
void StampPixel(const StampRow& row, int place) {
    unsigned char* const pixel = row.pixels + place * bytesPerPixel;
    const double distance =
        256.0 * std::sqrt(row.columnSquares[place] + row.rowSquare) / row.radius;
    if (!(distance < pixel[alphaByte])) {
        return;
    }
    const unsigned char* const before = row.before + place * bytesPerPixel;
    const unsigned char* const source = row.sources + place * bytesPerPixel;
    pixel[alphaByte] = static_cast<unsigned char>(distance);
    const double share = distance * 0.00390625;
    for (int c = 0; c < alphaByte; ++c) {
        pixel[c] = static_cast<unsigned char>(source[c] * (1.0 - share) + before[c] * share);
    }
}

void StampGroup(const StampRow& row, int place) {
    Integers pixels;
    std::memcpy(&pixels, row.pixels + place * bytesPerPixel, sizeof pixels);
    const Integers alphas = pixels >> 24 & 0xFF;
    Doubles reached;
    Widen(alphas, reached);
    Doubles squares;
    std::memcpy(&squares, row.columnSquares + place, sizeof squares);
    squares += row.rowSquare;
    // Most groups are left as they are, which the squares tell without roots and divisions: their
    // few roundings are far below the margin of 2^-40.
    constexpr double margin = 1.0 + 0x1p-40;
    const Doubles reach = reached * (row.radius / 256.0);
    if (!IsAnyBelow(squares, reach * reach * margin)) {
        return;
    }
    TakeRoots(squares);
    const Doubles distances = 256.0 * squares / row.radius;
    Integers isNearer;
    CompareBelow(distances, reached, isNearer);
    const Doubles shares = distances * 0.00390625;
    const Doubles rests = 1.0 - shares;
    Integers before;
    Integers sources;
    std::memcpy(&before, row.before + place * bytesPerPixel, sizeof before);
    std::memcpy(&sources, row.sources + place * bytesPerPixel, sizeof sources);
    Integers mixed = __builtin_convertvector(distances, Integers) << 24;
    for (int c = 0; c < alphaByte; ++c) {
        const Integers oldChannels = before >> 8 * c & 0xFF;
        const Integers newChannels = sources >> 8 * c & 0xFF;
        Doubles oldPart;
        Doubles newPart;
        Widen(oldChannels, oldPart);
        Widen(newChannels, newPart);
        mixed |= __builtin_convertvector(newPart * rests + oldPart * shares, Integers) << 8 * c;
    }
    pixels = (mixed & isNearer) | (pixels & ~isNearer);
    std::memcpy(row.pixels + place * bytesPerPixel, &pixels, sizeof pixels);
}

void StampLoop(const StampRow& row) {
    const std::ptrdiff_t lead = row.pixels - row.sources;
    // A group reads all its sources before it writes.
    const bool readsItself = lead > 0 && lead < lanes * bytesPerPixel;
    int place = 0;
    for (; !readsItself && place + lanes <= row.count; place += lanes) {
        StampGroup(row, place);
    }
    for (; place < row.count; ++place) {
        StampPixel(row, place);
    }
}

}  // namespace

void StampPixels(const StampRow& row) {
    ForThisProcessor<StampLoop>(row);
}

#include "paint/kernels/StampRow.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"

namespace {

constexpr int lanes = 4;

using Doubles = double __attribute__((vector_size(lanes * sizeof(double))));
using Integers = std::int32_t __attribute__((vector_size(lanes * sizeof(std::int32_t))));

using Masks = std::int64_t __attribute__((vector_size(lanes * sizeof(std::int64_t))));
using MaskHalves = std::int32_t __attribute__((vector_size(lanes * sizeof(std::int64_t))));

/// The square roots, rounded to the nearest doubles.
void TakeRoots(Doubles& values) {
    values = Doubles{std::sqrt(values[0]), std::sqrt(values[1]), std::sqrt(values[2]),
                     std::sqrt(values[3])};
}

/// For each value, all bits of an integer if it is below the limit.
void CompareBelow(const Doubles& values, const Doubles& limits, Integers& mask) {
    const Masks areBelow = values < limits;
    MaskHalves halves;
    std::memcpy(&halves, &areBelow, sizeof halves);
    mask = __builtin_shufflevector(halves, halves, 0, 2, 4, 6);
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

// Most pixels are left as they are, which their alpha bytes' squares tell, in 16 bits each.

constexpr int searched = 8;

/// The alpha bytes of four pixels, in 32 bits each.
__m128i AlphasOf(const unsigned char* pixels) {
    return _mm_srli_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels)), 24);
}

/// A bit for each of the pixels from `place` on that may change.
unsigned SearchPixels(const StampRow& row, int place) {
    const unsigned char* const pixels = row.pixels + place * bytesPerPixel;
    const __m128i alphas =
        _mm_packs_epi32(AlphasOf(pixels), AlphasOf(pixels + searched / 2 * bytesPerPixel));
    const __m128i columns =
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(row.columnReach + place));
    const __m128i reach = _mm_adds_epu16(columns, _mm_set1_epi16(static_cast<short>(row.rowReach)));
    const __m128i above = _mm_subs_epu16(_mm_mullo_epi16(alphas, alphas), reach);
    const __m128i areLeft = _mm_cmpeq_epi16(above, _mm_setzero_si128());
    const int left = _mm_movemask_epi8(_mm_packs_epi16(areLeft, areLeft));
    return ~static_cast<unsigned>(left) & 0xFF;
}

/// The first and the last pixel that may change; none if the last is before the first.
struct Candidates {
    int first;
    int last;
};

Candidates SearchRow(const StampRow& row) {
    if (row.count < searched) {
        return {0, row.count - 1};
    }
    std::uint32_t bits = 0;
    for (int start = 0; start < row.count; start += searched) {
        // The last ones once more instead of any after the row.
        const int place = std::min(start, row.count - searched);
        bits |= SearchPixels(row, place) << place;
    }
    return {std::countr_zero(bits), 31 - std::countl_zero(bits)};
}

void StampLoop(const StampRow& row) {
    const Candidates candidates = SearchRow(row);
    const std::ptrdiff_t lead = row.pixels - row.sources;
    // A group reads all its sources before it writes.
    const bool readsItself = lead > 0 && lead < lanes * bytesPerPixel;
    if (readsItself || row.count < lanes) {
        for (int place = candidates.first; place <= candidates.last; ++place) {
            StampPixel(row, place);
        }
        return;
    }
    for (int place = candidates.first; place <= candidates.last; place += lanes) {
        // The last ones once more instead of any after the row: a pixel does not change twice.
        StampGroup(row, std::min(place, row.count - lanes));
    }
}

}  // namespace

std::uint16_t StampReach(double square, double radius) {
    constexpr double margin = 1.0 - 0x1p-40;
    const double reach = square * (65536.0 * margin) / (radius * radius);
    return static_cast<std::uint16_t>(std::min(reach, 65535.0));
}

void StampPixels(const StampRow& row) {
    ForThisProcessor<StampLoop>(row);
}

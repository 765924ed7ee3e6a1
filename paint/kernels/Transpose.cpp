#include "paint/kernels/Transpose.h"

#include <emmintrin.h>

#include <algorithm>

#include "paint/kernels/PixelBytes.h"

namespace {

/// A square of pixels that is turned in registers.
constexpr int squareSide = 4;
/// As many rows go together as fill a line of the processor's cache on the other side.
constexpr int bandRows = 16;

unsigned char* PixelOf(const PixelRows& pixels, int x, int y) {
    return pixels.first + y * pixels.bytes + x * bytesPerPixel;
}

__m128i LoadFour(const unsigned char* from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

void StoreFour(unsigned char* to, __m128i pixels) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), pixels);
}

void TransposeSquare(const PixelRows& from, const PixelRows& to, int x, int y) {
    const unsigned char* const source = PixelOf(from, x, y);
    const __m128i first = LoadFour(source);
    const __m128i second = LoadFour(source + from.bytes);
    const __m128i third = LoadFour(source + 2 * from.bytes);
    const __m128i fourth = LoadFour(source + 3 * from.bytes);
    const __m128i firstLow = _mm_unpacklo_epi32(first, second);
    const __m128i firstHigh = _mm_unpackhi_epi32(first, second);
    const __m128i lastLow = _mm_unpacklo_epi32(third, fourth);
    const __m128i lastHigh = _mm_unpackhi_epi32(third, fourth);
    unsigned char* const target = PixelOf(to, y, x);
    StoreFour(target, _mm_unpacklo_epi64(firstLow, lastLow));
    StoreFour(target + to.bytes, _mm_unpackhi_epi64(firstLow, lastLow));
    StoreFour(target + 2 * to.bytes, _mm_unpacklo_epi64(firstHigh, lastHigh));
    StoreFour(target + 3 * to.bytes, _mm_unpackhi_epi64(firstHigh, lastHigh));
}

void TransposeOneByOne(const PixelRows& from, const PixelRows& to, int firstX, int endX, int firstY,
                       int endY) {
    for (int y = firstY; y < endY; ++y) {
        for (int x = firstX; x < endX; ++x) {
            std::memcpy(PixelOf(to, y, x), PixelOf(from, x, y), bytesPerPixel);
        }
    }
}

}  // namespace

void TransposePixels(const PixelRows& from, const PixelRows& to, int columns, int rows) {
    const int wholeColumns = columns - columns % squareSide;
    const int wholeRows = rows - rows % squareSide;
    for (int top = 0; top < wholeRows; top += bandRows) {
        const int bottom = std::min(top + bandRows, wholeRows);
        for (int x = 0; x < wholeColumns; x += squareSide) {
            for (int y = top; y < bottom; y += squareSide) {
                TransposeSquare(from, to, x, y);
            }
        }
    }
    TransposeOneByOne(from, to, wholeColumns, columns, 0, wholeRows);
    TransposeOneByOne(from, to, 0, columns, wholeRows, rows);
}

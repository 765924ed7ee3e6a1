// The colours between pixels by doubles, as GetPixelInterpolated defines them: four pixels at a
// time, each channel of theirs in a vector of its own.
#pragma once

#include <immintrin.h>

#include "raster/PicClass.h"

#define QUAD [[gnu::always_inline]] inline
#define QUAD_WIDE [[gnu::target("avx2"), gnu::always_inline]] inline

namespace quads {

/// Pixels that go at a time.
constexpr int groupSize = 4;

// Integers.

/// Two times two neighbours in a row.
QUAD __m128i LoadNeighbours(const Pixel* first, const Pixel* second) {
    const __m128i low = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(first));
    return _mm_castps_si128(
        _mm_loadh_pi(_mm_castsi128_ps(low), reinterpret_cast<const __m64*>(second)));
}

QUAD __m128i EvenLanes(__m128i low, __m128i high) {
    return _mm_castps_si128(
        _mm_shuffle_ps(_mm_castsi128_ps(low), _mm_castsi128_ps(high), _MM_SHUFFLE(2, 0, 2, 0)));
}

QUAD __m128i OddLanes(__m128i low, __m128i high) {
    return _mm_castps_si128(
        _mm_shuffle_ps(_mm_castsi128_ps(low), _mm_castsi128_ps(high), _MM_SHUFFLE(3, 1, 3, 1)));
}

/// The four pixels around each of four positions: a b
///                                                c d
struct Corners {
    __m128i a;
    __m128i b;
    __m128i c;
    __m128i d;
};

template <int lane>
QUAD const Pixel* LanePixel(const Pixel* pixels, __m128i numbers) {
    return pixels + _mm_cvtsi128_si32(_mm_shuffle_epi32(numbers, lane));
}

/// `pixels` are the upper left ones of four cells.
QUAD Corners LoadCorners(const Pixel* const (&pixels)[groupSize], std::ptrdiff_t columns) {
    const __m128i upperLow = LoadNeighbours(pixels[0], pixels[1]);
    const __m128i upperHigh = LoadNeighbours(pixels[2], pixels[3]);
    const __m128i lowerLow = LoadNeighbours(pixels[0] + columns, pixels[1] + columns);
    const __m128i lowerHigh = LoadNeighbours(pixels[2] + columns, pixels[3] + columns);
    return {EvenLanes(upperLow, upperHigh), OddLanes(upperLow, upperHigh),
            EvenLanes(lowerLow, lowerHigh), OddLanes(lowerLow, lowerHigh)};
}

QUAD Corners LoadCorners(const Pixel* pixels, std::ptrdiff_t columns, __m128i numbers) {
    return LoadCorners({LanePixel<0>(pixels, numbers), LanePixel<1>(pixels, numbers),
                        LanePixel<2>(pixels, numbers), LanePixel<3>(pixels, numbers)},
                       columns);
}

/// Sums of one channel, or of two that share a lane.
struct Sums {
    __m128i above;
    __m128i below;
    __m128i left;
    __m128i right;
};

QUAD Sums SumsOf(const Corners& corners) {
    return {_mm_add_epi32(corners.a, corners.b), _mm_add_epi32(corners.c, corners.d),
            _mm_add_epi32(corners.a, corners.c), _mm_add_epi32(corners.b, corners.d)};
}

QUAD Sums SumsOfRedAndBlue(const Corners& corners) {
    const __m128i mask = _mm_set1_epi32(0x00FF00FF);
    return SumsOf({_mm_and_si128(corners.a, mask), _mm_and_si128(corners.b, mask),
                   _mm_and_si128(corners.c, mask), _mm_and_si128(corners.d, mask)});
}

QUAD Sums SumsOfGreen(const Corners& corners) {
    const __m128i mask = _mm_set1_epi32(0xFF);
    return SumsOf({_mm_and_si128(_mm_srli_epi32(corners.a, 8), mask),
                   _mm_and_si128(_mm_srli_epi32(corners.b, 8), mask),
                   _mm_and_si128(_mm_srli_epi32(corners.c, 8), mask),
                   _mm_and_si128(_mm_srli_epi32(corners.d, 8), mask)});
}

QUAD Sums LowerHalf(const Sums& sums) {
    const __m128i mask = _mm_set1_epi32(0xFFFF);
    return {_mm_and_si128(sums.above, mask), _mm_and_si128(sums.below, mask),
            _mm_and_si128(sums.left, mask), _mm_and_si128(sums.right, mask)};
}

QUAD Sums UpperHalf(const Sums& sums) {
    return {_mm_srli_epi32(sums.above, 16), _mm_srli_epi32(sums.below, 16),
            _mm_srli_epi32(sums.left, 16), _mm_srli_epi32(sums.right, 16)};
}

/// Four pixels whose channels are a quarter of each mix, with the alpha byte 0. The mixes are four
/// times the values, by which every step stays exactly the same; the shift truncates what is
/// positive, and the packing clamps to a byte.
QUAD __m128i PixelsOf(__m128i red, __m128i green, __m128i blue) {
    const __m128i redGreen = _mm_packs_epi32(_mm_srai_epi32(red, 2), _mm_srai_epi32(green, 2));
    const __m128i blueZero = _mm_packs_epi32(_mm_srai_epi32(blue, 2), _mm_setzero_si128());
    const __m128i planes = _mm_packus_epi16(redGreen, blueZero);
    const __m128i pairs = _mm_unpacklo_epi8(planes, _mm_srli_si128(planes, 8));
    return _mm_unpacklo_epi8(pairs, _mm_srli_si128(pairs, 8));
}

// Doubles, four at a time. No fused multiplication, which would round otherwise.

QUAD_WIDE __m256d Mix(__m256d first, __m256d second, __m256d fraction) {
    const __m256d rest = _mm256_sub_pd(_mm256_set1_pd(1.0), fraction);
    return _mm256_add_pd(_mm256_mul_pd(rest, first), _mm256_mul_pd(second, fraction));
}

QUAD_WIDE __m128i MixChannel(const Sums& sums, __m256d fx, __m256d fy) {
    const __m256d alongY = Mix(_mm256_cvtepi32_pd(sums.above), _mm256_cvtepi32_pd(sums.below), fy);
    const __m256d alongX = Mix(_mm256_cvtepi32_pd(sums.left), _mm256_cvtepi32_pd(sums.right), fx);
    return _mm256_cvttpd_epi32(_mm256_add_pd(alongY, alongX));
}

/// The colours at four places with the fractions fx and fy.
QUAD_WIDE __m128i ColorsBetween(const Corners& corners, __m256d fx, __m256d fy) {
    const Sums redBlue = SumsOfRedAndBlue(corners);
    return PixelsOf(MixChannel(LowerHalf(redBlue), fx, fy),
                    MixChannel(SumsOfGreen(corners), fx, fy),
                    MixChannel(UpperHalf(redBlue), fx, fy));
}

}  // namespace quads

#undef QUAD
#undef QUAD_WIDE

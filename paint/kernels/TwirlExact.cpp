#include <algorithm>
#include <cstddef>

#include "paint/kernels/QuadMix.h"
#include "paint/kernels/TwirlEstimates.h"
#include "paint/kernels/TwirlLanes.h"

// The exact path, for four pixels at a time. First all places, then all colours: the steps from a
// source to its colour wait for each other, longer than the processor looks ahead.

namespace {

constexpr int fourSize = quads::groupSize;

/// Places of pixels to be read and written.
struct ExactReads {
    static constexpr int mostFours = 16;

    double fx[mostFours * fourSize];
    double fy[mostFours * fourSize];
    /// Pixels of the planes, of each four those of the cells and after them the targets.
    std::uint32_t numbers[mostFours][2 * fourSize];
};

/// Coordinates as GetPixelInterpolated splits them.
struct Split {
    __m128i whole;
    __m256d fraction;
};

WIDE Split SplitAt(__m256d coordinates) {
    const __m128i whole = _mm256_cvttpd_epi32(coordinates);
    return {whole, _mm256_sub_pd(coordinates, _mm256_cvtepi32_pd(whole))};
}

/// Notes four spots whose sources are at (x, y).
WIDE void NoteFour(const TwirlPlanes& planes, __m128i spots, __m256d x, __m256d y, int four,
                   ExactReads* reads) {
    const Split across = SplitAt(x);
    const Split down = SplitAt(y);
    const __m128i column = _mm_sub_epi32(across.whole, _mm_set1_epi32(planes.cx - planes.radius));
    const __m128i row = _mm_sub_epi32(down.whole, _mm_set1_epi32(planes.cy - planes.radius));
    const __m128i cells = _mm_or_si128(column, _mm_slli_epi32(row, 16));
    StoreWide(SpotNumbers(planes).Of(_mm256_set_m128i(spots, cells)), reads->numbers[four]);
    _mm256_storeu_pd(reads->fx + four * fourSize, across.fraction);
    _mm256_storeu_pd(reads->fy + four * fourSize, down.fraction);
}

WIDE void ReadFours(const TwirlPlanes& planes, const ExactReads& reads, int fours) {
    for (int i = 0; i < fours; ++i) {
        const std::uint32_t* const cells = reads.numbers[i];
        const std::uint32_t* const targets = cells + fourSize;
        const quads::Corners corners =
            quads::LoadCorners({planes.from + cells[0], planes.from + cells[1],
                                planes.from + cells[2], planes.from + cells[3]},
                               planes.pitch);
        const __m128i colors =
            quads::ColorsBetween(corners, _mm256_loadu_pd(reads.fx + i * fourSize),
                                 _mm256_loadu_pd(reads.fy + i * fourSize));
        planes.to[targets[0]] = static_cast<Pixel>(_mm_cvtsi128_si32(colors));
        planes.to[targets[1]] = static_cast<Pixel>(_mm_extract_epi32(colors, 1));
        planes.to[targets[2]] = static_cast<Pixel>(_mm_extract_epi32(colors, 2));
        planes.to[targets[3]] = static_cast<Pixel>(_mm_extract_epi32(colors, 3));
    }
}

/// Fours of `count` listed pixels from `first` on, the last of which may be a part of one.
int FoursFrom(int first, int count) {
    return std::min(ExactReads::mostFours, (count - first + fourSize - 1) / fourSize);
}

WIDE __m128i LoadFour(const std::uint32_t* values) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(values));
}

WIDE __m128i LowHalves(__m128i numbers) {
    return _mm_srai_epi32(_mm_slli_epi32(numbers, 16), 16);
}

WIDE __m128i HighHalves(__m128i numbers) {
    return _mm_srai_epi32(numbers, 16);
}

/// The coordinates of still sources. An offset is the whole number dx and its way, exactly, so that
/// the sum of both and cx is rounded once, as that of the offset and cx.
WIDE __m256d Coordinates(__m128i whole, __m128i ways) {
    const __m256d unit = _mm256_set1_pd(1 / stillUnit);
    return _mm256_add_pd(_mm256_cvtepi32_pd(whole), _mm256_mul_pd(_mm256_cvtepi32_pd(ways), unit));
}

[[gnu::target("avx2")]] void ReadStillFours(const TwirlPlanes& planes, const Spot* spots,
                                            const std::uint32_t* ways, int count) {
    const __m128i left = _mm_set1_epi32(planes.cx - planes.radius);
    const __m128i top = _mm_set1_epi32(planes.cy - planes.radius);
    ExactReads reads;
    for (int first = 0; first < count; first += ExactReads::mostFours * fourSize) {
        const int fours = FoursFrom(first, count);
        for (int i = 0; i < fours; ++i) {
            const __m128i four = LoadFour(spots + first + i * fourSize);
            const __m128i fourWays = LoadFour(ways + first + i * fourSize);
            NoteFour(planes, four,
                     Coordinates(_mm_add_epi32(LowHalves(four), left), LowHalves(fourWays)),
                     Coordinates(_mm_add_epi32(HighHalves(four), top), HighHalves(fourWays)), i,
                     &reads);
        }
        ReadFours(planes, reads, fours);
    }
}

const double* PlaceOf(const SpotPlaces& places, Spot spot) {
    return places.values +
           static_cast<std::size_t>(spot >> 16) * 2 * static_cast<std::size_t>(places.rowSize) +
           (spot & 0xFFFF);
}

}  // namespace

void PrefetchPlaces(const SpotPlaces& places, const UndecidedSpots& undecided, int first) {
    for (int i = first; i < undecided.count; ++i) {
        const double* const place = PlaceOf(places, undecided.spots[i]);
        __builtin_prefetch(place);
        __builtin_prefetch(place + places.rowSize);
    }
}

[[gnu::target("avx2")]] void ReadPlaces(const TwirlPlanes& planes, const Spot* spots,
                                        const double* x, const double* y, int count) {
    const __m256d cx = _mm256_set1_pd(planes.cx);
    const __m256d cy = _mm256_set1_pd(planes.cy);
    ExactReads reads;
    for (int first = 0; first < count; first += ExactReads::mostFours * fourSize) {
        const int fours = FoursFrom(first, count);
        for (int i = 0; i < fours; ++i) {
            const int place = first + i * fourSize;
            NoteFour(planes, LoadFour(spots + place), _mm256_add_pd(cx, _mm256_loadu_pd(x + place)),
                     _mm256_add_pd(cy, _mm256_loadu_pd(y + place)), i, &reads);
        }
        ReadFours(planes, reads, fours);
    }
}

void ReadTurnedExactly(const TwirlPlanes& planes, const SpotPlaces& places,
                       UndecidedSpots* undecided) {
    const int count = undecided->count;
    if (count > 0) {
        std::fill_n(undecided->spots + count, fourSize - 1, undecided->spots[count - 1]);
    }
    double x[UndecidedSpots::capacity];
    double y[UndecidedSpots::capacity];
    for (int i = 0; i < count + fourSize - 1 && count > 0; ++i) {
        const double* const place = PlaceOf(places, undecided->spots[i]);
        x[i] = place[0];
        y[i] = place[places.rowSize];
    }
    ReadPlaces(planes, undecided->spots, x, y, count);
    undecided->count = 0;
}

void ReadStillExactly(const TwirlPlanes& planes, UndecidedStill* undecided) {
    if (undecided->count > 0) {
        const int last = undecided->count - 1;
        std::fill_n(undecided->spots + undecided->count, fourSize - 1, undecided->spots[last]);
        std::fill_n(undecided->ways + undecided->count, fourSize - 1, undecided->ways[last]);
        ReadStillFours(planes, undecided->spots, undecided->ways, undecided->count);
    }
    undecided->count = 0;
}

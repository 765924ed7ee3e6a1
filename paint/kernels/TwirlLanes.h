// Vectors of eight pixels, the numbers of pixels in their planes, and the lists of undecided ones,
// for the kernels of turned and of still sources.
#pragma once

#include <array>
#include <cstdint>

#include "paint/kernels/TwirlEstimates.h"
#include "paint/kernels/WideVectors.h"

/// Eight pixels, and lanes of 32 bits that are not 0 where they are undecided.
struct EstimatedEight {
    __m256i colors;
    __m256i isOpen;
};

/// The alpha byte becomes 0.
WIDE __m256i WithoutAlpha(__m256i pixels) {
    return _mm256_and_si256(pixels, _mm256_set1_epi32(0x00FFFFFF));
}

WIDE __m256i Inverted(__m256i bytes) {
    return _mm256_xor_si256(bytes, _mm256_set1_epi8(-1));
}

WIDE bool AreZero(__m256i lanes) {
    return _mm256_testz_si256(lanes, lanes) != 0;
}

/// Turns spots into numbers of pixels of the planes.
struct SpotNumbers {
    WIDE explicit SpotNumbers(const TwirlPlanes& planes)
        : corner(SpotAt(planes.left, planes.top)),
          size(SpotAt(planes.columns, planes.rows)),
          steps(SpotAt(1, planes.pitch)) {}

    /// The lesser of a coordinate and the same one tile before is inside the tile; a negative one
    /// counts as large.
    WIDE __m256i Wrapped(__m256i spots) const {
        const __m256i places = _mm256_add_epi16(spots, _mm256_set1_epi32(static_cast<int>(corner)));
        const __m256i before = _mm256_sub_epi16(places, _mm256_set1_epi32(static_cast<int>(size)));
        return _mm256_min_epu16(places, before);
    }

    WIDE __m256i Of(__m256i spots) const {
        return _mm256_madd_epi16(Wrapped(spots), _mm256_set1_epi32(static_cast<int>(steps)));
    }

    /// How many columns there are from each spot on.
    WIDE __m256i ColumnsFrom(__m256i spots) const {
        const __m256i left =
            _mm256_sub_epi16(_mm256_set1_epi32(static_cast<int>(size)), Wrapped(spots));
        return _mm256_and_si256(left, _mm256_set1_epi32(0xFFFF));
    }

    Spot corner;
    Spot size;
    Spot steps;
};

// Lists of undecided pixels.

/// The numbers of some bits of eight, rising.
struct BitNumbers {
    std::uint8_t numbers[estimatedGroup];
    std::int32_t count;
};

/// For each eight bits those that are 0.
inline constexpr std::array<BitNumbers, 256> clearBits = [] {
    std::array<BitNumbers, 256> all{};
    for (unsigned bits = 0; bits < all.size(); ++bits) {
        for (unsigned number = 0; number < estimatedGroup; ++number) {
            if ((bits >> number & 1) == 0) {
                all[bits].numbers[all[bits].count++] = static_cast<std::uint8_t>(number);
            }
        }
    }
    return all;
}();

/// The numbers of those of eight lanes whose 32 bits are not 0. Without a branch, which nothing
/// could foretell.
WIDE const BitNumbers& SetLanes(__m256i lanes) {
    const __m256i isZero = _mm256_cmpeq_epi32(lanes, _mm256_setzero_si256());
    const int zeros = _mm256_movemask_ps(_mm256_castsi256_ps(isZero));
    return clearBits[static_cast<unsigned>(zeros)];
}

WIDE __m256i Numbers(const BitNumbers& bits) {
    return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(bits.numbers)));
}

/// Writes the spots of those of eight neighbours, the first of which is `first`, whose lanes are
/// not 0, and returns how many they are.
WIDE int AddSpots(__m256i lanes, Spot first, Spot* spots) {
    const BitNumbers& set = SetLanes(lanes);
    StoreWide(_mm256_add_epi32(Numbers(set), _mm256_set1_epi32(static_cast<int>(first))), spots);
    return set.count;
}

/// The same with the ways of each.
WIDE int AddSpots(__m256i lanes, Spot first, __m256i eightWays, Spot* spots, std::uint32_t* ways) {
    const BitNumbers& set = SetLanes(lanes);
    const __m256i numbers = Numbers(set);
    StoreWide(_mm256_add_epi32(numbers, _mm256_set1_epi32(static_cast<int>(first))), spots);
    StoreWide(_mm256_permutevar8x32_epi32(eightWays, numbers), ways);
    return set.count;
}

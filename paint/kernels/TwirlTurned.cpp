#include "paint/kernels/QuadMix.h"
#include "paint/kernels/TwirlEstimates.h"
#include "paint/kernels/TwirlLanes.h"

// Turned sources. The four pixels around a source take the 16 bytes of a vector's half; the pixels
// 0 to 3 of the eight are in the lower halves and 4 to 7 in the upper ones.

namespace {

/// In units of 2^-15, by less than how much four times a channel differs from the doubles': each of
/// the two numbers of a fraction is off by half a unit at most and counts for up to 255; all the
/// doubles' roundings come to less than a unit.
constexpr int turnedError = 256;

/// The halves of each 32 bits change places.
WIDE __m256i Swapped(__m256i halves) {
    return _mm256_or_si256(_mm256_slli_epi32(halves, 16), _mm256_srli_epi32(halves, 16));
}

/// The plane that is read, and the same one row further down.
struct CellRows {
    const Pixel* upper;
    const Pixel* lower;
};

/// A and B, then C and D of the cell at a pixel.
WIDE __m128i LoadFour(const CellRows& rows, std::uint32_t number) {
    return quads::LoadNeighbours(rows.upper + number, rows.lower + number);
}

/// A, D, B and C of each channel beside each other, and 0 for the alpha byte.
WIDE __m256i LoadCorners(const CellRows& rows, std::uint32_t low, std::uint32_t high) {
    const __m256i order = _mm256_setr_epi8(0, 12, 4, 8, 1, 13, 5, 9, 2, 14, 6, 10, -1, -1, -1, -1,
                                           0, 12, 4, 8, 1, 13, 5, 9, 2, 14, 6, 10, -1, -1, -1, -1);
    return _mm256_shuffle_epi8(_mm256_set_m128i(LoadFour(rows, high), LoadFour(rows, low)), order);
}

/// A number in 32 bits for the three colours, 0 for the alpha byte. (Not the same in all lanes, it
/// is loaded as an operand, which takes no instruction.)
template <int number>
WIDE __m256i OfColors() {
    return _mm256_setr_epi32(number, number, number, 0, number, number, number, 0);
}

/// -2^15, for 2^15 has more than 16 bits, twice.
constexpr int negativeUnits = static_cast<int>(0x80008000);

/// For each channel: four times it in units of 2^-15, and D - A beside B - C.
struct Mixed {
    __m256i value;
    __m256i slopes;
};

/// `negative` is -1 in the half of each coordinate below 0, where the fraction is less by 1.
template <bool anyNegative>
WIDE Mixed Mix(__m256i corners, __m256i fraction, __m256i negative) {
    const __m256i slopes =
        _mm256_maddubs_epi16(corners, _mm256_set1_epi32(static_cast<int>(0xFF0101FFu)));
    const __m256i moves = _mm256_madd_epi16(slopes, fraction);
    const __m256i sums = _mm256_maddubs_epi16(corners, _mm256_set1_epi8(1));
    if constexpr (anyNegative) {
        const __m256i middle = _mm256_add_epi32(_mm256_madd_epi16(sums, _mm256_set1_epi16(1)),
                                                _mm256_madd_epi16(slopes, negative));
        return {_mm256_add_epi32(_mm256_slli_epi32(middle, fractionBits), moves), slopes};
    } else {
        return {_mm256_sub_epi32(moves, _mm256_madd_epi16(sums, OfColors<negativeUnits>())),
                slopes};
    }
}

/// The channels in units of 2^-8. Their last 8 bits are 0 where another integer part is possible.
WIDE __m256i Channels(const Mixed& first, const Mixed& second) {
    const __m256i error = OfColors<turnedError>();
    return _mm256_packus_epi32(_mm256_srai_epi32(_mm256_add_epi32(first.value, error), 9),
                               _mm256_srai_epi32(_mm256_add_epi32(second.value, error), 9));
}

/// Four words, of which those are 0 whose four pixels make the same whatever the fractions.
WIDE __m256i Sloped(const Mixed& first, const Mixed& second) {
    return _mm256_packs_epi32(first.slopes, second.slopes);
}

/// Sources where the doubles' roundings might change a flat channel: both coordinates are below 1,
/// or one is between -1 and 0.
WIDE __m256i ChangesFlat(__m256i cells, __m256i origin) {
    const __m256i isOutside = Inverted(_mm256_cmpgt_epi16(cells, origin));
    const __m256i isBefore =
        _mm256_cmpeq_epi16(cells, _mm256_add_epi16(origin, _mm256_set1_epi16(-1)));
    return _mm256_or_si256(_mm256_and_si256(isOutside, Swapped(isOutside)),
                           _mm256_or_si256(isBefore, Swapped(isBefore)));
}

/// The changes of a fraction's sum and difference where coordinates are negative, and so their
/// fractions less by 1.
WIDE __m256i FractionChange(__m256i isNegative) {
    const __m256i other = Swapped(isNegative);
    return _mm256_blend_epi16(_mm256_add_epi16(isNegative, other),
                              _mm256_sub_epi16(other, isNegative), 0xAA);
}

template <int pixel>
WIDE __m256i OfPixel(__m256i numbers) {
    return _mm256_shuffle_epi32(numbers, pixel * 0x55);
}

/// The pixels `pixel` and `pixel` + 4 of eight. `cells` are the pixels at their cells.
template <bool anyNegative, int pixel>
WIDE Mixed MixTwo(const CellRows& rows, const std::uint32_t* cells, __m256i fractions,
                  __m256i changes) {
    return Mix<anyNegative>(LoadCorners(rows, cells[pixel], cells[pixel + 4]),
                            OfPixel<pixel>(fractions), OfPixel<pixel>(changes));
}

/// `numbers` are the pixels of the plane where the sources' cells are.
template <bool anyNegative>
WIDE EstimatedEight ReadEight(const CellRows& rows, const std::uint32_t* numbers, __m256i cells,
                              __m256i fractions, __m256i origin) {
    const __m256i changes =
        anyNegative ? FractionChange(_mm256_cmpgt_epi16(origin, cells)) : _mm256_setzero_si256();
    const Mixed mixed[] = {MixTwo<anyNegative, 0>(rows, numbers, fractions, changes),
                           MixTwo<anyNegative, 1>(rows, numbers, fractions, changes),
                           MixTwo<anyNegative, 2>(rows, numbers, fractions, changes),
                           MixTwo<anyNegative, 3>(rows, numbers, fractions, changes)};
    // The integer parts, then the fractions.
    const __m256i split = _mm256_setr_epi8(1, 3, 5, 7, 9, 11, 13, 15, 0, 2, 4, 6, 8, 10, 12, 14, 1,
                                           3, 5, 7, 9, 11, 13, 15, 0, 2, 4, 6, 8, 10, 12, 14);
    const __m256i first = _mm256_shuffle_epi8(Channels(mixed[0], mixed[1]), split);
    const __m256i second = _mm256_shuffle_epi8(Channels(mixed[2], mixed[3]), split);
    const __m256i rests = _mm256_unpackhi_epi64(first, second);
    __m256i sloped = _mm256_packs_epi16(Sloped(mixed[0], mixed[1]), Sloped(mixed[2], mixed[3]));
    if constexpr (anyNegative) {
        sloped = WithoutAlpha(_mm256_or_si256(sloped, ChangesFlat(cells, origin)));
    }
    // 1 where the channel is sloped and the rest is 0.
    const __m256i isNear = _mm256_subs_epu8(_mm256_min_epu8(sloped, _mm256_set1_epi8(1)), rests);
    return {_mm256_unpacklo_epi64(first, second), isNear};
}

/// The pixel of the plane at each source's cell. Where a coordinate is negative the integer part is
/// the next pixel.
WIDE void NumberCells(const SpotNumbers& numbersOf, const TurnedGroup* groups, int count,
                      __m256i origin, std::uint32_t (*numbers)[estimatedGroup]) {
    for (int i = 0; i < count; ++i) {
        const __m256i cells = LoadWide(groups[i].cells);
        const __m256i places = _mm256_sub_epi16(cells, _mm256_cmpgt_epi16(origin, cells));
        StoreWide(numbersOf.Of(places), numbers[i]);
    }
}

/// Writes eight neighbours, of which those from `before` on lie at the start of the row.
WIDE void WriteAround(__m256i colors, Pixel* target, int before, int columns) {
    Pixel kept[estimatedGroup];
    StoreWide(colors, kept);
    for (int i = 0; i < estimatedGroup; ++i) {
        target[i < before ? i : i - columns] = kept[i];
    }
}

/// Where groups are written: the pixels of the plane, and how many columns there are from each one
/// to the edge.
struct GroupTargets {
    std::uint32_t numbers[mostTurnedGroups];
    std::int32_t columns[mostTurnedGroups];
};

WIDE void FindTargets(const SpotNumbers& numbersOf, const Spot* spots, int count,
                      GroupTargets* targets) {
    for (int i = 0; i < count; i += estimatedGroup) {
        const __m256i eight = LoadWide(spots + i);
        StoreWide(numbersOf.Of(eight), targets->numbers + i);
        StoreWide(numbersOf.ColumnsFrom(eight), targets->columns + i);
    }
}

WIDE void Write(__m256i colors, const TwirlPlanes& planes, const GroupTargets& targets, int group) {
    Pixel* const target = planes.to + targets.numbers[group];
    if (targets.columns[group] >= estimatedGroup) [[likely]] {
        StoreWide(colors, target);
    } else {
        WriteAround(colors, target, targets.columns[group], planes.columns);
    }
}

}  // namespace

[[gnu::target("avx2")]] void ReadTurned(const TwirlPlanes& planes, const TurnedGroup* groups,
                                        const Spot* spots, int count, UndecidedSpots* undecided) {
    const __m256i origin = _mm256_set1_epi32(
        static_cast<int>(SpotAt(planes.radius - planes.cx, planes.radius - planes.cy)));
    const SpotNumbers numbersOf(planes);
    // Through memory: 32 bits are sooner loaded from there than taken out of a vector.
    std::uint32_t numbers[mostTurnedGroups][estimatedGroup];
    NumberCells(numbersOf, groups, count, origin, numbers);
    const CellRows rows = {planes.from, planes.from + planes.pitch};
    GroupTargets targets;
    FindTargets(numbersOf, spots, count, &targets);
    int listed = undecided->count;
    for (int i = 0; i < count; ++i) {
        const __m256i cells = LoadWide(groups[i].cells);
        const __m256i fractions = LoadWide(groups[i].fractions);
        const __m256i isInside = _mm256_cmpgt_epi16(cells, origin);
        const EstimatedEight eight =
            _mm256_movemask_epi8(isInside) == -1
                ? ReadEight<false>(rows, numbers[i], cells, fractions, origin)
                : ReadEight<true>(rows, numbers[i], cells, fractions, origin);
        Write(eight.colors, planes, targets, i);
        // Nineteen groups of twenty are decided.
        if (!AreZero(eight.isOpen)) [[unlikely]] {
            listed += AddSpots(eight.isOpen, spots[i], undecided->spots + listed);
        }
    }
    undecided->count = listed;
}

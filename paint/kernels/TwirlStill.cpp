#include <algorithm>
#include <cstddef>

#include "paint/kernels/TwirlEstimates.h"
#include "paint/kernels/TwirlLanes.h"
#include "raster/Torus.h"

// Still sources: eight neighbours of a row, and the pixels around them.

namespace {

/// For masks of 32 bits. As singles: the compiler would compare the bytes of others with 0 first.
WIDE __m256i Chosen(__m256i mask, __m256i set, __m256i clear) {
    return _mm256_castps_si256(_mm256_blendv_ps(
        _mm256_castsi256_ps(clear), _mm256_castsi256_ps(set), _mm256_castsi256_ps(mask)));
}

/// Where the ways along one axis lead, as masks of 32 bits.
struct Ways {
    /// Into the cell to the left, or above.
    __m256i toBefore;
    /// Not to the pixel itself.
    __m256i toElsewhere;
    /// Into a cell that is not read here: from a negative coordinate the next one.
    __m256i toUnknown;
    /// From a coordinate above 0.
    __m256i fromPositive;
};

/// The limits of eight coordinates, as the ways are compared with them: in the upper 16 bits. In
/// `high` the lower ones are set, since those of ways have no meaning.
struct LimitsOfEight {
    __m256i low;
    __m256i high;
};

WIDE Ways WaysFromPositive(__m256i ways, const LimitsOfEight& limits) {
    const __m256i isBelow = _mm256_cmpgt_epi32(limits.low, ways);
    const __m256i isAbove = _mm256_cmpgt_epi32(ways, limits.high);
    return {isBelow, _mm256_or_si256(isBelow, isAbove), _mm256_setzero_si256(),
            _mm256_set1_epi8(-1)};
}

WIDE Ways WaysFromAny(__m256i ways, const LimitsOfEight& limits, __m256i isPositive) {
    const __m256i isBelow = _mm256_cmpgt_epi32(limits.low, ways);
    const __m256i isAbove = _mm256_cmpgt_epi32(ways, limits.high);
    return {_mm256_and_si256(isBelow, isPositive), _mm256_or_si256(isBelow, isAbove),
            _mm256_andnot_si256(isPositive, isAbove), isPositive};
}

/// The rows around a row of the square, from its column `column` on, around the torus.
struct RowsAround {
    const Pixel* above;
    const Pixel* own;
    const Pixel* below;
    Pixel* target;
};

RowsAround RowsAt(const TwirlPlanes& planes, Spot spot) {
    const int x = WrapOnce(planes.left + static_cast<int>(spot & 0xFFFF), planes.columns);
    const int y = WrapOnce(planes.top + static_cast<int>(spot >> 16), planes.rows);
    const auto offset = [&](int row) {
        return static_cast<std::ptrdiff_t>(row) * planes.pitch + x;
    };
    return {planes.from + offset(y == 0 ? planes.rows - 1 : y - 1), planes.from + offset(y),
            planes.from + offset(y + 1), planes.to + offset(y)};
}

/// A pixel, its neighbours in the cell of its source, and the one across.
struct Cells {
    __m256i own;
    __m256i beside;
    __m256i under;
    __m256i across;
};

/// `x` and `y` are the ways across and down.
WIDE Cells LoadCells(const RowsAround& rows, std::ptrdiff_t column, const Ways& x, const Ways& y) {
    const Pixel* const above = rows.above + column;
    const Pixel* const own = rows.own + column;
    const Pixel* const below = rows.below + column;
    return {LoadWide(own), Chosen(x.toBefore, LoadWide(own - 1), LoadWide(own + 1)),
            Chosen(y.toBefore, LoadWide(above), LoadWide(below)),
            Chosen(y.toBefore, Chosen(x.toBefore, LoadWide(above - 1), LoadWide(above + 1)),
                   Chosen(x.toBefore, LoadWide(below - 1), LoadWide(below + 1)))};
}

/// A quarter of 2 own + beside + under for each byte. Averages round down once their terms are
/// inverted.
WIDE __m256i Quarter(const Cells& cells) {
    const __m256i neighbours = _mm256_avg_epu8(Inverted(cells.beside), Inverted(cells.under));
    return Inverted(_mm256_avg_epu8(Inverted(cells.own), neighbours));
}

/// How much two bytes fall and how much they rise from one side of a cell to the other. Where one
/// is too large for a byte the other is 0.
struct Slope {
    __m256i fall;
    __m256i rise;
};

WIDE Slope SlopeOf(__m256i firstNear, __m256i firstFar, __m256i secondNear, __m256i secondFar) {
    return {_mm256_adds_epu8(_mm256_subs_epu8(firstNear, firstFar),
                             _mm256_subs_epu8(secondNear, secondFar)),
            _mm256_adds_epu8(_mm256_subs_epu8(firstFar, firstNear),
                             _mm256_subs_epu8(secondFar, secondNear))};
}

/// Bytes that are not 0 where a way leads down a slope: to the lesser of two columns or rows, or,
/// from a negative coordinate, away from the greater one.
template <bool anyNegative>
WIDE __m256i LeadsDown(const Ways& ways, const Slope& slope) {
    __m256i isDown = _mm256_subs_epu8(slope.fall, slope.rise);
    if constexpr (anyNegative) {
        isDown = Chosen(ways.fromPositive, isDown, _mm256_subs_epu8(slope.rise, slope.fall));
    }
    return _mm256_and_si256(ways.toElsewhere, isDown);
}

WIDE __m256i IsMultipleOfFour(__m256i bytes) {
    return _mm256_cmpeq_epi8(_mm256_and_si256(bytes, _mm256_set1_epi8(3)), _mm256_setzero_si256());
}

/// Bytes that a way may change: that sum is a multiple of four, and the way leads down.
template <bool anyNegative>
WIDE __m256i IsOpen(const Cells& cells, const Ways& x, const Ways& y) {
    const __m256i sum = _mm256_add_epi8(_mm256_add_epi8(cells.own, cells.own),
                                        _mm256_add_epi8(cells.beside, cells.under));
    const __m256i isDown = _mm256_or_si256(
        LeadsDown<anyNegative>(x, SlopeOf(cells.own, cells.beside, cells.under, cells.across)),
        LeadsDown<anyNegative>(y, SlopeOf(cells.own, cells.under, cells.beside, cells.across)));
    return WithoutAlpha(_mm256_and_si256(IsMultipleOfFour(sum), isDown));
}

/// Eight pixels from `column` of each row on.
WIDE EstimatedEight ReadFromPositive(const RowsAround& rows, std::ptrdiff_t column, const Ways& x,
                                     const Ways& y) {
    const Cells cells = LoadCells(rows, column, x, y);
    return {WithoutAlpha(Quarter(cells)), IsOpen<false>(cells, x, y)};
}

WIDE EstimatedEight ReadFromAny(const RowsAround& rows, std::ptrdiff_t column, const Ways& x,
                                const Ways& y) {
    const Cells cells = LoadCells(rows, column, x, y);
    const __m256i isUnknown = _mm256_or_si256(x.toUnknown, y.toUnknown);
    return {WithoutAlpha(Quarter(cells)), _mm256_or_si256(IsOpen<true>(cells, x, y), isUnknown)};
}

}  // namespace

[[gnu::target("avx2")]] void ReadStill(const TwirlPlanes& planes, const ColumnLimits& limits,
                                       Spot spot, const std::uint32_t* ways, int count,
                                       UndecidedStill* undecided) {
    const int column = static_cast<int>(spot & 0xFFFF);
    const int x = planes.cx + column - planes.radius;
    const int y = planes.cy + static_cast<int>(spot >> 16) - planes.radius;
    const RowsAround rows = RowsAt(planes, spot);
    const RoundingLimits ofRow = InUpperHalves(LimitsAt(y));
    const LimitsOfEight down = {_mm256_set1_epi32(ofRow.low), _mm256_set1_epi32(ofRow.high)};
    const __m256i isPositive = _mm256_set1_epi32(ofRow.isPositive);
    std::ptrdiff_t listed = undecided->count;
    for (std::ptrdiff_t i = 0; i < count; i += estimatedGroup) {
        // The last group begins early rather than to be a smaller one.
        const std::ptrdiff_t first = std::min<std::ptrdiff_t>(i, count - estimatedGroup);
        const LimitsOfEight across = {LoadWide(limits.low + column + first),
                                      LoadWide(limits.high + column + first)};
        const __m256i both = LoadWide(ways + first);
        const __m256i onlyAcross = _mm256_slli_epi32(both, 16);
        const EstimatedEight eight =
            y > 0 && x + first > 0
                ? ReadFromPositive(rows, first, WaysFromPositive(onlyAcross, across),
                                   WaysFromPositive(both, down))
                : ReadFromAny(
                      rows, first,
                      WaysFromAny(onlyAcross, across, LoadWide(limits.isPositive + column + first)),
                      WaysFromAny(both, down, isPositive));
        StoreWide(eight.colors, rows.target + first);
        listed += AddSpots(eight.isOpen, spot + static_cast<Spot>(first), both,
                           undecided->spots + listed, undecided->ways + listed);
    }
    undecided->count = static_cast<int>(listed);
}

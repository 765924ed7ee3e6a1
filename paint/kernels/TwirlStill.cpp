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

template <bool anyNegative>
WIDE __m256i LeadsDownAcross(const Cells& cells, const Ways& x) {
    return LeadsDown<anyNegative>(x, SlopeOf(cells.own, cells.beside, cells.under, cells.across));
}

template <bool anyNegative>
WIDE __m256i LeadsDownBelow(const Cells& cells, const Ways& y) {
    return LeadsDown<anyNegative>(y, SlopeOf(cells.own, cells.under, cells.beside, cells.across));
}

/// Bytes that a way may change: 2 own + beside + under is a multiple of four, and a way leads down.
WIDE __m256i IsOpen(const Cells& cells, __m256i isDown) {
    const __m256i sum = _mm256_add_epi8(_mm256_add_epi8(cells.own, cells.own),
                                        _mm256_add_epi8(cells.beside, cells.under));
    const __m256i rest = _mm256_and_si256(sum, _mm256_set1_epi8(3));
    const __m256i isMultiple = _mm256_cmpeq_epi8(rest, _mm256_setzero_si256());
    return WithoutAlpha(_mm256_and_si256(isMultiple, isDown));
}

/// A run of pixels of a row: all pointers are those of its first one.
struct StillRun {
    Spot spot;
    RowsAround rows;
    const std::uint32_t* ways;
    /// The limits of the columns.
    const std::int32_t* low;
    const std::int32_t* high;
    const std::int32_t* isPositive;
    LimitsOfEight ofRow;
    __m256i isRowPositive;
};

WIDE StillRun RunAt(const TwirlPlanes& planes, const ColumnLimits& limits, Spot spot,
                    const std::uint32_t* ways) {
    const auto column = static_cast<std::ptrdiff_t>(spot & 0xFFFF);
    const int y = planes.cy + static_cast<int>(spot >> 16) - planes.radius;
    const RoundingLimits ofRow = InUpperHalves(LimitsAt(y));
    return {spot,
            RowsAt(planes, spot),
            ways,
            limits.low + column,
            limits.high + column,
            limits.isPositive + column,
            {_mm256_set1_epi32(ofRow.low), _mm256_set1_epi32(ofRow.high)},
            _mm256_set1_epi32(ofRow.isPositive)};
}

WIDE LimitsOfEight LimitsAcross(const StillRun& run, std::ptrdiff_t first) {
    return {LoadWide(run.low + first), LoadWide(run.high + first)};
}

/// Where all ways are rounded away.
WIDE __m256i ReadUnmoved(const RowsAround& rows, std::ptrdiff_t first) {
    const __m256i own = LoadWide(rows.own + first);
    const __m256i right = LoadWide(rows.own + first + 1);
    return WithoutAlpha(Quarter({own, right, LoadWide(rows.below + first), own}));
}

/// Where all ways down are rounded away.
WIDE EstimatedEight ReadAcross(const RowsAround& rows, std::ptrdiff_t first, const Ways& x) {
    const Pixel* const own = rows.own + first;
    const Pixel* const below = rows.below + first;
    const Cells cells = {LoadWide(own), Chosen(x.toBefore, LoadWide(own - 1), LoadWide(own + 1)),
                         LoadWide(below),
                         Chosen(x.toBefore, LoadWide(below - 1), LoadWide(below + 1))};
    return {WithoutAlpha(Quarter(cells)), IsOpen(cells, LeadsDownAcross<false>(cells, x))};
}

template <bool anyNegative>
WIDE EstimatedEight ReadBothWays(const RowsAround& rows, std::ptrdiff_t first, const Ways& x,
                                 const Ways& y) {
    const Cells cells = LoadCells(rows, first, x, y);
    const __m256i isDown = _mm256_or_si256(LeadsDownAcross<anyNegative>(cells, x),
                                           LeadsDownBelow<anyNegative>(cells, y));
    return {WithoutAlpha(Quarter(cells)), IsOpen(cells, isDown)};
}

/// The undecided pixels of a run, and how many there are.
struct OpenStill {
    UndecidedStill* undecided;
    std::ptrdiff_t count;
};

/// Writes eight pixels of a run from its `first` on, and lists those that are undecided.
WIDE void Write(const StillRun& run, std::ptrdiff_t first, const EstimatedEight& eight,
                __m256i ways, OpenStill* open) {
    StoreWide(eight.colors, run.rows.target + first);
    open->count +=
        AddSpots(eight.isOpen, run.spot + static_cast<Spot>(first), ways,
                 open->undecided->spots + open->count, open->undecided->ways + open->count);
}

/// Eight pixels of a run from its `first` on, at any coordinates.
WIDE void ReadFromAny(const StillRun& run, std::ptrdiff_t first, OpenStill* open) {
    const __m256i ways = LoadWide(run.ways + first);
    const Ways x = WaysFromAny(_mm256_slli_epi32(ways, 16), LimitsAcross(run, first),
                               LoadWide(run.isPositive + first));
    const Ways y = WaysFromAny(ways, run.ofRow, run.isRowPositive);
    EstimatedEight eight = ReadBothWays<true>(run.rows, first, x, y);
    eight.isOpen = _mm256_or_si256(eight.isOpen, _mm256_or_si256(x.toUnknown, y.toUnknown));
    Write(run, first, eight, ways, open);
}

/// The same at coordinates above 0, where a third of the groups have no way that is not rounded
/// away, and another third none down.
WIDE void ReadFromPositive(const StillRun& run, std::ptrdiff_t first, OpenStill* open) {
    const __m256i ways = LoadWide(run.ways + first);
    const Ways x = WaysFromPositive(_mm256_slli_epi32(ways, 16), LimitsAcross(run, first));
    const Ways y = WaysFromPositive(ways, run.ofRow);
    if (AreZero(_mm256_or_si256(x.toElsewhere, y.toElsewhere))) {
        StoreWide(ReadUnmoved(run.rows, first), run.rows.target + first);
        return;
    }
    const EstimatedEight eight = AreZero(y.toElsewhere)
                                     ? ReadAcross(run.rows, first, x)
                                     : ReadBothWays<false>(run.rows, first, x, y);
    Write(run, first, eight, ways, open);
}

}  // namespace

[[gnu::target("avx2")]] void ReadStill(const TwirlPlanes& planes, const ColumnLimits& limits,
                                       Spot spot, const std::uint32_t* ways, int count,
                                       UndecidedStill* undecided) {
    const StillRun run = RunAt(planes, limits, spot, ways);
    const int y = planes.cy + static_cast<int>(spot >> 16) - planes.radius;
    const int x = planes.cx + static_cast<int>(spot & 0xFFFF) - planes.radius;
    const std::ptrdiff_t firstPositive = y > 0 ? 1 - x : count;
    // The last group begins early rather than to be a smaller one.
    const std::ptrdiff_t last = count - estimatedGroup;
    OpenStill open = {undecided, undecided->count};
    std::ptrdiff_t i = 0;
    for (; i < count && std::min(i, last) < firstPositive; i += estimatedGroup) {
        ReadFromAny(run, std::min(i, last), &open);
    }
    for (; i < count; i += estimatedGroup) {
        ReadFromPositive(run, std::min(i, last), &open);
    }
    undecided->count = static_cast<int>(open.count);
}

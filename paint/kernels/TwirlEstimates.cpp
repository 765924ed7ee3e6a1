#include "paint/kernels/TwirlEstimates.h"

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/QuadMix.h"
#include "raster/Torus.h"

namespace {

constexpr int groupSize = estimatedGroup;

/// Bits after the point of a turned source's fractions.
constexpr int fractionBits = 15;
constexpr double fractionUnit = 32768.0;

/// A place next to a whole number may be rounded to it, or lie beside it: far more than a rounding
/// can be.
constexpr double wholeNumberMargin = 1e-6;

constexpr double longestWay = 8191;

/// In units of 2^-15, by less than how much four times a channel differs from the doubles': each of
/// the two numbers of a fraction is off by half a unit at most and counts for up to 255; all the
/// doubles' roundings come to less than a unit.
constexpr int turnedError = 256;

/// The numbers of some bits of eight, rising.
struct BitNumbers {
    std::uint8_t numbers[groupSize];
    std::int32_t count;
};

/// For each eight bits those that are 0.
constexpr std::array<BitNumbers, 256> clearBits = [] {
    std::array<BitNumbers, 256> all{};
    for (unsigned bits = 0; bits < all.size(); ++bits) {
        for (unsigned number = 0; number < groupSize; ++number) {
            if ((bits >> number & 1) == 0) {
                all[bits].numbers[all[bits].count++] = static_cast<std::uint8_t>(number);
            }
        }
    }
    return all;
}();

constexpr std::uint32_t Halves(int low, int high) {
    return static_cast<std::uint32_t>(low & 0xFFFF) | static_cast<std::uint32_t>(high) << 16;
}

bool IsNextToWholeNumber(double fraction) {
    return fraction < wholeNumberMargin || fraction > 1 - wholeNumberMargin;
}

int InFractionUnits(double value) {
    return static_cast<int>(std::floor(value * fractionUnit + 0.5));
}

/// Limits as they are compared with ways in the upper halves of 32 bits. The lower ones, which have
/// no meaning, make no way greater than the limit.
int LowLimit(const RoundingLimits& limits) {
    return limits.low * 65536;
}

int HighLimit(const RoundingLimits& limits) {
    return limits.high * 65536 + 65535;
}

}  // namespace

bool HasTwirlEstimates() {
    return avx2Allowed && __builtin_cpu_supports("avx2");
}

bool TurnedSource(double x, double y, int radius, SourceCode* code) {
    const double wholeX = std::floor(x);
    const double wholeY = std::floor(y);
    const double fx = x - wholeX;
    const double fy = y - wholeY;
    const int sum = InFractionUnits(fx + fy - 1);
    const int difference = InFractionUnits(fx - fy);
    const int most = std::max(std::abs(sum), std::abs(difference));
    *code = {SpotAt(static_cast<int>(wholeX) + radius, static_cast<int>(wholeY) + radius),
             Halves(sum, difference)};
    return !IsNextToWholeNumber(fx) && !IsNextToWholeNumber(fy) && most < 1 << fractionBits;
}

bool StillSource(double x, double y, int dx, int dy, std::uint32_t* way) {
    const double wayX = (x - dx) * stillUnit;
    const double wayY = (y - dy) * stillUnit;
    if (!(std::fabs(wayX) <= longestWay && std::fabs(wayY) <= longestWay) ||
        wayX != std::trunc(wayX) || wayY != std::trunc(wayY)) {
        return false;
    }
    *way = Halves(static_cast<int>(wayX), static_cast<int>(wayY));
    return true;
}

/// The doubles next to a coordinate lie a distance apart that doubles with each power of two; half
/// of it is rounded away, as the coordinate itself is even in its last bit. For 0, where no way is,
/// all ways count as leading above.
RoundingLimits LimitsAt(int coordinate) {
    if (coordinate == 0) {
        return {-32768, -32768, 0};
    }
    const auto size = static_cast<unsigned>(std::abs(coordinate));
    const int outer = static_cast<int>(std::bit_floor(size)) / 2;
    const int inner = std::has_single_bit(size) ? outer / 2 : outer;
    return coordinate > 0 ? RoundingLimits{-inner, outer, -1} : RoundingLimits{-outer, inner, 0};
}

void ColumnLimits::Place(int cx, int radius) {
    for (int dx = -radius; dx <= radius; ++dx) {
        const RoundingLimits limits = LimitsAt(cx + dx);
        low[dx + radius] = LowLimit(limits);
        high[dx + radius] = HighLimit(limits);
        isPositive[dx + radius] = limits.isPositive;
    }
}

// Eight pixels at a time.

#define WIDE [[gnu::target("avx2"), gnu::always_inline]] inline

namespace {

WIDE __m256i Load(const void* source) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(source));
}

WIDE void Store(__m256i values, void* target) {
    _mm256_storeu_si256(static_cast<__m256i*>(target), values);
}

/// The alpha byte has no meaning.
WIDE __m256i WithoutAlpha(__m256i pixels) {
    return _mm256_and_si256(pixels, _mm256_set1_epi32(0x00FFFFFF));
}

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
WIDE int Add(__m256i lanes, Spot first, Spot* spots) {
    const BitNumbers& set = SetLanes(lanes);
    Store(_mm256_add_epi32(Numbers(set), _mm256_set1_epi32(static_cast<int>(first))), spots);
    return set.count;
}

/// The same with the ways of each.
WIDE int Add(__m256i lanes, Spot first, __m256i eightWays, Spot* spots, std::uint32_t* ways) {
    const BitNumbers& set = SetLanes(lanes);
    const __m256i numbers = Numbers(set);
    Store(_mm256_add_epi32(numbers, _mm256_set1_epi32(static_cast<int>(first))), spots);
    Store(_mm256_permutevar8x32_epi32(eightWays, numbers), ways);
    return set.count;
}

WIDE __m256i Inverted(__m256i bytes) {
    return _mm256_xor_si256(bytes, _mm256_set1_epi8(-1));
}

/// The halves of each 32 bits change places.
WIDE __m256i Swapped(__m256i halves) {
    return _mm256_or_si256(_mm256_slli_epi32(halves, 16), _mm256_srli_epi32(halves, 16));
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

// Turned sources. The four pixels around a source take the 16 bytes of a vector's half; the pixels
// 0 to 3 of the eight are in the lower halves and 4 to 7 in the upper ones.

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

/// Eight pixels, and lanes of 32 bits that are not 0 where they are undecided.
struct Estimated {
    __m256i colors;
    __m256i isOpen;
};

/// `numbers` are the pixels of the plane where the sources' cells are.
template <bool anyNegative>
WIDE Estimated ReadEight(const CellRows& rows, const std::uint32_t* numbers, __m256i cells,
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
                      __m256i origin, std::uint32_t (*numbers)[groupSize]) {
    for (int i = 0; i < count; ++i) {
        const __m256i cells = Load(groups[i].cells);
        const __m256i places = _mm256_sub_epi16(cells, _mm256_cmpgt_epi16(origin, cells));
        Store(numbersOf.Of(places), numbers[i]);
    }
}

/// Writes eight neighbours, of which those from `before` on lie at the start of the row.
WIDE void WriteAround(__m256i colors, Pixel* target, int before, int columns) {
    Pixel kept[groupSize];
    Store(colors, kept);
    for (int i = 0; i < groupSize; ++i) {
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
    for (int i = 0; i < count; i += groupSize) {
        const __m256i eight = Load(spots + i);
        Store(numbersOf.Of(eight), targets->numbers + i);
        Store(numbersOf.ColumnsFrom(eight), targets->columns + i);
    }
}

WIDE void Write(__m256i colors, const TwirlPlanes& planes, const GroupTargets& targets, int group) {
    Pixel* const target = planes.to + targets.numbers[group];
    if (targets.columns[group] >= groupSize) [[likely]] {
        Store(colors, target);
    } else {
        WriteAround(colors, target, targets.columns[group], planes.columns);
    }
}

[[gnu::target("avx2")]] void ReadTurnedGroups(const TwirlPlanes& planes, const TurnedGroup* groups,
                                              const Spot* spots, int count,
                                              UndecidedSpots* undecided) {
    const __m256i origin = _mm256_set1_epi32(
        static_cast<int>(Halves(planes.radius - planes.cx, planes.radius - planes.cy)));
    const SpotNumbers numbersOf(planes);
    // Through memory: 32 bits are sooner loaded from there than taken out of a vector.
    std::uint32_t numbers[mostTurnedGroups][groupSize];
    NumberCells(numbersOf, groups, count, origin, numbers);
    const CellRows rows = {planes.from, planes.from + planes.pitch};
    GroupTargets targets;
    FindTargets(numbersOf, spots, count, &targets);
    int listed = undecided->count;
    for (int i = 0; i < count; ++i) {
        const __m256i cells = Load(groups[i].cells);
        const __m256i fractions = Load(groups[i].fractions);
        const __m256i isInside = _mm256_cmpgt_epi16(cells, origin);
        const Estimated eight = _mm256_movemask_epi8(isInside) == -1
                                    ? ReadEight<false>(rows, numbers[i], cells, fractions, origin)
                                    : ReadEight<true>(rows, numbers[i], cells, fractions, origin);
        Write(eight.colors, planes, targets, i);
        listed += Add(eight.isOpen, spots[i], undecided->spots + listed);
    }
    undecided->count = listed;
}

// Still sources.

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
    return {Load(own), Chosen(x.toBefore, Load(own - 1), Load(own + 1)),
            Chosen(y.toBefore, Load(above), Load(below)),
            Chosen(y.toBefore, Chosen(x.toBefore, Load(above - 1), Load(above + 1)),
                   Chosen(x.toBefore, Load(below - 1), Load(below + 1)))};
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
WIDE Estimated ReadFromPositive(const RowsAround& rows, std::ptrdiff_t column, const Ways& x,
                                const Ways& y) {
    const Cells cells = LoadCells(rows, column, x, y);
    return {WithoutAlpha(Quarter(cells)), IsOpen<false>(cells, x, y)};
}

WIDE Estimated ReadFromAny(const RowsAround& rows, std::ptrdiff_t column, const Ways& x,
                           const Ways& y) {
    const Cells cells = LoadCells(rows, column, x, y);
    const __m256i isUnknown = _mm256_or_si256(x.toUnknown, y.toUnknown);
    return {WithoutAlpha(Quarter(cells)), _mm256_or_si256(IsOpen<true>(cells, x, y), isUnknown)};
}

[[gnu::target("avx2")]] void ReadStillGroups(const TwirlPlanes& planes, const ColumnLimits& limits,
                                             Spot spot, const std::uint32_t* ways, int count,
                                             UndecidedStill* undecided) {
    const int column = static_cast<int>(spot & 0xFFFF);
    const int x = planes.cx + column - planes.radius;
    const int y = planes.cy + static_cast<int>(spot >> 16) - planes.radius;
    const RowsAround rows = RowsAt(planes, spot);
    const RoundingLimits ofRow = LimitsAt(y);
    const LimitsOfEight down = {_mm256_set1_epi32(LowLimit(ofRow)),
                                _mm256_set1_epi32(HighLimit(ofRow))};
    const __m256i isPositive = _mm256_set1_epi32(ofRow.isPositive);
    std::ptrdiff_t listed = undecided->count;
    for (std::ptrdiff_t i = 0; i < count; i += groupSize) {
        // The last group begins early rather than to be a smaller one.
        const std::ptrdiff_t first = std::min<std::ptrdiff_t>(i, count - groupSize);
        const LimitsOfEight across = {Load(limits.low + column + first),
                                      Load(limits.high + column + first)};
        const __m256i both = Load(ways + first);
        const __m256i onlyAcross = _mm256_slli_epi32(both, 16);
        const Estimated eight =
            y > 0 && x + first > 0
                ? ReadFromPositive(rows, first, WaysFromPositive(onlyAcross, across),
                                   WaysFromPositive(both, down))
                : ReadFromAny(
                      rows, first,
                      WaysFromAny(onlyAcross, across, Load(limits.isPositive + column + first)),
                      WaysFromAny(both, down, isPositive));
        Store(eight.colors, rows.target + first);
        listed += Add(eight.isOpen, spot + static_cast<Spot>(first), both,
                      undecided->spots + listed, undecided->ways + listed);
    }
    undecided->count = static_cast<int>(listed);
}

// The exact path, for four pixels at a time. First all places, then all colours: the steps from a
// source to its colour wait for each other, longer than the processor looks ahead.

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
    Store(SpotNumbers(planes).Of(_mm256_set_m128i(spots, cells)), reads->numbers[four]);
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

[[gnu::target("avx2")]] void ReadPlacedFours(const TwirlPlanes& planes, const Spot* spots,
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

}  // namespace

#undef WIDE

void ReadTurned(const TwirlPlanes& planes, const TurnedGroup* groups, const Spot* spots, int count,
                UndecidedSpots* undecided) {
    ReadTurnedGroups(planes, groups, spots, count, undecided);
}

void PrefetchPlaces(const SpotPlaces& places, const UndecidedSpots& undecided, int first) {
    for (int i = first; i < undecided.count; ++i) {
        const double* const place = PlaceOf(places, undecided.spots[i]);
        __builtin_prefetch(place);
        __builtin_prefetch(place + places.rowSize);
    }
}

void ReadStill(const TwirlPlanes& planes, const ColumnLimits& limits, Spot first,
               const std::uint32_t* ways, int count, UndecidedStill* undecided) {
    ReadStillGroups(planes, limits, first, ways, count, undecided);
}

void ReadPlaces(const TwirlPlanes& planes, const Spot* spots, const double* x, const double* y,
                int count) {
    ReadPlacedFours(planes, spots, x, y, count);
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
    ReadPlacedFours(planes, undecided->spots, x, y, count);
    undecided->count = 0;
}

void ReadStillExactly(const TwirlPlanes& planes, UndecidedStill* undecided) {
    if (undecided->count > 0) {
        const int last = undecided->count - 1;
        std::fill_n(undecided->spots + undecided->count, quads::groupSize - 1,
                    undecided->spots[last]);
        std::fill_n(undecided->ways + undecided->count, quads::groupSize - 1,
                    undecided->ways[last]);
        ReadStillFours(planes, undecided->spots, undecided->ways, undecided->count);
    }
    undecided->count = 0;
}

#include "paint/kernels/TwirlEstimates.h"

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "paint/kernels/Dispatch.h"

namespace {

/// Pixels that go at a time.
constexpr int groupSize = shortestEstimatedRun;

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

std::uint32_t Halves(int low, int high) {
    return static_cast<std::uint32_t>(low & 0xFFFF) | static_cast<std::uint32_t>(high) << 16;
}

bool IsNextToWholeNumber(double fraction) {
    return fraction < wholeNumberMargin || fraction > 1 - wholeNumberMargin;
}

int InFractionUnits(double value) {
    return static_cast<int>(std::floor(value * fractionUnit + 0.5));
}

}  // namespace

bool HasTwirlEstimates() {
    return avx2Allowed && __builtin_cpu_supports("avx2");
}

SourceCode TurnedSource(double x, double y, int radius) {
    const double wholeX = std::floor(x);
    const double wholeY = std::floor(y);
    const std::uint32_t cell =
        Halves(static_cast<int>(wholeX) + radius, static_cast<int>(wholeY) + radius);
    const double fx = x - wholeX;
    const double fy = y - wholeY;
    const int sum = InFractionUnits(fx + fy - 1);
    const int difference = InFractionUnits(fx - fy);
    const int most = std::max(std::abs(sum), std::abs(difference));
    if (IsNextToWholeNumber(fx) || IsNextToWholeNumber(fy) || most >= 1 << fractionBits) {
        return {cell, onlyExact};
    }
    return {cell, Halves(sum, difference)};
}

bool StillSource(double x, double y, int dx, int dy, SourceCode* code) {
    const double wayX = (x - dx) * stillUnit;
    const double wayY = (y - dy) * stillUnit;
    if (!(std::fabs(wayX) <= longestWay && std::fabs(wayY) <= longestWay) ||
        wayX != std::trunc(wayX) || wayY != std::trunc(wayY)) {
        return false;
    }
    *code = {0, Halves(static_cast<int>(wayX), static_cast<int>(wayY))};
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
        low[dx + radius] = limits.low & 0xFFFF;
        high[dx + radius] = limits.high & 0xFFFF;
        isPositive[dx + radius] = limits.isPositive & 0xFFFF;
    }
}

// Eight pixels at a time.

#define WIDE [[gnu::target("avx2"), gnu::always_inline]] inline

namespace {

WIDE __m256i Load(const void* source) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(source));
}

/// The alpha byte has no meaning.
WIDE __m256i WithoutAlpha(__m256i pixels) {
    return _mm256_and_si256(pixels, _mm256_set1_epi32(0x00FFFFFF));
}

WIDE void StoreWithoutAlpha(__m256i pixels, Pixel* out) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), WithoutAlpha(pixels));
}

/// Adds those of eight pixels, the first of which is the row's pixel `first`, whose 32 bits are not
/// 0. Without a branch, which nothing could foretell.
WIDE void Add(__m256i lanes, int first, UndecidedPixels* undecided) {
    const __m256i isZero = _mm256_cmpeq_epi32(lanes, _mm256_setzero_si256());
    const int zeros = _mm256_movemask_ps(_mm256_castsi256_ps(isZero));
    const BitNumbers& clear = clearBits[static_cast<unsigned>(zeros)];
    const __m128i numbers = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(clear.numbers));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(undecided->numbers + undecided->count),
                        _mm256_add_epi32(_mm256_cvtepu8_epi32(numbers), _mm256_set1_epi32(first)));
    undecided->count += clear.count;
}

WIDE __m256i Inverted(__m256i bytes) {
    return _mm256_xor_si256(bytes, _mm256_set1_epi8(-1));
}

/// The halves of each 32 bits change places.
WIDE __m256i Swapped(__m256i halves) {
    return _mm256_or_si256(_mm256_slli_epi32(halves, 16), _mm256_srli_epi32(halves, 16));
}

// Turned sources. The four pixels around a source take the 16 bytes of a vector's half; the pixels
// 0 to 3 of the eight are in the lower halves and 4 to 7 in the upper ones.

/// The window, and the same one row further down.
struct CellRows {
    const unsigned char* upper;
    const unsigned char* lower;
};

/// A and B, then C and D of the cell at an offset in bytes.
WIDE __m128i LoadFour(const CellRows& rows, std::uint32_t offset) {
    const __m128i above = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(rows.upper + offset));
    return _mm_castps_si128(
        _mm_loadh_pi(_mm_castsi128_ps(above), reinterpret_cast<const __m64*>(rows.lower + offset)));
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

/// The pixels `pixel` and `pixel` + 4 of eight. `offsets` are those of their cells.
template <bool anyNegative, int pixel>
WIDE Mixed MixTwo(const CellRows& rows, const std::uint32_t* offsets, __m256i fractions,
                  __m256i changes) {
    return Mix<anyNegative>(LoadCorners(rows, offsets[pixel], offsets[pixel + 4]),
                            OfPixel<pixel>(fractions), OfPixel<pixel>(changes));
}

/// Writes eight pixels and returns lanes of 32 bits that are not 0 where they are undecided.
template <bool anyNegative>
WIDE __m256i ReadEight(const CellRows& rows, const std::uint32_t* offsets, __m256i cells,
                       __m256i fractions, __m256i origin, Pixel* out) {
    const __m256i changes =
        anyNegative ? FractionChange(_mm256_cmpgt_epi16(origin, cells)) : _mm256_setzero_si256();
    const Mixed mixed[] = {MixTwo<anyNegative, 0>(rows, offsets, fractions, changes),
                           MixTwo<anyNegative, 1>(rows, offsets, fractions, changes),
                           MixTwo<anyNegative, 2>(rows, offsets, fractions, changes),
                           MixTwo<anyNegative, 3>(rows, offsets, fractions, changes)};
    // The integer parts, then the fractions.
    const __m256i split = _mm256_setr_epi8(1, 3, 5, 7, 9, 11, 13, 15, 0, 2, 4, 6, 8, 10, 12, 14, 1,
                                           3, 5, 7, 9, 11, 13, 15, 0, 2, 4, 6, 8, 10, 12, 14);
    const __m256i first = _mm256_shuffle_epi8(Channels(mixed[0], mixed[1]), split);
    const __m256i second = _mm256_shuffle_epi8(Channels(mixed[2], mixed[3]), split);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_unpacklo_epi64(first, second));
    const __m256i rests = _mm256_unpackhi_epi64(first, second);
    __m256i sloped = _mm256_packs_epi16(Sloped(mixed[0], mixed[1]), Sloped(mixed[2], mixed[3]));
    if constexpr (anyNegative) {
        sloped = WithoutAlpha(_mm256_or_si256(sloped, ChangesFlat(cells, origin)));
    }
    // 1 where the channel is sloped and the rest is 0.
    const __m256i isNear = _mm256_subs_epu8(_mm256_min_epu8(sloped, _mm256_set1_epi8(1)), rests);
    const __m256i isOnlyExact =
        _mm256_cmpeq_epi32(fractions, _mm256_set1_epi32(static_cast<int>(onlyExact)));
    return _mm256_or_si256(isNear, isOnlyExact);
}

/// The offset in bytes of each source's cell in the window. Where a coordinate is negative the
/// integer part is the next pixel.
[[gnu::target("avx2")]] void ComputeOffsets(const DiscWindow& window, const SourceRun& run,
                                            __m256i origin, std::uint32_t* offsets) {
    const __m256i pitch =
        _mm256_set1_epi32(static_cast<int>(Halves(bytesPerPixel, window.columns * bytesPerPixel)));
    for (int i = 0; i < run.count; i += groupSize) {
        const int first = std::min(i, run.count - groupSize);
        const __m256i cells = Load(run.cells + first);
        const __m256i places = _mm256_sub_epi16(cells, _mm256_cmpgt_epi16(origin, cells));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(offsets + first),
                            _mm256_madd_epi16(places, pitch));
    }
}

[[gnu::target("avx2")]] void ReadTurnedGroups(const DiscWindow& window, const SourceRun& run,
                                              Pixel* out, UndecidedPixels* undecided) {
    const __m256i origin = _mm256_set1_epi32(
        static_cast<int>(Halves(window.radius - window.cx, window.radius - window.cy)));
    // Through memory: 32 bits are sooner loaded from there than taken out of a vector.
    std::uint32_t offsets[2 * largestEstimatedRadius];
    ComputeOffsets(window, run, origin, offsets);
    const auto* const upper = reinterpret_cast<const unsigned char*>(window.pixels);
    const CellRows rows = {upper, upper + window.columns * bytesPerPixel};
    for (int i = 0; i < run.count; i += groupSize) {
        // The last group begins early rather than to be a smaller one.
        const int first = std::min(i, run.count - groupSize);
        const __m256i cells = Load(run.cells + first);
        const __m256i fractions = Load(run.fractions + first);
        const __m256i isInside = _mm256_cmpgt_epi16(cells, origin);
        Pixel* const colors = out + run.first + first;
        const __m256i open =
            _mm256_movemask_epi8(isInside) == -1
                ? ReadEight<false>(rows, offsets + first, cells, fractions, origin, colors)
                : ReadEight<true>(rows, offsets + first, cells, fractions, origin, colors);
        Add(open, run.first + first, undecided);
    }
}

// Still sources.

WIDE __m256i Chosen(__m256i mask, __m256i set, __m256i clear) {
    return _mm256_blendv_epi8(clear, set, mask);
}

/// The mask in the lower half of each 32 bits for all of them.
WIDE __m256i MaskOfLower(__m256i masks) {
    return _mm256_srai_epi32(_mm256_slli_epi32(masks, 16), 16);
}

WIDE __m256i MaskOfUpper(__m256i masks) {
    return _mm256_srai_epi32(masks, 16);
}

/// For eight columns and a row, in the halves of 32 bits.
struct LimitsOfEight {
    __m256i low;
    __m256i high;
    __m256i isPositive;
};

/// Where the ways lead, as masks in halves of 32 bits.
struct Ways {
    /// Into the cell to the left, or above.
    __m256i toBefore;
    /// Not to the pixel itself.
    __m256i toElsewhere;
    /// Into a cell that is not read here: for a negative coordinate the next one.
    __m256i toUnknown;
};

WIDE Ways WaysOf(__m256i lengths, const LimitsOfEight& limits) {
    const __m256i isBelow = _mm256_cmpgt_epi16(limits.low, lengths);
    const __m256i isAbove = _mm256_cmpgt_epi16(lengths, limits.high);
    return {_mm256_and_si256(isBelow, limits.isPositive), _mm256_or_si256(isBelow, isAbove),
            _mm256_andnot_si256(limits.isPositive, isAbove)};
}

/// A pixel, its neighbours in the cell of its source, and the one across.
struct Cells {
    __m256i own;
    __m256i beside;
    __m256i under;
    __m256i across;
};

WIDE Cells LoadCells(const Pixel* own, std::ptrdiff_t columns, const Ways& ways) {
    const __m256i toLeft = MaskOfLower(ways.toBefore);
    const __m256i toAbove = MaskOfUpper(ways.toBefore);
    const Pixel* const above = own - columns;
    const Pixel* const below = own + columns;
    return {Load(own), Chosen(toLeft, Load(own - 1), Load(own + 1)),
            Chosen(toAbove, Load(above), Load(below)),
            Chosen(toAbove, Chosen(toLeft, Load(above - 1), Load(above + 1)),
                   Chosen(toLeft, Load(below - 1), Load(below + 1)))};
}

/// A quarter of 2 own + beside + under for each byte. Averages round down once their terms are
/// inverted.
WIDE __m256i Quarter(const Cells& cells) {
    const __m256i neighbours = _mm256_avg_epu8(Inverted(cells.beside), Inverted(cells.under));
    return Inverted(_mm256_avg_epu8(Inverted(cells.own), neighbours));
}

WIDE __m256i HasBits(__m256i bytes, char bits) {
    const __m256i mask = _mm256_set1_epi8(bits);
    return Inverted(_mm256_cmpeq_epi8(_mm256_and_si256(bytes, mask), _mm256_setzero_si256()));
}

/// Bytes that a way may change: that sum is a multiple of four, and the way leads across a slope.
WIDE __m256i IsOpen(const Cells& cells, const Ways& ways) {
    const __m256i sum = _mm256_add_epi8(_mm256_add_epi8(cells.own, cells.own),
                                        _mm256_add_epi8(cells.beside, cells.under));
    const __m256i isOdd = HasBits(_mm256_xor_si256(_mm256_xor_si256(cells.own, cells.beside),
                                                   _mm256_xor_si256(cells.under, cells.across)),
                                  1);
    // Two sums of two bytes are the same if both their averages are, which are rounded up, and
    // their last bits.
    const __m256i sameColumns = _mm256_cmpeq_epi8(_mm256_avg_epu8(cells.own, cells.under),
                                                  _mm256_avg_epu8(cells.beside, cells.across));
    const __m256i sameRows = _mm256_cmpeq_epi8(_mm256_avg_epu8(cells.own, cells.beside),
                                               _mm256_avg_epu8(cells.under, cells.across));
    const __m256i alongX = MaskOfLower(ways.toElsewhere);
    const __m256i alongY = MaskOfUpper(ways.toElsewhere);
    const __m256i across = _mm256_or_si256(_mm256_andnot_si256(sameColumns, alongX),
                                           _mm256_andnot_si256(sameRows, alongY));
    const __m256i sloped =
        _mm256_or_si256(across, _mm256_and_si256(isOdd, _mm256_or_si256(alongX, alongY)));
    return _mm256_andnot_si256(HasBits(sum, 3), sloped);
}

[[gnu::target("avx2")]] void ReadStillGroups(const DiscWindow& window, const ColumnLimits& limits,
                                             int dy, int left, const SourceRun& run, Pixel* out,
                                             UndecidedPixels* undecided) {
    const int column = left + window.radius + run.first;
    const Pixel* const row =
        window.pixels + static_cast<std::ptrdiff_t>(dy + window.radius) * window.columns + column;
    const RoundingLimits ofRow = LimitsAt(window.cy + dy);
    const __m256i low = _mm256_set1_epi32(static_cast<int>(Halves(0, ofRow.low)));
    const __m256i high = _mm256_set1_epi32(static_cast<int>(Halves(0, ofRow.high)));
    const __m256i isPositive = _mm256_set1_epi32(static_cast<int>(Halves(0, ofRow.isPositive)));
    for (int i = 0; i < run.count; i += groupSize) {
        const int first = std::min(i, run.count - groupSize);
        const LimitsOfEight ofEight = {
            _mm256_or_si256(Load(limits.low + column + first), low),
            _mm256_or_si256(Load(limits.high + column + first), high),
            _mm256_or_si256(Load(limits.isPositive + column + first), isPositive)};
        const Ways ways = WaysOf(Load(run.fractions + first), ofEight);
        const Cells cells = LoadCells(row + first, window.columns, ways);
        StoreWithoutAlpha(Quarter(cells), out + run.first + first);
        Add(_mm256_or_si256(WithoutAlpha(IsOpen(cells, ways)), ways.toUnknown), run.first + first,
            undecided);
    }
}

}  // namespace

#undef WIDE

void ReadTurned(const DiscWindow& window, const SourceRun& run, Pixel* out,
                UndecidedPixels* undecided) {
    ReadTurnedGroups(window, run, out, undecided);
}

void ReadStill(const DiscWindow& window, const ColumnLimits& limits, int dy, int left,
               const SourceRun& run, Pixel* out, UndecidedPixels* undecided) {
    ReadStillGroups(window, limits, dy, left, run, out, undecided);
}

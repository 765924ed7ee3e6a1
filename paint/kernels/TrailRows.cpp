#include "paint/kernels/TrailRows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/WideVectors.h"

namespace {

/// Undecided channels of a group of 24 that are listed without a branch. On noise there are 1.6 in
/// trails of 5 pixels.
constexpr int usuallyUndecided = 3;

/// Among one bit for each byte of a group, those of colours.
constexpr std::uint32_t colorBits = 0x77777777;
/// Above all colours: a search for the lowest bit always finds one.
constexpr std::uint32_t endBit = 0x80000000;

/// The numbers that a list of all channels needs room for: the last group can list some twice, and
/// each writes a few that do not count.
constexpr std::size_t UndecidedRoom(int width) {
    return static_cast<std::size_t>(3 * (width + trailRowGroup));
}

/// For each place of the trails that begin in one row, its pixel of the first of them; those of
/// the others follow.
struct TrailPlaces {
    const unsigned char* pixels[longestRowTrail];
};

/// 0 to 255 as doubles: sooner loaded than converted.
constexpr std::array<double, 256> channelValues = [] {
    std::array<double, 256> values{};
    for (int i = 0; i < 256; ++i) {
        values[static_cast<std::size_t>(i)] = i;
    }
    return values;
}();

/// Division by the sum of a trail's factors: the upper 16 bits of a product.
template <int length>
struct Division {
    static constexpr int divisor = length * (length + 1) / 2;
    static constexpr int factor = 65536 / divisor + 1;
    static constexpr bool IsExact() {
        for (int sum = 0; sum <= 255 * divisor; ++sum) {
            if (sum * factor / 65536 != sum / divisor) {
                return false;
            }
        }
        return true;
    }
    static_assert(IsExact());
};

/// Words of 16 bits for the bytes of a vector: for the lower and the upper eight of each half.
struct Words {
    __m256i lower;
    __m256i upper;
};

WIDE void Add(__m256i lower, __m256i upper, Words* sums) {
    sums->lower = _mm256_add_epi16(sums->lower, lower);
    sums->upper = _mm256_add_epi16(sums->upper, upper);
}

/// Two places of trails at a time.
template <int length>
WIDE Words SumTrails(const TrailPlaces& places, std::ptrdiff_t at) {
    const __m256i zero = _mm256_setzero_si256();
    Words sums = {zero, zero};
    for (int place = 0; place + 1 < length; place += 2) {
        const __m256i first = LoadWide(places.pixels[place] + at);
        const __m256i second = LoadWide(places.pixels[place + 1] + at);
        const __m256i factors =
            _mm256_set1_epi16(static_cast<short>((length - place) | (length - place - 1) << 8));
        Add(_mm256_maddubs_epi16(_mm256_unpacklo_epi8(first, second), factors),
            _mm256_maddubs_epi16(_mm256_unpackhi_epi8(first, second), factors), &sums);
    }
    if constexpr (length % 2 != 0) {
        const __m256i last = LoadWide(places.pixels[length - 1] + at);
        Add(_mm256_unpacklo_epi8(last, zero), _mm256_unpackhi_epi8(last, zero), &sums);
    }
    return sums;
}

template <int length>
WIDE __m256i Quotients(__m256i sums) {
    return _mm256_mulhi_epu16(sums, _mm256_set1_epi16(Division<length>::factor));
}

template <int length>
WIDE __m256i IsMultiple(__m256i sums, __m256i quotients) {
    return _mm256_cmpeq_epi16(
        _mm256_mullo_epi16(quotients, _mm256_set1_epi16(Division<length>::divisor)), sums);
}

/// Bytes whose trails have one value.
template <int length>
WIDE __m256i IsFlat(const TrailPlaces& places, std::ptrdiff_t at) {
    const __m256i first = LoadWide(places.pixels[0] + at);
    __m256i same = _mm256_cmpeq_epi8(first, LoadWide(places.pixels[1] + at));
    for (int place = 2; place < length; ++place) {
        same =
            _mm256_and_si256(same, _mm256_cmpeq_epi8(first, LoadWide(places.pixels[place] + at)));
    }
    return same;
}

/// -1 for each byte whose bit is set.
WIDE __m256i LookUpBits(const unsigned char* bits, __m256i bytes) {
    // The half of the bits is chosen by a value's upper bit, the byte in it by the next four.
    const __m256i number = _mm256_and_si256(_mm256_srli_epi16(bytes, 3), _mm256_set1_epi8(0x0F));
    const __m256i eight =
        _mm256_blendv_epi8(_mm256_shuffle_epi8(LoadTwice(bits), number),
                           _mm256_shuffle_epi8(LoadTwice(bits + 16), number), bytes);
    const __m256i powers = _mm256_set1_epi64x(static_cast<long long>(0x8040201008040201));
    const __m256i bit = _mm256_shuffle_epi8(powers, _mm256_and_si256(bytes, _mm256_set1_epi8(7)));
    return _mm256_cmpeq_epi8(_mm256_and_si256(eight, bit), bit);
}

WIDE std::uint32_t BitsOf(__m256i masks) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(masks));
}

struct Group {
    __m256i colors;
    /// Bytes that are -1 where the sum is a multiple of the divisor.
    __m256i isOpen;
};

template <int length>
WIDE Group BlurGroup(const TrailPlaces& places, std::ptrdiff_t at) {
    const Words sums = SumTrails<length>(places, at);
    const Words quotients = {Quotients<length>(sums.lower), Quotients<length>(sums.upper)};
    return {_mm256_packus_epi16(quotients.lower, quotients.upper),
            _mm256_packs_epi16(IsMultiple<length>(sums.lower, quotients.lower),
                               IsMultiple<length>(sums.upper, quotients.upper))};
}

/// Returns the group without those open bytes whose trails are flat.
template <int length>
WIDE Group DecideFlat(const Group& group, const TrailPlaces& places, std::ptrdiff_t at,
                      const TrailWeights& weights) {
    const __m256i isFlat = _mm256_and_si256(group.isOpen, IsFlat<length>(places, at));
    const __m256i change = _mm256_and_si256(isFlat, LookUpBits(weights.flatBits, group.colors));
    return {_mm256_add_epi8(group.colors, change), _mm256_andnot_si256(isFlat, group.isOpen)};
}

/// Channels by the numbers of their bytes in the row.
struct ChannelList {
    std::uint32_t* numbers;
    int count;
};

/// Adds the channels of the lowest bits, of which `count` are set, without a branch. Returns the
/// others.
WIDE std::uint32_t AddLowest(std::uint32_t bits, int count, int first, ChannelList* list) {
    for (int i = 0; i < usuallyUndecided; ++i) {
        list->numbers[list->count + i] =
            static_cast<std::uint32_t>(first) +
            static_cast<std::uint32_t>(std::countr_zero(bits | endBit));
        bits &= bits - 1;
    }
    list->count += count;
    return bits;
}

/// Blurs a row but for the channels that it lists.
template <int length>
[[gnu::target("avx2")]] ChannelList BlurDecided(const TrailPlaces& places,
                                                const TrailWeights& weights, unsigned char* pixels,
                                                int width, std::uint32_t* undecided) {
    const __m256i isAlpha = _mm256_set1_epi32(static_cast<int>(alphaMask));
    ChannelList list = {undecided, 0};
    for (int x = 0; x < width; x += trailRowGroup) {
        // The last group begins early rather than to be a smaller one.
        const int at = std::min(x, width - trailRowGroup) * bytesPerPixel;
        Group group = BlurGroup<length>(places, at);
        std::uint32_t open = BitsOf(group.isOpen) & colorBits;
        int count = std::popcount(open);
        if (count > usuallyUndecided) [[unlikely]] {
            group = DecideFlat<length>(group, places, at, weights);
            open = BitsOf(group.isOpen) & colorBits;
            count = std::popcount(open);
            for (; count > usuallyUndecided; count -= usuallyUndecided) {
                open = AddLowest(open, usuallyUndecided, at, &list);
            }
        }
        AddLowest(open, count, at, &list);
        const __m256i last = LoadWide(places.pixels[length - 1] + at);
        StoreWide(_mm256_blendv_epi8(group.colors, last, isAlpha), pixels + at);
    }
    return list;
}

/// The places and the weights are copies, which stay in registers: for all that is known, writing
/// pixels might change the originals.
template <int length>
[[gnu::target("avx2")]] void ComputeListed(const ChannelList list, const TrailPlaces places,
                                           const double* originalWeights, unsigned char* pixels) {
    double weights[longestRowTrail];
    std::copy_n(originalWeights, length, weights);
    for (int i = 0; i < list.count; ++i) {
        const std::uint32_t at = list.numbers[i];
        double sum = channelValues[places.pixels[0][at]] * weights[0];
        for (int place = 1; place < length; ++place) {
            sum += channelValues[places.pixels[place][at]] * weights[place];
        }
        pixels[at] = static_cast<unsigned char>(sum);
    }
}

template <int length>
int BlurRow(const TrailPlaces& places, const TrailWeights& weights, unsigned char* pixels,
            int width, std::uint32_t* undecided) {
    const ChannelList list = BlurDecided<length>(places, weights, pixels, width, undecided);
    ComputeListed<length>(list, places, weights.values, pixels);
    return list.count;
}

}  // namespace

TrailWeights::TrailWeights(const double* newValues, int length) {
    std::copy_n(newValues, length, values);
    for (int value = 0; value < 256; ++value) {
        double sum = 0.0;
        for (int place = 0; place < length; ++place) {
            sum += value * values[place];
        }
        if (static_cast<int>(sum) < value) {
            flatBits[value / 8] |= static_cast<unsigned char>(1 << value % 8);
        }
    }
}

TrailRows::TrailRows(int newWidth, int newLength, int newLean)
    : width(newWidth),
      length(newLength),
      lean(newLean),
      margin(lean == 0 ? 0 : length - 1),
      copies(static_cast<std::size_t>((width + margin) * length)),
      undecided(UndecidedRoom(width)) {}

void TrailRows::Load(int number, const unsigned char* pixels) {
    unsigned char* const copy = Copy(number);
    std::memcpy(copy, pixels, static_cast<std::size_t>(width * bytesPerPixel));
    for (int i = 0; i < margin; ++i) {
        const int x = lean > 0 ? width + i : -1 - i;
        StorePixel(copy, x, LoadPixel(copy, x - lean * width));
    }
}

int TrailRows::Blur(int number, const TrailWeights& weights, unsigned char* pixels) {
    TrailPlaces places{};
    for (int place = 0; place < length; ++place) {
        places.pixels[place] = Copy(number + place) + place * lean * bytesPerPixel;
    }
    switch (length) {
        case 2:
            return BlurRow<2>(places, weights, pixels, width, undecided.Values());
        case 3:
            return BlurRow<3>(places, weights, pixels, width, undecided.Values());
        case 4:
            return BlurRow<4>(places, weights, pixels, width, undecided.Values());
        case 5:
            return BlurRow<5>(places, weights, pixels, width, undecided.Values());
        default:
            return BlurRow<longestRowTrail>(places, weights, pixels, width, undecided.Values());
    }
}

unsigned char* TrailRows::Copy(int number) const {
    Pixel* const copy = copies.Values() + number % length * (width + margin);
    return reinterpret_cast<unsigned char*>(lean < 0 ? copy + margin : copy);
}

#include "paint/kernels/SaturateWide.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "paint/kernels/WideVectors.h"
#include "raster/PicClass.h"

// The order of the channels tells between which corners of the colour circle the hue lies. The
// highest channel stays the highest and the lowest the lowest, so only the middle one needs the
// hue, and the choices of the definition become tables. What is computed is computed as there, in
// doubles; what is joined, left out or turned in sign is exact:
// - A hue lies within 60 degrees of its foot, so that the last sum or difference on its way to the
//   distance from there loses nothing. Only one before it may round: by `raised`.
// - With a saturation of 0 both ends are the lightness, also without a choice.
// - Twice the lightness is the sum that it is half of.

namespace {

constexpr int groupSize = 8;
constexpr double perByte = 0.00392156862745098;  // 1 / 255

/// Tables by the order of the channels. With 1 for red above green, 2 for blue above red and
/// 4 for green above blue that is, from the highest to the lowest:
///   0  all equal, whose hue is 0    1  red, blue, green     2  blue, green, red
///   3  blue, red, green             4  green, red, blue     5  red, green, blue
///   6  green, blue, red             7  none
/// Two equal ones are thereby in the order that the choices of the definition give them: at 60
/// degrees green is the highest, at 180 blue, at 300 red.
struct ChannelOrders {
    /// The hue of the highest channel, in sixths of the circle.
    float start[groupSize] = {0, 0, 4, 4, 2, 0, 2, 0};
    /// The sign of the hue's distance from it, on a 0.
    float sign[groupSize] = {0, -0.0F, -0.0F, 0, -0.0F, 0, 0, 0};
    /// By how many degrees the hue is raised, and of what it is then as far away as the middle
    /// channel is from the lowest.
    float raised[groupSize] = {0, 360, 0, 120, 120, 0, 0, 0};
    float foot[groupSize] = {0, 360, 240, 360, 240, 0, 120, 0};
    /// Where in a pixel of the highest, the middle and the lowest channel and alpha the bytes of
    /// red, green, blue and alpha are, from the low byte on.
    std::int32_t bytes[groupSize] = {0x03020100, 0x03010200, 0x03000102, 0x03000201,
                                     0x03020001, 0x03020100, 0x03010002, 0x03020100};
};

constexpr ChannelOrders orders;

/// Eight numbers.
struct Doubles {
    __m256d low;
    __m256d high;
};

WIDE Doubles DoublesOf(__m256i integers) {
    return {_mm256_cvtepi32_pd(_mm256_castsi256_si128(integers)),
            _mm256_cvtepi32_pd(_mm256_extracti128_si256(integers, 1))};
}

/// For each pixel the entry of its order.
WIDE Doubles OfOrder(const float (&table)[groupSize], __m256i order) {
    const __m256 values = _mm256_permutevar8x32_ps(_mm256_loadu_ps(table), order);
    return {_mm256_cvtps_pd(_mm256_castps256_ps128(values)),
            _mm256_cvtps_pd(_mm256_extractf128_ps(values, 1))};
}

WIDE __m256i OfOrder(const std::int32_t (&table)[groupSize], __m256i order) {
    return _mm256_permutevar8x32_epi32(LoadWide(table), order);
}

WIDE __m256i Truncated(const Doubles& values) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm256_cvttpd_epi32(values.low)),
                                   _mm256_cvttpd_epi32(values.high), 1);
}

/// Channels of four pixels, 0 to 1.
struct SortedChannels {
    __m256d most;
    __m256d middle;
    __m256d least;
};

/// The position of the middle channel between the lowest and the highest, for four pixels.
struct HuePlace {
    __m256d start;
    __m256d sign;
    __m256d raised;
    __m256d foot;
};

/// The channels of the saturated colour times 255, in the same order.
WIDE SortedChannels Saturated(const SortedChannels& channels, const HuePlace& place,
                              __m256d delta) {
    const __m256d one = _mm256_set1_pd(1.0);
    const __m256d zero = _mm256_setzero_pd();
    // Below the least of what is divided by; greys divide 0 by it.
    const __m256d noRange = _mm256_set1_pd(1e-3);
    const __m256d sum = _mm256_add_pd(channels.most, channels.least);
    const __m256d range = _mm256_sub_pd(channels.most, channels.least);
    const __m256d lightness = _mm256_mul_pd(sum, _mm256_set1_pd(0.5));
    const __m256d lightRange =
        _mm256_sub_pd(_mm256_sub_pd(_mm256_set1_pd(2.0), channels.most), channels.least);
    const __m256d isLight = _mm256_cmp_pd(lightness, _mm256_set1_pd(0.5), _CMP_GT_OQ);
    const __m256d possibleRange =
        _mm256_max_pd(_mm256_blendv_pd(sum, lightRange, isLight), noRange);
    __m256d saturation = _mm256_add_pd(_mm256_div_pd(range, possibleRange), delta);
    saturation = _mm256_max_pd(_mm256_min_pd(saturation, one), zero);
    // The ends.
    const __m256d lightMost =
        _mm256_sub_pd(_mm256_add_pd(lightness, saturation), _mm256_mul_pd(lightness, saturation));
    const __m256d darkMost = _mm256_mul_pd(_mm256_add_pd(one, saturation), lightness);
    const __m256d most = _mm256_blendv_pd(darkMost, lightMost, isLight);
    const __m256d least = _mm256_sub_pd(sum, most);
    // The slope between them.
    const __m256d offset = _mm256_div_pd(_mm256_sub_pd(channels.middle, channels.least),
                                         _mm256_max_pd(range, noRange));
    const __m256d hue = _mm256_mul_pd(_mm256_add_pd(_mm256_xor_pd(offset, place.sign), place.start),
                                      _mm256_set1_pd(60.0));
    const __m256d fromFoot = _mm256_andnot_pd(
        _mm256_set1_pd(-0.0), _mm256_sub_pd(_mm256_add_pd(hue, place.raised), place.foot));
    const __m256d rise = _mm256_mul_pd(_mm256_mul_pd(_mm256_sub_pd(most, least), fromFoot),
                                       _mm256_set1_pd(1.0 / 60.0));
    const __m256d toBytes = _mm256_set1_pd(255.0);
    return {_mm256_mul_pd(toBytes, most), _mm256_mul_pd(toBytes, _mm256_add_pd(rise, least)),
            _mm256_mul_pd(toBytes, least)};
}

WIDE void SaturateGroup(unsigned char* pixels, __m256d delta) {
    const __m256i byte = _mm256_set1_epi32(0xFF);
    const __m256i source = LoadWide(pixels);
    const __m256i red = _mm256_and_si256(source, byte);
    const __m256i green = _mm256_and_si256(_mm256_srli_epi32(source, 8), byte);
    const __m256i blue = _mm256_and_si256(_mm256_srli_epi32(source, 16), byte);

    const __m256i higher = _mm256_max_epi32(red, green);
    const __m256i lower = _mm256_min_epi32(red, green);
    const __m256d scale = _mm256_set1_pd(perByte);
    const Doubles most = DoublesOf(_mm256_max_epi32(higher, blue));
    const Doubles middle = DoublesOf(_mm256_max_epi32(lower, _mm256_min_epi32(higher, blue)));
    const Doubles least = DoublesOf(_mm256_min_epi32(lower, blue));

    const __m256i order = _mm256_or_si256(
        _mm256_or_si256(_mm256_srli_epi32(_mm256_cmpgt_epi32(red, green), 31),
                        _mm256_and_si256(_mm256_cmpgt_epi32(blue, red), _mm256_set1_epi32(2))),
        _mm256_and_si256(_mm256_cmpgt_epi32(green, blue), _mm256_set1_epi32(4)));
    const Doubles start = OfOrder(orders.start, order);
    const Doubles sign = OfOrder(orders.sign, order);
    const Doubles raised = OfOrder(orders.raised, order);
    const Doubles foot = OfOrder(orders.foot, order);

    const SortedChannels low =
        Saturated({_mm256_mul_pd(most.low, scale), _mm256_mul_pd(middle.low, scale),
                   _mm256_mul_pd(least.low, scale)},
                  {start.low, sign.low, raised.low, foot.low}, delta);
    const SortedChannels high =
        Saturated({_mm256_mul_pd(most.high, scale), _mm256_mul_pd(middle.high, scale),
                   _mm256_mul_pd(least.high, scale)},
                  {start.high, sign.high, raised.high, foot.high}, delta);

    const __m256i first = Truncated({low.most, high.most});
    const __m256i second = _mm256_slli_epi32(Truncated({low.middle, high.middle}), 8);
    const __m256i third = _mm256_slli_epi32(Truncated({low.least, high.least}), 16);
    const __m256i alpha = _mm256_andnot_si256(_mm256_set1_epi32(0x00FFFFFF), source);
    const __m256i sorted =
        _mm256_or_si256(_mm256_or_si256(first, second), _mm256_or_si256(third, alpha));
    const __m256i pixelStarts = _mm256_setr_epi32(0, 0x04040404, 0x08080808, 0x0C0C0C0C, 0,
                                                  0x04040404, 0x08080808, 0x0C0C0C0C);
    const __m256i bytes = _mm256_add_epi32(OfOrder(orders.bytes, order), pixelStarts);
    StoreWide(_mm256_shuffle_epi8(sorted, bytes), pixels);
}

}  // namespace

[[gnu::target("avx2")]] void SaturateWide(unsigned char* pixels, int count, double delta) {
    const __m256d delta4 = _mm256_set1_pd(delta);
    const int whole = count - count % groupSize;
    for (int i = 0; i < whole; i += groupSize) {
        SaturateGroup(pixels + i * bytesPerPixel, delta4);
    }
    if (whole < count) {
        unsigned char rest[groupSize * bytesPerPixel] = {};
        const auto size = static_cast<std::size_t>((count - whole) * bytesPerPixel);
        std::memcpy(rest, pixels + whole * bytesPerPixel, size);
        SaturateGroup(rest, delta4);
        std::memcpy(pixels + whole * bytesPerPixel, rest, size);
    }
}

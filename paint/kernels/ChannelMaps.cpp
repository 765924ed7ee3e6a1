#include "paint/kernels/ChannelMaps.h"

#include <algorithm>
#include <cstddef>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/WideVectors.h"

namespace {

/// Pixels that go at a time.
constexpr int mapGroup = 32;

/// The differences up to an entry make up the entry. A shuffle picks one of 16 bytes by the lower
/// half of an index, and 0 if the index is negative: so each index takes the differences of the
/// sixteens up to its own.
WIDE __m256i LookUp(const unsigned char* differences, __m256i values) {
    __m256i index = _mm256_and_si256(values, _mm256_set1_epi8(0x7F));
    __m256i lower = _mm256_setzero_si256();
    __m256i upper = lower;
    for (int first = 0; first < 128; first += 16) {
        const unsigned char* const sixteen = differences + first;
        lower = _mm256_xor_si256(lower, _mm256_shuffle_epi8(LoadTwice(sixteen), index));
        upper = _mm256_xor_si256(upper, _mm256_shuffle_epi8(LoadTwice(sixteen + 128), index));
        index = _mm256_sub_epi8(index, _mm256_set1_epi8(16));
    }
    return _mm256_blendv_epi8(lower, upper, values);
}

/// In each half of the vectors rows of 32 bits become columns.
WIDE void Transpose(__m256i (&rows)[4]) {
    const __m256i low01 = _mm256_unpacklo_epi32(rows[0], rows[1]);
    const __m256i low23 = _mm256_unpacklo_epi32(rows[2], rows[3]);
    const __m256i high01 = _mm256_unpackhi_epi32(rows[0], rows[1]);
    const __m256i high23 = _mm256_unpackhi_epi32(rows[2], rows[3]);
    rows[0] = _mm256_unpacklo_epi64(low01, low23);
    rows[1] = _mm256_unpackhi_epi64(low01, low23);
    rows[2] = _mm256_unpacklo_epi64(high01, high23);
    rows[3] = _mm256_unpackhi_epi64(high01, high23);
}

/// In each half of a vector the first bytes of four pixels stand together, then the second ones,
/// or the other way round.
WIDE __m256i Gathered(__m256i pixels) {
    const __m128i order = _mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    return _mm256_shuffle_epi8(pixels, _mm256_broadcastsi128_si256(order));
}

/// One vector for each channel and one for the alpha bytes, and back.
template <std::size_t channelCount>
[[gnu::target("avx2")]] void MapGroups(const unsigned char (&differences)[channelCount][256],
                                       unsigned char* pixels, int count) {
    constexpr int vectorBytes = sizeof(__m256i);
    for (int x = 0; x < count; x += mapGroup) {
        unsigned char* const group = pixels + x * bytesPerPixel;
        __m256i vectors[4];
        for (int i = 0; i < 4; ++i) {
            vectors[i] = Gathered(LoadWide(group + i * vectorBytes));
        }
        Transpose(vectors);
        for (std::size_t c = 0; c < channelCount; ++c) {
            vectors[c] = LookUp(differences[c], vectors[c]);
        }
        Transpose(vectors);
        for (int i = 0; i < 4; ++i) {
            StoreWide(Gathered(vectors[i]), group + i * vectorBytes);
        }
    }
}

}  // namespace

// Three look-ups a pixel take 0.23 ms for 512 by 512 pixels, those in vectors half of it.
void ChannelMap::MapRow(unsigned char* pixels, int count) const {
    int done = 0;
    if (HasAvx2()) {
        done = count / mapGroup * mapGroup;
        MapGroups(differences, pixels, done);
    }
    for (int i = done; i < count; ++i) {
        const Pixel pixel = LoadPixel(pixels, i);
        StorePixel(pixels, i,
                   tables[0][RedOf(pixel)] | tables[1][GreenOf(pixel)] | tables[2][BlueOf(pixel)] |
                       (pixel & alphaMask));
    }
}

void ChannelMap::SetTable(int channel, const unsigned char (&bytes)[256]) {
    for (int value = 0; value < 256; ++value) {
        const int before = value % 128 < 16 ? 0 : bytes[value - 16];
        tables[channel][value] = static_cast<Pixel>(bytes[value]) << 8 * channel;
        differences[channel][value] = static_cast<unsigned char>(bytes[value] ^ before);
    }
}

ContrastMap::ContrastMap(int offset, double steepness) {
    for (int c = 0; c < channelCount; ++c) {
        Fill(c, [&](int value) {
            const int brighter = std::clamp(value + offset, 0, 255);
            return std::clamp(static_cast<int>((brighter - 128) * steepness + 128.0), 0, 255);
        });
    }
}

ColorMap::ColorMap(const RGBColor16& color, double share) {
    const unsigned char goals[channelCount] = {HighByte(color.red), HighByte(color.green),
                                               HighByte(color.blue)};
    for (int c = 0; c < channelCount; ++c) {
        Fill(c, [&](int value) { return value - static_cast<int>((value - goals[c]) * share); });
    }
}

#include "paint/Resize.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "paint/kernels/PixelBytes.h"

namespace {

constexpr std::uint64_t topBit = std::uint64_t{1} << 63;

void CopyPixels(unsigned char* to, const unsigned char* from, int count) {
    std::memcpy(to, from, static_cast<std::size_t>(count * bytesPerPixel));
}

}  // namespace

void CopyTiled(const PicClass& from, PicClass& to) {
    for (short y = 0; y < to.grY; ++y) {
        const unsigned char* const source = from.PixelAddress(0, static_cast<short>(y % from.grY));
        unsigned char* const target = to.PixelAddress(0, y);
        for (int x = 0; x < to.grX; x += from.grX) {
            CopyPixels(target + x * bytesPerPixel, source, std::min<int>(from.grX, to.grX - x));
        }
    }
}

/// Rounds to the nearest, halves to the even one. `rest` is the part after the digits: below, equal
/// to or above `half`.
ResampledSide::Extended ResampledSide::Rounded(Extended number, std::uint32_t rest,
                                               std::uint32_t half) {
    if (rest > half || (rest == half && (number.digits & 1) != 0)) {
        ++number.digits;
        if (number.digits == 0) {
            return {topBit, number.scale - 1};
        }
    }
    return number;
}

/// numerator / denominator, both above 0 and below 32768.
ResampledSide::Extended ResampledSide::Quotient(std::uint32_t numerator,
                                                std::uint32_t denominator) {
    Extended quotient{numerator / denominator, 0};
    std::uint32_t rest = numerator % denominator;
    while ((quotient.digits & topBit) == 0) {
        rest *= 2;
        quotient.digits = quotient.digits << 1 | (rest >= denominator ? 1 : 0);
        rest -= rest >= denominator ? denominator : 0;
        ++quotient.scale;
    }
    return Rounded(quotient, 2 * rest, denominator);
}

/// factor * number; the factor is above 0 and below 32768.
ResampledSide::Extended ResampledSide::Product(std::uint32_t factor, const Extended& number) {
    const std::uint64_t low = (number.digits & 0xFFFFFFFF) * factor;
    const std::uint64_t high = (number.digits >> 32) * factor + (low >> 32);
    // `high` by 2^32 and the low half of `low`: as many bits too many as `high` has beyond 32.
    const int excess = static_cast<int>(std::bit_width(high)) - 32;
    const auto behind = static_cast<std::uint32_t>(low);
    if (excess == 0) {
        return {high << 32 | behind, number.scale};
    }
    const std::uint64_t digits = high << (32 - excess) | behind >> excess;
    const std::uint32_t rest = behind & ((std::uint32_t{1} << excess) - 1);
    return Rounded({digits, number.scale - excess}, rest, std::uint32_t{1} << (excess - 1));
}

ResampledSide::ResampledSide(short oldLength, short newLength)
    : ratio(
          Quotient(static_cast<std::uint32_t>(oldLength), static_cast<std::uint32_t>(newLength))) {}

short ResampledSide::Place(short x) const {
    if (x == 0) {
        return 0;
    }
    const Extended place = Product(static_cast<std::uint32_t>(x), ratio);
    return place.scale < 64 ? static_cast<short>(place.digits >> place.scale) : short{0};
}

void CopyResampled(const PicClass& from, PicClass& to) {
    constexpr int stripWidth = 512;
    const ResampledSide across(from.grX, to.grX);
    const ResampledSide down(from.grY, to.grY);
    for (int left = 0; left < to.grX; left += stripWidth) {
        const int width = std::min(stripWidth, to.grX - left);
        short columns[stripWidth];
        for (int i = 0; i < width; ++i) {
            columns[i] = across.Place(static_cast<short>(left + i));
        }
        for (short y = 0; y < to.grY; ++y) {
            const unsigned char* const source = from.PixelAddress(0, down.Place(y));
            unsigned char* const target = to.PixelAddress(static_cast<short>(left), y);
            for (int i = 0; i < width; ++i) {
                StorePixel(target, i, LoadPixel(source, columns[i]));
            }
        }
    }
}

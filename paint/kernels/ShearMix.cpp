#include "paint/kernels/ShearMix.h"

#include <algorithm>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"

namespace {

// With the fraction f, four times a channel's value is
//   (at + along) + (at + across) + f * ((along + diagonal) - (at + across)),
// which in doubles has a rounding error below 2^-40. The fraction in integers is less than 1 of its
// units off, its own rounding of at most 2^-18 included, and is multiplied by 510 at most. So the
// estimate, in the same units, is less than 512 off, and decides the value unless a whole number is
// nearer than that.

constexpr Pixel estimateError = 512;
/// The estimate has four times the value.
constexpr int valueBits = shearFractionBits + 2;
constexpr int lowHalf = 16;

/// Red and blue lie in the halves of one number up to here.
constexpr Pixel RedBlueOf(Pixel pixel) {
    return pixel & 0x00FF00FF;
}

constexpr Pixel GreenByteOf(Pixel pixel) {
    return pixel >> 8 & 0xFF;
}

/// Each estimate, of 32 signed bits, is raised by its error.
struct Estimates {
    Pixel red;
    Pixel green;
    Pixel blue;
};

/// `leading` and `trailing` are the sums across, of the places before and after the position.
Estimates EstimatesOf(Pixel redBlue, Pixel green, Pixel redBlueLeading, Pixel greenLeading,
                      Pixel redBlueTrailing, Pixel greenTrailing, Pixel fraction) {
    const Pixel rise = redBlueTrailing - redBlueLeading;
    const auto redRise = static_cast<Pixel>(static_cast<std::int32_t>(rise << lowHalf) >> lowHalf);
    const auto blueRise = static_cast<Pixel>(static_cast<std::int32_t>(rise - redRise) >> lowHalf);
    return {
        (redBlue << shearFractionBits) + redRise * fraction + estimateError,
        (green << shearFractionBits) + (greenTrailing - greenLeading) * fraction + estimateError,
        (redBlue >> lowHalf << shearFractionBits) + blueRise * fraction + estimateError};
}

/// Not 0 if the value may be another whole number than that of the estimate.
Pixel Doubt(Pixel estimate) {
    constexpr Pixel belowValue = (Pixel{1} << valueBits) - 1;
    return (estimate & belowValue & ~(2 * estimateError - 1)) == 0 ? 1 : 0;
}

/// Positions below 0 are read beyond the pixels around them, where values can leave a byte. The
/// others can not, but where there is a doubt.
template <bool isBelow0>
Pixel Channel(Pixel estimate) {
    const Pixel value = static_cast<Pixel>(static_cast<std::int32_t>(estimate) >> valueBits);
    return isBelow0 ? static_cast<Pixel>(std::clamp(static_cast<std::int32_t>(value), 0, 255))
                    : value;
}

template <bool isBelow0>
void MixLoop(const ShearedRun& run, unsigned char* __restrict out, Pixel* __restrict undecided) {
    const Pixel* const at = run.at;
    const Pixel* const across = run.across;
    const auto fraction = static_cast<Pixel>(run.fraction);
    for (int i = 0; i < run.count; ++i) {
        const Pixel a = at[i];
        const Pixel b = at[i + 1];
        const Pixel c = across[i];
        const Pixel d = across[i + 1];
        const Pixel redBlueLeading = RedBlueOf(a) + RedBlueOf(c);
        const Pixel greenLeading = GreenByteOf(a) + GreenByteOf(c);
        const Estimates estimates = EstimatesOf(
            RedBlueOf(a) + RedBlueOf(b) + redBlueLeading,
            GreenByteOf(a) + GreenByteOf(b) + greenLeading, redBlueLeading, greenLeading,
            RedBlueOf(b) + RedBlueOf(d), GreenByteOf(b) + GreenByteOf(d), fraction);
        undecided[i] = Doubt(estimates.red) | Doubt(estimates.green) | Doubt(estimates.blue);
        const Pixel mixed = Channel<isBelow0>(estimates.red) |
                            Channel<isBelow0>(estimates.green) << 8 |
                            Channel<isBelow0>(estimates.blue) << 16;
        StorePixel(out, i, mixed);
    }
}

}  // namespace

void MixSheared(const ShearedRun& run, unsigned char* out, Pixel* undecided) {
    if (run.fraction < 0) {
        ForThisProcessor<MixLoop<true>>(run, out, undecided);
    } else {
        ForThisProcessor<MixLoop<false>>(run, out, undecided);
    }
}

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

constexpr std::int32_t estimateError = 512;
/// The estimate has four times the value.
constexpr int valueBits = shearFractionBits + 2;

std::int32_t Estimate(int at, int along, int across, int diagonal, std::int32_t fraction) {
    const int leading = at + across;
    return ((at + along + leading) << shearFractionBits) + fraction * (along + diagonal - leading);
}

/// Not 0 if the value may be another whole number than that of the estimate.
std::int32_t Doubt(std::int32_t estimate) {
    constexpr std::int32_t belowValue = (1 << valueBits) - 1;
    return ((estimate + estimateError) & belowValue) < 2 * estimateError ? 1 : 0;
}

Pixel Channel(std::int32_t estimate) {
    return static_cast<Pixel>(std::clamp(estimate >> valueBits, 0, 255));
}

void MixLoop(const ShearedRun& run, unsigned char* __restrict out,
             unsigned char* __restrict undecided) {
    const Pixel* const at = run.at;
    const Pixel* const along = run.along;
    const Pixel* const across = run.across;
    const Pixel* const diagonal = run.diagonal;
    const std::int32_t* const fractions = run.fractions;
    for (int first = 0; first + shearGroup <= run.count; first += shearGroup) {
        std::int32_t doubt = 0;
        Pixel mixed[shearGroup];
        for (int i = 0; i < shearGroup; ++i) {
            const Pixel a = at[first + i];
            const Pixel b = along[first + i];
            const Pixel c = across[first + i];
            const Pixel d = diagonal[first + i];
            const std::int32_t f = fractions[first + i];
            const std::int32_t red = Estimate(RedOf(a), RedOf(b), RedOf(c), RedOf(d), f);
            const std::int32_t green = Estimate(GreenOf(a), GreenOf(b), GreenOf(c), GreenOf(d), f);
            const std::int32_t blue = Estimate(BlueOf(a), BlueOf(b), BlueOf(c), BlueOf(d), f);
            doubt |= Doubt(red) | Doubt(green) | Doubt(blue);
            mixed[i] = Channel(red) | Channel(green) << 8 | Channel(blue) << 16;
        }
        std::memcpy(out + first * bytesPerPixel, mixed, sizeof mixed);
        undecided[first / shearGroup] = static_cast<unsigned char>(doubt);
    }
}

}  // namespace

void MixSheared(const ShearedRun& run, unsigned char* out, unsigned char* undecided) {
    ForThisProcessor<MixLoop>(run, out, undecided);
    if (run.count % shearGroup != 0) {
        undecided[run.count / shearGroup] = 1;
    }
}

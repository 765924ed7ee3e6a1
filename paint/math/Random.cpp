#include "paint/math/Random.h"

#include "base/Platform.h"

namespace {

// One thread runs everything, so one state serves. Its value before the first seeding has no
// meaning.
RandomGenerator generator(1);

/// On both sides of each whole quotient.
constexpr bool DivideRightly() {
    for (int quotient = 1; quotient < 8002; ++quotient) {
        if (By32767(quotient * 32767) != quotient ||
            By32767(quotient * 32767 - 1) != quotient - 1 ||
            By16383(quotient * 16383) != quotient ||
            By16383(quotient * 16383 - 1) != quotient - 1) {
            return false;
        }
    }
    return true;
}
static_assert(DivideRightly());

}  // namespace

void SeedRandom() {
    SetSeed(platformServices.clockSeconds());
}

void SetSeed(std::uint32_t value) {
    generator = RandomGenerator(value);
}

std::uint32_t Seed() {
    return generator.State();
}

std::int32_t Rand() {
    return generator.Rand();
}

std::int32_t RandomRange(std::int32_t lo, std::int32_t hi) {
    return generator.Range(lo, hi);
}

short RandomSpread(short n) {
    return generator.Spread(n);
}

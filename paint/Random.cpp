#include "paint/Random.h"

#include "shell/Platform.h"

namespace {

// One thread runs everything, so one state serves.
std::uint32_t seed = 1;

}  // namespace

void SeedRandom() {
    seed = platformServices.clockSeconds();
}

void SetSeed(std::uint32_t value) {
    seed = value;
}

std::uint32_t Seed() {
    return seed;
}

std::int32_t Rand() {
    seed = seed * 1103515245u + 12345u;
    return static_cast<std::int32_t>(seed >> 16 & 0x7FFF);
}

std::int32_t RandomRange(std::int32_t lo, std::int32_t hi) {
    const std::uint32_t difference =
        (static_cast<std::uint32_t>(hi) & 0xFFFF) - (static_cast<std::uint32_t>(lo) & 0xFFFF);
    const std::uint32_t offset = static_cast<std::uint32_t>(Rand()) * difference / 32767;
    return static_cast<std::int32_t>(offset + static_cast<std::uint32_t>(lo));
}

short RandomSpread(short n) {
    return static_cast<short>((n + 1) * Rand() / 16383 - n - 1);
}

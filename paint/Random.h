// The random generator of the effects: one 32-bit state, so that the same clock second gives the
// same pattern.
#pragma once

#include <cstdint>

/// The state becomes the clock's time in seconds.
void SeedRandom();
/// Sets the state directly.
void SetSeed(std::uint32_t value);
std::uint32_t Seed();

/// Steps the state; 0 to 32767.
std::int32_t Rand();

/// Whole numbers from `lo` to `hi`, of which the low 16 bits count for their difference. `hi`
/// itself comes only when Rand() is exactly 32767: a coordinate drawn from 0 to W can be W, which
/// the wrapped accessors fold to 0.
std::int32_t RandomRange(std::int32_t lo, std::int32_t hi);

/// From -(n + 1) to n + 1, and one more from n = 16382 on. Keeps the low 16 bits.
short RandomSpread(short n);

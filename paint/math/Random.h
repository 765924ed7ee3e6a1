// The random generator of the effects: one 32-bit state, so that the same clock second gives the
// same pattern.
#pragma once

#include <cstdint>

/// The generator's arithmetic on a state that a loop may keep in a register.
class RandomGenerator {
  public:
    /// A draw takes the state times the one and adds the other, in 32 bits.
    static constexpr std::uint32_t factor = 1103515245;
    static constexpr std::uint32_t addend = 12345;

    explicit RandomGenerator(std::uint32_t newState) : state(newState) {}

    std::uint32_t State() const { return state; }

    /// Steps the state; 0 to 32767.
    std::int32_t Rand() {
        state = state * factor + addend;
        return static_cast<std::int32_t>(state >> 16 & 0x7FFF);
    }

    /// Whole numbers from `lo` to `hi`, of which the low 16 bits count for their difference. `hi`
    /// itself comes only when Rand() is exactly 32767: a coordinate drawn from 0 to W can be W,
    /// which the wrapped accessors fold to 0.
    std::int32_t Range(std::int32_t lo, std::int32_t hi) {
        const std::uint32_t difference =
            (static_cast<std::uint32_t>(hi) & 0xFFFF) - (static_cast<std::uint32_t>(lo) & 0xFFFF);
        const std::uint32_t offset = static_cast<std::uint32_t>(Rand()) * difference / 32767;
        return static_cast<std::int32_t>(offset + static_cast<std::uint32_t>(lo));
    }

    /// From -(n + 1) to n + 1, and one more from n = 16382 on. Keeps the low 16 bits.
    short Spread(short n) { return static_cast<short>((n + 1) * Rand() / 16383 - n - 1); }

  private:
    std::uint32_t state;
};

/// Many draws at once: like one, they are a multiplication and an addition.
class DrawSteps {
  public:
    /// Minus one draw, in 32 bits, goes one back: the state comes round after 2^32.
    explicit constexpr DrawSteps(std::uint32_t count) {
        // Doubles the draws for each bit of the count.
        std::uint32_t bitFactor = RandomGenerator::factor;
        std::uint32_t bitAddend = RandomGenerator::addend;
        for (; count != 0; count >>= 1) {
            if ((count & 1) != 0) {
                factor *= bitFactor;
                addend = addend * bitFactor + bitAddend;
            }
            bitAddend += bitAddend * bitFactor;
            bitFactor *= bitFactor;
        }
    }

    /// The state after them.
    constexpr std::uint32_t From(std::uint32_t state) const { return state * factor + addend; }

  private:
    std::uint32_t factor = 1;
    std::uint32_t addend = 0;
};

// Divisions, for products of a draw and a number below 2^14. With d = 2^b - 1, a product is
// q d + r; shifted down by b it is q, or q - 1 if r < q, as q is below 2^b. Added to the product
// and 1, that makes q 2^b and a rest below 2^b, either way.

constexpr std::int32_t By32767(std::int32_t product) {
    return (product + 1 + (product >> 15)) >> 15;
}

constexpr std::int32_t By16383(std::int32_t product) {
    return (product + 1 + (product >> 14)) >> 14;
}

// The program's one generator.

/// The state becomes the clock's time in seconds.
void SeedRandom();
/// Sets the state directly.
void SetSeed(std::uint32_t value);
std::uint32_t Seed();

// As the operations of the class.
std::int32_t Rand();
std::int32_t RandomRange(std::int32_t lo, std::int32_t hi);
short RandomSpread(short n);

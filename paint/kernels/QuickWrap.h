// Coordinates wrapped around a torus without a division, for loops that become vectors.
#pragma once

#include <algorithm>
#include <cstdint>

/// For one size.
class QuickWrap {
  public:
    /// The largest size, and how far outside it coordinates may be.
    static constexpr std::int32_t largestSize = 8192;
    static constexpr std::int32_t reach = 19000;

    /// `newSize` is from 1 to largestSize.
    explicit QuickWrap(short newSize)
        : size(static_cast<std::uint32_t>(newSize)),
          raise((reach / size + 1) * size),
          perSize((1.0F - 0x1p-20F) / static_cast<float>(size)) {}

    /// The same as Wrap(coordinate, size), for -reach to size + reach. A quotient that is truncated
    /// one too low leaves a remainder of `size` or a little more.
    std::uint32_t Place(std::int32_t coordinate) const {
        const auto raised =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(coordinate) + raise);
        const auto quotient = static_cast<std::int32_t>(static_cast<float>(raised) * perSize);
        const std::uint32_t place =
            static_cast<std::uint32_t>(raised) - static_cast<std::uint32_t>(quotient) * size;
        // Less than 0 is the greater number.
        return std::min(place, place - size);
    }

  private:
    std::uint32_t size;
    /// Whole sizes that make a coordinate positive. It stays below 2^16.
    std::uint32_t raise;
    /// Less than 1 / size by more than two roundings of floats, so that no product with it is
    /// above the quotient; and by so little that none is 2^-3 below it.
    float perSize;
};

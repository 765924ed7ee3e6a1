// A fixed-point number of 32 bits before the point and 256 after it: the judge where doubles cannot
// tell how a result rounds. Slow, exact to its last bits, and integers all through.
#pragma once

#include <array>
#include <cstdint>

#include "paint/math/DoublePair.h"

class WideFixed {
  public:
    static constexpr int fractionBits = 256;

    constexpr WideFixed() = default;
    /// Below 2^31 in size. Bits beyond the 256 after the point are cut off.
    explicit WideFixed(double value);

    bool IsNegative() const { return (words[topWord] >> 31) != 0; }
    /// Whether its size is below 2^exponent.
    bool IsBelow(int exponent) const { return Magnitude().TopBit() < exponent + fractionBits; }

    WideFixed operator-() const;
    WideFixed operator+(const WideFixed& other) const;
    WideFixed operator-(const WideFixed& other) const { return *this + -other; }
    /// Truncates towards zero: off by less than one unit in the last bit.
    WideFixed operator*(const WideFixed& other) const;
    WideFixed operator/(std::uint32_t divisor) const;

    /// The nearest double to this times 2^exponent, ties to even; also where that is subnormal.
    double Rounded(int exponent = 0) const;
    /// The nearest double and the nearest to what is left.
    DoublePair RoundedPair() const;

  private:
    static constexpr int wordCount = 9;
    static constexpr int topWord = wordCount - 1;

    WideFixed Magnitude() const { return IsNegative() ? -*this : *this; }
    int TopBit() const;
    std::uint64_t BitsFrom(int lowest) const;
    bool AnyBelow(int bit) const;

    /// Two's complement, the lowest word first; the last is what stands before the point.
    std::array<std::uint32_t, wordCount> words{};
};

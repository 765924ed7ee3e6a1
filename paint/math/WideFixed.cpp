#include "paint/math/WideFixed.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int bitsPerWord = 32;

/// value * 2^exponent where the result is a double, subnormal or not.
double Scaled(double value, int exponent) {
    constexpr int step = 200;
    if (exponent < -800) {
        return value * PowerOfTwo(exponent + step) * PowerOfTwo(-step);
    }
    return value * PowerOfTwo(exponent);
}

}  // namespace

WideFixed::WideFixed(double value) {
    constexpr double base = 4294967296.0;
    double rest = std::fabs(value);
    for (int i = topWord; i >= 0; --i) {
        const auto word = static_cast<std::uint32_t>(rest);
        words[static_cast<std::size_t>(i)] = word;
        rest = (rest - word) * base;
    }
    if (value < 0) {
        *this = -*this;
    }
}

WideFixed WideFixed::operator-() const {
    WideFixed result;
    std::uint64_t carry = 1;
    for (std::size_t i = 0; i < words.size(); ++i) {
        carry += static_cast<std::uint32_t>(~words[i]);
        result.words[i] = static_cast<std::uint32_t>(carry);
        carry >>= bitsPerWord;
    }
    return result;
}

WideFixed WideFixed::operator+(const WideFixed& other) const {
    WideFixed result;
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        carry += static_cast<std::uint64_t>(words[i]) + other.words[i];
        result.words[i] = static_cast<std::uint32_t>(carry);
        carry >>= bitsPerWord;
    }
    return result;
}

WideFixed WideFixed::operator*(const WideFixed& other) const {
    const WideFixed a = Magnitude();
    const WideFixed b = other.Magnitude();
    std::array<std::uint32_t, 2 * wordCount> product{};
    for (std::size_t i = 0; i < wordCount; ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < wordCount; ++j) {
            carry += static_cast<std::uint64_t>(a.words[i]) * b.words[j] + product[i + j];
            product[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= bitsPerWord;
        }
        product[i + wordCount] = static_cast<std::uint32_t>(carry);
    }
    WideFixed result;
    std::copy_n(product.begin() + topWord, wordCount, result.words.begin());
    return IsNegative() != other.IsNegative() ? -result : result;
}

WideFixed WideFixed::operator/(std::uint32_t divisor) const {
    const WideFixed dividend = Magnitude();
    WideFixed result;
    std::uint64_t rest = 0;
    for (std::size_t i = wordCount; i-- > 0;) {
        rest = rest << bitsPerWord | dividend.words[i];
        result.words[i] = static_cast<std::uint32_t>(rest / divisor);
        rest %= divisor;
    }
    return IsNegative() ? -result : result;
}

/// The number of the highest bit that is set, counted from the last; -1 for zero.
int WideFixed::TopBit() const {
    for (int i = topWord; i >= 0; --i) {
        const std::uint32_t word = words[static_cast<std::size_t>(i)];
        if (word != 0) {
            return i * bitsPerWord + bitsPerWord - 1 - __builtin_clz(word);
        }
    }
    return -1;
}

/// The bits from number `lowest` on, of which the caller knows that they are fewer than 64. A
/// `lowest` below 0 stands for as many zeros after the last bit.
std::uint64_t WideFixed::BitsFrom(int lowest) const {
    std::uint64_t bits = 0;
    for (int bit = TopBit(); bit >= lowest; --bit) {
        const bool isSet =
            bit >= 0 &&
            (words[static_cast<std::size_t>(bit / bitsPerWord)] >> bit % bitsPerWord & 1) != 0;
        bits = bits << 1 | (isSet ? 1 : 0);
    }
    return bits;
}

bool WideFixed::AnyBelow(int bit) const {
    for (int i = 0; i < bit; ++i) {
        if ((words[static_cast<std::size_t>(i / bitsPerWord)] >> i % bitsPerWord & 1) != 0) {
            return true;
        }
    }
    return false;
}

double WideFixed::Rounded(int exponent) const {
    constexpr int mantissaBits = 53;
    constexpr int smallestExponent = -1074;
    const WideFixed magnitude = Magnitude();
    const int lastBit =
        std::max(magnitude.TopBit() - mantissaBits + 1, smallestExponent - exponent + fractionBits);
    // One bit more than the double has: half a unit.
    const std::uint64_t bits = magnitude.BitsFrom(lastBit - 1);
    std::uint64_t mantissa = bits >> 1;
    const bool half = (bits & 1) != 0;
    if (half && (magnitude.AnyBelow(lastBit - 1) || (mantissa & 1) != 0)) {
        ++mantissa;
    }
    const double rounded = Scaled(static_cast<double>(mantissa), lastBit - fractionBits + exponent);
    return IsNegative() ? -rounded : rounded;
}

DoublePair WideFixed::RoundedPair() const {
    const double high = Rounded();
    return {high, (*this - WideFixed(high)).Rounded()};
}

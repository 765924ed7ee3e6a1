// Double-double arithmetic: a number as the unevaluated sum of a double and a much smaller one,
// about 106 bits. Built of nothing but IEEE additions and multiplications, so every processor and
// every compiler gives the same bits.
#pragma once

#include <bit>
#include <cstdint>

struct DoublePair {
    double high = 0;
    double low = 0;
};

/// a + b exactly.
inline DoublePair TwoSum(double a, double b) {
    const double sum = a + b;
    const double bPart = sum - a;
    return {sum, (a - (sum - bPart)) + (b - bPart)};
}

/// a * b exactly, by halves of 26 bits; nothing may over- or underflow.
inline DoublePair TwoProduct(double a, double b) {
    constexpr double splitter = 134217729.0;  // 2 to the 27th, plus 1
    const double aScaled = splitter * a;
    const double bScaled = splitter * b;
    const double aHigh = aScaled - (aScaled - a);
    const double bHigh = bScaled - (bScaled - b);
    const double aLow = a - aHigh;
    const double bLow = b - bHigh;
    const double product = a * b;
    return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

/// 2^exponent, from -1022 to 1023.
inline double PowerOfTwo(int exponent) {
    constexpr int bias = 1023;
    constexpr int mantissaBits = 52;
    return std::bit_cast<double>(static_cast<std::uint64_t>(exponent + bias) << mantissaBits);
}

// The only conversion of doubles to 16-bit integers in the program.
#pragma once

#include <cstdint>

/// Truncates towards zero and keeps the low 16 bits as a signed value. What is not a number, or
/// lies beyond 64 bits, gives 0, so that no outcome depends on the processor.
inline short TruncateToShort(double value) {
    if (value > -2147483649.0 && value < 2147483648.0) {
        // The common case separately: 32-bit processors have no instruction for the wide one.
        return static_cast<short>(static_cast<std::int32_t>(value));
    }
    constexpr double limit = 9223372036854775808.0;  // 2 to the 63rd
    if (!(value > -limit && value < limit)) {
        return 0;
    }
    return static_cast<short>(static_cast<std::int64_t>(value));
}

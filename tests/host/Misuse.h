// Writes where nothing may be written, so that the host finds it and not the sanitizer.
#pragma once

#include <cstddef>
#include <cstdint>

#ifdef __SANITIZE_ADDRESS__
#define MISBEHAVING __attribute__((no_sanitize("address", "undefined"), noinline))
#else
#define MISBEHAVING __attribute__((noinline))
#endif

MISBEHAVING inline void WriteOutside(std::uint8_t* bytes, std::ptrdiff_t offset) {
    // Volatile, or the compiler may prove that the write is never seen.
    volatile std::uint8_t* target = bytes + offset;
    *target = static_cast<std::uint8_t>(*target ^ 0x55);
}

// Vectors of 32 bytes, for kernels of which only processors with AVX2 run any part.
#pragma once

#include <immintrin.h>

/// Begins the functions that make up such a kernel. The kernel itself is [[gnu::target("avx2")]].
#define WIDE [[gnu::target("avx2"), gnu::always_inline]] inline

WIDE __m256i LoadWide(const void* source) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(source));
}

WIDE void StoreWide(__m256i values, void* out) {
    _mm256_storeu_si256(static_cast<__m256i*>(out), values);
}

/// The same 16 bytes in both halves.
WIDE __m256i LoadTwice(const void* source) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(source)));
}

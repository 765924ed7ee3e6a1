// The choice between two compilations of one loop: for any processor, and for those with AVX2.
//
// A loop is written once, as a [[gnu::always_inline]] function that the compiler can vectorize,
// and wrapped twice: in a function as it is and in one marked [[gnu::target("avx2")]]. Both give
// the same bits: the wider one has no fused multiply-add.
#pragma once

/// Tests clear it, to run the code for any processor as well.
inline bool avx2Allowed = true;

/// Of two compilations of a loop, the one to call on this processor.
template <typename Function>
Function* ForThisProcessor(Function* any, Function* avx2) {
    return avx2Allowed && __builtin_cpu_supports("avx2") ? avx2 : any;
}

// One loop, compiled twice: for any processor and for those with AVX2.
//
// The loop is an ordinary function that the compiler can vectorize. Both compilations flatten it:
// every function that it calls is inlined, so that all of the loop is compiled for the processor.
// Both give the same bits: AVX2 has no fused multiply-add.
#pragma once

/// Tests clear it, to run the code for any processor as well.
inline bool avx2Allowed = true;

inline bool HasAvx2() {
    return avx2Allowed && __builtin_cpu_supports("avx2");
}

/// The two compilations of `loop`, a function without a result.
template <auto loop>
struct Compilations;

template <typename... Arguments, void (*loop)(Arguments...)>
struct Compilations<loop> {
    [[gnu::flatten]] static void ForAnyProcessor(Arguments... arguments) { loop(arguments...); }
    [[gnu::flatten, gnu::target("avx2")]] static void ForAvx2(Arguments... arguments) {
        loop(arguments...);
    }
};

/// Runs the compilation for this processor. `wideLoop` differs from `loop` where the two work in
/// vectors of different widths; then it computes the same.
template <auto loop, auto wideLoop = loop, typename... Arguments>
void ForThisProcessor(Arguments&&... arguments) {
    if (HasAvx2()) {
        Compilations<wideLoop>::ForAvx2(arguments...);
    } else {
        Compilations<loop>::ForAnyProcessor(arguments...);
    }
}

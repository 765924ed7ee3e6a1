// The guard of the plug-in's stack: a number that functions keep between their arrays and their
// return address, and the end of a process in which one was overwritten.
//
// The compiler's library takes its random number from the system's cryptography, which loads more
// libraries while the loader still holds its lock, and writes to a console that a host does not
// have.
#include <windows.h>

#include <cstdint>
#include <initializer_list>

namespace {

/// PF_FASTFAIL_AVAILABLE, which older headers don't know.
constexpr DWORD fastFailAvailable = 23;
/// STATUS_STACK_BUFFER_OVERRUN.
constexpr UINT stackBufferOverrun = 0xC0000409;

}  // namespace

extern "C" {

// The names are the compiler's.
std::uintptr_t __stack_chk_guard = 0;

/// No handler runs: one that the overwritten part of the stack names would be an attacker's.
[[noreturn]] void __stack_chk_fail() {
    if (IsProcessorFeaturePresent(fastFailAvailable)) {
        asm volatile("int $0x29" : : "c"(2));  // FAST_FAIL_STACK_COOKIE_CHECK_FAILURE
    }
    TerminateProcess(GetCurrentProcess(), stackBufferOverrun);
    __builtin_unreachable();
}

}  // extern "C"

namespace {

/// Spreads each bit of the sum over all of the result: the last step of the generator SplitMix64.
std::uint64_t Mixed(std::uint64_t sum, std::uint64_t addend) {
    std::uint64_t value = sum + addend + 0x9E3779B97F4A7C15;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

/// Runs before all other constructors: a function that is under way must not see the guard change.
///
/// Nobody outside the process knows all of the time to the tick, the ids, and where the system has
/// put the library and the stack; other Windows programs draw theirs of the same.
[[gnu::constructor(101), gnu::no_stack_protector]] void DrawGuard() {
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    std::uint64_t drawn = 0;
    for (const std::uint64_t part :
         {std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime,
          static_cast<std::uint64_t>(counter.QuadPart), std::uint64_t{GetCurrentProcessId()},
          std::uint64_t{GetCurrentThreadId()}, std::uint64_t{GetTickCount()},
          std::uint64_t{reinterpret_cast<std::uintptr_t>(&__stack_chk_guard)},
          std::uint64_t{reinterpret_cast<std::uintptr_t>(&time)}}) {
        drawn = Mixed(drawn, part);
    }
    // A text that overruns its array cannot write the byte that ends texts and go on.
    __stack_chk_guard = static_cast<std::uintptr_t>(drawn) & ~std::uintptr_t{0xFF};
}

}  // namespace

// The part of the C++ run-time library that keeps exceptions, for the plug-in.
//
// The library's own needs memory of the process for an exception, and for each thread that throws
// its first one; without it the process ends, which is the host's. It also takes a reserve of some
// 70 KB when the plug-in is loaded and never gives it back. Here exceptions lie in the module
// itself, so a lack of memory can be thrown like everything else.
#include <cxxabi.h>
#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace __cxxabiv1 {

/// A thread's exceptions, thrown and caught; the layout is the interface's.
struct __cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

}  // namespace __cxxabiv1

namespace {

// --- Threads ---

struct ThreadState {
    /// 0 while it is free.
    std::atomic<DWORD> thread;
    __cxxabiv1::__cxa_eh_globals globals;
};

/// A host calls on one thread or a few; their states go when they end.
constexpr int maximalThreads = 1024;
ThreadState threadStates[maximalThreads];

ThreadState* FindState(DWORD thread) {
    for (ThreadState& state : threadStates) {
        if (state.thread.load() == thread) {
            return &state;
        }
    }
    return nullptr;
}

/// Whether the state can be freed without loss: a new one begins as zeros.
bool IsIdle(const ThreadState& state) {
    return state.globals.caughtExceptions == nullptr && state.globals.uncaughtExceptions == 0;
}

ThreadState& StateOfThisThread() {
    const DWORD thread = GetCurrentThreadId();
    if (ThreadState* const found = FindState(thread)) {
        return *found;
    }
    for (ThreadState& state : threadStates) {
        DWORD none = 0;
        if (state.thread.compare_exchange_strong(none, thread)) {
            state.globals = {};
            return state;
        }
    }
    // More threads are alive than states: one that has thrown before, and does not now, gives its.
    for (ThreadState& state : threadStates) {
        DWORD other = state.thread.load();
        if (IsIdle(state) && state.thread.compare_exchange_strong(other, thread)) {
            return state;
        }
    }
    std::terminate();
}

void NTAPI OnNotification(void*, DWORD reason, void*) {
    if (reason == DLL_THREAD_DETACH) {
        if (ThreadState* const state = FindState(GetCurrentThreadId())) {
            state->thread.store(0);
        }
    }
}

// Among the callbacks that the system runs for every thread.
[[gnu::section(".CRT$XLF"), gnu::used]] const PIMAGE_TLS_CALLBACK threadCallback = OnNotification;

// --- Exceptions ---

/// Before each exception object is a record of the run-time library, which begins as zeros: 96
/// bytes in 32 bits, 160 in 64.
constexpr std::size_t recordSize = sizeof(void*) == 4 ? 0x60 : 0xA0;
/// Ids are thrown, and what the standard library throws.
constexpr std::size_t largestObject = 96;

struct alignas(16) Place {
    unsigned char bytes[recordSize + largestObject];
    std::atomic<bool> isTaken;
};

/// Each is one exception that is under way or being handled; a handler may throw the next.
constexpr int placeCount = 32;
Place places[placeCount];

Place* TakePlace() {
    for (Place& place : places) {
        if (!place.isTaken.exchange(true)) {
            return &place;
        }
    }
    return nullptr;
}

Place* PlaceOf(void* record) {
    for (Place& place : places) {
        if (place.bytes == record) {
            return &place;
        }
    }
    return nullptr;
}

/// Returns zeroed bytes; from the heap if the object is larger than usual or all slots are taken.
void* Allocate(std::size_t size) {
    Place* const place = size <= sizeof places->bytes ? TakePlace() : nullptr;
    void* const block = place != nullptr ? place->bytes : std::malloc(size);
    if (block == nullptr) {
        std::terminate();
    }
    return std::memset(block, 0, size);
}

void Free(void* block) {
    if (Place* const place = PlaceOf(block)) {
        place->isTaken.store(false);
    } else {
        std::free(block);
    }
}

}  // namespace

namespace __cxxabiv1 {

extern "C" {

__cxa_eh_globals* __cxa_get_globals() noexcept {
    return &StateOfThisThread().globals;
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept {
    return &StateOfThisThread().globals;
}

void* __cxa_allocate_exception(std::size_t size) noexcept {
    return static_cast<unsigned char*>(Allocate(recordSize + size)) + recordSize;
}

void __cxa_free_exception(void* object) noexcept {
    Free(static_cast<unsigned char*>(object) - recordSize);
}

// For an exception that is handed on to another thread.

__cxa_dependent_exception* __cxa_allocate_dependent_exception() noexcept {
    return static_cast<__cxa_dependent_exception*>(Allocate(recordSize));
}

void __cxa_free_dependent_exception(__cxa_dependent_exception* exception) noexcept {
    Free(exception);
}
}

}  // namespace __cxxabiv1

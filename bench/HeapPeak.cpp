#include "bench/HeapPeak.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>

// The C library lets a program bring its own allocator, and keeps its own under these names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

std::atomic<std::ptrdiff_t> inUse = 0;
std::ptrdiff_t start = 0;
std::atomic<std::ptrdiff_t> peak = 0;

void* Taken(void* block) {
    inUse += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    peak = std::max(peak.load(), inUse.load());
    return block;
}

void Given(void* block) {
    inUse -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    return Taken(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return Taken(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    Given(block);
    return Taken(__libc_realloc(block, size));
}

void free(void* block) {
    Given(block);
    __libc_free(block);
}
}

void ResetHeapPeak() {
    start = inUse;
    peak = start;
}

std::size_t HeapPeak() {
    return static_cast<std::size_t>(peak - start);
}

#include "tests/shell/allocation/FailingAllocator.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

bool counting = false;
int asked = 0;
int failAt = 0;
int live = 0;

/// In front of every block, as wide as the strictest alignment.
struct alignas(std::max_align_t) BlockHeader {
    bool counted;
};

void* Allocate(std::size_t size) {
    if (counting && ++asked == failAt) {
        return nullptr;
    }
    void* const memory = std::malloc(sizeof(BlockHeader) + size);
    if (memory == nullptr) {
        return nullptr;
    }
    auto* const header = new (memory) BlockHeader{counting};
    live += counting ? 1 : 0;
    return header + 1;
}

void* AllocateOrThrow(std::size_t size) {
    void* const block = Allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void Free(void* block) {
    if (block == nullptr) {
        return;
    }
    auto* const header = static_cast<BlockHeader*>(block) - 1;
    live -= header->counted ? 1 : 0;
    std::free(header);
}

}  // namespace

void CountAllocations(int failNth) {
    asked = 0;
    live = 0;
    failAt = failNth;
}

int AllocationsAsked() {
    return asked;
}

int AllocationsLive() {
    return live;
}

CountingSwitch::CountingSwitch(bool on) : before(counting) {
    counting = on;
}

CountingSwitch::~CountingSwitch() {
    counting = before;
}

void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* block) noexcept {
    Free(block);
}
void operator delete[](void* block) noexcept {
    Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    Free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    Free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    Free(block);
}

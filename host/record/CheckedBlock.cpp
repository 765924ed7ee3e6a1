#include "host/record/CheckedBlock.h"

#include <algorithm>
#include <cstring>
#include <utility>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#endif

namespace host {

namespace {

constexpr std::uint8_t guardByte = 0xB9;
constexpr std::uint8_t freshByte = 0xA5;
constexpr std::uint8_t retiredByte = 0xD7;

bool HoldsOnly(const std::uint8_t* bytes, std::size_t count, std::uint8_t value) {
    return count == 0 || (bytes[0] == value && std::memcmp(bytes, bytes + 1, count - 1) == 0);
}

// The changed part as "n bytes, the first at offset m", offsets counted from the block's start.
std::string DescribeChange(const std::uint8_t* bytes, std::size_t count, std::uint8_t value,
                           std::ptrdiff_t startOffset) {
    auto isChanged = [value](std::uint8_t byte) { return byte != value; };
    const auto changed = std::count_if(bytes, bytes + count, isChanged);
    const auto first = std::find_if(bytes, bytes + count, isChanged) - bytes + startOffset;
    return std::to_string(changed) + (changed == 1 ? " byte" : " bytes") +
           ", the first at offset " + std::to_string(first);
}

}  // namespace

CheckedBlock::CheckedBlock(std::size_t newSize, std::string newName, std::size_t guardBytes)
    : storage(new std::uint8_t[newSize + 2 * guardBytes]),
      size(newSize),
      guard(guardBytes),
      name(std::move(newName)) {
    FillGuards();
    std::memset(Data(), freshByte, size);
    SetPoison(true);
}

CheckedBlock::~CheckedBlock() {
    SetPoison(false);
}

CheckedBlock::CheckedBlock(CheckedBlock&& other) noexcept {
    *this = std::move(other);
}

CheckedBlock& CheckedBlock::operator=(CheckedBlock&& other) noexcept {
    std::swap(storage, other.storage);
    std::swap(size, other.size);
    std::swap(guard, other.guard);
    std::swap(name, other.name);
    std::swap(retired, other.retired);
    return *this;
}

void CheckedBlock::Check(Faults& faults) {
    if (!storage) {
        return;
    }
    SetPoison(false);
    const std::uint8_t* front = storage.get();
    if (!HoldsOnly(front, guard, guardByte)) {
        faults.Add(name + ": written before its start: " +
                   DescribeChange(front, guard, guardByte, -static_cast<std::ptrdiff_t>(guard)));
    }
    const std::uint8_t* back = Data() + size;
    if (!HoldsOnly(back, guard, guardByte)) {
        faults.Add(name + ": written behind its end: " +
                   DescribeChange(back, guard, guardByte, static_cast<std::ptrdiff_t>(size)));
    }
    FillGuards();
    if (retired && !HoldsOnly(Data(), size, retiredByte)) {
        faults.Add(name +
                   ": written after it was freed: " + DescribeChange(Data(), size, retiredByte, 0));
        std::memset(Data(), retiredByte, size);
    }
    SetPoison(true);
}

void CheckedBlock::Retire() {
    SetPoison(false);
    std::memset(Data(), retiredByte, size);
    retired = true;
    SetPoison(true);
}

void CheckedBlock::FillGuards() {
    std::memset(storage.get(), guardByte, guard);
    std::memset(Data() + size, guardByte, guard);
}

void CheckedBlock::SetPoison([[maybe_unused]] bool poisoned) {
#ifdef __SANITIZE_ADDRESS__
    if (!storage) {
        return;
    }
    if (!poisoned) {
        ASAN_UNPOISON_MEMORY_REGION(storage.get(), size + 2 * guard);
        return;
    }
    ASAN_POISON_MEMORY_REGION(storage.get(), guard);
    ASAN_POISON_MEMORY_REGION(Data() + size, guard);
    if (retired) {
        ASAN_POISON_MEMORY_REGION(Data(), size);
    }
#endif
}

void Quarantine::Add(CheckedBlock block, Faults& faults) {
    bytes += block.Size();
    blocks.push_back(std::move(block));
    while (bytes > capacity) {
        blocks.front().Check(faults);
        bytes -= blocks.front().Size();
        blocks.pop_front();
    }
}

void Quarantine::Check(Faults& faults) {
    for (CheckedBlock& block : blocks) {
        block.Check(faults);
    }
}

}  // namespace host

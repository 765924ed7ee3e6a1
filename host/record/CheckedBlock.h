// Memory for a filter that shows afterwards whether the filter kept to it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "host/record/Faults.h"

namespace host {

/// A block between two guard zones. The bytes of a new block hold a pattern that is no likely
/// value, so that code relying on zeros is found. Under the address sanitizer the guard zones, and
/// all of a retired block, are poisoned as well.
class CheckedBlock {
  public:
    CheckedBlock() = default;
    /// `name` stands in the faults. `guardBytes` is the size of each zone. Throws std::bad_alloc.
    CheckedBlock(std::size_t size, std::string name, std::size_t guardBytes = 256);
    ~CheckedBlock();
    CheckedBlock(CheckedBlock&& other) noexcept;
    CheckedBlock& operator=(CheckedBlock&& other) noexcept;

    std::uint8_t* Data() { return storage.get() + guard; }
    std::size_t Size() const { return size; }
    const std::string& Name() const { return name; }

    /// Reports bytes changed in the guard zones, and, once retired, inside. What was reported is
    /// made good, so that it's reported once.
    void Check(Faults& faults);
    /// The block's owner gave it back: fills it with another pattern and forbids its use.
    void Retire();

  private:
    void FillGuards();
    void SetPoison(bool poisoned);

    std::unique_ptr<std::uint8_t[]> storage;
    std::size_t size = 0;
    std::size_t guard = 0;
    std::string name;
    bool retired = false;
};

/// Retired blocks, kept for a while so that late writes to them are found.
class Quarantine {
  public:
    explicit Quarantine(std::size_t capacityBytes) : capacity(capacityBytes) {}
    /// Takes a retired block. Checks and drops the oldest ones beyond the capacity in bytes.
    void Add(CheckedBlock block, Faults& faults);
    void Check(Faults& faults);

  private:
    std::deque<CheckedBlock> blocks;
    std::size_t capacity;
    std::size_t bytes = 0;
};

}  // namespace host

// The list of named records that also is the preset list.
//
// Its tail and the entry that was looked up last are remembered, so that appending an entry and
// going through all of them takes the same time for each, however long the list is.
#pragma once

#include <cstddef>
#include <memory>

/// Room for a name with its terminating zero; a longer one is cut.
constexpr std::size_t nameCapacity = 256;

class SimpleLink {
  public:
    SimpleLink();
    SimpleLink(const SimpleLink&) = delete;
    SimpleLink& operator=(const SimpleLink&) = delete;
    ~SimpleLink();

    /// Adds an entry at the tail. `data` is a plain record made by `operator new`; the list owns it
    /// from here on. Without memory for the entry it is lost, and the record with it.
    void Append(void* data, const char* name);
    // Entries are counted from 1.
    /// True if there was an entry `n`. Asserts that `n` is not 0.
    bool Remove(short n);
    /// Copies the name into `name`, which has room for nameCapacity bytes. False and an empty text
    /// for a missing entry. Asserts that `n` is not 0.
    bool NameAt(short n, char* name) const;
    /// False and null for a missing entry.
    bool DataAt(short n, void** data) const;
    /// Whether no entry bears the name, without regard to case, and it is not the reserved name of
    /// the last used settings.
    bool IsUnique(const char* name) const;

  private:
    struct Node;
    const Node* At(short n) const;

    std::unique_ptr<Node> first;
    /// Where the next entry goes.
    std::unique_ptr<Node>* tail = &first;
    /// The entry that At returned last and its place; null if there is none.
    mutable const Node* lastFound = nullptr;
    mutable short lastFoundAt = 1;
};

// A filter's offences against the interface, as the host found them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace host {

/// Misuses of the host by a filter, one line each, in the order of their first appearance. The same
/// line again only counts.
class Faults {
  public:
    void Add(const std::string& text);
    bool IsEmpty() const { return entries.empty(); }
    /// With repetitions.
    std::size_t Total() const;
    /// "text" or "text (12 times)".
    std::vector<std::string> Lines() const;
    void Clear() { entries.clear(); }

  private:
    struct Entry {
        std::string text;
        std::size_t count;
    };
    std::vector<Entry> entries;
};

}  // namespace host

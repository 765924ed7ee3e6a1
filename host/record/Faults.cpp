#include "host/record/Faults.h"

#include <algorithm>
#include <numeric>

namespace host {

void Faults::Add(const std::string& text) {
    auto known = std::find_if(entries.begin(), entries.end(),
                              [&](const Entry& entry) { return entry.text == text; });
    if (known == entries.end()) {
        entries.push_back({text, 1});
    } else {
        ++known->count;
    }
}

std::size_t Faults::Total() const {
    return std::accumulate(
        entries.begin(), entries.end(), std::size_t{0},
        [](std::size_t total, const Entry& entry) { return total + entry.count; });
}

std::vector<std::string> Faults::Lines() const {
    std::vector<std::string> lines;
    for (const Entry& entry : entries) {
        lines.push_back(entry.count == 1
                            ? entry.text
                            : entry.text + " (" + std::to_string(entry.count) + " times)");
    }
    return lines;
}

}  // namespace host

#include "framework/dialog/StackingOrder.h"

#include <algorithm>

namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

}  // namespace

// A longest rising subsequence stays.
std::vector<std::size_t> WindowsToMove(const std::vector<std::size_t>& places) {
    // By length, the index at which the rising run of that length with the lowest end ends.
    std::vector<std::size_t> ends;
    std::vector<std::size_t> before(places.size(), none);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto end = std::lower_bound(
            ends.begin(), ends.end(), places[i],
            [&](std::size_t index, std::size_t place) { return places[index] < place; });
        before[i] = end != ends.begin() ? *(end - 1) : none;
        if (end == ends.end()) {
            ends.push_back(i);
        } else {
            *end = i;
        }
    }
    std::vector<bool> stays(places.size());
    for (std::size_t i = ends.empty() ? none : ends.back(); i != none; i = before[i]) {
        stays[i] = true;
    }
    std::vector<std::size_t> moved;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!stays[i]) {
            moved.push_back(i);
        }
    }
    return moved;
}

std::vector<void*> Restacked(std::vector<void*> now, const std::vector<void*>& windows,
                             FirstWindow first) {
    if (windows.empty() || std::find(now.begin(), now.end(), windows.front()) == now.end()) {
        return now;
    }
    std::erase_if(now, [&](void* window) {
        return std::find(windows.begin() + 1, windows.end(), window) != windows.end();
    });
    auto place = std::find(now.begin(), now.end(), windows.front());
    if (first == FirstWindow::goesToTop) {
        std::rotate(now.begin(), place, place + 1);
        place = now.begin();
    }
    now.insert(place + 1, windows.begin() + 1, windows.end());
    return now;
}

// The order of windows on top of each other, which is that of Tab.
#pragma once

#include <cstddef>
#include <vector>

/// The fewest windows to move for another order. `places` are where the windows stand now, in the
/// order that is wanted; each is there once. Returns the indices in `places` of those to move, in
/// rising order: each goes right below the one before it. The others stay.
std::vector<std::size_t> WindowsToMove(const std::vector<std::size_t>& places);

/// The first of some windows goes to the top of all, or keeps its place.
enum class FirstWindow { goesToTop, stays };
/// Returns `now`, which is from the top, with `windows` in their order right below the first of
/// them; unchanged if that is not among them.
std::vector<void*> Restacked(std::vector<void*> now, const std::vector<void*>& windows,
                             FirstWindow first);

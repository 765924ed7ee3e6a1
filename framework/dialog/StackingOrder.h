// The order of windows on top of each other, which is that of Tab.
#pragma once

#include <cstddef>
#include <vector>

/// The fewest windows to move for another order. `places` are where the windows stand now, in the
/// order that is wanted; each is there once. Returns the indices in `places` of those to move, in
/// rising order: each goes right below the one before it. The others stay.
std::vector<std::size_t> WindowsToMove(const std::vector<std::size_t>& places);

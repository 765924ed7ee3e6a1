// How much memory of the heap is in use, and was at most.
#pragma once

#include <cstddef>

/// Begins anew: what is in use now counts as nothing.
void ResetHeapPeak();
/// The most bytes in use at once since then, in blocks as large as the allocator made them.
std::size_t HeapPeak();

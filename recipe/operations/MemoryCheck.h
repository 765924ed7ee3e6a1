// Reports the core's lack of memory as an exception.
#pragma once

#include <new>

namespace recipe {

/// Throws std::bad_alloc if a run step returned that there was no memory.
inline void CheckMemory(bool hadMemory) {
    if (!hadMemory) {
        throw std::bad_alloc();
    }
}

}  // namespace recipe

// How operations report that memory was short.
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

// Shortage of system memory, for tests of what works in blocks of HandleClass.
#pragma once

#include <cstddef>

#include "raster/HandleClass.h"

/// While it lives, the nth block from its construction on fails: 1 the next one, 0 none. One at a
/// time.
class FailingHandles {
  public:
    explicit FailingHandles(int nth) {
        before = HandleClass::allocate;
        asked = 0;
        failing = nth;
        HandleClass::allocate = Allocate;
    }
    FailingHandles(const FailingHandles&) = delete;
    FailingHandles& operator=(const FailingHandles&) = delete;
    ~FailingHandles() { HandleClass::allocate = before; }

    /// Blocks asked for since construction, the failed one included.
    int Asked() const { return asked; }

  private:
    static void* Allocate(std::size_t size) {
        ++asked;
        return asked == failing ? nullptr : before(size);
    }

    static inline void* (*before)(std::size_t size) = nullptr;
    static inline int asked = 0;
    static inline int failing = 0;
};

/// While it lives, every block of `bytes` bytes fails. One at a time.
class FailingSizes {
  public:
    explicit FailingSizes(std::size_t bytes) {
        before = HandleClass::allocate;
        refused = 0;
        failing = bytes;
        HandleClass::allocate = Allocate;
    }
    FailingSizes(const FailingSizes&) = delete;
    FailingSizes& operator=(const FailingSizes&) = delete;
    ~FailingSizes() { HandleClass::allocate = before; }

    int Refused() const { return refused; }

  private:
    static void* Allocate(std::size_t size) {
        if (size != failing) {
            return before(size);
        }
        ++refused;
        return nullptr;
    }

    static inline void* (*before)(std::size_t size) = nullptr;
    static inline int refused = 0;
    static inline std::size_t failing = 0;
};

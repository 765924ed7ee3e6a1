// A typed array in a system memory block: the work memory of operations on pixels.
#pragma once

#include <cstddef>

#include "raster/HandleClass.h"

/// `Value` is plain data; it is not initialised.
template <typename Value>
class HandleArray {
  public:
    explicit HandleArray(std::size_t count)
        : block(count * sizeof(Value)), values(static_cast<Value*>(block.Lock())) {}

    /// True if there was no memory.
    bool Failed() const { return block.failed; }
    /// The first value; null without memory. Constness is the pointer's, not the values'.
    Value* Values() const { return values; }

  private:
    HandleClass block;
    Value* values;
};

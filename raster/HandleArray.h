// A typed array in a system memory block: what the operations on pixels take their work memory
// from.
#pragma once

#include <cstddef>

#include "raster/HandleClass.h"

/// `Value` is plain data, of which the bytes come uncleared.
template <typename Value>
class HandleArray {
  public:
    explicit HandleArray(std::size_t count)
        : block(count * sizeof(Value)), values(static_cast<Value*>(block.Lock())) {}

    /// True if there was no memory.
    bool Failed() const { return block.failed; }
    /// The first value; null without memory. A constant array has values that can be written, as a
    /// pointer would.
    Value* Values() const { return values; }

  private:
    HandleClass block;
    Value* values;
};

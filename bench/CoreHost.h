// Gives the core a host's memory for as long as the object lives.
#pragma once

#include <cstdlib>
#include <limits>

#include "base/HostServices.h"
#include "hostapi/FilterRecord.h"
#include "hostapi/Results.h"

/// Passes on to the system's allocator. The checks of the tests' host write each block several
/// times over, which takes longer than some operations.
class CoreHost {
  public:
    CoreHost() {
        record.bufferProcs = &buffers;
        filterRecord = &record;
    }
    CoreHost(const CoreHost&) = delete;
    CoreHost& operator=(const CoreHost&) = delete;
    ~CoreHost() { filterRecord = nullptr; }

    hostapi::FilterRecord record{};

  private:
    // A block's id is its address.

    static std::int16_t HOST_CALL Allocate(std::int32_t size, hostapi::BufferID* id) {
        *id = reinterpret_cast<hostapi::BufferID>(std::malloc(static_cast<std::size_t>(size)));
        return *id == 0 ? hostapi::memFullErr : hostapi::noErr;
    }
    static void* HOST_CALL Lock(hostapi::BufferID id, hostapi::Boolean8 /*moveHigh*/) {
        return reinterpret_cast<void*>(id);
    }
    static void HOST_CALL Unlock(hostapi::BufferID /*id*/) {}
    static void HOST_CALL Free(hostapi::BufferID id) { std::free(reinterpret_cast<void*>(id)); }
    static std::int32_t HOST_CALL Space() { return std::numeric_limits<std::int32_t>::max(); }

    hostapi::BufferProcs buffers{2, 5, Allocate, Lock, Unlock, Free, Space};
};

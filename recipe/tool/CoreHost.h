// The services that the core gets from the host and the window system in the plug-in.
#pragma once

#include <cstdint>
#include <string>

#include "base/Platform.h"
#include "host/record/MemorySuites.h"
#include "hostapi/FilterRecord.h"

namespace recipe {

/// Gives the core a record with memory and colour conversion, a clock that can be set, and a
/// receiver of its faults. The core reaches them through global state, so there is one at a time;
/// its end restores the state before. Rasters must be freed before their host.
class CoreHost {
  public:
    /// `memory` limits the memory of the core's rasters.
    explicit CoreHost(const host::MemorySettings& memory = {});
    CoreHost(const CoreHost&) = delete;
    CoreHost& operator=(const CoreHost&) = delete;
    ~CoreHost();

    /// Sets the time that SeedRandom reads from now on, in place of the system's.
    static void SetClock(std::uint32_t seconds);

    /// Returns what the core reported before it threw `id`, in one line.
    static std::string FaultText(std::int16_t id);

    host::MemorySuites& Memory() { return suites; }

  private:
    host::MemorySuites suites;
    hostapi::FilterRecord record{};
    hostapi::FilterRecord* previousRecord;
    PlatformServices previousServices;
};

/// The core works on `record` for the lifetime of the object.
class RecordInUse {
  public:
    explicit RecordInUse(hostapi::FilterRecord* record);
    RecordInUse(const RecordInUse&) = delete;
    RecordInUse& operator=(const RecordInUse&) = delete;
    ~RecordInUse();

  private:
    hostapi::FilterRecord* previous;
};

}  // namespace recipe

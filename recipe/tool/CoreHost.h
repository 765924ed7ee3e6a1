// The tool in the place of the host and of the window system that the core has in the plug-in.
#pragma once

#include <cstdint>
#include <string>

#include "base/Platform.h"
#include "host/record/MemorySuites.h"
#include "hostapi/FilterRecord.h"

namespace recipe {

/// Gives the core a record with memory and colour conversion in it, a clock that can be set, and an
/// ear for its faults. The core reaches them through state of the whole process, so there is one at
/// a time, and what stood there before comes back at its end. Rasters have to be gone before their
/// host.
class CoreHost {
  public:
    /// `memory` limits what the core's rasters can take.
    explicit CoreHost(const host::MemorySettings& memory = {});
    CoreHost(const CoreHost&) = delete;
    CoreHost& operator=(const CoreHost&) = delete;
    ~CoreHost();

    /// Sets the clock that SeedRandom reads from here on; before, it reads the real one.
    static void SetClock(std::uint32_t seconds);

    /// Returns the report of the core before it threw `id`, in one line.
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

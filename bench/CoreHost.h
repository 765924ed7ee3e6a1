// A host's memory behind the core for as long as the object lives.
#pragma once

#include "host/MemorySuites.h"
#include "hostapi/FilterRecord.h"
#include "shell/PhotoshopUtilities.h"

class CoreHost {
  public:
    CoreHost() {
        record.bufferProcs = memory.Buffers();
        record.handleProcs = memory.Handles();
        filterRecord = &record;
    }
    CoreHost(const CoreHost&) = delete;
    CoreHost& operator=(const CoreHost&) = delete;
    ~CoreHost() { filterRecord = nullptr; }

    host::MemorySuites memory;
    hostapi::FilterRecord record{};
};

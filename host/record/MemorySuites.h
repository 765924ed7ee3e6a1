// The host's buffer and handle suites, counted and checked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "host/record/CheckedBlock.h"
#include "host/record/Faults.h"
#include "host/record/Services.h"
#include "hostapi/Suites.h"

namespace host {

struct MemorySettings {
    /// Bytes that the blocks of both suites may take together; beyond that, requests fail with
    /// -108.
    std::int64_t budget = std::int64_t{256} << 20;
    /// spaceProc returns 0x7FFFFFFF whatever is taken.
    bool constantSpace = false;
    /// ToldSpace() counts kilobytes.
    bool spaceInKilobytes = false;
    /// ToldSpace() is negative.
    bool negativeSpace = false;
    /// Versions and counts of the suites are 0.
    bool emptyVersions = false;
    /// getSizeProc returns 0, setSizeProc 0 without doing anything.
    bool dumbHandles = false;
    /// 1 fails the first allocation, buffers and handles counted together; 0 none.
    int failAllocation = 0;
    WithheldServices without;
};

/// Hands out blocks through the interface's two suites and finds out what a filter does wrong with
/// them: writing outside a block, freeing twice, using a block after it was freed or an id that
/// never was, unlocking what isn't locked, keeping blocks after the end. New blocks hold a pattern,
/// not zeros, and freed ones another one.
///
/// The interface gives callbacks no context, so they reach the object through a process-wide
/// pointer: the newest object serves all calls, and its destruction gives them back to the one
/// before. Use on one thread.
///
/// For a test of code that takes its memory from a FilterRecord:
///     MemorySuites memory;
///     record.bufferProcs = memory.Buffers();
///     record.handleProcs = memory.Handles();
///     ... the code under test ...
///     memory.CheckAtEnd();
///     EXPECT_TRUE(memory.FoundFaults().IsEmpty());
class MemorySuites {
  public:
    explicit MemorySuites(const MemorySettings& settings = {});
    ~MemorySuites();
    MemorySuites(const MemorySuites&) = delete;
    MemorySuites& operator=(const MemorySuites&) = delete;

    /// Null if the whole suite is withheld; withheld members are null. Valid as long as the object.
    hostapi::BufferProcs* Buffers();
    hostapi::HandleProcs* Handles();

    std::int64_t FreeBytes() const;
    /// The number of free bytes that the filter is given.
    std::int32_t ToldSpace() const;
    std::size_t LiveBuffers() const { return buffers.size(); }
    std::size_t LiveHandles() const { return handles.size(); }
    /// Allocations asked for since construction, the failed ones included.
    int Allocations() const { return allocations; }
    /// Fails the nth allocation from now on, 1 the next one; 0 none.
    void FailAllocation(int nth);

    /// Looks at the guard zones of all blocks, live and freed, then reports each live block as
    /// never freed and frees it. `keep` is the host's from now on and stays.
    void CheckAtEnd(hostapi::Handle keep = nullptr);
    /// Frees a handle that the host itself keeps. Null and unknown handles are ignored.
    void DisposeKept(hostapi::Handle handle);
    /// Exchanges a kept handle for another with the same contents, as if it had been written away
    /// and read back. Null and unknown handles stay as they are; so does the handle when memory is
    /// short.
    hostapi::Handle Renew(hostapi::Handle handle);

    Faults& FoundFaults() { return faults; }
    /// May be added to and reset.
    ServiceCounts& Counts() { return counts; }

  private:
    struct Buffer {
        CheckedBlock block;
        int locks;
    };
    struct HandleBlock {
        // A handle is the address of this pointer, so it must not move.
        char* master;
        CheckedBlock block;
        int locks;
        int number;
    };
    struct Callbacks;

    bool TakeAllocation(std::int64_t growth);
    std::int16_t AllocateBuffer(std::int32_t size, hostapi::BufferID* id);
    void* LockBuffer(hostapi::BufferID id);
    void UnlockBuffer(hostapi::BufferID id);
    void FreeBuffer(hostapi::BufferID id);
    std::int32_t ReportedSpace();
    hostapi::Handle NewHandle(std::int32_t size);
    hostapi::Handle MakeHandle(std::int32_t size);
    void DisposeHandle(hostapi::Handle handle);
    std::int32_t HandleSize(hostapi::Handle handle);
    std::int16_t ResizeHandle(hostapi::Handle handle, std::int32_t size);
    void* LockHandle(hostapi::Handle handle);
    void UnlockHandle(hostapi::Handle handle);
    Buffer* FindBuffer(hostapi::BufferID id, const char* operation);
    HandleBlock* FindHandle(hostapi::Handle handle, const char* operation);
    void Retire(CheckedBlock block);

    MemorySettings settings;
    Faults faults;
    ServiceCounts counts;
    std::int64_t usedBytes = 0;
    int allocations = 0;
    int failAt = 0;
    int handlesMade = 0;
    hostapi::BufferID lastId;
    std::map<hostapi::BufferID, Buffer> buffers;
    std::map<hostapi::Handle, std::unique_ptr<HandleBlock>> handles;
    // Disposed handles stay readable, so that a late use is found instead of crashing the host.
    std::map<hostapi::Handle, std::unique_ptr<HandleBlock>> disposedHandles;
    Quarantine quarantine;
    hostapi::BufferProcs bufferTable{};
    hostapi::HandleProcs handleTable{};
    MemorySuites* previous;
};

}  // namespace host

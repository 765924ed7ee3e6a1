#include "host/record/MemorySuites.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "hostapi/Results.h"

namespace host {

namespace {

MemorySuites* current = nullptr;

// Ids don't fit 32 bits where pointers don't, so that a filter that cuts them off is found.
constexpr hostapi::BufferID idBeforeFirst =
    static_cast<hostapi::BufferID>(hostapi::is64Bit ? 0x5A00000000LL : 0x5A000000LL);
constexpr std::size_t quarantineBytes = std::size_t{64} << 20;

std::string BlockName(const char* kind, int number, std::int32_t size) {
    return std::string(kind) + " " + std::to_string(number) + " (" + std::to_string(size) +
           " bytes)";
}

int BufferNumber(hostapi::BufferID id) {
    return static_cast<int>(id - idBeforeFirst);
}

}  // namespace

// The tables point to these: count the call and pass it on to the object that serves.
struct MemorySuites::Callbacks {
    static MemorySuites& Count(Service service) {
        ++current->counts[service];
        return *current;
    }
    static std::int16_t HOST_CALL AllocateBuffer(std::int32_t size, hostapi::BufferID* id) {
        return Count(Service::bufferAllocate).AllocateBuffer(size, id);
    }
    static void* HOST_CALL LockBuffer(hostapi::BufferID id, hostapi::Boolean8) {
        return Count(Service::bufferLock).LockBuffer(id);
    }
    static void HOST_CALL UnlockBuffer(hostapi::BufferID id) {
        Count(Service::bufferUnlock).UnlockBuffer(id);
    }
    static void HOST_CALL FreeBuffer(hostapi::BufferID id) {
        Count(Service::bufferFree).FreeBuffer(id);
    }
    static std::int32_t HOST_CALL BufferSpace() {
        return Count(Service::bufferSpace).ReportedSpace();
    }
    static hostapi::Handle HOST_CALL NewHandle(std::int32_t size) {
        return Count(Service::handleNew).NewHandle(size);
    }
    static void HOST_CALL DisposeHandle(hostapi::Handle handle) {
        Count(Service::handleDispose).DisposeHandle(handle);
    }
    static std::int32_t HOST_CALL HandleSize(hostapi::Handle handle) {
        return Count(Service::handleGetSize).HandleSize(handle);
    }
    static std::int16_t HOST_CALL ResizeHandle(hostapi::Handle handle, std::int32_t size) {
        return Count(Service::handleSetSize).ResizeHandle(handle, size);
    }
    static void* HOST_CALL LockHandle(hostapi::Handle handle, hostapi::Boolean8) {
        return Count(Service::handleLock).LockHandle(handle);
    }
    static void HOST_CALL UnlockHandle(hostapi::Handle handle) {
        Count(Service::handleUnlock).UnlockHandle(handle);
    }
    // Nothing here moves to make room.
    static void HOST_CALL RecoverSpace(std::int32_t) { Count(Service::handleRecoverSpace); }
    static void HOST_CALL DisposeRegularHandle(hostapi::Handle handle) {
        Count(Service::handleDisposeRegular).DisposeHandle(handle);
    }
};

MemorySuites::MemorySuites(const MemorySettings& newSettings)
    : settings(newSettings),
      failAt(newSettings.failAllocation),
      lastId(idBeforeFirst),
      quarantine(quarantineBytes),
      previous(std::exchange(current, this)) {
    const WithheldServices& without = settings.without;
    auto set = [&](auto& member, Service service, auto callback) {
        member = without[service] ? nullptr : callback;
    };
    if (!settings.emptyVersions) {
        bufferTable.version = 2;
        bufferTable.count = 5;
        handleTable.version = 1;
        handleTable.count = 8;
    }
    set(bufferTable.allocateProc, Service::bufferAllocate, &Callbacks::AllocateBuffer);
    set(bufferTable.lockProc, Service::bufferLock, &Callbacks::LockBuffer);
    set(bufferTable.unlockProc, Service::bufferUnlock, &Callbacks::UnlockBuffer);
    set(bufferTable.freeProc, Service::bufferFree, &Callbacks::FreeBuffer);
    set(bufferTable.spaceProc, Service::bufferSpace, &Callbacks::BufferSpace);
    set(handleTable.newProc, Service::handleNew, &Callbacks::NewHandle);
    set(handleTable.disposeProc, Service::handleDispose, &Callbacks::DisposeHandle);
    set(handleTable.getSizeProc, Service::handleGetSize, &Callbacks::HandleSize);
    set(handleTable.setSizeProc, Service::handleSetSize, &Callbacks::ResizeHandle);
    set(handleTable.lockProc, Service::handleLock, &Callbacks::LockHandle);
    set(handleTable.unlockProc, Service::handleUnlock, &Callbacks::UnlockHandle);
    set(handleTable.recoverSpaceProc, Service::handleRecoverSpace, &Callbacks::RecoverSpace);
    set(handleTable.disposeRegularHandleProc, Service::handleDisposeRegular,
        &Callbacks::DisposeRegularHandle);
}

MemorySuites::~MemorySuites() {
    current = previous;
}

hostapi::BufferProcs* MemorySuites::Buffers() {
    return settings.without[Service::bufferProcs] ? nullptr : &bufferTable;
}

hostapi::HandleProcs* MemorySuites::Handles() {
    return settings.without[Service::handleProcs] ? nullptr : &handleTable;
}

std::int64_t MemorySuites::FreeBytes() const {
    return settings.budget - usedBytes;
}

void MemorySuites::FailAllocation(int nth) {
    failAt = nth == 0 ? 0 : allocations + nth;
}

// Whether an allocation may go ahead; `growth` is what it takes from the budget.
bool MemorySuites::TakeAllocation(std::int64_t growth) {
    ++allocations;
    return allocations != failAt && growth <= FreeBytes();
}

std::int16_t MemorySuites::AllocateBuffer(std::int32_t size, hostapi::BufferID* id) {
    if (size < 0 || id == nullptr) {
        faults.Add("bufferProcs.allocateProc: a size below 0 or no place for the id");
        return hostapi::filterBadParameters;
    }
    if (!TakeAllocation(size)) {
        return hostapi::memFullErr;
    }
    try {
        CheckedBlock block(static_cast<std::size_t>(size),
                           BlockName("buffer", BufferNumber(lastId + 1), size));
        buffers.emplace(lastId + 1, Buffer{std::move(block), 0});
    } catch (const std::bad_alloc&) {
        return hostapi::memFullErr;
    }
    usedBytes += size;
    *id = ++lastId;
    return hostapi::noErr;
}

MemorySuites::Buffer* MemorySuites::FindBuffer(hostapi::BufferID id, const char* operation) {
    auto found = buffers.find(id);
    if (found != buffers.end()) {
        return &found->second;
    }
    const bool wasFreed = id > idBeforeFirst && id <= lastId;
    faults.Add(std::string("bufferProcs.") + operation +
               (wasFreed ? ": buffer " + std::to_string(BufferNumber(id)) + " was freed already"
                         : ": an id that no buffer ever had"));
    return nullptr;
}

void* MemorySuites::LockBuffer(hostapi::BufferID id) {
    Buffer* buffer = FindBuffer(id, "lockProc");
    if (buffer == nullptr) {
        return nullptr;
    }
    ++buffer->locks;
    return buffer->block.Data();
}

void MemorySuites::UnlockBuffer(hostapi::BufferID id) {
    Buffer* buffer = FindBuffer(id, "unlockProc");
    if (buffer == nullptr) {
        return;
    }
    buffer->block.Check(faults);
    if (buffer->locks == 0) {
        faults.Add("bufferProcs.unlockProc: " + buffer->block.Name() + " isn't locked");
    } else {
        --buffer->locks;
    }
}

void MemorySuites::FreeBuffer(hostapi::BufferID id) {
    Buffer* buffer = FindBuffer(id, "freeProc");
    if (buffer == nullptr) {
        return;
    }
    Retire(std::move(buffer->block));
    buffers.erase(id);
}

std::int32_t MemorySuites::ToldSpace() const {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    if (settings.negativeSpace) {
        // 3 GB, in the 32 bits that there are for it.
        return static_cast<std::int32_t>(std::uint32_t{3} << 30);
    }
    const std::int64_t free = settings.spaceInKilobytes ? FreeBytes() / 1024 : FreeBytes();
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(free, 0, most));
}

std::int32_t MemorySuites::ReportedSpace() {
    return settings.constantSpace ? std::numeric_limits<std::int32_t>::max() : ToldSpace();
}

hostapi::Handle MemorySuites::NewHandle(std::int32_t size) {
    if (size < 0) {
        faults.Add("handleProcs.newProc: a size below 0");
        return nullptr;
    }
    return TakeAllocation(size) ? MakeHandle(size) : nullptr;
}

hostapi::Handle MemorySuites::MakeHandle(std::int32_t size) {
    try {
        auto made = std::make_unique<HandleBlock>();
        made->number = ++handlesMade;
        made->block =
            CheckedBlock(static_cast<std::size_t>(size), BlockName("handle", made->number, size));
        made->master = reinterpret_cast<char*>(made->block.Data());
        hostapi::Handle handle = &made->master;
        handles.emplace(handle, std::move(made));
        usedBytes += size;
        return handle;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

MemorySuites::HandleBlock* MemorySuites::FindHandle(hostapi::Handle handle, const char* operation) {
    auto live = handles.find(handle);
    if (live != handles.end()) {
        return live->second.get();
    }
    auto disposed = disposedHandles.find(handle);
    faults.Add(std::string("handleProcs.") + operation +
               (disposed != disposedHandles.end()
                    ? ": " + disposed->second->block.Name() + " was disposed of already"
                    : ": not a handle"));
    return nullptr;
}

void MemorySuites::DisposeHandle(hostapi::Handle handle) {
    HandleBlock* found = FindHandle(handle, "disposeProc");
    if (found == nullptr) {
        return;
    }
    usedBytes -= static_cast<std::int64_t>(found->block.Size());
    found->block.Check(faults);
    found->block.Retire();
    disposedHandles.insert(handles.extract(handle));
}

std::int32_t MemorySuites::HandleSize(hostapi::Handle handle) {
    HandleBlock* found = FindHandle(handle, "getSizeProc");
    if (found == nullptr || settings.dumbHandles) {
        return 0;
    }
    return static_cast<std::int32_t>(found->block.Size());
}

std::int16_t MemorySuites::ResizeHandle(hostapi::Handle handle, std::int32_t size) {
    HandleBlock* found = FindHandle(handle, "setSizeProc");
    if (found == nullptr) {
        return hostapi::filterBadParameters;
    }
    if (size < 0 || found->locks != 0) {
        faults.Add("handleProcs.setSizeProc: a size below 0 or a locked handle");
        return hostapi::filterBadParameters;
    }
    if (settings.dumbHandles) {
        return hostapi::noErr;
    }
    const auto oldSize = static_cast<std::int32_t>(found->block.Size());
    if (!TakeAllocation(std::int64_t{size} - oldSize)) {
        return hostapi::memFullErr;
    }
    try {
        CheckedBlock grown(static_cast<std::size_t>(size),
                           BlockName("handle", found->number, size));
        std::memcpy(grown.Data(), found->block.Data(),
                    static_cast<std::size_t>(std::min(size, oldSize)));
        std::swap(grown, found->block);
        found->master = reinterpret_cast<char*>(found->block.Data());
        Retire(std::move(grown));
        usedBytes += size;
    } catch (const std::bad_alloc&) {
        return hostapi::memFullErr;
    }
    return hostapi::noErr;
}

void* MemorySuites::LockHandle(hostapi::Handle handle) {
    HandleBlock* found = FindHandle(handle, "lockProc");
    if (found == nullptr) {
        return nullptr;
    }
    ++found->locks;
    return found->master;
}

void MemorySuites::UnlockHandle(hostapi::Handle handle) {
    HandleBlock* found = FindHandle(handle, "unlockProc");
    if (found == nullptr) {
        return;
    }
    found->block.Check(faults);
    if (found->locks == 0) {
        faults.Add("handleProcs.unlockProc: " + found->block.Name() + " isn't locked");
    } else {
        --found->locks;
    }
}

void MemorySuites::Retire(CheckedBlock block) {
    usedBytes -= static_cast<std::int64_t>(block.Size());
    block.Check(faults);
    block.Retire();
    quarantine.Add(std::move(block), faults);
}

void MemorySuites::CheckAtEnd(hostapi::Handle keep) {
    for (auto& [id, buffer] : buffers) {
        buffer.block.Check(faults);
        faults.Add(buffer.block.Name() + ": never freed");
    }
    while (!buffers.empty()) {
        FreeBuffer(buffers.begin()->first);
    }
    std::vector<hostapi::Handle> leaked;
    for (auto& [handle, handleBlock] : handles) {
        handleBlock->block.Check(faults);
        if (handle != keep) {
            leaked.push_back(handle);
        }
    }
    for (hostapi::Handle handle : leaked) {
        faults.Add(handles[handle]->block.Name() + ": never disposed of");
        DisposeHandle(handle);
    }
    for (auto& [handle, handleBlock] : disposedHandles) {
        handleBlock->block.Check(faults);
    }
    quarantine.Check(faults);
}

void MemorySuites::DisposeKept(hostapi::Handle handle) {
    if (handles.count(handle) != 0) {
        DisposeHandle(handle);
    }
}

hostapi::Handle MemorySuites::Renew(hostapi::Handle handle) {
    auto found = handles.find(handle);
    if (found == handles.end()) {
        return handle;
    }
    const std::size_t size = found->second->block.Size();
    hostapi::Handle renewed = MakeHandle(static_cast<std::int32_t>(size));
    if (renewed == nullptr) {
        return handle;
    }
    std::memcpy(*renewed, found->second->block.Data(), size);
    DisposeHandle(handle);
    return renewed;
}

}  // namespace host

#include "raster/HostBuffer.h"

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "hostapi/Results.h"

namespace {

constexpr char sourceName[] = "HostBuffer";

// Bookkeeping only: nothing walks the chain but Unlink.
HostBuffer* firstBuffer = nullptr;
std::int32_t totalBytes = 0;

/// Whether the host can give `size` bytes and keep its reserve. Strict: a rest of exactly the
/// reserve is too little. Hosts may report up to 0x7FFFFFFF, so the reserve is added to the size,
/// in 64 bits.
bool HostHasRoomFor(std::int32_t size) {
    return static_cast<std::int64_t>(size) + hostMemoryReserve < BufferSpace();
}

/// If the buffer suite has no memory, a block could come from the host's handles. The hosts in use
/// take both from the same memory, so nothing would be gained.
std::int16_t AllocateHandleInstead() {
    return hostapi::memFullErr;
}

}  // namespace

HostBuffer::~HostBuffer() {
    try {
        Free();
    } catch (...) {
        // A host that can no longer free blocks: the fault has been reported, and the error cell is
        // set.
    }
}

std::int16_t HostBuffer::Allocate(std::int32_t newSize) {
    if (newSize <= size) {
        return hostapi::noErr;
    }
    Free();
    std::int16_t result = hostapi::memFullErr;
    hostapi::BufferID newId = 0;
    if (HostHasRoomFor(newSize)) {
        result = AllocateBuffer(newSize, &newId);
    }
    if (result == hostapi::memFullErr) {
        result = AllocateHandleInstead();
    }
    if (result == hostapi::noErr && newId == 0) {
        // A host that reports success without a block id has allocated nothing.
        result = hostapi::memFullErr;
    }
    if (result != hostapi::noErr) {
        return result;
    }
    id = newId;
    size = newSize;
    LinkInto();
    return hostapi::noErr;
}

void* HostBuffer::Lock(bool moveHigh) {
    if (id != 0 && address == nullptr) {
        if (isHandle) {
            FatalError(faultBadArgument, sourceName, __LINE__);
        }
        address = LockBuffer(id, moveHigh);
    }
    return address;
}

void HostBuffer::Free() {
    if (id == 0) {
        return;
    }
    // Cleared first: without the host's service FreeBuffer throws, and the destructor must not free
    // a second time.
    const hostapi::BufferID freed = id;
    Unlink();
    id = 0;
    isHandle = false;
    size = 0;
    address = nullptr;
    FreeBuffer(freed);
}

std::int32_t HostBuffer::TotalBytes() {
    return totalBytes;
}

void HostBuffer::LinkInto() {
    totalBytes += size;
    next = firstBuffer;
    firstBuffer = this;
}

void HostBuffer::Unlink() {
    totalBytes -= size;
    for (HostBuffer** link = &firstBuffer; *link != nullptr; link = &(*link)->next) {
        if (*link == this) {
            *link = next;
            break;
        }
    }
    next = nullptr;
}

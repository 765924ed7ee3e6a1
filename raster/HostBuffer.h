// A block from the host's buffer suite, so that large memory counts against the host's.
#pragma once

#include <cstdint>

#include "hostapi/HostTypes.h"

/// Bytes that the host keeps free beyond any block: an allocation must leave more than this.
constexpr std::int32_t hostMemoryReserve = 65536;

class HostBuffer {
  public:
    HostBuffer() = default;
    HostBuffer(const HostBuffer&) = delete;
    HostBuffer& operator=(const HostBuffer&) = delete;
    ~HostBuffer();

    /// 0 or memFullErr. A block that is large enough already is kept as it is.
    std::int16_t Allocate(std::int32_t newSize);
    /// The block's address; null without a block. It stays locked there until it is freed.
    void* Lock(bool moveHigh);
    void Free();

    std::int32_t Size() const { return size; }

    /// Bytes in all live blocks of the process.
    static std::int32_t TotalBytes();

  private:
    void LinkInto();
    void Unlink();

    HostBuffer* next = nullptr;
    hostapi::BufferID id = 0;
    bool isHandle = false;
    std::int32_t size = 0;
    void* address = nullptr;
};

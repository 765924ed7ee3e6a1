#include "host/record/MemorySuites.h"

#include <gtest/gtest.h>

#include <cstring>

#include "hostapi/Results.h"
#include "tests/host/Misuse.h"

namespace host {

namespace {

using hostapi::BufferID;
using hostapi::Handle;

using Lines = std::vector<std::string>;

BufferID Allocate(MemorySuites& memory, std::int32_t size) {
    BufferID id = 0;
    EXPECT_EQ(memory.Buffers()->allocateProc(size, &id), hostapi::noErr);
    return id;
}

std::uint8_t* Lock(MemorySuites& memory, BufferID id) {
    return static_cast<std::uint8_t*>(memory.Buffers()->lockProc(id, 0));
}

Lines FaultsAtEnd(MemorySuites& memory) {
    memory.CheckAtEnd();
    return memory.FoundFaults().Lines();
}

MemorySettings Budget(std::int64_t bytes) {
    MemorySettings settings;
    settings.budget = bytes;
    return settings;
}

}  // namespace

TEST(MemorySuitesTest, ABufferIsWholeFromAllocationToFree) {
    MemorySuites memory;
    const BufferID id = Allocate(memory, 1000);
    EXPECT_NE(id, 0U);
    std::uint8_t* bytes = Lock(memory, id);
    std::memset(bytes, 1, 1000);
    EXPECT_EQ(Lock(memory, id), bytes);
    memory.Buffers()->unlockProc(id);
    memory.Buffers()->unlockProc(id);
    EXPECT_EQ(memory.LiveBuffers(), 1U);
    memory.Buffers()->freeProc(id);
    EXPECT_EQ(memory.LiveBuffers(), 0U);
    EXPECT_EQ(FaultsAtEnd(memory), Lines{});
    EXPECT_EQ(memory.Counts()[Service::bufferAllocate], 1);
    EXPECT_EQ(memory.Counts()[Service::bufferLock], 2);
    EXPECT_EQ(memory.Counts()[Service::bufferUnlock], 2);
    EXPECT_EQ(memory.Counts()[Service::bufferFree], 1);
}

TEST(MemorySuitesTest, FreeingALockedBufferIsHarmless) {
    MemorySuites memory;
    const BufferID id = Allocate(memory, 10);
    Lock(memory, id);
    memory.Buffers()->freeProc(id);
    EXPECT_EQ(FaultsAtEnd(memory), Lines{});
}

TEST(MemorySuitesTest, BuffersAreNotCleared) {
    MemorySuites memory;
    const BufferID id = Allocate(memory, 4);
    EXPECT_NE(Lock(memory, id)[0], 0);
    memory.Buffers()->freeProc(id);
}

TEST(MemorySuitesTest, TheBudgetIsKeptToTheByte) {
    MemorySuites memory(Budget(1000));
    EXPECT_EQ(memory.Buffers()->spaceProc(), 1000);
    const BufferID first = Allocate(memory, 600);
    EXPECT_EQ(memory.Buffers()->spaceProc(), 400);
    BufferID second = 77;
    EXPECT_EQ(memory.Buffers()->allocateProc(401, &second), hostapi::memFullErr);
    EXPECT_EQ(second, 77U);
    EXPECT_EQ(memory.Buffers()->allocateProc(400, &second), hostapi::noErr);
    EXPECT_EQ(memory.Buffers()->spaceProc(), 0);
    EXPECT_EQ(memory.Handles()->newProc(1), nullptr);
    memory.Buffers()->freeProc(first);
    EXPECT_EQ(memory.Buffers()->spaceProc(), 600);
    Handle handle = memory.Handles()->newProc(600);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(memory.FreeBytes(), 0);
    memory.Handles()->disposeProc(handle);
    memory.Buffers()->freeProc(second);
    EXPECT_EQ(memory.FreeBytes(), 1000);
    EXPECT_EQ(FaultsAtEnd(memory), Lines{});
}

TEST(MemorySuitesTest, SpaceFitsThirtyTwoBits) {
    MemorySuites memory(Budget(std::int64_t{1} << 40));
    EXPECT_EQ(memory.Buffers()->spaceProc(), 0x7FFFFFFF);
}

TEST(MemorySuitesTest, SpaceMayBeConstant) {
    MemorySettings settings = Budget(10);
    settings.constantSpace = true;
    MemorySuites memory(settings);
    EXPECT_EQ(memory.Buffers()->spaceProc(), 0x7FFFFFFF);
    BufferID id = 0;
    EXPECT_EQ(memory.Buffers()->allocateProc(11, &id), hostapi::memFullErr);
}

TEST(MemorySuitesTest, MisusesOfBuffersAreFound) {
    MemorySuites memory;
    auto& buffers = *memory.Buffers();
    const BufferID id = Allocate(memory, 10);
    WriteOutside(Lock(memory, id), 12);
    buffers.unlockProc(id);
    buffers.unlockProc(id);
    WriteOutside(Lock(memory, id), -1);
    buffers.freeProc(id);
    buffers.freeProc(id);
    EXPECT_EQ(buffers.lockProc(id, 0), nullptr);
    buffers.unlockProc(99);
    buffers.freeProc(0);
    EXPECT_EQ(FaultsAtEnd(memory),
              (Lines{
                  "buffer 1 (10 bytes): written behind its end: 1 byte, the first at offset 12",
                  "bufferProcs.unlockProc: buffer 1 (10 bytes) isn't locked",
                  "buffer 1 (10 bytes): written before its start: 1 byte, the first at offset -1",
                  "bufferProcs.freeProc: buffer 1 was freed already",
                  "bufferProcs.lockProc: buffer 1 was freed already",
                  "bufferProcs.unlockProc: an id that no buffer ever had",
                  "bufferProcs.freeProc: an id that no buffer ever had",
              }));
}

TEST(MemorySuitesTest, WritesToAFreedBufferAreFound) {
    MemorySuites memory;
    const BufferID id = Allocate(memory, 10);
    std::uint8_t* bytes = Lock(memory, id);
    memory.Buffers()->freeProc(id);
    WriteOutside(bytes, 2);
    EXPECT_EQ(
        FaultsAtEnd(memory),
        Lines{"buffer 1 (10 bytes): written after it was freed: 1 byte, the first at offset 2"});
}

TEST(MemorySuitesTest, RequestsThatMakeNoSenseAreFaults) {
    MemorySuites memory;
    BufferID id = 0;
    EXPECT_EQ(memory.Buffers()->allocateProc(-1, &id), hostapi::filterBadParameters);
    EXPECT_EQ(memory.Buffers()->allocateProc(1, nullptr), hostapi::filterBadParameters);
    EXPECT_EQ(memory.Handles()->newProc(-1), nullptr);
    EXPECT_EQ(memory.FoundFaults().Total(), 3U);
}

TEST(MemorySuitesTest, LeaksAreFoundAndCleanedUp) {
    MemorySuites memory(Budget(1000));
    Allocate(memory, 10);
    memory.Handles()->newProc(12);
    EXPECT_EQ(FaultsAtEnd(memory), (Lines{"buffer 1 (10 bytes): never freed",
                                          "handle 1 (12 bytes): never disposed of"}));
    EXPECT_EQ(memory.FreeBytes(), 1000);
    EXPECT_EQ(memory.LiveBuffers() + memory.LiveHandles(), 0U);
}

TEST(MemorySuitesTest, AKeptHandleIsNoLeak) {
    MemorySuites memory;
    Handle kept = memory.Handles()->newProc(12);
    memory.CheckAtEnd(kept);
    EXPECT_TRUE(memory.FoundFaults().IsEmpty());
    std::memset(*kept, 0, 12);
    EXPECT_EQ(memory.LiveHandles(), 1U);
    memory.DisposeKept(kept);
    memory.DisposeKept(kept);
    memory.DisposeKept(nullptr);
    EXPECT_EQ(FaultsAtEnd(memory), Lines{});
}

TEST(MemorySuitesTest, AHandleLeadsToItsBlock) {
    MemorySuites memory;
    auto& handles = *memory.Handles();
    Handle handle = handles.newProc(12);
    ASSERT_NE(handle, nullptr);
    std::memset(*handle, 3, 12);
    EXPECT_EQ(handles.getSizeProc(handle), 12);
    EXPECT_EQ(handles.lockProc(handle, 1), *handle);
    handles.unlockProc(handle);
    handles.recoverSpaceProc(100);
    EXPECT_EQ(handles.setSizeProc(handle, 20), hostapi::noErr);
    EXPECT_EQ(handles.getSizeProc(handle), 20);
    EXPECT_EQ((*handle)[11], 3);
    EXPECT_NE((*handle)[12], 0);
    EXPECT_EQ(handles.setSizeProc(handle, 2), hostapi::noErr);
    EXPECT_EQ((*handle)[1], 3);
    handles.disposeRegularHandleProc(handle);
    EXPECT_EQ(FaultsAtEnd(memory), Lines{});
}

TEST(MemorySuitesTest, ResizingKeepsToTheBudget) {
    MemorySuites memory(Budget(100));
    Handle handle = memory.Handles()->newProc(60);
    EXPECT_EQ(memory.Handles()->setSizeProc(handle, 101), hostapi::memFullErr);
    EXPECT_EQ(memory.Handles()->getSizeProc(handle), 60);
    EXPECT_EQ(memory.Handles()->setSizeProc(handle, 100), hostapi::noErr);
    EXPECT_EQ(memory.FreeBytes(), 0);
    memory.Handles()->disposeProc(handle);
    EXPECT_EQ(memory.FreeBytes(), 100);
}

TEST(MemorySuitesTest, MisusesOfHandlesAreFound) {
    MemorySuites memory;
    auto& handles = *memory.Handles();
    Handle handle = handles.newProc(4);
    WriteOutside(reinterpret_cast<std::uint8_t*>(*handle), 4);
    handles.unlockProc(handle);
    handles.lockProc(handle, 0);
    EXPECT_NE(handles.setSizeProc(handle, 8), hostapi::noErr);
    handles.disposeProc(handle);
    handles.disposeProc(handle);
    WriteOutside(reinterpret_cast<std::uint8_t*>(*handle), 0);
    char* notABlock = nullptr;
    EXPECT_EQ(handles.getSizeProc(&notABlock), 0);
    EXPECT_EQ(handles.lockProc(nullptr, 0), nullptr);
    EXPECT_EQ(FaultsAtEnd(memory),
              (Lines{
                  "handle 1 (4 bytes): written behind its end: 1 byte, the first at offset 4",
                  "handleProcs.unlockProc: handle 1 (4 bytes) isn't locked",
                  "handleProcs.setSizeProc: a size below 0 or a locked handle",
                  "handleProcs.disposeProc: handle 1 (4 bytes) was disposed of already",
                  "handleProcs.getSizeProc: not a handle",
                  "handleProcs.lockProc: not a handle",
                  "handle 1 (4 bytes): written after it was freed: 1 byte, the first at offset 0",
              }));
}

TEST(MemorySuitesTest, TheNthAllocationFails) {
    MemorySettings settings;
    settings.failAllocation = 2;
    MemorySuites memory(settings);
    const BufferID id = Allocate(memory, 1);
    EXPECT_EQ(memory.Handles()->newProc(1), nullptr);
    Handle handle = memory.Handles()->newProc(1);
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(memory.Allocations(), 3);
    memory.FailAllocation(2);
    EXPECT_EQ(memory.Handles()->setSizeProc(handle, 2), hostapi::noErr);
    BufferID none = 0;
    EXPECT_EQ(memory.Buffers()->allocateProc(1, &none), hostapi::memFullErr);
    memory.FailAllocation(0);
    memory.Handles()->disposeProc(handle);
    memory.Buffers()->freeProc(id);
    EXPECT_EQ(FaultsAtEnd(memory), Lines{});
}

TEST(MemorySuitesTest, VersionsAndCountsMayBeEmpty) {
    MemorySettings settings;
    MemorySuites full(settings);
    EXPECT_EQ(full.Buffers()->version, 2);
    EXPECT_EQ(full.Buffers()->count, 5);
    EXPECT_EQ(full.Handles()->count, 8);
    settings.emptyVersions = true;
    MemorySuites empty(settings);
    EXPECT_EQ(empty.Buffers()->version + empty.Buffers()->count, 0);
    EXPECT_EQ(empty.Handles()->version + empty.Handles()->count, 0);
    EXPECT_NE(empty.Buffers()->allocateProc, nullptr);
}

TEST(MemorySuitesTest, WithheldServicesAreNull) {
    const auto& table = [](Service service) {
        MemorySettings settings;
        settings.without[service] = true;
        return settings;
    };
    EXPECT_EQ(MemorySuites(table(Service::bufferProcs)).Buffers(), nullptr);
    EXPECT_EQ(MemorySuites(table(Service::handleProcs)).Handles(), nullptr);
    auto missingBuffers = [&](Service service) {
        MemorySuites memory(table(service));
        const auto& procs = *memory.Buffers();
        return std::vector<bool>{!procs.allocateProc, !procs.lockProc, !procs.unlockProc,
                                 !procs.freeProc, !procs.spaceProc};
    };
    auto missingHandles = [&](Service service) {
        MemorySuites memory(table(service));
        const auto& procs = *memory.Handles();
        return std::vector<bool>{!procs.newProc,          !procs.disposeProc,
                                 !procs.getSizeProc,      !procs.setSizeProc,
                                 !procs.lockProc,         !procs.unlockProc,
                                 !procs.recoverSpaceProc, !procs.disposeRegularHandleProc};
    };
    for (std::size_t member = 0; member < 5; ++member) {
        std::vector<bool> expected(5, false);
        expected[member] = true;
        const auto first = static_cast<std::size_t>(Service::bufferAllocate);
        EXPECT_EQ(missingBuffers(static_cast<Service>(first + member)), expected);
    }
    for (std::size_t member = 0; member < 8; ++member) {
        std::vector<bool> expected(8, false);
        expected[member] = true;
        const auto first = static_cast<std::size_t>(Service::handleNew);
        EXPECT_EQ(missingHandles(static_cast<Service>(first + member)), expected);
    }
}

TEST(MemorySuitesTest, HandlesMayBeDumb) {
    MemorySettings settings;
    settings.dumbHandles = true;
    MemorySuites memory(settings);
    Handle handle = memory.Handles()->newProc(4);
    const char* block = *handle;
    EXPECT_EQ(memory.Handles()->getSizeProc(handle), 0);
    EXPECT_EQ(memory.Handles()->setSizeProc(handle, 100), hostapi::noErr);
    EXPECT_EQ(*handle, block);
    memory.Handles()->disposeProc(handle);
    EXPECT_EQ(FaultsAtEnd(memory), Lines{});
}

TEST(MemorySuitesTest, ARenewedHandleHasTheSameContents) {
    MemorySuites memory(Budget(100));
    Handle handle = memory.Handles()->newProc(4);
    std::memcpy(*handle, "abcd", 4);
    Handle renewed = memory.Renew(handle);
    EXPECT_NE(renewed, handle);
    EXPECT_EQ(std::memcmp(*renewed, "abcd", 4), 0);
    EXPECT_EQ(memory.LiveHandles(), 1U);
    EXPECT_EQ(memory.FreeBytes(), 96);
    EXPECT_EQ(memory.Renew(nullptr), nullptr);
    EXPECT_EQ(memory.Renew(handle), handle);
    memory.Handles()->disposeProc(handle);
    EXPECT_EQ(FaultsAtEnd(memory),
              (Lines{"handleProcs.disposeProc: handle 1 (4 bytes) was disposed of already",
                     "handle 2 (4 bytes): never disposed of"}));
}

TEST(MemorySuitesTest, TheNewestServesAndGivesBack) {
    MemorySuites outer;
    auto* buffers = outer.Buffers();
    {
        MemorySuites inner;
        BufferID id = 0;
        buffers->allocateProc(5, &id);
        EXPECT_EQ(inner.LiveBuffers(), 1U);
        EXPECT_EQ(outer.LiveBuffers(), 0U);
        buffers->freeProc(id);
    }
    const BufferID id = Allocate(outer, 5);
    EXPECT_EQ(outer.LiveBuffers(), 1U);
    buffers->freeProc(id);
}

}  // namespace host

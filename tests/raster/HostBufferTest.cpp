#include "raster/HostBuffer.h"

#include "hostapi/Results.h"
#include "tests/support/CoreTest.h"

namespace {

class HostBufferTest : public CoreTest {};

TEST_F(HostBufferTest, AllocatesLocksAndFrees) {
    const std::int32_t before = HostBuffer::TotalBytes();
    HostBuffer buffer;
    EXPECT_EQ(buffer.Lock(false), nullptr);
    ASSERT_EQ(buffer.Allocate(1000), 0);
    EXPECT_EQ(buffer.Size(), 1000);
    EXPECT_EQ(HostBuffer::TotalBytes(), before + 1000);
    void* const address = buffer.Lock(false);
    ASSERT_NE(address, nullptr);
    EXPECT_EQ(buffer.Lock(false), address);
    EXPECT_EQ(memory.LiveBuffers(), 1u);
    buffer.Free();
    EXPECT_EQ(memory.LiveBuffers(), 0u);
    EXPECT_EQ(buffer.Size(), 0);
    EXPECT_EQ(buffer.Lock(false), nullptr);
    EXPECT_EQ(HostBuffer::TotalBytes(), before);
}

TEST_F(HostBufferTest, KeepsALargerBlockAsItIs) {
    HostBuffer buffer;
    ASSERT_EQ(buffer.Allocate(1000), 0);
    void* const address = buffer.Lock(false);
    EXPECT_EQ(buffer.Allocate(10), 0);
    EXPECT_EQ(buffer.Allocate(1000), 0);
    EXPECT_EQ(buffer.Size(), 1000);
    EXPECT_EQ(buffer.Lock(false), address);
    EXPECT_EQ(memory.Allocations(), 1);
}

TEST_F(HostBufferTest, GrowsByReplacingTheBlock) {
    HostBuffer buffer;
    ASSERT_EQ(buffer.Allocate(1000), 0);
    ASSERT_EQ(buffer.Allocate(2000), 0);
    EXPECT_EQ(buffer.Size(), 2000);
    EXPECT_EQ(memory.LiveBuffers(), 1u);
}

TEST_F(HostBufferTest, ABlockThatCannotGrowIsGone) {
    const std::int32_t before = HostBuffer::TotalBytes();
    HostBuffer buffer;
    ASSERT_EQ(buffer.Allocate(1000), 0);
    memory.FailAllocation(1);
    EXPECT_EQ(buffer.Allocate(2000), hostapi::memFullErr);
    EXPECT_EQ(buffer.Size(), 0);
    EXPECT_EQ(buffer.Lock(false), nullptr);
    EXPECT_EQ(memory.LiveBuffers(), 0u);
    EXPECT_EQ(HostBuffer::TotalBytes(), before);
}

class SmallHostBufferTest : public CoreTest {
  protected:
    SmallHostBufferTest() : CoreTest(RoomFor(2000)) {}
    static host::MemorySettings RoomFor(std::int64_t bytes) {
        host::MemorySettings settings;
        settings.budget = bytes + 65536 + 1;
        return settings;
    }
};

TEST_F(SmallHostBufferTest, TheOldBlockIsGivenBackBeforeTheHostIsAskedForRoom) {
    HostBuffer buffer;
    ASSERT_EQ(buffer.Allocate(1000), 0);
    EXPECT_EQ(buffer.Allocate(2000), 0);
}

TEST_F(HostBufferTest, NothingForNothing) {
    HostBuffer buffer;
    EXPECT_EQ(buffer.Allocate(0), 0);
    EXPECT_EQ(buffer.Allocate(-5), 0);
    EXPECT_EQ(buffer.Lock(false), nullptr);
    EXPECT_EQ(memory.Allocations(), 0);
}

TEST_F(HostBufferTest, TheDestructorFrees) {
    {
        HostBuffer buffer;
        ASSERT_EQ(buffer.Allocate(1000), 0);
    }
    EXPECT_EQ(memory.LiveBuffers(), 0u);
}

TEST_F(HostBufferTest, TheChainSurvivesAnyOrderOfFreeing) {
    const std::int32_t before = HostBuffer::TotalBytes();
    HostBuffer buffers[4];
    for (HostBuffer& buffer : buffers) {
        ASSERT_EQ(buffer.Allocate(100), 0);
    }
    for (const int i : {1, 3, 0, 2}) {
        buffers[i].Free();
    }
    EXPECT_EQ(HostBuffer::TotalBytes(), before);
}

std::int32_t reportedSpace = 0;

TEST_F(HostBufferTest, LeavesTheHostItsReserveStrictly) {
    hostapi::BufferProcs procs = *memory.Buffers();
    procs.spaceProc = []() -> std::int32_t { return reportedSpace; };
    record.bufferProcs = &procs;
    HostBuffer buffer;
    reportedSpace = 1000 + 65536;
    EXPECT_EQ(buffer.Allocate(1000), hostapi::memFullErr);
    EXPECT_EQ(memory.Allocations(), 0);
    reportedSpace = 1000 + 65536 + 1;
    EXPECT_EQ(buffer.Allocate(1000), 0);
}

TEST_F(HostBufferTest, TheLargestSpaceDoesNotOverflow) {
    hostapi::BufferProcs procs = *memory.Buffers();
    procs.spaceProc = []() -> std::int32_t { return 0x7FFFFFFF; };
    record.bufferProcs = &procs;
    HostBuffer buffer;
    EXPECT_EQ(buffer.Allocate(1000), 0);
    buffer.Free();
    EXPECT_EQ(buffer.Allocate(0x7FFFFFFF), hostapi::memFullErr);
}

TEST_F(HostBufferTest, HandsOnTheHostsError) {
    hostapi::BufferProcs procs = *memory.Buffers();
    procs.allocateProc = [](std::int32_t, hostapi::BufferID*) -> std::int16_t { return -30000; };
    record.bufferProcs = &procs;
    HostBuffer buffer;
    EXPECT_EQ(buffer.Allocate(1000), -30000);
    EXPECT_EQ(buffer.Lock(false), nullptr);
}

TEST_F(HostBufferTest, SuccessWithoutABlockIsNone) {
    hostapi::BufferProcs procs = *memory.Buffers();
    procs.allocateProc = [](std::int32_t, hostapi::BufferID*) -> std::int16_t { return 0; };
    record.bufferProcs = &procs;
    HostBuffer buffer;
    EXPECT_EQ(buffer.Allocate(1000), hostapi::memFullErr);
    EXPECT_EQ(buffer.Size(), 0);
}

TEST_F(HostBufferTest, AHostThatTakesNothingBackDoesNotEndTheProcess) {
    hostapi::BufferProcs procs = *memory.Buffers();
    record.bufferProcs = &procs;
    hostapi::BufferID lost = 0;
    static hostapi::BufferID allocated = 0;
    static std::int16_t(HOST_CALL * allocate)(std::int32_t, hostapi::BufferID*);
    allocate = procs.allocateProc;
    procs.allocateProc = [](std::int32_t size, hostapi::BufferID* id) {
        const std::int16_t result = allocate(size, id);
        allocated = *id;
        return result;
    };
    {
        HostBuffer buffer;
        ASSERT_EQ(buffer.Allocate(1000), 0);
        lost = allocated;
        procs.freeProc = nullptr;
    }
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 17500);
    memory.Buffers()->freeProc(lost);
}

}  // namespace

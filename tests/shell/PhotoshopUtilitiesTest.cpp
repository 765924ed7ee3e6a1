#include "base/HostServices.h"
#include "shell/PhotoshopUtilities.h"

#include <cstring>

#include "base/FatalError.h"
#include "hostapi/Results.h"
#include "tests/support/CoreTest.h"

namespace {

class PhotoshopUtilitiesTest : public CoreTest {};

// The arguments of the host's procedures below, and their results.
struct HostCalls {
    hostapi::Boolean8 abortAnswer = 0;
    std::int16_t advanceAnswer = 0;
    int progressCalls = 0;
    std::int32_t done = 0;
    std::int32_t total = 0;
    int moveHigh = -1;
};
HostCalls calls;

TEST_F(PhotoshopUtilitiesTest, TestAbortHandsTheAnswerOn) {
    calls = {};
    record.abortProc = []() -> hostapi::Boolean8 { return calls.abortAnswer; };
    EXPECT_FALSE(TestAbort());
    calls.abortAnswer = 1;
    EXPECT_TRUE(TestAbort());
    calls.abortAnswer = 0xFF;
    EXPECT_TRUE(TestAbort());
}

TEST_F(PhotoshopUtilitiesTest, ShowProgressHandsBothOn) {
    calls = {};
    record.progressProc = [](std::int32_t done, std::int32_t total) {
        ++calls.progressCalls;
        calls.done = done;
        calls.total = total;
    };
    ShowProgress(3, 100000);
    EXPECT_EQ(calls.progressCalls, 1);
    EXPECT_EQ(calls.done, 3);
    EXPECT_EQ(calls.total, 100000);
    // Some hosts divide by it.
    ShowProgress(0, 0);
    EXPECT_EQ(calls.progressCalls, 1);
}

TEST_F(PhotoshopUtilitiesTest, AdvanceStateHandsTheResultOn) {
    calls = {};
    record.advanceState = [] { return calls.advanceAnswer; };
    EXPECT_EQ(AdvanceState(), 0);
    calls.advanceAnswer = -128;
    EXPECT_EQ(AdvanceState(), -128);
}

TEST_F(PhotoshopUtilitiesTest, MissingServicesOfTheRecordHaveAnAnswer) {
    const auto expectAnswers = [] {
        EXPECT_FALSE(TestAbort());
        ShowProgress(1, 2);
        EXPECT_EQ(AdvanceState(), 17500);
        const std::uint8_t grey = 1;
        std::uint8_t rgb[3] = {7, 8, 9};
        EXPECT_EQ(ConvertColors(hostapi::imageModeGrey, hostapi::imageModeRGB, 1, &grey, rgb),
                  17500);
        EXPECT_EQ(rgb[0] + rgb[1] + rgb[2], 24);
    };
    expectAnswers();
    filterRecord = nullptr;
    expectAnswers();
    EXPECT_TRUE(Log().faults.empty());
}

// The memory services, each with its place in the host's tables.
struct MemoryService {
    const char* name;
    void (*call)();
    void (*withhold)(hostapi::BufferProcs&, hostapi::HandleProcs&);
};

char block[8];
char* master = block;

constexpr MemoryService memoryServices[] = {
    {"newProc", [] { NewHostHandle(12); },
     [](hostapi::BufferProcs&, hostapi::HandleProcs& handles) { handles.newProc = nullptr; }},
    {"disposeProc", [] { DisposeHostHandle(&master); },
     [](hostapi::BufferProcs&, hostapi::HandleProcs& handles) { handles.disposeProc = nullptr; }},
    {"spaceProc", [] { BufferSpace(); },
     [](hostapi::BufferProcs& buffers, hostapi::HandleProcs&) { buffers.spaceProc = nullptr; }},
    {"allocateProc",
     [] {
         hostapi::BufferID id = 0;
         AllocateBuffer(12, &id);
     },
     [](hostapi::BufferProcs& buffers, hostapi::HandleProcs&) { buffers.allocateProc = nullptr; }},
    {"lockProc", [] { LockBuffer(1, false); },
     [](hostapi::BufferProcs& buffers, hostapi::HandleProcs&) { buffers.lockProc = nullptr; }},
    {"freeProc", [] { FreeBuffer(1); },
     [](hostapi::BufferProcs& buffers, hostapi::HandleProcs&) { buffers.freeProc = nullptr; }},
};

class MissingMemoryServiceTest : public CoreTest,
                                 public testing::WithParamInterface<MemoryService> {
  protected:
    void ExpectFault() {
        Log().faults.clear();
        EXPECT_EQ(FaultOf(GetParam().call), 17500);
        ASSERT_EQ(Log().faults.size(), 1u);
        EXPECT_EQ(Log().faults[0].id, 17500);
        EXPECT_EQ(Log().faults[0].file, "PhotoshopUtilities");
        EXPECT_GT(Log().faults[0].line, 0);
        EXPECT_EQ(errorCell, 17500);
    }
};

TEST_P(MissingMemoryServiceTest, IsAFaultHoweverItIsMissing) {
    hostapi::BufferProcs buffers = *memory.Buffers();
    hostapi::HandleProcs handles = *memory.Handles();
    record.bufferProcs = &buffers;
    record.handleProcs = &handles;
    GetParam().withhold(buffers, handles);
    ExpectFault();
    record.bufferProcs = nullptr;
    record.handleProcs = nullptr;
    ExpectFault();
    filterRecord = nullptr;
    ExpectFault();
}

INSTANTIATE_TEST_SUITE_P(Services, MissingMemoryServiceTest, testing::ValuesIn(memoryServices),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(PhotoshopUtilitiesTest, HandlesComeFromTheHost) {
    const hostapi::Handle handle = NewHostHandle(12);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(memory.LiveHandles(), 1u);
    EXPECT_EQ(memory.Handles()->getSizeProc(handle), 12);
    DisposeHostHandle(handle);
    EXPECT_EQ(memory.LiveHandles(), 0u);
}

TEST_F(PhotoshopUtilitiesTest, NoHandleWithoutMemory) {
    memory.FailAllocation(1);
    EXPECT_EQ(NewHostHandle(12), nullptr);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(PhotoshopUtilitiesTest, ANullHandleIsIgnored) {
    DisposeHostHandle(nullptr);
    record.handleProcs = nullptr;
    DisposeHostHandle(nullptr);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(PhotoshopUtilitiesTest, BuffersComeFromTheHost) {
    const std::int32_t before = BufferSpace();
    hostapi::BufferID id = 0;
    ASSERT_EQ(AllocateBuffer(1000, &id), 0);
    EXPECT_EQ(BufferSpace(), before - 1000);
    void* const address = LockBuffer(id, false);
    ASSERT_NE(address, nullptr);
    std::memset(address, 0x55, 1000);
    FreeBuffer(id);
    EXPECT_EQ(memory.LiveBuffers(), 0u);
    EXPECT_EQ(BufferSpace(), before);
    memory.FailAllocation(1);
    EXPECT_EQ(AllocateBuffer(1000, &id), -108);
}

TEST_F(PhotoshopUtilitiesTest, LockBufferHandsTheMoveHighFlagOn) {
    calls = {};
    hostapi::BufferProcs buffers = *memory.Buffers();
    buffers.lockProc = [](hostapi::BufferID, hostapi::Boolean8 moveHigh) -> void* {
        calls.moveHigh = moveHigh;
        return block;
    };
    record.bufferProcs = &buffers;
    EXPECT_EQ(LockBuffer(1, true), block);
    EXPECT_EQ(calls.moveHigh, 1);
    EXPECT_EQ(LockBuffer(1, false), block);
    EXPECT_EQ(calls.moveHigh, 0);
}

class EmptyVersionsTest : public CoreTest {
  protected:
    EmptyVersionsTest() : CoreTest({.emptyVersions = true, .without = {}}) {}
};

TEST_F(EmptyVersionsTest, SuitesWithoutAVersionServeAllTheSame) {
    ASSERT_EQ(record.bufferProcs->version + record.bufferProcs->count, 0);
    ASSERT_EQ(record.handleProcs->version + record.handleProcs->count, 0);
    const hostapi::Handle handle = NewHostHandle(12);
    EXPECT_NE(handle, nullptr);
    DisposeHostHandle(handle);
    EXPECT_GT(BufferSpace(), 0);
    hostapi::BufferID id = 0;
    ASSERT_EQ(AllocateBuffer(10, &id), 0);
    EXPECT_NE(LockBuffer(id, false), nullptr);
    FreeBuffer(id);
}

TEST(MapCoveringTest, RaisesRightAndBottomToTheRectangle) {
    int pixels = 0;
    hostapi::PSPixelMap map{};
    map.version = 1;
    map.bounds = {1, 2, 99, 199};
    map.imageMode = 3;
    map.rowBytes = 800;
    map.colBytes = 4;
    map.planeBytes = 1;
    map.baseAddr = &pixels;
    map.maskPhaseRow = 5;
    map.maskPhaseCol = 6;
    const auto boundsFor = [&map](const hostapi::VRect& rect) {
        const hostapi::PSPixelMap covering = MapCovering(map, rect);
        hostapi::PSPixelMap rest = covering;
        rest.bounds = map.bounds;
        EXPECT_EQ(std::memcmp(&rest, &map, sizeof map), 0) << "another field changed";
        EXPECT_EQ(covering.bounds.top, 1);
        EXPECT_EQ(covering.bounds.left, 2);
        return std::pair(covering.bounds.right, covering.bounds.bottom);
    };
    EXPECT_EQ(boundsFor({0, 0, 100, 200}), std::pair(200, 100));
    EXPECT_EQ(boundsFor({0, 0, 99, 200}), std::pair(200, 99));
    EXPECT_EQ(boundsFor({0, 0, 100, 199}), std::pair(199, 100));
    EXPECT_EQ(boundsFor({0, 0, 50, 60}), std::pair(199, 99));
    EXPECT_EQ(boundsFor({-9, -9, -1, -1}), std::pair(199, 99));
}

}  // namespace

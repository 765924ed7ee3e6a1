#include "base/HostServices.h"
#include "base/Progress.h"
#include "shell/PhotoshopUtilities.h"

#include <cstring>
#include <type_traits>

#include "base/FatalError.h"
#include "host/record/ColorServices.h"
#include "hostapi/Results.h"
#include "tests/support/CoreTest.h"

namespace {

class PhotoshopUtilitiesTest : public CoreTest {};

// What the host's procedures below were called with, and what they answer.
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

// The modes with the number of their components and their colour space.
struct Mode {
    hostapi::ImageMode mode;
    int components;
    std::int16_t space;
};
constexpr Mode modes[] = {
    {hostapi::imageModeGrey, 1, hostapi::colorSpaceGrey},
    {hostapi::imageModeRGB, 3, hostapi::colorSpaceRGB},
    {hostapi::imageModeCMYK, 4, hostapi::colorSpaceCMYK},
    {hostapi::imageModeHSL, 3, hostapi::colorSpaceHSL},
    {hostapi::imageModeHSB, 3, hostapi::colorSpaceHSB},
    {hostapi::imageModeLab, 3, hostapi::colorSpaceLab},
};

class ConvertColorsTest : public CoreTest {
  protected:
    ConvertColorsTest() {
        infos.clear();
        failAt = -1;
        record.colorServices = [](hostapi::ColorServicesInfo* info) -> std::int16_t {
            infos.push_back(*info);
            if (static_cast<int>(infos.size()) - 1 == failAt) {
                return -30901;
            }
            for (std::int16_t& component : info->colorComponents) {
                component = static_cast<std::int16_t>(component + 1);
            }
            return 0;
        };
    }

    static inline std::vector<hostapi::ColorServicesInfo> infos;
    static inline int failAt = -1;
};

TEST_F(ConvertColorsTest, EachColourIsARequestOfItsOwn) {
    for (const Mode& from : modes) {
        for (const Mode& to : modes) {
            if (from.mode == to.mode) {
                continue;
            }
            infos.clear();
            const std::uint8_t source[] = {10, 20, 30, 40, 50, 60, 70, 80};
            std::uint8_t target[9];
            std::memset(target, 0xEE, sizeof target);
            ASSERT_EQ(ConvertColors(from.mode, to.mode, 2, source, target), 0);
            ASSERT_EQ(infos.size(), 2u);
            for (int i = 0; i < 2; ++i) {
                const hostapi::ColorServicesInfo& info = infos[static_cast<std::size_t>(i)];
                EXPECT_EQ(info.infoSize, static_cast<std::int32_t>(sizeof info));
                EXPECT_EQ(info.selector, 1);
                EXPECT_EQ(info.sourceSpace, from.space);
                EXPECT_EQ(info.resultSpace, to.space);
                EXPECT_EQ(info.resultGamutInfoValid, 0);
                EXPECT_EQ(info.resultInGamut, 0);
                EXPECT_EQ(info.reservedSourceSpaceInfo, nullptr);
                EXPECT_EQ(info.reservedResultSpaceInfo, nullptr);
                EXPECT_EQ(info.reserved, nullptr);
                EXPECT_EQ(info.selectorParameter.pickerPrompt, nullptr);
                for (int c = 0; c < 4; ++c) {
                    const int expected = c < from.components ? source[i * from.components + c] : 0;
                    EXPECT_EQ(info.colorComponents[c], expected);
                    if (c < to.components) {
                        EXPECT_EQ(target[i * to.components + c], expected + 1);
                    }
                }
            }
            EXPECT_EQ(target[2 * to.components], 0xEE) << "a byte too many";
        }
    }
}

TEST_F(ConvertColorsTest, EqualModesAreNoRequest) {
    const std::uint8_t source[4] = {1, 2, 3, 4};
    std::uint8_t target[4] = {9, 9, 9, 9};
    const auto expectNothing = [&](hostapi::ImageMode mode) {
        EXPECT_EQ(ConvertColors(mode, mode, 1, source, target), 0);
        EXPECT_EQ(target[0] + target[1] + target[2] + target[3], 36);
    };
    for (const Mode& mode : modes) {
        expectNothing(mode.mode);
    }
    record.colorServices = nullptr;
    expectNothing(hostapi::imageModeRGB);
    filterRecord = nullptr;
    expectNothing(hostapi::imageModeRGB);
    EXPECT_TRUE(infos.empty());
}

TEST_F(ConvertColorsTest, StopsAtTheHostsFirstError) {
    failAt = 2;
    const std::uint8_t source[] = {10, 20, 30, 40};
    std::uint8_t target[12];
    std::memset(target, 0xEE, sizeof target);
    EXPECT_EQ(ConvertColors(hostapi::imageModeGrey, hostapi::imageModeRGB, 4, source, target),
              -30901);
    EXPECT_EQ(infos.size(), 3u);
    EXPECT_EQ(target[0], 11);
    EXPECT_EQ(target[3], 21);
    for (int i = 6; i < 12; ++i) {
        EXPECT_EQ(target[i], 0xEE);
    }
}

TEST_F(ConvertColorsTest, ModesWithoutAColourSpaceAreRefused) {
    const std::uint8_t source[4] = {1, 2, 3, 4};
    std::uint8_t target[4] = {9, 9, 9, 9};
    for (const int number : {0, 2, 7, 8, 10, -1}) {
        const auto mode = static_cast<hostapi::ImageMode>(number);
        EXPECT_EQ(ConvertColors(mode, hostapi::imageModeRGB, 1, source, target), -30100);
        EXPECT_EQ(ConvertColors(hostapi::imageModeRGB, mode, 1, source, target), -30100);
    }
    EXPECT_TRUE(infos.empty());
}

TEST_F(ConvertColorsTest, NoColoursAreNoRequest) {
    EXPECT_EQ(ConvertColors(hostapi::imageModeRGB, hostapi::imageModeLab, 0, nullptr, nullptr), 0);
    EXPECT_TRUE(infos.empty());
}

TEST_F(ConvertColorsTest, ComponentsBeyondAByteAreClamped) {
    record.colorServices = [](hostapi::ColorServicesInfo* info) -> std::int16_t {
        info->colorComponents[0] = -5;
        info->colorComponents[1] = 256;
        info->colorComponents[2] = 255;
        return 0;
    };
    const std::uint8_t source = 1;
    std::uint8_t target[3];
    ASSERT_EQ(ConvertColors(hostapi::imageModeGrey, hostapi::imageModeRGB, 1, &source, target), 0);
    EXPECT_EQ(target[0], 0);
    EXPECT_EQ(target[1], 255);
    EXPECT_EQ(target[2], 255);
}

TEST_F(ConvertColorsTest, AStrictHostServesAllModes) {
    static bool refuses;
    refuses = false;
    record.colorServices = [](hostapi::ColorServicesInfo* info) {
        host::ColorSource source{};
        source.refuseAllButChoosing = refuses;
        return host::ServeColor(info, source);
    };
    for (const Mode& from : modes) {
        for (const Mode& to : modes) {
            if (from.mode == to.mode) {
                continue;
            }
            const std::uint8_t source[4] = {200, 100, 50, 25};
            std::int16_t components[4] = {};
            std::copy_n(source, from.components, components);
            ASSERT_TRUE(host::ConvertColor(from.space, to.space, components));
            std::uint8_t target[4];
            ASSERT_EQ(ConvertColors(from.mode, to.mode, 1, source, target), 0);
            for (int c = 0; c < to.components; ++c) {
                EXPECT_EQ(target[c], components[c]) << from.mode << " to " << to.mode;
            }
        }
    }
    refuses = true;
    std::uint8_t target[3];
    const std::uint8_t grey = 5;
    EXPECT_EQ(ConvertColors(hostapi::imageModeGrey, hostapi::imageModeRGB, 1, &grey, target),
              -30900);
}

class BusyTickTest : public CoreTest {
  protected:
    /// Has BusyTick work at this very count, whenever it worked before.
    static void WorkAt(std::uint32_t ticks) {
        Log().ticks = ticks - 250;
        BusyTick();
        Log().ticks = ticks;
        BusyTick();
        Log().waitCursors = 0;
    }
    static int CursorsAt(std::uint32_t ticks) {
        Log().ticks = ticks;
        BusyTick();
        return Log().waitCursors;
    }
};

TEST_F(BusyTickTest, WorksEvery250Milliseconds) {
    WorkAt(10000);
    EXPECT_EQ(CursorsAt(10000), 0);
    EXPECT_EQ(CursorsAt(10249), 0);
    EXPECT_EQ(CursorsAt(10250), 1);
    EXPECT_EQ(CursorsAt(10499), 1);
    EXPECT_EQ(CursorsAt(10500), 2);
    EXPECT_EQ(CursorsAt(60000), 3);
}

TEST_F(BusyTickTest, TheTimeCountsFromTheLastWork) {
    WorkAt(10000);
    EXPECT_EQ(CursorsAt(10300), 1);
    EXPECT_EQ(CursorsAt(10549), 1);
    EXPECT_EQ(CursorsAt(10550), 2);
}

TEST_F(BusyTickTest, TheCounterMayWrap) {
    WorkAt(0xFFFFFF80);
    EXPECT_EQ(CursorsAt(0xFFFFFFFF), 0);
    EXPECT_EQ(CursorsAt(0xFFFFFF80u + 249u), 0);
    EXPECT_EQ(CursorsAt(0xFFFFFF80u + 250u), 1);
}

/// Stands in for the editor.
class RecordingTarget final : public ProgressTarget {
  public:
    RecordingTarget() {
        CursorClass::target = this;
        ShowClass::target = this;
    }
    RecordingTarget(const RecordingTarget&) = delete;
    RecordingTarget& operator=(const RecordingTarget&) = delete;
    ~RecordingTarget() {
        CursorClass::target = nullptr;
        ShowClass::target = nullptr;
    }
    void DrawProgress(short percent) override { percents.push_back(percent); }

    std::vector<short> percents;
};

static_assert(std::has_virtual_destructor_v<CursorClass>);
static_assert(std::has_virtual_destructor_v<ShowClass>);

class ProgressTest : public BusyTickTest {};

TEST_F(ProgressTest, ACursorIsSilentWithoutAnEditor) {
    WorkAt(10000);
    Log().ticks = 20000;
    {
        CursorClass cursor;
        cursor.Tick();
    }
    EXPECT_EQ(Log().waitCursors, 0);
    EXPECT_EQ(Log().arrowCursors, 0);
}

TEST_F(ProgressTest, ACursorIsBusyForItsLife) {
    const RecordingTarget target;
    WorkAt(10000);
    Log().ticks = 10250;
    {
        CursorClass cursor;
        EXPECT_EQ(Log().waitCursors, 1);
        cursor.Tick();
        EXPECT_EQ(Log().waitCursors, 1);
        Log().ticks = 10500;
        cursor.Tick();
        EXPECT_EQ(Log().waitCursors, 2);
        EXPECT_EQ(Log().arrowCursors, 0);
    }
    EXPECT_EQ(Log().arrowCursors, 1);
    EXPECT_TRUE(target.percents.empty());
}

TEST_F(ProgressTest, ProgressIsSilentWithoutAnEditor) {
    WorkAt(10000);
    Log().ticks = 20000;
    {
        ShowClass progress(10);
        EXPECT_EQ(progress.total, 10);
        EXPECT_EQ(progress.current, 0);
        EXPECT_FALSE(progress.Report(4));
        EXPECT_EQ(progress.current, 4);
    }
    EXPECT_EQ(Log().waitCursors, 0);
    EXPECT_EQ(Log().arrowCursors, 0);
}

TEST_F(ProgressTest, ProgressIsDrawnAndKeepsTheCursorBusy) {
    const RecordingTarget target;
    WorkAt(10000);
    Log().ticks = 10250;
    {
        ShowClass progress(8);
        EXPECT_EQ(Log().waitCursors, 1);
        EXPECT_TRUE(target.percents.empty()) << "nothing is drawn before the first report";
        Log().ticks = 10500;
        EXPECT_FALSE(progress.Report(1));
        EXPECT_FALSE(progress.Report(8));
        EXPECT_EQ(Log().waitCursors, 2);
        EXPECT_EQ(Log().arrowCursors, 0);
    }
    EXPECT_EQ(Log().arrowCursors, 1);
    EXPECT_EQ(target.percents, (std::vector<short>{12, 100}));
}

TEST_F(ProgressTest, EachClassHasATargetOfItsOwn) {
    const RecordingTarget target;
    CursorClass::target = nullptr;
    WorkAt(10000);
    Log().ticks = 20000;
    CursorClass cursor;
    EXPECT_EQ(Log().waitCursors, 0);
    ShowClass progress(1);
    EXPECT_EQ(Log().waitCursors, 1);
}

struct Percentage {
    short total;
    short value;
    short percent;
};

class PercentageTest : public CoreTest, public testing::WithParamInterface<Percentage> {};

TEST_P(PercentageTest, IsTruncatedTowardsZero) {
    const RecordingTarget target;
    ShowClass progress(GetParam().total);
    EXPECT_FALSE(progress.Report(GetParam().value));
    EXPECT_EQ(progress.current, GetParam().value);
    EXPECT_EQ(target.percents, std::vector<short>{GetParam().percent});
}

INSTANTIATE_TEST_SUITE_P(Values, PercentageTest,
                         testing::Values(Percentage{100, 0, 0}, Percentage{3, 1, 33},
                                         Percentage{3, 2, 66}, Percentage{7, 7, 100},
                                         Percentage{200, 1, 0}, Percentage{200, 199, 99},
                                         Percentage{1, 2, 200}, Percentage{10, -5, -50},
                                         Percentage{-4, 1, -25}, Percentage{-3, 2, -66},
                                         Percentage{32767, 32767, 100}, Percentage{0, 0, 0},
                                         Percentage{0, 5, 0}, Percentage{0, -5, 0}));

}  // namespace

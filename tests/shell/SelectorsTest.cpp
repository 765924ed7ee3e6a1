#include "tests/shell/SelectorsTest.h"

#include <cstring>

using hostapi::FilterRecord;
using hostapi::Rect;

namespace {

TEST_F(SelectorsTest, UnknownSelectorsDoNothing) {
    SetRectangles();
    constexpr std::int16_t unknown[] = {6, 7, -1, 100, 32767, -32768};
    for (const std::int16_t selector : unknown) {
        const FilterRecord before = record;
        EXPECT_EQ(Call(selector), -30100) << selector;
        EXPECT_EQ(std::memcmp(&before, &record, sizeof record), 0) << selector;
    }
    EXPECT_EQ(Log().beeps + Log().abouts, 0);
    EXPECT_EQ(memory.Allocations(), 0);
    EXPECT_TRUE(rowHost.events.empty());
}

TEST_F(SelectorsTest, EveryCallNotesItsRecord) {
    for (std::int16_t selector = -1; selector <= 6; ++selector) {
        filterRecord = nullptr;
        Call(selector);
        EXPECT_EQ(filterRecord, &record) << selector;
    }
}

TEST_F(SelectorsTest, ANullRecordIsABadParameter) {
    for (std::int16_t selector = 1; selector <= 5; ++selector) {
        std::int16_t result = unwritten;
        DispatchSelector(selector, nullptr, &result);
        EXPECT_EQ(result, -30100) << selector;
        EXPECT_EQ(filterRecord, nullptr);
    }
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, ANullResultIsNotWritten) {
    for (std::int16_t selector = -1; selector <= 6; ++selector) {
        DispatchSelector(selector, &record, nullptr);
    }
    keptHandle = record.parameters;
    EXPECT_EQ(Log().beeps, 0);
    EXPECT_EQ(Log().abouts, 1);
}

TEST_F(SelectorsTest, AboutTouchesNothing) {
    SetRectangles();
    const FilterRecord before = record;
    EXPECT_EQ(Call(0), 0);
    EXPECT_EQ(Log().abouts, 1);
    EXPECT_EQ(std::memcmp(&before, &record, sizeof record), 0);
    std::int16_t result = unwritten;
    DispatchSelector(0, nullptr, &result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Log().abouts, 2);
}

TEST_F(SelectorsTest, ParametersCreatesTheBlock) {
    EXPECT_EQ(Parameters(), 0);
    ASSERT_NE(BlockHandle(), nullptr);
    EXPECT_EQ(memory.Handles()->getSizeProc(record.parameters), 12);
    EXPECT_EQ(std::string(Block().tag, 4), "VELK");
    EXPECT_EQ(Block().ran, 0);
    EXPECT_EQ(Block().haveLastTexture, 0);
    EXPECT_EQ(memory.LiveHandles(), 1u);
}

TEST_F(SelectorsTest, TheReservedBytesAreNotWritten) {
    static char bytes[12];
    static char* master = bytes;
    std::memset(bytes, 0x5A, sizeof bytes);
    hostapi::HandleProcs handles = *memory.Handles();
    handles.newProc = [](std::int32_t) -> hostapi::Handle { return &master; };
    record.handleProcs = &handles;
    std::int16_t result = unwritten;
    DispatchSelector(1, &record, &result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(std::string(bytes, 12), std::string("VELK\0\0\0\0\0ZZZ", 12));
}

TEST_F(SelectorsTest, ParametersOfAnExistingBlockClearsOnlyRan) {
    Parameters();
    const hostapi::Handle handle = record.parameters;
    Block().ran = 1;
    Block().haveLastTexture = 1;
    std::memcpy(Block().tag, "abcd", 4);
    std::memset(Block().reserved, 0x5A, 3);
    EXPECT_EQ(Parameters(), 0);
    EXPECT_EQ(BlockHandle(), handle);
    EXPECT_EQ(memory.Allocations(), 1);
    EXPECT_EQ(Block().ran, 0);
    EXPECT_EQ(Block().haveLastTexture, 1);
    EXPECT_EQ(std::string(Block().tag, 4), "abcd");
    EXPECT_EQ(Block().reserved[0], 0x5A);
}

TEST_F(SelectorsTest, NoBlockWithoutMemory) {
    memory.FailAllocation(1);
    EXPECT_EQ(Parameters(), -108);
    EXPECT_EQ(BlockHandle(), nullptr);
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, AHandleWithoutABlockIsNoMemory) {
    static int disposed;
    static char* noBlock;
    disposed = 0;
    noBlock = nullptr;
    hostapi::HandleProcs handles = *memory.Handles();
    handles.newProc = [](std::int32_t) -> hostapi::Handle { return &noBlock; };
    handles.disposeProc = [](hostapi::Handle) { ++disposed; };
    record.handleProcs = &handles;
    EXPECT_EQ(Parameters(), -108);
    EXPECT_EQ(BlockHandle(), nullptr);
    EXPECT_EQ(disposed, 1);
    // A block that the host has lost since.
    record.parameters = &noBlock;
    std::int16_t result = unwritten;
    DispatchSelector(1, &record, &result);
    EXPECT_EQ(result, -108);
    EXPECT_EQ(BlockHandle(), &noBlock);
}

TEST_F(SelectorsTest, ParametersWithoutHandlesIsAFault) {
    record.handleProcs = nullptr;
    SetRectangles();
    EXPECT_EQ(Parameters(), 0);
    EXPECT_EQ(BlockHandle(), nullptr);
    EXPECT_EQ(Log().beeps, 1);
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 17500);
    EXPECT_EQ(errorCell, 17500);
    EXPECT_TRUE(AreEqual(record.maskRect, someRect)) << "only start asks for rectangles";
}

TEST_F(SelectorsTest, PrepareAsksForBufferSpaceAlone) {
    SetRectangles();
    record.maxSpace = 777;
    record.bufferSpace = 1;
    FilterRecord expected = record;
    expected.bufferSpace = 65535;
    EXPECT_EQ(Call(2), 0);
    EXPECT_EQ(std::memcmp(&expected, &record, sizeof record), 0);
}

TEST_F(SelectorsTest, ContinueEmptiesInputAndOutput) {
    SetRectangles();
    FilterRecord expected = record;
    expected.inRect = {};
    expected.outRect = {};
    EXPECT_EQ(Call(4), 0);
    EXPECT_EQ(std::memcmp(&expected, &record, sizeof record), 0);
    EXPECT_TRUE(rowHost.events.empty());
}

TEST_F(SelectorsTest, FinishDoesNothing) {
    SetRectangles();
    const FilterRecord before = record;
    EXPECT_EQ(Call(5), 0);
    EXPECT_EQ(std::memcmp(&before, &record, sizeof record), 0);
    EXPECT_TRUE(rowHost.events.empty());
}

TEST_F(SelectorsTest, AnInteractiveRunWritesItsTexture) {
    const HostImage before = rowHost.image;
    Parameters();
    SetRectangles();
    EXPECT_EQ(Start(), 0);
    ExpectEmptyRectangles();
    EXPECT_EQ(Block().ran, 1);
    EXPECT_EQ(Block().haveLastTexture, 1);
    EXPECT_EQ(memory.LiveBuffers(), 0u) << "the raster is deleted";
    ExpectTiledImage(before, 30);
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, RanIsSetAndTheFileWrittenBeforeTheTransfer) {
    Parameters();
    int calls = 0;
    rowHost.onAdvance = [&] {
        if (calls++ == 0) {
            EXPECT_EQ(Block().ran, 0) << "the trial of the first row";
            return;
        }
        EXPECT_EQ(Block().ran, 1);
        EXPECT_EQ(Block().haveLastTexture, 1);
        EXPECT_TRUE(std::filesystem::exists(File()));
    };
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(calls, 31);
}

TEST_F(SelectorsTest, ARepeatRunWritesTheFilesTexture) {
    PaintClass pic(7, 9);
    for (short y = 0; y < 9; ++y) {
        for (short x = 0; x < 7; ++x) {
            pic.SetPixel(x, y, static_cast<Pixel>(x * 1000 + y * 77));
        }
    }
    ASSERT_TRUE(SaveLastTexture(&pic));
    const HostImage before = rowHost.image;
    const std::string file = BytesOf(File());
    Parameters();
    // Any value but 0 means a repeat.
    for (const std::int32_t ran : {1, 2, -1}) {
        Block().ran = ran;
        Block().haveLastTexture = 0;
        rowHost.image = before;
        SetRectangles();
        EXPECT_EQ(Start(), 0);
        ExpectEmptyRectangles();
        ExpectTiledImage(before, 30);
        EXPECT_EQ(Block().ran, ran);
        EXPECT_EQ(Block().haveLastTexture, 0) << "reading the file says nothing of who wrote it";
        EXPECT_EQ(BytesOf(File()), file);
    }
}

TEST_F(SelectorsTest, TheSecondOfTwoHostsRepeatsTheFirstOnesTexture) {
    Parameters();
    EXPECT_EQ(Start(), 0);
    const PaintClass ofAnotherHost(3, 3);
    ASSERT_TRUE(SaveLastTexture(&ofAnotherHost));
    const HostImage before = rowHost.image;
    EXPECT_EQ(Start(), 0);
    ExpectTiledImage(before, 30);
}

TEST_F(SelectorsTest, ARepeatRunWithoutAFileIsNoMemory) {
    Parameters();
    EXPECT_EQ(Start(), 0);
    rowHost.Finish();
    const HostImage before = rowHost.image;
    std::filesystem::remove(File());
    const std::size_t events = rowHost.events.size();
    EXPECT_EQ(Call(2), 0);
    EXPECT_EQ(Start(), -108);
    EXPECT_EQ(rowHost.events.size(), events);
    EXPECT_EQ(rowHost.image, before);
    EXPECT_EQ(Block().ran, 1);
    EXPECT_EQ(Block().haveLastTexture, 1) << "never cleared";
    EXPECT_TRUE(Log().faults.empty());
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, TwoInteractiveRunsKeepTheLastTexture) {
    Parameters();
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Parameters(), 0);
    EXPECT_EQ(Block().ran, 0);
    EXPECT_EQ(Block().haveLastTexture, 1);
    Log().clock += 1;
    const std::string first = BytesOf(File());
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Block().ran, 1);
    EXPECT_NE(BytesOf(File()), first);
}

TEST_F(SelectorsTest, AStartWithoutABlockIsARepeat) {
    EXPECT_EQ(Start(), -108);
    const PaintClass pic(7, 9);
    ASSERT_TRUE(SaveLastTexture(&pic));
    const HostImage before = rowHost.image;
    EXPECT_EQ(Start(), 0);
    ExpectTiledImage(before, 30);
    static char* lost;
    lost = nullptr;
    record.parameters = &lost;
    std::int16_t result = unwritten;
    DispatchSelector(3, &record, &result);
    EXPECT_EQ(result, 0);
    record.parameters = nullptr;
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, ABlockThatIsLostDuringTheRunIsNotWritten) {
    Parameters();
    static ParametersBlock* kept;
    static FilterRecord* lostBy;
    kept = &Block();
    lostBy = &record;
    // The first thing that a run asks the platform for is the clock.
    platformServices.clockSeconds = [] {
        lostBy->parameters = nullptr;
        return std::uint32_t{1};
    };
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(kept->ran, 0);
    EXPECT_EQ(kept->haveLastTexture, 0);
    EXPECT_TRUE(std::filesystem::exists(File()));
}

TEST_F(SelectorsTest, AFailingSaveIsSilent) {
    for (const std::uint8_t have : {std::uint8_t{0}, std::uint8_t{1}}) {
        Parameters();
        Block().haveLastTexture = have;
        Log().temporaryPath = (folder.Path() / "none").string();
        Log().clock += 1;
        const HostImage before = rowHost.image;
        EXPECT_EQ(Start(), 0);
        EXPECT_EQ(Block().ran, 1);
        EXPECT_EQ(Block().haveLastTexture, have);
        EXPECT_FALSE(std::filesystem::exists(File()));
        rowHost.Finish();
        EXPECT_FALSE(rowHost.image == before) << "the texture is written all the same";
    }
    EXPECT_EQ(Log().beeps, 0);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(SelectorsTest, NoTextureWithoutMemory) {
    Parameters();
    memory.FailAllocation(1);
    EXPECT_EQ(Start(), -108);
    EXPECT_EQ(Block().ran, 0);
    EXPECT_EQ(Block().haveLastTexture, 0);
    EXPECT_FALSE(std::filesystem::exists(File()));
    EXPECT_EQ(rowHost.events.size(), 1u) << "the trial of the first row";
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, AnAbortKeepsTheRun) {
    Parameters();
    const HostImage before = rowHost.image;
    rowHost.abortAt = 12;
    SetRectangles();
    EXPECT_EQ(Start(), -128);
    ExpectEmptyRectangles();
    EXPECT_EQ(Block().ran, 1);
    EXPECT_EQ(Block().haveLastTexture, 1);
    ExpectTiledImage(before, 12);
}

TEST_F(SelectorsTest, TheHostsErrorIsTheResult) {
    Parameters();
    rowHost.failAdvance[3] = -4321;
    EXPECT_EQ(Start(), -4321);
    EXPECT_EQ(Block().ran, 1);
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, WithoutAdvanceStateTheResultSaysSo) {
    Parameters();
    const HostImage before = rowHost.image;
    record.advanceState = nullptr;
    EXPECT_EQ(Start(), 17500);
    rowHost.Finish();
    EXPECT_EQ(rowHost.image, before);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(SelectorsTest, FewerThanThreePlanesAreABadParameter) {
    Parameters();
    record.planes = 1;
    SetRectangles();
    EXPECT_EQ(Start(), -30100);
    EXPECT_TRUE(rowHost.events.empty());
    ExpectEmptyRectangles();
}

TEST_F(SelectorsTest, AnEmptySelectionIsNotWritten) {
    constexpr Rect selections[] = {{0, 0, 0, 0}, {5, 5, 5, 9}, {9, 9, 5, 5}};
    for (const Rect& selection : selections) {
        Parameters();
        record.filterRect = selection;
        SetRectangles();
        EXPECT_EQ(Start(), 0);
        EXPECT_TRUE(rowHost.events.empty());
        ExpectEmptyRectangles();
    }
}

}  // namespace

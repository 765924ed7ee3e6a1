// Faults, and whatever else is thrown, end in the switch over the selectors.
#include <cstring>
#include <new>
#include <stdexcept>

#include "tests/shell/SelectorsTest.h"

namespace {

TEST_F(SelectorsTest, AFaultEndsTheStartWithABeep) {
    Parameters();
    record.bufferProcs = nullptr;
    const HostImage before = rowHost.image;
    SetRectangles();
    EXPECT_EQ(Start(), 0) << "no result was stored before the fault";
    EXPECT_EQ(Log().beeps, 1);
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 17500);
    EXPECT_EQ(errorCell, 17500);
    ExpectEmptyRectangles();
    EXPECT_EQ(Block().ran, 0);
    EXPECT_EQ(rowHost.image, before);
}

using Thrower = void (*)();

class ThrownTest : public SelectorsTest, public testing::WithParamInterface<Thrower> {};

TEST_P(ThrownTest, EndsHereWhateverItIs) {
    Parameters();
    const HostImage before = rowHost.image;
    int call = 0;
    rowHost.onAdvance = [&call] {
        if (call++ == 5) {
            GetParam()();
        }
    };
    SetRectangles();
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Log().beeps, 1);
    ExpectEmptyRectangles();
    EXPECT_EQ(Block().ran, 1);
    EXPECT_EQ(memory.LiveBuffers(), 0u) << "the raster is deleted";
    ExpectTiledImage(before, 5);
}

TEST_P(ThrownTest, ByAboutEndsHereToo) {
    static Thrower thrower;
    thrower = GetParam();
    platformServices.showAbout = [] { thrower(); };
    SetRectangles();
    const hostapi::FilterRecord before = record;
    EXPECT_EQ(Call(0), 0);
    EXPECT_EQ(std::memcmp(&before, &record, sizeof record), 0);
    EXPECT_EQ(Log().beeps, 1);
    std::int16_t result = unwritten;
    DispatchSelector(0, nullptr, &result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Log().beeps, 2);
}

TEST_P(ThrownTest, ByParametersTouchesNoRectangle) {
    static Thrower thrower;
    thrower = GetParam();
    hostapi::HandleProcs handles = *memory.Handles();
    handles.newProc = [](std::int32_t) -> hostapi::Handle {
        thrower();
        return nullptr;
    };
    record.handleProcs = &handles;
    SetRectangles();
    const hostapi::FilterRecord before = record;
    EXPECT_EQ(Parameters(), 0);
    EXPECT_EQ(std::memcmp(&before, &record, sizeof record), 0);
    EXPECT_EQ(Log().beeps, 1);
}

INSTANTIATE_TEST_SUITE_P(Exceptions, ThrownTest,
                         testing::Values([] { throw std::int16_t{20008}; }, [] { throw 5; },
                                         [] { throw "text"; },
                                         [] { throw std::runtime_error("error"); },
                                         [] { throw std::bad_alloc(); },
                                         [] { Assert(false, "PicClass / Zeile 291 !(locked)"); }));

TEST_F(SelectorsTest, AFailedAssertionIsReportedOnce) {
    Parameters();
    rowHost.onAdvance = [] { Assert(false, "PicClass / Zeile 291 !(locked)"); };
    EXPECT_EQ(Start(), 0);
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 2);
    EXPECT_EQ(Log().faults[0].file, "PicClass / Zeile 291 !(locked)");
    EXPECT_EQ(Log().faults[0].line, -1);
    EXPECT_EQ(errorCell, 2);
}

TEST_F(SelectorsTest, AHostThatTakesNoBlocksBackEndsNothing) {
    Parameters();
    hostapi::BufferProcs buffers = *memory.Buffers();
    buffers.freeProc = nullptr;
    record.bufferProcs = &buffers;
    SetRectangles();
    EXPECT_EQ(Start(), 0);
    ExpectEmptyRectangles();
    EXPECT_EQ(errorCell, 17500);
    EXPECT_FALSE(Log().faults.empty());
    // A block that could not be given back is this test's to free.
    EXPECT_GT(memory.LiveBuffers(), 0u);
    memory.CheckAtEnd(keptHandle);
    memory.FoundFaults().Clear();
}

}  // namespace

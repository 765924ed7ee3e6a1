// A whole run and its repeat, with each allocation failing in turn.
#include <vector>

#include "base/Rectangles.h"
#include "host/record/FilterHost.h"
#include "shell/Selectors.h"
#include "shell/Zandermolite.h"
#include "shell/transfer/LastTexture.h"
#include "tests/shell/allocation/FailingAllocator.h"
#include "tests/support/CoreTest.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/Transfers.h"

namespace {

template <typename Call>
auto Aside(Call call) {
    const CountingSwitch off(false);
    return call();
}

/// While it lives the record's procedures are diverted so that what the host allocates in them is
/// not counted as the filter's.
class HostAside {
  public:
    explicit HostAside(hostapi::FilterRecord& newRecord) : record(newRecord) {
        original = record;
        originalBuffers = *record.bufferProcs;
        originalHandles = *record.handleProcs;
        record.abortProc = [] { return Aside([] { return original.abortProc(); }); };
        record.progressProc = [](std::int32_t done, std::int32_t total) {
            Aside([=] { original.progressProc(done, total); });
        };
        record.advanceState = [] { return Aside([] { return original.advanceState(); }); };
        DivertBuffers();
        DivertHandles();
    }
    HostAside(const HostAside&) = delete;
    HostAside& operator=(const HostAside&) = delete;
    ~HostAside() {
        record.abortProc = original.abortProc;
        record.progressProc = original.progressProc;
        record.advanceState = original.advanceState;
        record.bufferProcs = original.bufferProcs;
        record.handleProcs = original.handleProcs;
    }

  private:
    void DivertBuffers() {
        buffers = originalBuffers;
        buffers.allocateProc = [](std::int32_t size, hostapi::BufferID* id) {
            return Aside([=] { return originalBuffers.allocateProc(size, id); });
        };
        buffers.lockProc = [](hostapi::BufferID id, hostapi::Boolean8 moveHigh) {
            return Aside([=] { return originalBuffers.lockProc(id, moveHigh); });
        };
        buffers.freeProc = [](hostapi::BufferID id) {
            Aside([=] { originalBuffers.freeProc(id); });
        };
        buffers.spaceProc = [] { return Aside([] { return originalBuffers.spaceProc(); }); };
        record.bufferProcs = &buffers;
    }

    void DivertHandles() {
        handles = originalHandles;
        handles.newProc = [](std::int32_t size) {
            return Aside([=] { return originalHandles.newProc(size); });
        };
        handles.disposeProc = [](hostapi::Handle handle) {
            Aside([=] { originalHandles.disposeProc(handle); });
        };
        record.handleProcs = &handles;
    }

    static inline hostapi::FilterRecord original;
    static inline hostapi::BufferProcs originalBuffers;
    static inline hostapi::HandleProcs originalHandles;
    hostapi::FilterRecord& record;
    hostapi::BufferProcs buffers{};
    hostapi::HandleProcs handles{};
};

void HOST_CALL Entry(std::int16_t selector, hostapi::FilterRecord* record, void*,
                     std::int16_t* result) {
    const HostAside aside(*record);
    const CountingSwitch on(true);
    DispatchSelector(selector, record, result);
}

/// The results of a run and of its repeat when one allocation fails.
struct Outcome {
    const char* allocation;
    std::int16_t interactive;
    std::int16_t repeat;
};

class AllocationTest : public CoreTest {
  protected:
    AllocationTest() {
        Log().temporaryPath = folder.Path().string();
        // An earlier run's file, for a repeat after a run that left none.
        const PaintClass earlier(11, 7);
        EXPECT_TRUE(SaveLastTexture(&earlier));
    }
    ~AllocationTest() override { hostWindow = nullptr; }

    /// Runs the filter, then repeats it, and looks at results, pictures and memory.
    void RunTwice(host::FilterHost& filterHost, const Outcome& expected) {
        SCOPED_TRACE(expected.allocation);
        RunOnce(filterHost, host::Execution::interactive, expected.interactive);
        RunOnce(filterHost, host::Execution::repeat, expected.repeat);
        EXPECT_EQ(filterHost.Memory().LiveBuffers(), 0u);
        EXPECT_EQ(AllocationsLive(), 0);
        EXPECT_EQ(Log().beeps, 0);
        EXPECT_TRUE(Log().faults.empty());
    }

    ScratchFolder folder;

  private:
    void RunOnce(host::FilterHost& filterHost, host::Execution execution, int result) {
        host::Picture before = host::MakePicture(50, 40, 3);
        before.pixels = NoiseImage({0, 0, 40, 50}, 3).bytes;
        host::Picture picture = before;
        const host::RunReport report =
            filterHost.Run(Entry, picture, host::SelectRectangle(bounds), execution);
        EXPECT_EQ(report.result, result);
        EXPECT_TRUE(report.completed);
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        EXPECT_TRUE(picture.pixels == (result == 0 ? TiledPixels(before) : before.pixels));
    }

    /// The pixels of the picture with the last texture in its selection.
    std::vector<std::uint8_t> TiledPixels(const host::Picture& before) const {
        const std::string file = BytesOf(folder.Path() / "Zandermolite.tmp");
        return Tiled({{0, 0, 40, 50}, 3, before.pixels}, TileOfFile(file),
                     hostapi::Narrowed(bounds), 30)
            .bytes;
    }

    static constexpr hostapi::VRect bounds{5, 8, 35, 48};
};

// Both lists are in the order in which the memory is asked for. The undo store falls back to a
// file; without memory for the softening pass Lines brings the white raster back, and the run goes
// on with that; the tile that is packed for the host is a matter of speed.

constexpr Outcome hostAllocations[] = {
    {"the parameters", -108, 0},
    {"the texture", -108, 0},
    {"the texture's undo store", 0, 0},
    {"room for the texture's clone", -108, 0},
    {"the softening pass's clone", 0, 0},
    {"room for one more clone", 0, 0},
    {"the loaded texture", 0, -108},
    {"the loaded texture's undo store", 0, 0},
    {"room for the loaded texture's clone", 0, -108},
};

TEST_F(AllocationTest, EachBlockOfTheHostMayFail) {
    int nth = 0;
    for (const Outcome& outcome : hostAllocations) {
        host::HostSettings settings;
        settings.failAllocation = ++nth;
        host::FilterHost filterHost(settings);
        CountAllocations(0);
        RunTwice(filterHost, outcome);
    }
    host::FilterHost filterHost;
    CountAllocations(0);
    RunTwice(filterHost, {"none", 0, 0});
    EXPECT_EQ(filterHost.Memory().Allocations(), nth);
}

constexpr Outcome generalAllocations[] = {
    {"the opening window", -108, 0},
    {"the editor", -108, 0},
    {"the texture", -108, 0},
    {"the texture's pixel map", -108, 0},
    {"the texture's undo store", -108, 0},
    {"the softening pass's clone", 0, 0},
    {"the clone's pixel map", 0, 0},
    {"the packed tile", 0, 0},
    {"the loaded texture", 0, -108},
    {"the loaded texture's pixel map", 0, -108},
    {"the loaded texture's undo store", 0, -108},
    {"the loaded texture's packed tile", 0, 0},
};

TEST_F(AllocationTest, EachBlockOfTheGeneralAllocatorMayFail) {
    int nth = 0;
    for (const Outcome& outcome : generalAllocations) {
        host::FilterHost filterHost;
        CountAllocations(++nth);
        RunTwice(filterHost, outcome);
    }
    host::FilterHost filterHost;
    CountAllocations(0);
    RunTwice(filterHost, {"none", 0, 0});
    EXPECT_EQ(AllocationsAsked(), nth);
}

TEST_F(AllocationTest, TheCountSeesFailuresAndLeaks) {
    CountAllocations(2);
    void* kept = nullptr;
    void* failed = nullptr;
    void* freed = nullptr;
    {
        const CountingSwitch on(true);
        kept = ::operator new(10);
        failed = ::operator new(10, std::nothrow);
        freed = ::operator new[](10);
        ::operator delete[](freed);
    }
    EXPECT_EQ(failed, nullptr);
    EXPECT_EQ(AllocationsAsked(), 3);
    EXPECT_EQ(AllocationsLive(), 1);
    ::operator delete(kept);
    EXPECT_EQ(AllocationsLive(), 0);
}

}  // namespace

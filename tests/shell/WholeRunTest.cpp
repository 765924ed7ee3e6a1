// A whole run of the filter in a strict host, with each of the habits that hosts have.
#include <algorithm>

#include "base/HostServices.h"
#include "base/Rectangles.h"
#include "host/record/FilterHost.h"
#include "shell/Selectors.h"
#include "shell/Zandermolite.h"
#include "tests/support/CoreTest.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/ServedTraits.h"
#include "tests/support/Transfers.h"

namespace {

// The library's entry realigns the stack for hosts that don't.
#ifdef __i386__
#define REALIGN_STACK __attribute__((force_align_arg_pointer))
#else
#define REALIGN_STACK
#endif

REALIGN_STACK void HOST_CALL Entry(std::int16_t selector, hostapi::FilterRecord* record, void*,
                                   std::int16_t* result) {
    DispatchSelector(selector, record, result);
}

host::Picture NoisePicture(int width, int height, int planes, unsigned seed = 1) {
    host::Picture picture = host::MakePicture(width, height, planes);
    picture.pixels =
        NoiseImage({0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)},
                   planes, seed)
            .bytes;
    return picture;
}

class WholeRunTest : public CoreTest {
  protected:
    WholeRunTest() { Log().temporaryPath = folder.Path().string(); }
    ~WholeRunTest() override { hostWindow = nullptr; }

    /// `before` with the last texture's tile across the selection's part inside the picture.
    host::Picture Expected(const host::Picture& before, const hostapi::VRect& selection) const {
        const std::string file = BytesOf(folder.Path() / "Zandermolite.tmp");
        const HostImage image{hostapi::Narrowed(before.Bounds()), before.planes, before.pixels};
        host::Picture expected = before;
        expected.pixels =
            Tiled(image, TileOfFile(file), hostapi::Narrowed(selection), hostapi::Height(selection))
                .bytes;
        return expected;
    }

    static void ExpectSuccess(const host::RunReport& report, int rows) {
        EXPECT_TRUE(report.Succeeded()) << report.result;
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        // A run with dialogs tries the first row before them.
        const bool isInteractive = !report.calls.empty() && report.calls.front().selector == 1;
        EXPECT_EQ(report.rowsDelivered, rows + (isInteractive ? 1 : 0));
        EXPECT_EQ(Log().beeps, 0);
        EXPECT_TRUE(Log().faults.empty());
    }

    ScratchFolder folder;
};

using hostapi::VRect;

struct Habit {
    host::Trait trait;
    int planes;
};

class TraitTest : public WholeRunTest, public testing::WithParamInterface<Habit> {};

std::vector<Habit> AllHabits() {
    std::vector<Habit> habits;
    for (const host::Trait trait : ServedTraits()) {
        for (const int planes : {3, 4}) {
            habits.push_back({trait, planes});
        }
    }
    return habits;
}

std::string HabitName(const testing::TestParamInfo<Habit>& test) {
    std::string name = host::TraitName(test.param.trait);
    std::replace(name.begin(), name.end(), '-', '_');
    return name + "_" + std::to_string(test.param.planes);
}

TEST_P(TraitTest, AnInteractiveRunAndItsRepeat) {
    host::HostSettings settings;
    settings.traits.Insert(GetParam().trait);
    host::FilterHost filterHost(settings);
    constexpr VRect bounds{5, 8, 45, 70};
    const host::Selection selection = host::SelectRectangle(bounds);

    const host::Picture before = NoisePicture(90, 60, GetParam().planes);
    host::Picture picture = before;
    const host::RunReport first = filterHost.Run(Entry, picture, selection);
    ExpectSuccess(first, 40);
    EXPECT_EQ(first.calls, (std::vector<host::SelectorCall>{{1, 0}, {2, 0}, {3, 0}, {5, 0}}));

    const host::Picture other = NoisePicture(90, 60, GetParam().planes, 2);
    host::Picture again = other;
    const host::RunReport second = filterHost.Run(Entry, again, selection, host::Execution::repeat);
    ExpectSuccess(second, 40);
    EXPECT_EQ(second.calls, (std::vector<host::SelectorCall>{{2, 0}, {3, 0}, {5, 0}}));

    EXPECT_EQ(picture.pixels, Expected(before, bounds).pixels);
    EXPECT_EQ(again.pixels, Expected(other, bounds).pixels);
}

INSTANTIATE_TEST_SUITE_P(Hosts, TraitTest, testing::ValuesIn(AllHabits()), HabitName);

class BeyondTheImageTest : public WholeRunTest, public testing::WithParamInterface<host::Trait> {};

TEST_P(BeyondTheImageTest, OnlyThePictureIsWritten) {
    for (const int planes : {3, 4}) {
        host::HostSettings settings;
        settings.traits.Insert(GetParam());
        host::FilterHost filterHost(settings);
        const host::Picture before = NoisePicture(50, 40, planes);
        host::Picture picture = before;
        constexpr VRect bounds{10, 20, 40, 75};
        ExpectSuccess(filterHost.Run(Entry, picture, host::SelectRectangle(bounds)), 30);
        EXPECT_EQ(picture.pixels, Expected(before, bounds).pixels);
    }
}

INSTANTIATE_TEST_SUITE_P(Hosts, BeyondTheImageTest,
                         testing::Values(host::Trait::shrinkRectangles,
                                         host::Trait::shrinkSilently));

TEST_F(WholeRunTest, AHostThatShrinksOpenlyMayDoItOnAllSides) {
    host::HostSettings settings;
    settings.traits.Insert(host::Trait::shrinkRectangles);
    host::FilterHost filterHost(settings);
    const host::Picture before = NoisePicture(50, 40, 3);
    host::Picture picture = before;
    constexpr VRect bounds{-10, -20, 60, 75};
    // The picture has 40; the first row, which is tried, is beyond it.
    ExpectSuccess(filterHost.Run(Entry, picture, host::SelectRectangle(bounds)), 39);
    EXPECT_EQ(picture.pixels, Expected(before, bounds).pixels);
}

TEST_F(WholeRunTest, AllHabitsAtOnce) {
    host::HostSettings settings;
    for (const host::Trait trait : ServedTraits()) {
        settings.traits.Insert(trait);
    }
    host::FilterHost filterHost(settings);
    const host::Picture before = NoisePicture(50, 40, 4);
    host::Picture picture = before;
    constexpr VRect bounds{3, 4, 33, 44};
    ExpectSuccess(filterHost.Run(Entry, picture, host::SelectRectangle(bounds)), 30);
    EXPECT_EQ(picture.pixels, Expected(before, bounds).pixels);
}

TEST_F(WholeRunTest, AHostThatStoresTheLastChunkAloneGetsTheLastRow) {
    host::HostSettings settings;
    settings.traits = {host::Trait::lastChunkOnly};
    host::FilterHost filterHost(settings);
    const host::Picture before = NoisePicture(50, 40, 3);
    host::Picture picture = before;
    constexpr VRect bounds{3, 4, 33, 44};
    EXPECT_TRUE(filterHost.Run(Entry, picture, host::SelectRectangle(bounds)).Succeeded());
    const host::Picture whole = Expected(before, bounds);
    host::Picture expected = before;
    std::copy(whole.Pixel(4, 32), whole.Pixel(44, 32), expected.Pixel(4, 32));
    EXPECT_EQ(picture.pixels, expected.pixels);
}

TEST_F(WholeRunTest, AHostThatCountsKilobytesHasRoomForSmallTilesAlone) {
    host::HostSettings settings;
    settings.traits = {host::Trait::spaceInKilobytes};
    host::FilterHost filterHost(settings);
    const host::Picture before = NoisePicture(600, 530, 3);
    host::Picture picture = before;
    constexpr VRect small{3, 4, 33, 44};
    EXPECT_TRUE(filterHost.Run(Entry, picture, host::SelectRectangle(small)).Succeeded());
    EXPECT_EQ(picture.pixels, Expected(before, small).pixels);
    picture = before;
    host::FilterHost fresh(settings);
    const host::RunReport report =
        fresh.Run(Entry, picture, host::SelectRectangle({0, 0, 512, 512}));
    EXPECT_EQ(report.result, hostapi::memFullErr);
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    EXPECT_EQ(picture, before);
}

TEST_F(WholeRunTest, AHostWithNegativeSpaceHasNoMemory) {
    host::HostSettings settings;
    settings.traits = {host::Trait::negativeSpace};
    for (const bool ignoresResults : {false, true}) {
        if (ignoresResults) {
            settings.traits.Insert(host::Trait::ignoreResults);
        }
        host::FilterHost filterHost(settings);
        const host::Picture before = NoisePicture(50, 40, 3);
        host::Picture picture = before;
        const host::RunReport report =
            filterHost.Run(Entry, picture, host::SelectRectangle({3, 4, 33, 44}));
        EXPECT_EQ(report.result, hostapi::memFullErr);
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        EXPECT_EQ(picture, before);
    }
}

TEST_F(WholeRunTest, APictureOf16BitsIsRefusedBeforeAnyWindow) {
    host::HostSettings settings;
    settings.traits = {host::Trait::sixteenBits};
    host::FilterHost filterHost(settings);
    const host::Picture before = NoisePicture(50, 40, 3);
    host::Picture picture = before;
    const host::RunReport report =
        filterHost.Run(Entry, picture, host::SelectRectangle({3, 4, 33, 44}));
    EXPECT_EQ(report.calls, (std::vector<host::SelectorCall>{{1, 0}, {2, 0}, {3, -30100}}));
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    EXPECT_TRUE(Windows().events.empty());
    EXPECT_EQ(picture, before);
}

TEST_F(WholeRunTest, AResultThatIsIgnoredLeavesTheRowsBeforeIt) {
    host::HostSettings settings;
    settings.traits = {host::Trait::ignoreResults};
    settings.abortAfterRow = 10;
    host::FilterHost filterHost(settings);
    const host::Picture before = NoisePicture(60, 50, 3);
    host::Picture picture = before;
    constexpr VRect bounds{5, 5, 35, 30};
    EXPECT_EQ(filterHost.Run(Entry, picture, host::SelectRectangle(bounds)).result, -128);
    const host::Picture whole = Expected(before, bounds);
    const auto rowsThatAre = [&picture](const host::Picture& other, int first, int end) {
        int rows = 0;
        for (int y = first; y < end; ++y) {
            const bool same =
                std::equal(picture.Pixel(0, y), picture.Pixel(0, y) + 60 * 3, other.Pixel(0, y));
            rows += same ? 1 : 0;
        }
        return rows;
    };
    EXPECT_GE(rowsThatAre(whole, 5, 14), 9);
    EXPECT_EQ(rowsThatAre(before, 15, 50), 35);
}

TEST_F(WholeRunTest, TheMaskIsTheHostsBusiness) {
    host::FilterHost filterHost;
    const host::Picture before = NoisePicture(50, 40, 3);
    host::Picture picture = before;
    constexpr VRect bounds{3, 4, 33, 44};
    const host::Selection ellipse = host::SelectEllipse(bounds, 0);
    ExpectSuccess(filterHost.Run(Entry, picture, ellipse), 30);
    const host::Picture expected = Expected(before, bounds);
    int changed = 0;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 50; ++x) {
            const int coverage = ellipse.Coverage(x, y);
            if (coverage != 0 && coverage != 255) {
                continue;
            }
            const host::Picture& source = coverage == 255 ? expected : before;
            ASSERT_TRUE(std::equal(source.Pixel(x, y), source.Pixel(x, y) + 3, picture.Pixel(x, y)))
                << x << ", " << y;
            changed += coverage == 255 ? 1 : 0;
        }
    }
    EXPECT_GT(changed, 500);
}

TEST_F(WholeRunTest, ASelectionLargerThanTheTileRepeatsIt) {
    host::FilterHost filterHost;
    const host::Picture before = NoisePicture(600, 530, 3);
    host::Picture picture = before;
    constexpr VRect bounds{0, 0, 520, 513};
    ExpectSuccess(filterHost.Run(Entry, picture, host::SelectRectangle(bounds)), 520);
    EXPECT_EQ(picture.pixels, Expected(before, bounds).pixels);
    for (int y = 0; y < 520; ++y) {
        ASSERT_TRUE(std::equal(picture.Pixel(0, y), picture.Pixel(0, y) + 3, picture.Pixel(512, y)))
            << "the last column is the tile's first again";
    }
}

TEST_F(WholeRunTest, ARepeatFitsAnotherSelection) {
    host::FilterHost filterHost;
    host::Picture picture = NoisePicture(100, 100, 3);
    filterHost.Run(Entry, picture, host::SelectRectangle({0, 0, 20, 30}));
    const host::Picture before = picture;
    for (const VRect& bounds : {VRect{7, 9, 95, 99}, VRect{50, 50, 55, 60}}) {
        picture = before;
        ExpectSuccess(
            filterHost.Run(Entry, picture, host::SelectRectangle(bounds), host::Execution::repeat),
            bounds.bottom - bounds.top);
        EXPECT_EQ(picture.pixels, Expected(before, bounds).pixels);
    }
}

TEST_F(WholeRunTest, ARepeatWithoutItsFileEndsAtTheStart) {
    host::FilterHost filterHost;
    host::Picture picture = NoisePicture(60, 50, 3);
    const host::Selection selection = host::SelectRectangle({0, 0, 20, 30});
    filterHost.Run(Entry, picture, selection);
    const host::Picture before = picture;
    std::filesystem::remove(folder.Path() / "Zandermolite.tmp");
    const host::RunReport report =
        filterHost.Run(Entry, picture, selection, host::Execution::repeat);
    EXPECT_EQ(report.calls, (std::vector<host::SelectorCall>{{2, 0}, {3, -108}}));
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    EXPECT_EQ(picture, before);
}

TEST_F(WholeRunTest, AnAbortAtAnyRowLeavesThePicture) {
    const host::Picture before = NoisePicture(60, 50, 4);
    for (int row = 0; row < 12; ++row) {
        host::HostSettings settings;
        settings.abortAfterRow = row;
        host::FilterHost filterHost(settings);
        host::Picture picture = before;
        const host::RunReport report =
            filterHost.Run(Entry, picture, host::SelectRectangle({5, 5, 17, 30}));
        EXPECT_EQ(report.result, -128);
        EXPECT_EQ(report.rowsDelivered, std::max(row, 1)) << "the trial asks for no abort";
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        EXPECT_EQ(picture, before);
    }
}

TEST_F(WholeRunTest, AFailureAtAnyRowIsTheResult) {
    const host::Picture before = NoisePicture(60, 50, 3);
    for (int row = 0; row < 12; ++row) {
        host::HostSettings settings;
        settings.failAdvance[row] = static_cast<std::int16_t>(-500 - row);
        host::FilterHost filterHost(settings);
        host::Picture picture = before;
        const host::RunReport report =
            filterHost.Run(Entry, picture, host::SelectRectangle({5, 5, 17, 30}));
        EXPECT_EQ(report.result, -500 - row);
        EXPECT_EQ(report.rowsDelivered, row == 0 ? 0 : row + 1) << "the first is tried before";
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        EXPECT_EQ(picture, before);
    }
}

// The end of a run when the host lacks a service.
struct Lack {
    host::Service service;
    /// The result of the run.
    std::int16_t result;
    /// Faults shown to the user.
    std::size_t faults;
    /// The picture takes over the texture.
    bool writes;
};

constexpr Lack lacks[] = {
    {host::Service::abortProc, 0, 0, true},
    {host::Service::progressProc, 0, 0, true},
    {host::Service::advanceState, 17500, 0, false},
    {host::Service::displayPixels, 0, 0, true},
    {host::Service::colorServices, 0, 0, true},
    {host::Service::platformData, 0, 0, true},
    {host::Service::bufferProcs, 0, 1, false},
    {host::Service::bufferAllocate, 0, 1, false},
    {host::Service::bufferLock, 0, 1, false},
    {host::Service::bufferUnlock, 0, 0, true},
    {host::Service::bufferSpace, 0, 1, false},
    {host::Service::handleGetSize, 0, 0, true},
    {host::Service::handleSetSize, 0, 0, true},
    {host::Service::handleLock, 0, 0, true},
    {host::Service::handleUnlock, 0, 0, true},
    {host::Service::handleRecoverSpace, 0, 0, true},
    {host::Service::handleDispose, 0, 0, true},
    {host::Service::handleDisposeRegular, 0, 0, true},
};

class LackingHostTest : public WholeRunTest, public testing::WithParamInterface<Lack> {};

TEST_P(LackingHostTest, EndsAsItShould) {
    host::HostSettings settings;
    settings.without[GetParam().service] = true;
    host::FilterHost filterHost(settings);
    const host::Picture before = NoisePicture(60, 50, 3);
    host::Picture picture = before;
    constexpr VRect bounds{5, 5, 17, 30};
    const host::RunReport report = filterHost.Run(Entry, picture, host::SelectRectangle(bounds));
    EXPECT_EQ(report.result, GetParam().result);
    EXPECT_TRUE(report.completed);
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    EXPECT_EQ(Log().faults.size(), GetParam().faults);
    EXPECT_EQ(Log().beeps, GetParam().faults != 0 ? 1 : 0);
    EXPECT_EQ(picture.pixels, GetParam().writes ? Expected(before, bounds).pixels : before.pixels);
}

INSTANTIATE_TEST_SUITE_P(Services, LackingHostTest, testing::ValuesIn(lacks), [](const auto& test) {
    std::string name = host::ServiceName(test.param.service);
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
});

TEST_F(WholeRunTest, WithoutHandlesEveryRunIsARepeat) {
    for (const host::Service service : {host::Service::handleProcs, host::Service::handleNew}) {
        std::filesystem::remove(folder.Path() / "Zandermolite.tmp");
        Log().faults.clear();
        Log().beeps = 0;
        host::HostSettings settings;
        settings.without[service] = true;
        host::FilterHost filterHost(settings);
        const host::Picture before = NoisePicture(60, 50, 3);
        host::Picture picture = before;
        const host::RunReport report =
            filterHost.Run(Entry, picture, host::SelectRectangle({5, 5, 17, 30}));
        EXPECT_EQ(report.calls, (std::vector<host::SelectorCall>{{1, 0}, {2, 0}, {3, -108}}));
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        ASSERT_EQ(Log().faults.size(), 1u);
        EXPECT_EQ(Log().faults[0].id, 17500);
        EXPECT_EQ(Log().beeps, 1);
        EXPECT_EQ(picture, before);
    }
}

TEST_F(WholeRunTest, ASmallBudgetEndsInMemFullErrOrInAWholePicture) {
    const host::Picture before = NoisePicture(60, 50, 3);
    constexpr VRect bounds{0, 0, 40, 40};
    int completed = 0;
    int refused = 0;
    // From nothing to room for all blocks and the reserve, in steps of less than one block.
    for (std::int64_t budget = 0; budget < 100000; budget += 2000) {
        host::HostSettings settings;
        settings.memoryBudget = budget;
        host::FilterHost filterHost(settings);
        host::Picture picture = before;
        const host::RunReport report =
            filterHost.Run(Entry, picture, host::SelectRectangle(bounds));
        EXPECT_EQ(report.faults, std::vector<std::string>{}) << budget;
        if (report.result == 0) {
            EXPECT_EQ(picture.pixels, Expected(before, bounds).pixels) << budget;
            ++completed;
        } else {
            EXPECT_EQ(report.result, -108) << budget;
            EXPECT_EQ(picture, before) << budget;
            ++refused;
        }
    }
    EXPECT_GT(completed, 0);
    EXPECT_GT(refused, 0);
}

}  // namespace

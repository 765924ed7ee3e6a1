#include "host/record/FilterHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/host/FilterRuns.h"
#include "tests/host/Noise.h"
#include "tests/host/TestFilters.h"

namespace host {

namespace {

using Lines = std::vector<std::string>;

std::vector<int> SelectorsOf(const RunReport& report) {
    std::vector<int> selectors;
    for (const SelectorCall& call : report.calls) {
        selectors.push_back(call.selector);
    }
    return selectors;
}

RunReport RunOnce(EntryPoint entry, const HostSettings& settings = {}) {
    FilterHost host(settings);
    Picture picture = Noise(12, 10, 3);
    return host.Run(entry, picture, SelectRectangle(part));
}

}  // namespace

TEST(FilterHostTest, AFilterChangesTheSelection) {
    for (EntryPoint entry : {testfilters::Invert, testfilters::InvertByContinuing}) {
        for (int planes : {3, 4}) {
            const Picture before = Noise(12, 10, planes);
            Picture picture = before;
            FilterHost host;
            const RunReport report = host.Run(entry, picture, SelectRectangle(part));
            EXPECT_TRUE(report.Succeeded());
            EXPECT_EQ(report.faults, Lines{});
            EXPECT_EQ(report.rowsDelivered, 7);
            EXPECT_EQ(picture, InvertedInside(before, part));
        }
    }
}

TEST(FilterHostTest, TheSelectorsComeInOrder) {
    Picture picture = Noise(12, 10, 3);
    FilterHost host;
    auto selectors = [&](EntryPoint entry, Execution execution) {
        return SelectorsOf(host.Run(entry, picture, SelectRectangle({0, 0, 3, 3}), execution));
    };
    EXPECT_EQ(selectors(testfilters::Invert, Execution::interactive),
              (std::vector<int>{1, 2, 3, 5}));
    EXPECT_EQ(selectors(testfilters::Invert, Execution::repeat), (std::vector<int>{2, 3, 5}));
    EXPECT_EQ(selectors(testfilters::InvertByContinuing, Execution::interactive),
              (std::vector<int>{1, 2, 3, 4, 4, 4, 5}));
    EXPECT_EQ(selectors(testfilters::Refuse, Execution::interactive), (std::vector<int>{1, 2, 3}));
}

TEST(FilterHostTest, EveryTraitLeavesAGoodFilterGood) {
    const Picture before = Noise(12, 10, 4);
    for (Trait trait : AllTraits()) {
        if (trait == Trait::lastChunkOnly) {
            continue;
        }
        SCOPED_TRACE(TraitName(trait));
        Picture picture = before;
        FilterHost host(With({trait}));
        const RunReport report = host.Run(testfilters::Invert, picture, SelectRectangle(part));
        EXPECT_TRUE(report.Succeeded());
        EXPECT_EQ(report.faults, Lines{});
        EXPECT_EQ(picture, InvertedInside(before, part));
    }
}

TEST(FilterHostTest, AResultOtherThanZeroLeavesThePicture) {
    const Picture before = Noise(12, 10, 3);
    Picture picture = before;
    FilterHost host;
    const RunReport report = host.Run(testfilters::Refuse, picture, SelectRectangle(part));
    EXPECT_EQ(report.result, hostapi::filterBadParameters);
    EXPECT_EQ(report.calls.back(), (SelectorCall{3, hostapi::filterBadParameters}));
    EXPECT_FALSE(report.Succeeded());
    EXPECT_EQ(picture, before);
}

TEST(FilterHostTest, AResultMayBeIgnored) {
    const Picture before = Noise(12, 10, 3);
    Picture picture = before;
    FilterHost host(With({Trait::ignoreResults}));
    const RunReport report = host.Run(testfilters::Refuse, picture, SelectRectangle(part));
    EXPECT_EQ(report.result, hostapi::filterBadParameters);
    EXPECT_FALSE(report.Succeeded());
    EXPECT_NE(picture, before) << "it takes over what the filter wrote before it refused";
    host.Run(testfilters::LeaveMaskRect, picture, SelectRectangle(part));
    const Picture unended = picture;
    EXPECT_FALSE(host.Run(testfilters::LeaveMaskRect, picture, SelectRectangle(part)).completed);
    EXPECT_EQ(picture, unended);
}

TEST(FilterHostTest, OnlyTheLastChunkMayBeStored) {
    const Picture before = Noise(12, 10, 3);
    Picture picture = before;
    FilterHost host(With({Trait::lastChunkOnly}));
    EXPECT_TRUE(host.Run(testfilters::Invert, picture, SelectRectangle(part)).Succeeded());
    hostapi::VRect lastRow = part;
    lastRow.top = part.bottom - 1;
    EXPECT_EQ(picture, InvertedInside(before, lastRow));
    picture = before;
    host.Run(testfilters::InvertByContinuing, picture, SelectRectangle(part));
    EXPECT_EQ(picture, InvertedInside(before, part)) << "each selector's last chunk";
}

TEST(FilterHostTest, ParametersMayBeLostEachTime) {
    Picture picture = MakePicture(4, 4, 3, 0);
    FilterHost host(With({Trait::loseParameters}));
    for (int run = 0; run < 3; ++run) {
        const RunReport report = host.Run(testfilters::Count, picture, SelectNothing(picture));
        EXPECT_EQ(report.faults, Lines{});
        EXPECT_EQ(host.Memory().LiveHandles(), 1U);
    }
    EXPECT_EQ(picture, MakePicture(4, 4, 3, 3));
}

TEST(FilterHostTest, FreeSpaceMayBeToldInOtherWays) {
    const auto expectSpace = [](std::initializer_list<Trait> traits, std::int32_t expected) {
        const Picture picture = Noise(4, 4, 3);
        FilterHost host(With(traits));
        host.Begin(picture, SelectNothing(picture));
        EXPECT_EQ(host.Record().maxSpace, expected);
        EXPECT_EQ(host.Record().bufferProcs->spaceProc(), expected);
        host.End();
    };
    expectSpace({}, 256 << 20);
    expectSpace({Trait::spaceInKilobytes}, 256 << 10);
    expectSpace({Trait::negativeSpace}, -(1 << 30));
}

TEST(FilterHostTest, APictureMayClaimSixteenBits) {
    const Picture picture = Noise(4, 4, 3);
    Look({}, picture, SelectNothing(picture));
    EXPECT_EQ(seen.imageMode, 3);
    EXPECT_EQ(seen.depth, 8);
    Look(With({Trait::sixteenBits}), picture, SelectNothing(picture));
    EXPECT_EQ(seen.imageMode, 11);
    EXPECT_EQ(seen.depth, 16);
}

TEST(FilterHostTest, BadFiltersAreFound) {
    EXPECT_EQ(RunOnce(testfilters::WriteBehindRow).faults,
              Lines{"outData: written behind its end: 1 byte, the first at offset 15 (7 times)"});
    EXPECT_EQ(RunOnce(testfilters::WriteBehindBuffer).faults,
              Lines{"buffer 1 (10 bytes): written behind its end: 1 byte, the first at offset 12"});
    EXPECT_EQ(RunOnce(testfilters::Leak).faults, Lines{"buffer 1 (1000 bytes): never freed"});
    EXPECT_EQ(RunOnce(testfilters::FreeTwice).faults,
              Lines{"bufferProcs.freeProc: buffer 1 was freed already"});
    EXPECT_EQ(RunOnce(testfilters::ChangeRecord).faults,
              Lines{"the filter changed fields of the record that are the host's"});
    EXPECT_EQ(RunOnce(testfilters::ChangeControlWord).faults,
              Lines{"the filter changed the floating-point control word"});
}

TEST(FilterHostTest, ContinuingWithoutEndIsCutOff) {
    HostSettings settings;
    settings.continueLimit = 5;
    const RunReport report = RunOnce(testfilters::LeaveMaskRect, settings);
    EXPECT_EQ(SelectorsOf(report), (std::vector<int>{1, 2, 3, 4, 4, 4, 4, 4, 5}));
    EXPECT_EQ(report.result, 0);
    EXPECT_FALSE(report.completed);
    EXPECT_FALSE(report.Succeeded());
    EXPECT_EQ(report.faults, Lines{"the filter continues without end: a rectangle is still set "
                                   "after 5 calls"});
}

TEST(FilterHostTest, FaultsAndCountsAreOfOneRun) {
    FilterHost host;
    Picture picture = Noise(12, 10, 3);
    host.Run(testfilters::Leak, picture, SelectRectangle(part));
    const RunReport report = host.Run(testfilters::Invert, picture, SelectRectangle(part));
    EXPECT_EQ(report.faults, Lines{});
    EXPECT_EQ(report.counts[Service::advanceState], 7);
    EXPECT_EQ(report.counts[Service::abortProc], 7);
    EXPECT_EQ(report.counts[Service::progressProc], 7);
    EXPECT_EQ(report.counts[Service::bufferAllocate], 0);
}

TEST(FilterHostTest, ParametersLiveFromRunToRun) {
    Picture picture = MakePicture(4, 4, 3, 0);
    FilterHost host;
    for (int run = 0; run < 3; ++run) {
        const RunReport report = host.Run(testfilters::Count, picture, SelectNothing(picture));
        EXPECT_EQ(report.faults, Lines{});
    }
    EXPECT_EQ(picture, MakePicture(4, 4, 3, 1 + 2 + 3));
}

TEST(FilterHostTest, AZeroedRecordLosesTheParameters) {
    Picture picture = MakePicture(4, 4, 3, 0);
    FilterHost host(With({Trait::zeroRecord}));
    for (int run = 0; run < 3; ++run) {
        const RunReport report = host.Run(testfilters::Count, picture, SelectNothing(picture));
        EXPECT_EQ(report.faults, Lines{});
        EXPECT_EQ(host.Memory().LiveHandles(), 1U);
    }
    EXPECT_EQ(picture, MakePicture(4, 4, 3, 3));
}

TEST(FilterHostTest, ParametersMayComeBackElsewhere) {
    Picture picture = MakePicture(4, 4, 3, 0);
    FilterHost host(With({Trait::moveParameters}));
    host.Run(testfilters::Count, picture, SelectNothing(picture));
    const hostapi::Handle first = host.Record().parameters;
    const RunReport report = host.Run(testfilters::Count, picture, SelectNothing(picture));
    EXPECT_EQ(report.faults, Lines{});
    EXPECT_NE(host.Record().parameters, first);
    EXPECT_EQ(picture, MakePicture(4, 4, 3, 1 + 2));
}

TEST(FilterHostTest, SuitesMayLookEmpty) {
    const Picture picture = Noise(4, 4, 3);
    FilterHost host(With({Trait::emptySuites, Trait::constantSpace}));
    host.Begin(picture, SelectNothing(picture));
    EXPECT_EQ(host.Record().bufferProcs->version, 0);
    EXPECT_EQ(host.Record().handleProcs->count, 0);
    EXPECT_EQ(host.Record().bufferProcs->spaceProc(), 0x7FFFFFFF);
    host.End();
}

TEST(FilterHostTest, TheUserCanAbort) {
    Picture picture = Noise(12, 10, 3);
    HostSettings settings;
    settings.abortAfterRow = 4;
    const RunReport report = RunOnce(testfilters::Invert, settings);
    EXPECT_EQ(report.result, hostapi::userCanceledErr);
    EXPECT_EQ(report.rowsDelivered, 4);
    HostSettings hooked;
    int asked = 0;
    hooked.hooks.isAborted = [&] { return ++asked == 3; };
    EXPECT_EQ(RunOnce(testfilters::Invert, hooked).result, hostapi::userCanceledErr);
    EXPECT_EQ(asked, 3);
}

TEST(FilterHostTest, ProgressReachesTheWindow) {
    std::vector<std::pair<int, int>> shown;
    HostSettings settings;
    settings.hooks.showProgress = [&](int done, int total) { shown.emplace_back(done, total); };
    RunOnce(testfilters::Invert, settings);
    ASSERT_EQ(shown.size(), 7U);
    EXPECT_EQ(shown.front(), std::make_pair(0, 7));
    EXPECT_EQ(shown.back(), std::make_pair(6, 7));
}

TEST(FilterHostTest, ATotalOfZeroIsAFault) {
    FilterHost host;
    const Picture picture = MakePicture(2, 2, 3);
    host.Begin(picture, SelectNothing(picture));
    host.Record().progressProc(0, 0);
    host.End();
    EXPECT_EQ(host.FoundFaults().Lines(),
              Lines{"progressProc: a total of 0 or less; hosts divide by it"});
}

TEST(FilterHostTest, AdvanceCanFailAtAnyRow) {
    for (int row = 0; row < 7; ++row) {
        HostSettings settings;
        settings.failAdvance = {{row, -36}};
        const RunReport report = RunOnce(testfilters::Invert, settings);
        EXPECT_EQ(report.result, -36);
        EXPECT_EQ(report.rowsDelivered, row);
        const RunReport continued = RunOnce(testfilters::InvertByContinuing, settings);
        EXPECT_EQ(continued.result, -36);
        EXPECT_EQ(continued.calls.back().selector, 5);
    }
}

TEST(FilterHostTest, MemoryCanRunOut) {
    HostSettings settings;
    settings.memoryBudget = 0;
    EXPECT_EQ(RunOnce(testfilters::Count, settings).result, hostapi::memFullErr);
    settings = {};
    settings.failAllocation = 1;
    EXPECT_EQ(RunOnce(testfilters::Count, settings).result, hostapi::memFullErr);
    settings.failAllocation = 2;
    EXPECT_EQ(RunOnce(testfilters::Count, settings).result, 0);
}

TEST(FilterHostTest, ColorsComeFromTheSettings) {
    HostSettings settings;
    settings.foreground = {0x0A00, 0x1400, 0x1E00};
    FilterHost host(settings);
    const Picture picture = MakePicture(2, 2, 3);
    host.Begin(picture, SelectNothing(picture));
    hostapi::ColorServicesInfo info{};
    info.infoSize = sizeof(info);
    info.selector = hostapi::colorServicesGetSpecialColor;
    EXPECT_EQ(host.Record().colorServices(&info), hostapi::noErr);
    EXPECT_EQ(info.colorComponents[0], 10);
    EXPECT_EQ(info.colorComponents[2], 30);
    host.End();
}

TEST(FilterHostTest, AboutGetsARecordOfItsOwn) {
    FilterHost host;
    const RunReport report = host.RunAbout(testfilters::ReportAbout);
    EXPECT_EQ(report.calls, (std::vector<SelectorCall>{{0, 7}}));
    HostSettings settings;
    settings.without[Service::platformData] = true;
    FilterHost starved(settings);
    EXPECT_EQ(starved.RunAbout(testfilters::ReportAbout).result, 0);
}

TEST(FilterHostTest, AnySelectorCanBeCalledAlone) {
    FilterHost host;
    const Picture picture = Noise(4, 4, 3);
    const RunReport report =
        host.RunSelector(testfilters::Refuse, 3, picture, SelectNothing(picture));
    EXPECT_EQ(report.calls, (std::vector<SelectorCall>{{3, hostapi::filterBadParameters}}));
    EXPECT_EQ(host.RunSelector(testfilters::Refuse, -1, picture, SelectNothing(picture)).result, 0);
}

TEST(FilterHostTest, ARecordCanBeUsedWithoutAnEntry) {
    const Picture before = Noise(6, 5, 3);
    FilterHost host;
    host.Begin(before, SelectRectangle({1, 1, 3, 4}));
    hostapi::FilterRecord& record = host.Record();
    record.outRect = record.filterRect;
    ASSERT_EQ(record.advanceState(), hostapi::noErr);
    EXPECT_EQ(host.RowsDelivered(), 2);
    for (int i = 0; i < 2 * record.outRowBytes; ++i) {
        record.outData[i] = static_cast<std::uint8_t>(255 - record.outData[i]);
    }
    EXPECT_EQ(host.End(), InvertedInside(before, {1, 1, 3, 4}));
    EXPECT_TRUE(host.FoundFaults().IsEmpty());
}

TEST(FilterHostTest, TheNewestHostServes) {
    const Picture before = Noise(4, 4, 3);
    FilterHost outer;
    outer.Begin(before, SelectNothing(before));
    {
        Picture picture = before;
        FilterHost inner;
        EXPECT_TRUE(inner.Run(testfilters::Invert, picture, SelectNothing(picture)).Succeeded());
    }
    outer.Record().outRect = {0, 0, 1, 1};
    outer.Record().outHiPlane = 2;
    EXPECT_EQ(outer.Record().advanceState(), hostapi::noErr);
    EXPECT_EQ(outer.RowsDelivered(), 1);
    EXPECT_EQ(outer.End(), before);
}

}  // namespace host

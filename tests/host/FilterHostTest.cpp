#include "host/record/FilterHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/host/Noise.h"
#include "tests/host/TestFilters.h"

namespace host {

namespace {

using Lines = std::vector<std::string>;

Picture InvertedInside(Picture picture, const hostapi::VRect& rect) {
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x) {
            for (int plane = 0; plane < 3; ++plane) {
                picture.Pixel(x, y)[plane] =
                    static_cast<std::uint8_t>(255 - picture.Pixel(x, y)[plane]);
            }
        }
    }
    return picture;
}

HostSettings With(std::initializer_list<Trait> traits) {
    HostSettings settings;
    settings.traits = traits;
    return settings;
}

std::vector<int> SelectorsOf(const RunReport& report) {
    std::vector<int> selectors;
    for (const SelectorCall& call : report.calls) {
        selectors.push_back(call.selector);
    }
    return selectors;
}

const hostapi::VRect part{2, 3, 9, 8};

// What a filter sees in the record, taken at its start selector.
hostapi::FilterRecord seen;

void HOST_CALL LookAtRecord(std::int16_t selector, hostapi::FilterRecord* record, void*,
                            std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorStart) {
        seen = *record;
    }
}

RunReport Look(const HostSettings& settings, const Picture& picture, const Selection& selection) {
    FilterHost host(settings);
    Picture copy = picture;
    return host.Run(LookAtRecord, copy, selection);
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

TEST(FilterHostTest, TheRecordDescribesThePicture) {
    Picture picture = Noise(12, 10, 3);
    picture.horizontalResolution = 300;
    picture.verticalResolution = 96.5;
    HostSettings settings;
    settings.foreground = {0xFF00, 0x8000, 0x0100};
    settings.background = {0x1000, 0x2000, 0x3000};
    settings.memoryBudget = 123456;
    Look(settings, picture, SelectRectangle(part));
    EXPECT_EQ(seen.imageSize.v, 10);
    EXPECT_EQ(seen.imageSize.h, 12);
    EXPECT_EQ(seen.wholeSize.h, 12);
    EXPECT_EQ(seen.planes, 3);
    EXPECT_TRUE(AreEqual(Widened(seen.filterRect), part));
    EXPECT_TRUE(IsEmpty(Widened(seen.inRect)) && IsEmpty(Widened(seen.outRect)) &&
                IsEmpty(Widened(seen.maskRect)));
    EXPECT_EQ(seen.inHiPlane, 2);
    EXPECT_EQ(seen.foreground.green, 0x8000);
    EXPECT_EQ(seen.background.blue, 0x3000);
    EXPECT_EQ(std::vector<int>(seen.foreColor, seen.foreColor + 3),
              (std::vector<int>{255, 128, 1}));
    EXPECT_EQ(std::vector<int>(seen.backColor, seen.backColor + 3), (std::vector<int>{16, 32, 48}));
    EXPECT_EQ(seen.maxSpace, 123456);
    EXPECT_EQ(seen.imageMode, hostapi::imageModeRGB);
    EXPECT_EQ(seen.imageHRes, 300 << 16);
    EXPECT_EQ(seen.imageVRes, (96 << 16) + (1 << 15));
    EXPECT_EQ(seen.depth, 8);
    EXPECT_EQ(seen.haveMask, 0);
    EXPECT_EQ(seen.autoMask, 1);
    EXPECT_EQ(seen.isFloating, 0);
    EXPECT_EQ(seen.layers[4], 3);
    EXPECT_EQ(seen.layers[9], 3);
}

TEST(FilterHostTest, OnlyTheServicesOfTheInterfaceAreThere) {
    Look({}, Noise(4, 4, 3), SelectNothing(Noise(4, 4, 3)));
    EXPECT_NE(seen.abortProc, nullptr);
    EXPECT_NE(seen.progressProc, nullptr);
    EXPECT_NE(seen.advanceState, nullptr);
    EXPECT_NE(seen.displayPixels, nullptr);
    EXPECT_NE(seen.colorServices, nullptr);
    EXPECT_NE(seen.platformData, nullptr);
    EXPECT_NE(seen.bufferProcs, nullptr);
    EXPECT_NE(seen.handleProcs, nullptr);
    EXPECT_EQ(seen.hostProc, nullptr);
    EXPECT_EQ(seen.resourceProcs, nullptr);
    EXPECT_EQ(seen.processEvent, nullptr);
    EXPECT_EQ(seen.getProperty, nullptr);
    EXPECT_EQ(seen.propertyProcs, nullptr);
    EXPECT_EQ(seen.descriptorParameters, nullptr);
    EXPECT_EQ(seen.sSPBasic, nullptr);
}

TEST(FilterHostTest, ServicesCanBeWithheld) {
    auto without = [](Service service) {
        HostSettings settings;
        settings.without[service] = true;
        const Picture picture = MakePicture(4, 4, 3);
        Look(settings, picture, SelectNothing(picture));
    };
    without(Service::abortProc);
    EXPECT_EQ(seen.abortProc, nullptr);
    EXPECT_NE(seen.progressProc, nullptr);
    without(Service::progressProc);
    EXPECT_EQ(seen.progressProc, nullptr);
    EXPECT_NE(seen.abortProc, nullptr);
    without(Service::advanceState);
    EXPECT_EQ(seen.advanceState, nullptr);
    without(Service::displayPixels);
    EXPECT_EQ(seen.displayPixels, nullptr);
    without(Service::colorServices);
    EXPECT_EQ(seen.colorServices, nullptr);
    without(Service::platformData);
    EXPECT_EQ(seen.platformData, nullptr);
    without(Service::bufferProcs);
    EXPECT_EQ(seen.bufferProcs, nullptr);
    without(Service::handleProcs);
    EXPECT_EQ(seen.handleProcs, nullptr);
}

TEST(FilterHostTest, TheFilterCaseFollowsThePictureAndTheSelection) {
    struct Case {
        int planes;
        LayerKind layer;
        bool selected;
        int expected;
    };
    for (const Case& c :
         {Case{3, LayerKind::automatic, false, 1}, Case{3, LayerKind::automatic, true, 2},
          Case{4, LayerKind::automatic, false, 4}, Case{4, LayerKind::automatic, true, 5},
          Case{4, LayerKind::floating, true, 3},
          Case{4, LayerKind::protectedTransparency, false, 6},
          Case{4, LayerKind::protectedTransparency, true, 7}, Case{4, LayerKind::flat, true, 2}}) {
        HostSettings settings;
        settings.layer = c.layer;
        const Picture picture = MakePicture(4, 4, c.planes);
        Look(settings, picture,
             c.selected ? SelectRectangle({0, 0, 2, 2}) : SelectNothing(picture));
        EXPECT_EQ(seen.filterCase, c.expected);
        EXPECT_EQ(seen.isFloating, c.expected == 3 ? 1 : 0);
        EXPECT_EQ(seen.planes, c.planes);
    }
}

TEST(FilterHostTest, TheMaskIsHandedOverAndAppliedByTheHost) {
    const Picture before = Noise(12, 10, 3);
    const Selection ellipse = SelectEllipse(part, 3);
    for (bool isWithheld : {false, true}) {
        HostSettings settings;
        if (isWithheld) {
            settings.traits = {Trait::withholdMask, Trait::noAutoMask};
        }
        Look(settings, before, ellipse);
        EXPECT_EQ(seen.haveMask, isWithheld ? 0 : 1);
        EXPECT_EQ(seen.autoMask, isWithheld ? 0 : 1);
        Picture picture = before;
        FilterHost host(settings);
        host.Run(testfilters::Invert, picture, ellipse);
        const Picture inverted = InvertedInside(before, part);
        for (int y = 0; y < 10; ++y) {
            for (int x = 0; x < 12; ++x) {
                const double weight = ellipse.Coverage(x, y) / 255.0;
                const double expected =
                    before.Pixel(x, y)[0] * (1 - weight) + inverted.Pixel(x, y)[0] * weight;
                EXPECT_NEAR(picture.Pixel(x, y)[0], expected, 0.51);
            }
        }
    }
}

TEST(FilterHostTest, ALayerMayBeginAtNegativeCoordinates) {
    const Picture picture = Noise(12, 10, 3);
    Look(With({Trait::negativeOrigin}), picture, SelectRectangle(part));
    EXPECT_LT(seen.filterRect.left, 0);
    EXPECT_LT(seen.filterRect.top, 0);
    EXPECT_NE(seen.filterRect.left - part.left, seen.filterRect.top - part.top);
    EXPECT_EQ(seen.filterRect.right - seen.filterRect.left, Width(part));
    EXPECT_EQ(seen.floatCoord.h, seen.filterRect.left - part.left);
}

TEST(FilterHostTest, TheTailMayHoldRubbish) {
    const Picture picture = Noise(4, 4, 3);
    Look(With({Trait::rubbishTail}), picture, SelectNothing(picture));
    EXPECT_EQ(seen.depth, static_cast<std::int32_t>(0xA7A7A7A7));
    EXPECT_NE(seen.propertyProcs, nullptr);
    EXPECT_NE(seen.colorServices, nullptr);
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

TEST(FilterHostTest, ClaimsGoIntoTheRecordAsTheyAre) {
    HostSettings settings;
    settings.claimedFilterRect = hostapi::Rect{5, 6, 3, 2};
    settings.claimedPlanes = 1;
    const Picture picture = Noise(4, 4, 3);
    Look(settings, picture, SelectNothing(picture));
    EXPECT_EQ(seen.filterRect.bottom, 3);
    EXPECT_EQ(seen.planes, 1);
    EXPECT_EQ(seen.inHiPlane, 2);
}

TEST(FilterHostTest, ASelectionMustFitThePicture) {
    FilterHost host;
    Picture picture = Noise(4, 4, 3);
    EXPECT_THROW(host.Run(LookAtRecord, picture, SelectRectangle({0, 0, 4, 5})), SelectionError);
    EXPECT_THROW(host.Run(LookAtRecord, picture, Selection{}), SelectionError);
    Selection badMask = SelectRectangle({0, 0, 2, 2});
    badMask.mask = {1, 2, 3};
    EXPECT_THROW(host.Run(LookAtRecord, picture, badMask), SelectionError);
    FilterHost shrinking(With({Trait::shrinkRectangles}));
    EXPECT_TRUE(shrinking.Run(LookAtRecord, picture, SelectRectangle({-1, 0, 4, 9})).Succeeded());
    EXPECT_EQ(seen.filterRect.top, -1);
    EXPECT_THROW(shrinking.Run(LookAtRecord, picture, SelectRectangle({0, 0, 1, 40000})),
                 SelectionError);
}

TEST(FilterHostTest, ShrinkingHostsMergeWhatLiesInside) {
    const Picture before = Noise(6, 6, 3);
    Picture picture = before;
    FilterHost host(With({Trait::shrinkRectangles}));
    const RunReport report =
        host.Run(testfilters::Invert, picture, SelectRectangle({-2, -2, 3, 3}));
    EXPECT_EQ(report.faults, Lines{});
    EXPECT_EQ(picture, InvertedInside(before, {0, 0, 3, 3}));
    for (hostapi::VRect outside : {hostapi::VRect{1, 7, 4, 9}, {9, 1, 12, 4}, {-4, -4, -1, -1}}) {
        picture = before;
        const Selection selection = SelectRectangle(outside);
        EXPECT_TRUE(host.Run(LookAtRecord, picture, selection).Succeeded());
        EXPECT_EQ(picture, before);
    }
}

TEST(FilterHostTest, MattesApplyToTheFilterCase) {
    Picture picture = MakePicture(2, 2, 4, 0);
    FilterHost host;
    std::array<Matte, 7> mattes;
    mattes.fill(Matte::straight);
    mattes[3] = Matte::white;
    host.SetMattes(mattes);
    auto firstByte = [&](FilterHost& used, const Selection& selection) {
        used.Begin(picture, selection);
        used.Record().inRect = used.Record().filterRect;
        EXPECT_EQ(used.Record().advanceState(), hostapi::noErr);
        const int byte = used.Record().inData[0];
        used.End();
        return byte;
    };
    EXPECT_EQ(firstByte(host, SelectNothing(picture)), 255);
    EXPECT_EQ(firstByte(host, SelectRectangle({0, 0, 1, 1})), 0);
    FilterHost careless(With({Trait::ignoreMatte}));
    careless.SetMattes(mattes);
    EXPECT_EQ(firstByte(careless, SelectNothing(picture)), 0);
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

// Faults, and whatever else is thrown, end in the switch over the selectors.
#include <algorithm>
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
        // The first is the trial.
        if (call++ == 6) {
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

TEST_F(SelectorsTest, AfterAFaultEveryStartEndsLikeIt) {
    Parameters();
    const HostImage before = rowHost.image;
    Windows().edit = [](std::unique_ptr<PaintClass>&) { errorCell = 20008; };
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Log().beeps, 1);
    EXPECT_TRUE(Log().alerts.empty()) << "the fault itself was told";
    EXPECT_EQ(Block().ran, 0);
    for (int later = 0; later < 2; ++later) {
        Log().alerts.clear();
        Log().beeps = 0;
        int window = 0;
        hostapi::PlatformData platformData{&window};
        record.platformData = &platformData;
        SetRectangles();
        EXPECT_EQ(Start(), 0);
        ExpectEmptyRectangles();
        ASSERT_EQ(Log().alerts.size(), 1u);
        EXPECT_EQ(Log().alerts[0].id, 16121);
        EXPECT_EQ(hostWindow, &window) << "the box is over this call's window";
        EXPECT_EQ(Log().beeps, 1);
        record.platformData = nullptr;
    }
    rowHost.Finish();
    EXPECT_EQ(rowHost.image, before);
    EXPECT_FALSE(std::filesystem::exists(File()));
    EXPECT_EQ(errorCell, 20008);
}

/// How the windows of a run end that no user has ended.
struct FaultyEnd {
    int opening;
    int editor;
    std::int16_t cell;
};

class FaultyEndTest : public SelectorsTest, public testing::WithParamInterface<FaultyEnd> {};

TEST_P(FaultyEndTest, WritesNothing) {
    Parameters();
    const HostImage before = rowHost.image;
    Windows().launchFlag = true;
    Windows().openingEnds = GetParam().opening;
    Windows().editorEnds = GetParam().editor;
    Windows().edit = [](std::unique_ptr<PaintClass>&) { errorCell = GetParam().cell; };
    SetRectangles();
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Log().beeps, 1);
    ExpectEmptyRectangles();
    EXPECT_EQ(Block().ran, 0);
    EXPECT_EQ(Block().haveLastTexture, 0);
    EXPECT_FALSE(std::filesystem::exists(File()));
    EXPECT_EQ(memory.LiveBuffers(), 0u);
    rowHost.Finish();
    EXPECT_EQ(rowHost.image, before);
}

INSTANTIATE_TEST_SUITE_P(Ends, FaultyEndTest,
                         testing::Values(FaultyEnd{20008, 1, 0}, FaultyEnd{-108, 1, 0},
                                         FaultyEnd{1, 20008, 0}, FaultyEnd{1, 31, 0},
                                         FaultyEnd{1, 0, 0}, FaultyEnd{1, 1, 17500},
                                         // An assertion's id is that of Cancel.
                                         FaultyEnd{1, 2, 2}, FaultyEnd{1, 2, -108}));

TEST_F(SelectorsTest, AFaultInTheNewDialogEndsTheRunThere) {
    Parameters();
    Windows().launchFlag = true;
    Windows().openingEnds = 20008;
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(std::count(Windows().events.begin(), Windows().events.end(), "editor runs"), 0);
}

TEST_F(SelectorsTest, CancelLeavesTheRectanglesAsTheyWere) {
    Parameters();
    Windows().contents = SizeItems::selection;
    Windows().editorEnds = runCancelled;
    SetRectangles();
    EXPECT_EQ(Start(), -128);
    EXPECT_TRUE(AreEqual(record.inRect, someRect));
    EXPECT_TRUE(AreEqual(record.outRect, someRect));
    EXPECT_TRUE(AreEqual(record.maskRect, someRect));
}

TEST_F(SelectorsTest, APictureThatCannotBeFilledIsRefusedBeforeAnyWindow) {
    Parameters();
    for (const int mode : {0, 1, 2, 4, 7, 9, 11}) {
        record.imageMode = static_cast<std::int16_t>(mode);
        SetRectangles();
        EXPECT_EQ(Start(), -30100) << mode;
        ExpectEmptyRectangles();
    }
    record.imageMode = hostapi::imageModeRGB;
    record.planes = 2;
    EXPECT_EQ(Start(), -30100);
    record.planes = 3;
    static decltype(record.advanceState) hostsAdvance;
    hostsAdvance = record.advanceState;
    record.advanceState = []() -> std::int16_t {
        const std::int16_t result = hostsAdvance();
        // As for 16 bits a channel.
        filterRecord->inRowBytes *= 2;
        return result;
    };
    SetRectangles();
    EXPECT_EQ(Start(), -30100);
    record.advanceState = hostsAdvance;
    ExpectEmptyRectangles();
    EXPECT_TRUE(Windows().events.empty());
    // A repeat finds the same.
    ASSERT_TRUE(SaveLastTexture(&static_cast<const PicClass&>(PaintClass(8, 8))));
    Block().ran = 1;
    record.imageMode = hostapi::imageModeGrey;
    EXPECT_EQ(Start(), -30100);
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, AHostThatGivesNoFirstRowOpensTheWindowsAllTheSame) {
    Parameters();
    rowHost.failAdvance[0] = -77;
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Block().ran, 1);
}

TEST_F(SelectorsTest, RowsAsFarApartAsTheImagesAreNotTooLong) {
    Parameters();
    // The selection is half as wide as the image.
    record.imageSize.h = static_cast<std::int16_t>(2 * hostapi::Width(record.filterRect));
    static decltype(record.advanceState) hostsAdvance;
    hostsAdvance = record.advanceState;
    record.advanceState = []() -> std::int16_t {
        const std::int16_t result = hostsAdvance();
        filterRecord->inRowBytes = filterRecord->imageSize.h * filterRecord->planes;
        filterRecord->outRowBytes = filterRecord->inRowBytes;
        return result;
    };
    EXPECT_EQ(Start(), 0);
    record.advanceState = hostsAdvance;
}

TEST_F(SelectorsTest, TheTrialOfTheFirstRowLeavesTheRequestAsItWas) {
    Parameters();
    SetRectangles();
    record.inLoPlane = 5;
    record.inHiPlane = 6;
    record.outLoPlane = 7;
    record.outHiPlane = 8;
    const hostapi::FilterRecord asBefore = record;
    Windows().edit = [&](std::unique_ptr<PaintClass>&) {
        EXPECT_EQ(std::memcmp(&record.inRect, &asBefore.inRect, sizeof record.inRect), 0);
        EXPECT_EQ(std::memcmp(&record.outRect, &asBefore.outRect, sizeof record.outRect), 0);
        EXPECT_EQ(std::memcmp(&record.maskRect, &asBefore.maskRect, sizeof record.maskRect), 0);
        EXPECT_EQ(record.inLoPlane, 5);
        EXPECT_EQ(record.inHiPlane, 6);
        EXPECT_EQ(record.outLoPlane, 7);
        EXPECT_EQ(record.outHiPlane, 8);
    };
    EXPECT_EQ(Start(), 0);
}

TEST_F(SelectorsTest, TheTrialOfTheFirstRowAsksForItsInputAlone) {
    Parameters();
    SetRectangles();
    EXPECT_EQ(Start(), 0);
    const AdvanceRequest& trial = rowHost.requests.front();
    const hostapi::Rect& selection = rowHost.image.bounds;
    EXPECT_TRUE(AreEqual(trial.in, {selection.top, selection.left, std::int16_t(selection.top + 1),
                                    selection.right}));
    EXPECT_TRUE(IsZero(trial.out));
    EXPECT_TRUE(IsZero(trial.mask));
    EXPECT_EQ(trial.inLoPlane, 0);
    EXPECT_EQ(trial.inHiPlane, 2);
}

/// The distance of rows of 40 pixels of three planes, as a host may say it.
struct RowDistance {
    int rowBytes;
    bool isTooLong;
};

class RowDistanceTest : public SelectorsTest, public testing::WithParamInterface<RowDistance> {};

TEST_P(RowDistanceTest, RowsOfTwoOrFourBytesAChannelAreRefused) {
    static decltype(record.advanceState) hostsAdvance;
    hostsAdvance = record.advanceState;
    record.advanceState = []() -> std::int16_t {
        const std::int16_t result = hostsAdvance();
        if (Windows().events.empty()) {
            filterRecord->inRowBytes = GetParam().rowBytes;
        }
        return result;
    };
    Parameters();
    EXPECT_EQ(Start(), GetParam().isTooLong ? -30100 : 0);
    EXPECT_EQ(Windows().events.empty(), GetParam().isTooLong);
    record.advanceState = hostsAdvance;
}

INSTANTIATE_TEST_SUITE_P(Hosts, RowDistanceTest,
                         testing::Values(RowDistance{120, false}, RowDistance{183, false},
                                         RowDistance{239, false}, RowDistance{240, true},
                                         RowDistance{303, true}, RowDistance{304, false},
                                         RowDistance{479, false}, RowDistance{480, true},
                                         RowDistance{543, true}, RowDistance{544, false},
                                         RowDistance{-240, true}, RowDistance{0, false}));

TEST_F(SelectorsTest, ShortRowsSayNothingOfTheirChannels) {
    // Rows of 21 pixels may be padded to any of these.
    for (const int rowBytes : {64, 126, 128, 252, 256}) {
        rowHost.image = NoiseImage({0, 0, 8, 21}, 3);
        rowHost.Attach(record);
        static int distance;
        distance = rowBytes;
        static decltype(record.advanceState) hostsAdvance;
        hostsAdvance = record.advanceState;
        record.advanceState = []() -> std::int16_t {
            const std::int16_t result = hostsAdvance();
            filterRecord->inRowBytes = distance;
            filterRecord->outRowBytes = distance;
            return result;
        };
        Parameters();
        EXPECT_EQ(Start(), 0) << rowBytes;
    }
}

TEST_F(SelectorsTest, AnAboutWithinAStartLeavesTheRecordToTheEditor) {
    Parameters();
    static hostapi::FilterRecord* seen;
    seen = nullptr;
    const auto outside = platformServices.showAbout;
    platformServices.showAbout = [] { seen = filterRecord; };
    hostapi::FilterRecord about{};
    std::int16_t result = unwritten;
    Windows().edit = [&](std::unique_ptr<PaintClass>&) { DispatchSelector(0, &about, &result); };
    EXPECT_EQ(Start(), 0);
    platformServices.showAbout = outside;
    EXPECT_EQ(result, 0);
    EXPECT_EQ(seen, &record);
}

TEST_F(SelectorsTest, AStartWithinAStartIsRefused) {
    Parameters();
    const HostImage before = rowHost.image;
    hostapi::FilterRecord inner = record;
    std::int16_t innerStart = unwritten;
    std::int16_t innerPrepare = unwritten;
    Windows().edit = [&](std::unique_ptr<PaintClass>&) {
        inner.bufferSpace = 0;
        const hostapi::FilterRecord asBefore = inner;
        DispatchSelector(3, &inner, &innerStart);
        EXPECT_EQ(std::memcmp(&asBefore, &inner, sizeof inner), 0);
        EXPECT_EQ(filterRecord, &record);
        DispatchSelector(2, &inner, &innerPrepare);
        EXPECT_EQ(filterRecord, &record) << "the outer run goes on with its own";
    };
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(innerStart, -128);
    EXPECT_EQ(innerPrepare, 0);
    EXPECT_EQ(inner.bufferSpace, 65535);
    ExpectTiledImage(before, 30);
    EXPECT_EQ(Start(), 0) << "and the next one is a run again";
}

TEST_F(SelectorsTest, WithoutMemoryForAWindowTheHostIsToldSo) {
    Parameters();
    Windows().edit = [](std::unique_ptr<PaintClass>&) { throw std::bad_alloc(); };
    EXPECT_EQ(Start(), -108);
    EXPECT_EQ(Log().beeps, 0);
}

TEST_F(SelectorsTest, WithoutMemoryAfterAFaultTheFaultCounts) {
    Parameters();
    SetRectangles();
    Windows().edit = [](std::unique_ptr<PaintClass>&) {
        errorCell = 20008;
        throw std::bad_alloc();
    };
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Log().beeps, 1);
    ExpectEmptyRectangles();
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

// The record that a filter gets: picture, selection, and the host itself.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/host/FilterRuns.h"
#include "tests/host/Noise.h"
#include "tests/host/TestFilters.h"

namespace host {

namespace {

// The record as a filter sees it, taken at its start selector.
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

}  // namespace

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
    EXPECT_EQ(seen.bufferSpace, 0);
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
    EXPECT_TRUE(report.faults.empty());
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

}  // namespace host

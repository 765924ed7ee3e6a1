#include "host/window/WindowText.h"

#include <gtest/gtest.h>

#include "hostapi/Results.h"

namespace host {

namespace {

FilterDescription Named(const std::string& name) {
    FilterDescription filter;
    filter.name = name;
    return filter;
}

RunReport WithResult(std::int16_t result) {
    RunReport report;
    report.result = result;
    return report;
}

}  // namespace

TEST(WindowTextTest, ShortNameDropsTheDots) {
    EXPECT_EQ(ShortName(Named("Lines 3.0...")), "Lines 3.0");
    EXPECT_EQ(ShortName(Named("Blur")), "Blur");
    EXPECT_EQ(ShortName(Named("...")), "");
}

TEST(WindowTextTest, OutcomesInWords) {
    EXPECT_EQ(OutcomeText(RunReport{}, "Lines", true), "Lines: done");
    EXPECT_EQ(OutcomeText(RunReport{}, "Lines", false), "Lines: done, nothing changed");
    EXPECT_EQ(OutcomeText(WithResult(hostapi::userCanceledErr), "Lines", false),
              "Lines: cancelled");
    EXPECT_EQ(OutcomeText(WithResult(hostapi::memFullErr), "Lines", false),
              "The filter answered -108 (out of memory)");
    EXPECT_EQ(OutcomeText(WithResult(hostapi::filterBadParameters), "Lines", false),
              "The filter answered -30100 (it cannot work with this picture or this host)");
    EXPECT_EQ(OutcomeText(WithResult(hostapi::errPlugInHostInsufficient), "Lines", false),
              "The filter answered -30900 (this host lacks a service)");
    EXPECT_EQ(OutcomeText(WithResult(1234), "Lines", false), "The filter answered 1234");
    RunReport endless;
    endless.completed = false;
    EXPECT_EQ(OutcomeText(endless, "Lines", false), "Lines did not come to an end and was stopped");
}

TEST(WindowTextTest, OutcomesCountFaults) {
    RunReport report;
    report.faults = {"a"};
    EXPECT_EQ(OutcomeText(report, "Lines", true), "Lines: done; 1 fault found");
    report.faults = {"a", "b", "c"};
    EXPECT_EQ(OutcomeText(report, "Lines", true), "Lines: done; 3 faults found");
}

TEST(WindowTextTest, PicturesInWords) {
    Picture picture = MakePicture(640, 480, 3);
    EXPECT_EQ(PictureText(picture), "640 \u00D7 480, 72 ppi, RGB");
    picture.horizontalResolution = picture.verticalResolution = 72.009;
    EXPECT_EQ(PictureText(picture), "640 \u00D7 480, 72 ppi, RGB");
    picture.horizontalResolution = 300.0;
    EXPECT_EQ(PictureText(picture), "640 \u00D7 480, 300 \u00D7 72 ppi, RGB");
    picture = MakePicture(5, 6, 4);
    picture.horizontalResolution = picture.verticalResolution = 266.7;
    EXPECT_EQ(PictureText(picture), "5 \u00D7 6, 266.7 ppi, RGB with transparency");
}

TEST(WindowTextTest, SelectionsInWords) {
    EXPECT_EQ(SelectionText(SelectRectangle({20, 10, 80, 110})),
              "10, 20 to 110, 80 (100 \u00D7 60)");
    EXPECT_EQ(SelectionText(SelectNothing(MakePicture(5, 5, 3))), "Nothing selected");
    EXPECT_EQ(BoundsText({5, 5, 5, 9}), "");
}

TEST(WindowTextTest, ZoomInPercent) {
    EXPECT_EQ(ZoomText(1.0), "100 %");
    EXPECT_EQ(ZoomText(32.0), "3200 %");
    EXPECT_EQ(ZoomText(0.5), "50 %");
    EXPECT_EQ(ZoomText(0.0625), "6.25 %");
}

TEST(WindowTextTest, PlacesAcrossFirst) {
    EXPECT_EQ(PlaceText({12, 34}), "12, 34");
}

}  // namespace host

#include "framework/drawing/ScreenScale.h"

#include <gtest/gtest.h>

namespace {

TEST(ScreenScaleTest, PixelsStayAt96) {
    for (const int pixels : {-30000, -20, -1, 0, 1, 2, 15, 16, 21, 30000}) {
        EXPECT_EQ(ScreenScale{}.Pixels(pixels), pixels);
    }
}

TEST(ScreenScaleTest, PixelsRoundHalfAwayFromZero) {
    EXPECT_EQ(ScreenScale{192}.Pixels(15), 30);
    EXPECT_EQ(ScreenScale{144}.Pixels(15), 23) << "22.5";
    EXPECT_EQ(ScreenScale{144}.Pixels(-15), -23);
    EXPECT_EQ(ScreenScale{120}.Pixels(15), 19) << "18.75";
    EXPECT_EQ(ScreenScale{120}.Pixels(1), 1);
    EXPECT_EQ(ScreenScale{120}.Pixels(-1), -1);
    EXPECT_EQ(ScreenScale{144}.Pixels(1), 2);
}

TEST(ScreenScaleTest, DrawingsHaveTheSizesThatTheyAreMadeIn) {
    EXPECT_EQ(AtPercent(25, 100), 25);
    EXPECT_EQ(AtPercent(25, 150), 38) << "37.5";
    EXPECT_EQ(AtPercent(21, 150), 32) << "31.5";
    EXPECT_EQ(AtPercent(21, 200), 42);
}

TEST(ScreenScaleTest, TheNearestDrawingIsTaken) {
    const auto percentFor = [](int wanted) {
        return pictureScales[static_cast<std::size_t>(NearestPictureScale(100, wanted))];
    };
    EXPECT_EQ(percentFor(10), 100);
    EXPECT_EQ(percentFor(100), 100);
    EXPECT_EQ(percentFor(124), 100);
    EXPECT_EQ(percentFor(125), 150) << "equally near";
    EXPECT_EQ(percentFor(174), 150);
    EXPECT_EQ(percentFor(175), 200) << "equally near";
    EXPECT_EQ(percentFor(1000), 200);
    EXPECT_EQ(NearestPictureScale(16, 24), 1);
}

TEST(ScreenScaleTest, ALayoutFollowsTheOneResolutionThatThereIs) {
    EXPECT_EQ(LayoutResolution(-11, 144, 144), 144);
    EXPECT_EQ(LayoutResolution(-11, 0, 144), 144) << "a system that knows no monitors'";
    EXPECT_EQ(LayoutResolution(-11, 144, 0), 144) << "no device context";
    EXPECT_EQ(LayoutResolution(-11, 0, 0), 96);
}

// 8 points are 11, 13, 16 and 21 pixels.
TEST(ScreenScaleTest, TheFontTellsWhichOfTwoResolutionsALayoutFollows) {
    EXPECT_EQ(LayoutResolution(-21, 192, 96), 192);
    EXPECT_EQ(LayoutResolution(-11, 192, 96), 96);
    EXPECT_EQ(LayoutResolution(-11, 96, 192), 96);
    EXPECT_EQ(LayoutResolution(-21, 96, 192), 192);
    EXPECT_EQ(LayoutResolution(-13, 120, 144), 120);
    EXPECT_EQ(LayoutResolution(-16, 120, 144), 144);
    EXPECT_EQ(LayoutResolution(0, 120, 144), 120) << "an unknown font";
}

}  // namespace

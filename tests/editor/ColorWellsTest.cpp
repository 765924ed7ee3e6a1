#include "editor/ColorWells.h"

#include <gtest/gtest.h>

#include "base/Rectangles.h"

namespace {

constexpr hostapi::Rect swapItem{10, 80, 20, 95};
constexpr hostapi::Rect defaultItem{80, 2, 95, 15};

/// In an item of 100 by 100 at (0, 0): fore 7, 9 to 80, 78; the bars from 20, 80 and from 82, 20 to
/// 92, 91.
ColorWells Wells() {
    return WellsIn({0, 0, 100, 100}, swapItem, defaultItem);
}

TEST(ColorWells, LieInTheItemsRectangle) {
    const ColorWells wells = WellsIn({1000, 200, 1100, 400}, swapItem, defaultItem);
    EXPECT_EQ(wells.foreRect.top, 1007);
    EXPECT_EQ(wells.foreRect.left, 209);
    EXPECT_EQ(wells.foreRect.bottom, 1080);
    EXPECT_EQ(wells.foreRect.right, 378);
    EXPECT_EQ(wells.backRectRight.top, 1020);
    EXPECT_EQ(wells.backRectRight.left, 380);
    EXPECT_EQ(wells.backRectRight.bottom, 1092);
    EXPECT_EQ(wells.backRectRight.right, 391);
    EXPECT_EQ(wells.backRectBottom.top, 1082);
    EXPECT_EQ(wells.backRectBottom.left, 220);
    EXPECT_EQ(wells.backRectBottom.bottom, 1092);
    EXPECT_EQ(wells.backRectBottom.right, 391);
}

TEST(ColorWells, GrowWithTheScale) {
    const ColorWells wells = WellsIn({1000, 200, 1200, 600}, swapItem, defaultItem, {192});
    EXPECT_TRUE(AreEqual(wells.foreRect, {1014, 218, 1160, 556}));
    EXPECT_TRUE(AreEqual(wells.backRectRight, {1040, 560, 1184, 582}));
    EXPECT_TRUE(AreEqual(wells.backRectBottom, {1164, 240, 1184, 582}));
    EXPECT_TRUE(AreEqual(wells.swapRect, swapItem));
    EXPECT_TRUE(AreEqual(wells.defaultRect, defaultItem));
}

TEST(ColorWells, AllFourEdgesOfTheForegroundCount) {
    EXPECT_EQ(Wells().PartAt(9, 7), wellForeground);
    EXPECT_EQ(Wells().PartAt(78, 80), wellForeground);
    EXPECT_EQ(Wells().PartAt(8, 7), wellNone);
    EXPECT_EQ(Wells().PartAt(9, 6), wellNone);
    EXPECT_EQ(Wells().PartAt(79, 50), wellNone);
}

TEST(ColorWells, BothBarsAreTheBackground) {
    EXPECT_EQ(Wells().PartAt(80, 20), wellBackground);
    EXPECT_EQ(Wells().PartAt(91, 92), wellBackground);
    EXPECT_EQ(Wells().PartAt(20, 82), wellBackground);
    EXPECT_EQ(Wells().PartAt(20, 81), wellNone);
    EXPECT_EQ(Wells().PartAt(92, 50), wellNone);
}

TEST(ColorWells, TheSymbolsAreParts) {
    EXPECT_EQ(Wells().PartAt(85, 15), wellSwap);
    EXPECT_EQ(Wells().PartAt(12, 95), wellDefault);
}

TEST(ColorWells, AnOverlapIsTheForegrounds) {
    ColorWells wells = Wells();
    wells.foreRect.right = 85;
    EXPECT_EQ(wells.PartAt(82, 50), wellForeground);
    wells.swapRect = wells.backRectRight;
    EXPECT_EQ(wells.PartAt(88, 50), wellBackground);
}

}  // namespace

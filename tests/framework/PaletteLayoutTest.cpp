#include "framework/controls/PaletteLayout.h"

#include <gtest/gtest.h>

namespace {

TEST(PaletteLayoutTest, CountsThePicturesCells) {
    const PaletteLayout layout = LayOutPalette(50, 84, 60, 100);
    EXPECT_EQ(layout.rows, 4);
    EXPECT_EQ(layout.columns, 2);
    EXPECT_EQ(layout.CellCount(), 8);
    EXPECT_EQ(layout.cellWidth, 30);
    EXPECT_EQ(layout.cellHeight, 25);
}

TEST(PaletteLayoutTest, RoundsToTheNearestCell) {
    EXPECT_EQ(LayOutPalette(49, 83, 60, 100).CellCount(), 8) << "without the last line";
    EXPECT_EQ(LayOutPalette(51, 20, 60, 100).CellCount(), 2);
    EXPECT_EQ(LayOutPalette(37, 21, 60, 100).columns, 1);
    EXPECT_EQ(LayOutPalette(38, 21, 60, 100).columns, 2);
}

TEST(PaletteLayoutTest, ThereAreNoCellsWithoutAPicture) {
    EXPECT_EQ(LayOutPalette(0, 0, 60, 100).CellCount(), 0);
    EXPECT_EQ(CellAt(LayOutPalette(0, 0, 60, 100), 5, 5), 0);
    EXPECT_EQ(LayOutPalette(5, 100, 60, 100).CellCount(), 0);
    EXPECT_EQ(CellAt(LayOutPalette(50, 84, 1, 1), 0, 0), 0) << "no room for the cells";
}

TEST(PaletteLayoutTest, CellsAreFoundAlongTheRows) {
    const PaletteLayout layout = LayOutPalette(50, 84, 61, 103);
    EXPECT_EQ(CellAt(layout, 0, 0), 1);
    EXPECT_EQ(CellAt(layout, 30, 0), 2);
    EXPECT_EQ(CellAt(layout, 29, 25), 3);
    EXPECT_EQ(CellAt(layout, 59, 99), 8);
    EXPECT_EQ(CellAt(layout, 60, 0), 0) << "what the division leaves";
    EXPECT_EQ(CellAt(layout, 0, 100), 0);
    EXPECT_EQ(CellAt(layout, -1, 0), 0);
    EXPECT_EQ(CellAt(layout, 0, -1), 0);
}

TEST(PaletteLayoutTest, CellsAndTheirImagesLieInRows) {
    const PaletteLayout layout = LayOutPalette(50, 84, 60, 100);
    EXPECT_EQ(CellBounds(layout, 1), (ScreenRect{0, 0, 30, 25}));
    EXPECT_EQ(CellBounds(layout, 4), (ScreenRect{30, 25, 60, 50}));
    EXPECT_EQ(CellImage(layout, 1), (ScreenRect{0, 0, 24, 20}));
    EXPECT_EQ(CellImage(layout, 4), (ScreenRect{25, 21, 49, 41}));
}

TEST(PaletteLayoutTest, LargerDrawingsHaveLargerImages) {
    const PaletteLayout layout = LayOutPalette(50, 84, 120, 200);
    EXPECT_EQ(CellImage(layout, 1, 150), (ScreenRect{0, 0, 36, 30}));
    EXPECT_EQ(CellImage(layout, 4, 150), (ScreenRect{38, 32, 74, 62}));
    EXPECT_EQ(CellImage(layout, 4, 200), (ScreenRect{50, 42, 98, 82}));
}

}  // namespace

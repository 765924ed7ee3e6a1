#include "host/window/SelectionDrag.h"

#include <gtest/gtest.h>

namespace host {

TEST(DraggedRectTest, HoldsBothCornersFromAnyDirection) {
    const Size picture{100, 100};
    const hostapi::VRect expected{20, 10, 41, 31};
    EXPECT_TRUE(AreEqual(DraggedRect({10, 20}, {30, 40}, picture), expected));
    EXPECT_TRUE(AreEqual(DraggedRect({30, 40}, {10, 20}, picture), expected));
    EXPECT_TRUE(AreEqual(DraggedRect({30, 20}, {10, 40}, picture), expected));
    EXPECT_TRUE(AreEqual(DraggedRect({5, 5}, {5, 5}, picture), {5, 5, 6, 6}));
}

TEST(DraggedRectTest, EndsAtThePicturesEdge) {
    const Size picture{100, 50};
    EXPECT_TRUE(AreEqual(DraggedRect({-20, -30}, {200, 300}, picture), {0, 0, 50, 100}));
    EXPECT_TRUE(IsEmpty(DraggedRect({-20, 10}, {-1, 20}, picture)));
    EXPECT_TRUE(IsEmpty(DraggedRect({10, 50}, {20, 70}, picture)));
}

TEST(DraggedSelectionTest, AnEllipseIsWhereItsMaskIsHalfFull) {
    for (const hostapi::VRect& bounds :
         {hostapi::VRect{3, 5, 40, 25}, hostapi::VRect{0, 0, 7, 30}, hostapi::VRect{2, 2, 3, 3}}) {
        const DraggedSelection dragged{bounds, SelectionShape::ellipse};
        const Selection selection = FinishDrag(dragged, 0.0);
        EXPECT_TRUE(AreEqual(selection.bounds, bounds));
        for (int y = -1; y < 45; ++y) {
            for (int x = -1; x < 35; ++x) {
                EXPECT_EQ(dragged.Contains(x, y), selection.Coverage(x, y) >= 128)
                    << x << ", " << y;
            }
        }
    }
}

TEST(DraggedSelectionTest, ARectangleHasNoMaskAndNoFeather) {
    const DraggedSelection dragged{{1, 2, 3, 4}, SelectionShape::rectangle};
    EXPECT_EQ(FinishDrag(dragged, 9.0), SelectRectangle({1, 2, 3, 4}));
    EXPECT_TRUE(dragged.Contains(3, 2));
    EXPECT_FALSE(dragged.Contains(4, 2));
}

TEST(DraggedSelectionTest, AnEllipseTakesTheFeather) {
    const hostapi::VRect bounds{0, 0, 40, 60};
    EXPECT_EQ(FinishDrag({bounds, SelectionShape::ellipse}, 8.0), SelectEllipse(bounds, 8.0));
}

TEST(DraggedSelectionTest, AnEmptyOneCannotBeFinished) {
    EXPECT_THROW(FinishDrag({{5, 5, 5, 9}, SelectionShape::rectangle}, 0.0), SelectionError);
    EXPECT_THROW(FinishDrag({{5, 5, 9, 5}, SelectionShape::ellipse}, 0.0), SelectionError);
}

}  // namespace host

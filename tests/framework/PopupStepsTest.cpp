#include "framework/controls/PopupSteps.h"

#include <gtest/gtest.h>

#include <set>

#include "framework/controls/PopupLabel.h"

namespace {

int After(PopupKey key, int selected, const std::set<int>& disabled = {}, int count = 5) {
    return PopupEntryAfter(key, selected, count,
                           [&](int entry) { return disabled.count(entry) == 0; });
}

TEST(PopupStepsTest, KeysMoveByOne) {
    EXPECT_EQ(After(PopupKey::next, 2), 3);
    EXPECT_EQ(After(PopupKey::previous, 2), 1);
    EXPECT_EQ(After(PopupKey::first, 4), 1);
    EXPECT_EQ(After(PopupKey::last, 2), 5);
}

TEST(PopupStepsTest, TheSelectionStaysAtTheEnds) {
    EXPECT_EQ(After(PopupKey::next, 5), 5);
    EXPECT_EQ(After(PopupKey::previous, 1), 1);
    EXPECT_EQ(After(PopupKey::next, 3, {4, 5}), 3);
    EXPECT_EQ(After(PopupKey::previous, 3, {1, 2}), 3);
}

TEST(PopupStepsTest, DisabledEntriesArePassedOver) {
    EXPECT_EQ(After(PopupKey::next, 1, {2, 3}), 4);
    EXPECT_EQ(After(PopupKey::previous, 5, {4}), 3);
    EXPECT_EQ(After(PopupKey::first, 3, {1}), 2);
    EXPECT_EQ(After(PopupKey::last, 3, {5, 4}), 3);
    EXPECT_EQ(After(PopupKey::first, 3, {1, 2, 3, 4, 5}), 3);
}

TEST(PopupStepsTest, ASelectionOutsideTheMenuFindsItsWayBack) {
    EXPECT_EQ(After(PopupKey::next, 0), 1);
    EXPECT_EQ(After(PopupKey::previous, 6), 5);
    EXPECT_EQ(After(PopupKey::next, 100), 100);
    EXPECT_EQ(After(PopupKey::next, 1, {}, 0), 1);
}

TEST(PopupStepsTest, LongMenusHaveColumns) {
    EXPECT_EQ(PopupEntriesInColumn(768, 18), 38);
    EXPECT_EQ(PopupEntriesInColumn(766, 18), 38);
    EXPECT_EQ(PopupEntriesInColumn(765, 18), 37) << "with the frame";
    EXPECT_EQ(PopupEntriesInColumn(768, 0), 20) << "no entry to measure";
    EXPECT_EQ(PopupEntriesInColumn(10, 18), 1);
    EXPECT_FALSE(StartsPopupColumn(1, 20));
    EXPECT_FALSE(StartsPopupColumn(20, 20));
    EXPECT_TRUE(StartsPopupColumn(21, 20));
    EXPECT_TRUE(StartsPopupColumn(41, 20));
}

TEST(PopupLabelTest, TabsPlaceTheBox) {
    const PopupLabel plain = SplitPopupLabel("Presets:");
    EXPECT_EQ(plain.text, "Presets:");
    EXPECT_EQ(PopupBoxLeft(plain, 42, 6), 46);
    const PopupLabel tabbed = SplitPopupLabel("Presets:\t\t");
    EXPECT_EQ(tabbed.text, "Presets:");
    EXPECT_EQ(tabbed.tabs, 2);
    EXPECT_EQ(PopupBoxLeft(tabbed, 42, 6), 52);
    EXPECT_EQ(PopupBoxLeft(SplitPopupLabel(""), 0, 6), 4);
}

}  // namespace

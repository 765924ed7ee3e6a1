#include "editor/HelpReadout.h"

#include <gtest/gtest.h>

namespace {

TEST(HelpReadout, ShowsAnItemsTextOnce) {
    HelpReadout help;
    EXPECT_EQ(help.Follow(7, 0), 16007);
    EXPECT_EQ(help.Follow(7, 0), 0);
    EXPECT_EQ(help.Follow(60, 0), 16060);
}

TEST(HelpReadout, StartsOutsideAllItems) {
    HelpReadout help;
    EXPECT_EQ(help.Follow(0, 0), 0);
}

TEST(HelpReadout, LeavingAnItemEmptiesTheReadout) {
    HelpReadout help;
    help.Follow(7, 0);
    EXPECT_EQ(help.Follow(0, 0), 16000);
    EXPECT_EQ(help.Follow(0, 0), 0);
}

TEST(HelpReadout, APartTakesTheItemsPlace) {
    HelpReadout help;
    EXPECT_EQ(help.Follow(14, 16101), 16101);
    EXPECT_EQ(help.Follow(14, 16101), 0);
    EXPECT_EQ(help.Follow(14, 16102), 16102);
    EXPECT_EQ(help.Follow(60, 0), 16060);
}

TEST(HelpReadout, ComingBackToAPartShowsItAgain) {
    HelpReadout help;
    help.Follow(14, 16101);
    help.Follow(60, 0);
    EXPECT_EQ(help.Follow(14, 16101), 16101);
}

TEST(HelpReadout, BetweenTheWellsTheTextStays) {
    HelpReadout help;
    EXPECT_EQ(help.Follow(15, 16111), 16111);
    EXPECT_EQ(help.Follow(15, 0), 0);
    EXPECT_EQ(help.Follow(15, 16111), 16111);
}

}  // namespace

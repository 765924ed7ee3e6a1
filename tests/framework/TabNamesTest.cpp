#include "framework/dialog/TabNames.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

TEST(TabNamesTest, BlanksAndControlCharactersSeparate) {
    EXPECT_EQ(TabNames("One Two"), (Names{"One", "Two"}));
    EXPECT_EQ(TabNames("One\nTwo\tThree"), (Names{"One", "Two", "Three"}));
    EXPECT_EQ(TabNames("  One   Two "), (Names{"One", "Two"}));
    EXPECT_EQ(TabNames(""), Names{});
    EXPECT_EQ(TabNames(" \t "), Names{});
}

TEST(TabNamesTest, ANoBreakSpaceIsPartOfAName) {
    EXPECT_EQ(TabNames("Drawing Tile\xA0Preview"), (Names{"Drawing", "Tile\xA0Preview"}));
}

}  // namespace

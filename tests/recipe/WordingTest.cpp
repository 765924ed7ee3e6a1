#include "recipe/language/Wording.h"

#include <gtest/gtest.h>

#include <string>

#include "recipe/language/Utf8.h"

using namespace recipe;

TEST(Quoted, CutsWhatIsLong) {
    EXPECT_EQ(Quoted(""), "''");
    EXPECT_EQ(Quoted(std::string(60, 'a')), "'" + std::string(60, 'a') + "'");
    EXPECT_EQ(Quoted(std::string(61, 'a')), "'" + std::string(60, 'a') + "...'");
}

TEST(Quoted, CutsBetweenCharacters) {
    std::string text = "a";
    for (int i = 0; i < 40; ++i) {
        text += "\xE2\x82\xAC";  // three bytes, so that the cut falls inside one
    }
    const std::string quoted = Quoted(text);
    EXPECT_TRUE(IsUtf8(quoted));
    EXPECT_EQ(quoted.size(), 1 + 58 + 4u);
}

TEST(ListOf, JoinsAsInASentence) {
    EXPECT_EQ(ListOf({}), "");
    EXPECT_EQ(ListOf({"a"}), "a");
    EXPECT_EQ(ListOf({"a", "b"}), "a or b");
    EXPECT_EQ(ListOf({"a", "b", "c"}), "a, b or c");
}

#include "recipe/language/Utf8.h"

#include <gtest/gtest.h>

using recipe::IsUtf8;

TEST(IsUtf8, TakesEveryLength) {
    EXPECT_TRUE(IsUtf8(""));
    EXPECT_TRUE(IsUtf8("plain"));
    EXPECT_TRUE(IsUtf8("\xC3\xA4"));
    EXPECT_TRUE(IsUtf8("\xE2\x82\xAC"));
    EXPECT_TRUE(IsUtf8("\xF0\x9F\x8E\xA8"));
    EXPECT_TRUE(IsUtf8("\xF4\x8F\xBF\xBF"));
}

TEST(IsUtf8, RefusesWhatIsMalformed) {
    EXPECT_FALSE(IsUtf8("\x80"));  // no first byte
    EXPECT_FALSE(IsUtf8("\xC3"));  // cut short
    EXPECT_FALSE(IsUtf8("\xE2\x82"));
    EXPECT_FALSE(IsUtf8("\xC3("));     // the second byte is another character
    EXPECT_FALSE(IsUtf8("\xC0\xAF"));  // overlong
    EXPECT_FALSE(IsUtf8("\xE0\x80\xAF"));
    EXPECT_FALSE(IsUtf8("\xF0\x80\x80\xAF"));
    EXPECT_FALSE(IsUtf8("\xED\xA0\x80"));      // surrogate
    EXPECT_FALSE(IsUtf8("\xF4\x90\x80\x80"));  // beyond U+10FFFF
    EXPECT_FALSE(IsUtf8("\xF8\x88\x80\x80\x80"));
    EXPECT_FALSE(IsUtf8("\xFF"));
}

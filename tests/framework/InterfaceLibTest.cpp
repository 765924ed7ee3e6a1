#include "framework/drawing/InterfaceLib.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr hostapi::Rect rect{10, 20, 30, 60};

TEST(InterfaceLibTest, InsetsAndOffsets) {
    EXPECT_TRUE(AreEqual(Inset(rect, 3, 2), {12, 23, 28, 57}));
    EXPECT_TRUE(AreEqual(Inset(rect, -1, -1), {9, 19, 31, 61}));
    EXPECT_TRUE(AreEqual(Offset(rect, 5, -4), {6, 25, 26, 65}));
    EXPECT_TRUE(AreEqual(Offset(hostapi::Rect{0, 0, 10, 32767}, 0x1000, 0), {0, 4096, 10, 32767}));
    EXPECT_EQ(Width(rect), 40);
    EXPECT_EQ(Height(rect), 20);
}

TEST(InterfaceLibTest, ComparesAndFinds) {
    EXPECT_FALSE(AreEqual(rect, {10, 20, 30, 61}));
    EXPECT_FALSE(IsEmpty(rect));
    EXPECT_TRUE(IsEmpty(hostapi::Rect{10, 20, 10, 60}));
    EXPECT_TRUE(IsEmpty(hostapi::Rect{10, 20, 30, 19}));
    EXPECT_TRUE(Contains(rect, {10, 20}));
    EXPECT_TRUE(Contains(rect, {29, 59}));
    EXPECT_FALSE(Contains(rect, {30, 20}));
    EXPECT_FALSE(Contains(rect, {10, 60}));
    EXPECT_TRUE(Meet(rect, {29, 59, 100, 100}));
    EXPECT_FALSE(Meet(rect, {30, 20, 100, 100}));
    EXPECT_FALSE(Meet(rect, {15, 25, 15, 26}));
}

TEST(InterfaceLibTest, TextsAreCutAt255Bytes) {
    char text[textBufferSize];
    CopyText(text, std::string(300, 'x').c_str());
    EXPECT_EQ(std::strlen(text), 255u);
    CopyText(text, "short");
    EXPECT_STREQ(text, "short");
    AppendText(text, " and more");
    EXPECT_STREQ(text, "short and more");
    AppendText(text, std::string(300, 'y').c_str());
    EXPECT_EQ(std::strlen(text), 255u);
    AppendText(text, "z");
    EXPECT_EQ(text[254], 'y');
}

TEST(InterfaceLibTest, ComparesIgnoringCase) {
    EXPECT_EQ(CompareIgnoringCase("Preset", "pRESET"), 0);
    EXPECT_EQ(CompareIgnoringCase("AZaz", "azAZ"), 0);
    for (const char* const neighbours : {"@`", "[{"}) {
        const char before[] = {neighbours[0], '\0'};
        EXPECT_NE(CompareIgnoringCase(before, neighbours + 1), 0) << "no letters";
    }
    EXPECT_LT(CompareIgnoringCase("abc", "ABD"), 0);
    EXPECT_GT(CompareIgnoringCase("abcd", "ABC"), 0);
    EXPECT_LT(CompareIgnoringCase("", "a"), 0);
    EXPECT_LT(CompareIgnoringCase("z", "\xE4"), 0) << "bytes above ASCII come last";
}

TEST(InterfaceLibTest, ColorsHaveRedInTheLowByte) {
    EXPECT_EQ(MakeColor24(0x12, 0x34, 0x56), 0x563412u);
}

}  // namespace

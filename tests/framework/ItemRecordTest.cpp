#include "framework/dialog/ItemRecord.h"

#include <gtest/gtest.h>

namespace {

TEST(ItemRecordTest, KindsFollowTheClassNames) {
    EXPECT_EQ(KindOfClass("Button"), 'B');
    EXPECT_EQ(KindOfClass("BUTTON"), 'B');
    EXPECT_EQ(KindOfClass("ComboBox"), 'C');
    EXPECT_EQ(KindOfClass("ScrollBar"), 'S');
    EXPECT_EQ(KindOfClass("Static"), 's');
    EXPECT_EQ(KindOfClass("Edit"), 0x80 + 's');
    EXPECT_EQ(KindOfClass("SysTabControl32"), 'Y');
    for (const char* const custom : {"tToolPalette", "tPopupMenu", "tRealtimeMenu", "tLinearSlider",
                                     "tPadLock", "tUserItem"}) {
        EXPECT_EQ(KindOfClass(custom), 'T') << custom;
    }
    EXPECT_EQ(KindOfClass("tBitmapButton"), 'B');
}

TEST(ItemRecordTest, APrefixOfTheClassDoesNotCount) {
    EXPECT_EQ(KindOfClass("Host_Edit"), 0x80 + 's');
    EXPECT_EQ(KindOfClass("_Button"), 'B');
}

TEST(ItemRecordTest, OtherClassesHaveNoKind) {
    EXPECT_EQ(KindOfClass("ListBox"), 0);
    EXPECT_EQ(KindOfClass(""), 0);
    EXPECT_EQ(KindOfClass("x_"), 0);
    EXPECT_EQ(KindOfClass("S"), 0);
}

TEST(ItemRecordTest, ANewRecordHasTheUsualLimits) {
    const ItemRecord record;
    EXPECT_EQ(record.minimum, -32768);
    EXPECT_EQ(record.maximum, 32767);
    EXPECT_EQ(record.lineStep, 1);
    EXPECT_EQ(record.pageStep, 1);
    EXPECT_EQ(record.value, 0);
    EXPECT_EQ(record.flags, 0);
}

}  // namespace

#include "framework/controls/ScrollStep.h"

#include <gtest/gtest.h>

namespace {

ItemRecord Bar() {
    ItemRecord record;
    record.minimum = 0;
    record.maximum = 100;
    record.lineStep = 2;
    record.pageStep = 30;
    return record;
}

TEST(ScrollStepTest, ArrowsAndShaftStep) {
    EXPECT_EQ(ScrolledTo(Bar(), scrollLineBack, 50, 0), 48);
    EXPECT_EQ(ScrolledTo(Bar(), scrollLineOn, 50, 0), 52);
    EXPECT_EQ(ScrolledTo(Bar(), scrollPageBack, 50, 0), 20);
    EXPECT_EQ(ScrolledTo(Bar(), scrollPageOn, 50, 0), 80);
}

TEST(ScrollStepTest, TheThumbIsThePosition) {
    EXPECT_EQ(ScrolledTo(Bar(), scrollThumb, 50, 77), 77);
    EXPECT_EQ(ScrolledTo(Bar(), scrollThumbEnd, 50, 77), 77);
}

TEST(ScrollStepTest, PositionsStayWithinTheLimits) {
    EXPECT_EQ(ScrolledTo(Bar(), scrollLineBack, 1, 0), 0);
    EXPECT_EQ(ScrolledTo(Bar(), scrollPageOn, 90, 0), 100);
    EXPECT_EQ(ScrolledTo(Bar(), scrollThumb, 50, 5000), 100);
    EXPECT_EQ(ScrolledTo(Bar(), scrollThumb, 50, -5000), 0);
}

TEST(ScrollStepTest, OtherCodesChangeNothing) {
    EXPECT_EQ(ScrolledTo(Bar(), scrollEnd, 50, 77), 50);
    EXPECT_EQ(ScrolledTo(Bar(), 6, 50, 77), 50);
    EXPECT_TRUE(EndsScrolling(scrollThumbEnd));
    EXPECT_TRUE(EndsScrolling(scrollEnd));
    EXPECT_FALSE(EndsScrolling(scrollThumb));
    EXPECT_FALSE(EndsScrolling(scrollLineOn));
}

}  // namespace

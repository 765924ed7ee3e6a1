#include "framework/dialog/DialogState.h"

#include <gtest/gtest.h>

#include "base/Platform.h"

namespace {

std::uint32_t now = 0;

class DialogStateTest : public testing::Test {
  protected:
    DialogStateTest() : ticksBefore(platformServices.tickCount), stateBefore(dialogState) {
        platformServices.tickCount = [] { return now; };
        dialogState = {};
    }
    ~DialogStateTest() override {
        platformServices.tickCount = ticksBefore;
        dialogState = stateBefore;
    }

    static bool ClickAt(std::uint32_t ticks) {
        now = ticks;
        return TakeClick(500);
    }

  private:
    std::uint32_t (*ticksBefore)();
    DialogState stateBefore;
};

TEST_F(DialogStateTest, TheSecondOfTwoQuickClicksIsADoubleClick) {
    EXPECT_FALSE(ClickAt(100)) << "the first of all, though the clock has just begun";
    EXPECT_TRUE(ClickAt(600));
    EXPECT_FALSE(ClickAt(1101));
    EXPECT_TRUE(ClickAt(1101));
}

TEST_F(DialogStateTest, TheClockMayWrap) {
    EXPECT_FALSE(ClickAt(0xFFFFFFF0));
    EXPECT_TRUE(ClickAt(100));
    EXPECT_FALSE(ClickAt(0x80000000));
}

}  // namespace

#include "dialogs/ApplyState.h"

#include <gtest/gtest.h>

#include "framework/drawing/InterfaceLib.h"

namespace {

TEST(ApplyState, OkOwesTheRunUntilApply) {
    ApplyState state;
    EXPECT_TRUE(state.IsRunOwed());
    state.SetApplied();
    EXPECT_FALSE(state.IsRunOwed());
    EXPECT_TRUE(state.IsApplied());
}

TEST(ApplyState, AChangeTakesAResultBackOnce) {
    ApplyState state;
    EXPECT_FALSE(state.MarkChanged()) << "nothing was applied";
    state.SetApplied();
    EXPECT_TRUE(state.MarkChanged());
    EXPECT_TRUE(state.IsRunOwed());
    EXPECT_FALSE(state.MarkChanged());
}

TEST(ApplyState, ControlAloneAsksForAgain) {
    ApplyState state;
    EXPECT_TRUE(state.FollowKeys(modifierControl));
    EXPECT_TRUE(state.IsAgain());
    EXPECT_FALSE(state.FollowKeys(modifierControl)) << "the text stands already";
    EXPECT_TRUE(state.FollowKeys(0));
    EXPECT_FALSE(state.IsAgain());
}

TEST(ApplyState, ControlWithAnotherKeyDoesNot) {
    for (const int others : {modifierShift, modifierCapsLock, modifierAlt}) {
        ApplyState state;
        EXPECT_FALSE(state.FollowKeys(modifierControl | others));
        EXPECT_FALSE(state.IsAgain());
        state.FollowKeys(modifierControl);
        EXPECT_TRUE(state.FollowKeys(modifierControl | others));
        EXPECT_FALSE(state.IsAgain());
    }
}

}  // namespace

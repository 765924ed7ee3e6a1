// The plug-in's own table; the fixtures of the other tests exchange its members.
#include "base/Platform.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <ctime>

namespace {

TEST(PlatformTest, TheClockCountsSeconds) {
    const auto before = static_cast<std::uint32_t>(std::time(nullptr));
    const std::uint32_t seconds = platformServices.clockSeconds();
    const auto after = static_cast<std::uint32_t>(std::time(nullptr));
    EXPECT_GE(seconds, before);
    EXPECT_LE(seconds, after);
}

TEST(PlatformTest, TheTicksAreTheSystems) {
    const DWORD before = GetTickCount();
    const std::uint32_t ticks = platformServices.tickCount();
    const DWORD after = GetTickCount();
    EXPECT_LE(ticks - before, after - before);
}

TEST(PlatformTest, TheCursorsAreTheSystems) {
    platformServices.showWaitCursor();
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, MAKEINTRESOURCEA(32514)));
    platformServices.showArrowCursor();
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)));
}

TEST(PlatformTest, TheTemporaryFolderIsTheSystems) {
    char expected[1024];
    const auto length = static_cast<int>(GetTempPathA(sizeof expected, expected));
    char folder[1024];
    ASSERT_EQ(platformServices.temporaryPath(folder, sizeof folder), length);
    EXPECT_STREQ(folder, expected);
    // Too small a buffer is told by the length.
    EXPECT_GE(platformServices.temporaryPath(folder, 3), 3);
    EXPECT_EQ(platformServices.pathSeparator, '\\');
}

}  // namespace

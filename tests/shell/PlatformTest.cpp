// The table of programs without windows; the fixtures of the other tests exchange its members.
#include "base/Platform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace {

/// No value: the variable is removed.
void SetVariable(const char* name, const std::optional<std::string>& value) {
#ifdef _WIN32
    _putenv_s(name, value.value_or("").c_str());
#else
    if (value) {
        setenv(name, value->c_str(), 1);
    } else {
        unsetenv(name);
    }
#endif
}

std::optional<std::string> Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

/// The two variables are as they were when the object goes.
class SavedVariables {
  public:
    SavedVariables() : first(Variable("TMPDIR")), second(Variable("TEMP")) {}
    SavedVariables(const SavedVariables&) = delete;
    SavedVariables& operator=(const SavedVariables&) = delete;
    ~SavedVariables() {
        SetVariable("TMPDIR", first);
        SetVariable("TEMP", second);
    }

  private:
    std::optional<std::string> first;
    std::optional<std::string> second;
};

TEST(PlatformTest, TheClockCountsSeconds) {
    const auto before = static_cast<std::uint32_t>(std::time(nullptr));
    const std::uint32_t seconds = platformServices.clockSeconds();
    const auto after = static_cast<std::uint32_t>(std::time(nullptr));
    EXPECT_GE(seconds, before);
    EXPECT_LE(seconds, after);
}

TEST(PlatformTest, TheTicksGoOn) {
    const std::uint32_t before = platformServices.tickCount();
    EXPECT_LT(platformServices.tickCount() - before, 0x80000000u);
}

TEST(PlatformTest, WhatNeedsWindowsDoesNothing) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    platformServices.showWaitCursor();
    platformServices.showArrowCursor();
    platformServices.beep();
    platformServices.showAbout();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "not even a bell";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PlatformTest, AFaultIsOneLine) {
    testing::internal::CaptureStderr();
    platformServices.reportFault(2, "SimpleLink / Zeile 25 !(ptr != NULL)", -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "A fatal error of type = 2 occured. File: SimpleLink / Zeile 25 !(ptr != NULL) "
              "Line Number: -1\n");
}

TEST(PlatformTest, TheTemporaryFolderIsTheVariables) {
    const SavedVariables saved;
    const auto folder = [] {
        char buffer[64] = "untouched";
        const int length = platformServices.temporaryPath(buffer, sizeof buffer);
        return std::pair(length, std::string(buffer));
    };
    SetVariable("TMPDIR", "first");
    SetVariable("TEMP", "second");
    EXPECT_EQ(folder(), std::pair(5, std::string("first")));
    SetVariable("TMPDIR", "");
    EXPECT_EQ(folder(), std::pair(6, std::string("second")));
    SetVariable("TEMP", "");
    EXPECT_EQ(folder(), std::pair(4, std::string("/tmp")));
    SetVariable("TMPDIR", std::nullopt);
    SetVariable("TEMP", std::nullopt);
    EXPECT_EQ(folder(), std::pair(4, std::string("/tmp")));
    SetVariable("TMPDIR", std::string(63, 'x'));
    EXPECT_EQ(folder(), std::pair(63, std::string(63, 'x')));
    // With its end it is one too long.
    SetVariable("TMPDIR", std::string(64, 'x'));
    EXPECT_EQ(folder(), std::pair(64, std::string("untouched")));
}

}  // namespace

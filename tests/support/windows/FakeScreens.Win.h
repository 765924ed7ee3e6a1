// Screens that are not there, for programs on a desktop in memory, which has one only.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "base/ScreenGeometry.h"
#include "tests/support/windows/ImportTable.Win.h"

/// While it lives, this program's calls find these screens in place of the system's; the first one
/// is the primary. Windows can be moved to them and seen there, by their places. One at a time.
class FakeScreens {
  public:
    /// With no screens the system reports none, as if each were gone when it is asked for.
    explicit FakeScreens(std::vector<Screen> screens);
    FakeScreens(const FakeScreens&) = delete;
    FakeScreens& operator=(const FakeScreens&) = delete;
    ~FakeScreens();

  private:
    ImportExchange imports;
};

/// The screens beside the primary one that tests of several screens run with: those that the system
/// has if the environment variable REAL_SCREENS is set (scripts/two-screens), else some that it
/// does not have, to the right, to the left and above, each with a bar of the system at one side.
std::vector<Screen> SecondScreens();

/// While it lives, there are the primary screen and `second`, one of SecondScreens.
class TwoScreens {
  public:
    explicit TwoScreens(const Screen& second);

  private:
    std::optional<FakeScreens> fake;
};

/// The screen that fakes have for the primary one: that of the desktop in memory.
constexpr Screen fakePrimaryScreen{{0, 0, 1024, 768}, {0, 0, 1024, 728}};

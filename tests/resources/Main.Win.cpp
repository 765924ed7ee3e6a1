// The tests run on a desktop of their own, in memory, so that programs at the same time don't take
// the focus from each other.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/resources/StandIns.Win.h"

int main(int count, char** values) {
    testing::InitGoogleTest(&count, values);
    const std::string name = "resources" + std::to_string(GetCurrentProcessId());
    SetThreadDesktop(CreateDesktopA(name.c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr));
    RegisterStandIns();
    return RUN_ALL_TESTS();
}

// The tests run on a desktop of their own, so that programs at the same time don't take the focus
// from each other.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <string>

#include "base/Module.Win.h"
#include "tests/e2e/InputDesktop.Win.h"
#include "tests/framework/windows/DialogScript.Win.h"

HINSTANCE instanceHandle = nullptr;

namespace {

bool ReadArguments(int count, char** values) {
    const std::string screenshots = "--screenshots=";
    for (int i = 1; i < count; ++i) {
        const std::string argument = values[i];
        if (argument.rfind(screenshots, 0) != 0) {
            std::fprintf(stderr, "unknown argument %s\n", values[i]);
            return false;
        }
        screenshotFolder = argument.substr(screenshots.size());
    }
    return true;
}

}  // namespace

int main(int count, char** values) {
    testing::InitGoogleTest(&count, values);
    if (!ReadArguments(count, values)) {
        return 2;
    }
    EnterOwnDesktop();
    instanceHandle = GetModuleHandleA(nullptr);
    return RUN_ALL_TESTS();
}

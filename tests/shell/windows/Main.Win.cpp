// The tests run on a desktop of their own, so that programs at the same time don't take the focus
// from each other.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/shell/windows/ProgramArguments.Win.h"

namespace {

ProgramArguments arguments;

/// The path behind `--name=`, with the system's separators.
bool TakePath(const std::string& argument, const std::string& name, std::string& path) {
    const std::string prefix = "--" + name + "=";
    if (argument.rfind(prefix, 0) != 0) {
        return false;
    }
    path = argument.substr(prefix.size());
    std::replace(path.begin(), path.end(), '/', '\\');
    return true;
}

bool ReadArguments(int count, char** values) {
    for (int i = 1; i < count; ++i) {
        const std::string argument = values[i];
        if (!TakePath(argument, "plugin", arguments.plugin) &&
            !TakePath(argument, "toolbox", arguments.toolbox) &&
            !TakePath(argument, "family", arguments.family) &&
            !TakePath(argument, "screenshots", arguments.screenshots)) {
            std::fprintf(stderr, "unknown argument %s\n", values[i]);
            return false;
        }
    }
    return true;
}

HDESK OwnDesktop() {
    const std::string name = "tests" + std::to_string(GetCurrentProcessId());
    const HDESK desktop = CreateDesktopA(name.c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    SetThreadDesktop(desktop);
    // The display is set up before other threads ask for windows: Wine locks up when one of them
    // does so for the first time while another loads a library that draws.
    ReleaseDC(nullptr, GetDC(nullptr));
    return desktop;
}

}  // namespace

const ProgramArguments& Arguments() {
    return arguments;
}

int main(int count, char** values) {
    testing::InitGoogleTest(&count, values);
    if (!ReadArguments(count, values)) {
        return 2;
    }
    arguments.desktop = OwnDesktop();
    return RUN_ALL_TESTS();
}

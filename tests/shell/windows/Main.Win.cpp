// The tests run on a desktop of their own, so that programs at the same time don't take the focus
// from each other.
#include <gtest/gtest.h>

#include <algorithm>

#include "fixtures/InputDesktop.Win.h"
#include "tests/shell/windows/ProgramArguments.Win.h"

namespace {

ProgramArguments arguments;

/// The path after `--name=`, with the system's separators.
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
            !TakePath(argument, "threads", arguments.threads) &&
            !TakePath(argument, "unwinder", arguments.unwinder)) {
            std::fprintf(stderr, "unknown argument %s\n", values[i]);
            return false;
        }
    }
    return true;
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
    EnterOwnDesktop();
    return RUN_ALL_TESTS();
}

#include "tests/recipe/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <system_error>

#include "host/picture/Picture.h"
#include "recipe/tool/System.h"

namespace fs = std::filesystem;

namespace {

/// A name of this process's own, so that test programs can run side by side.
fs::path NewName() {
    static int count = 0;
    return fs::temp_directory_path() /
           ("zandermolite-recipe-test-" + std::to_string(recipe::ProcessId()) + "-" +
            std::to_string(count++));
}

}  // namespace

TemporaryFolder::TemporaryFolder() : path(NewName()), previousFolder(fs::current_path()) {
    fs::remove_all(path);  // left by a process of the same number that broke off
    fs::create_directories(path);
    fs::current_path(path);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::current_path(previousFolder, ignored);
    fs::remove_all(path, ignored);
}

std::vector<std::string> TemporaryFolder::FileNames() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        names.push_back(host::Utf8Name(entry.path().lexically_relative(path)));
    }
    std::ranges::sort(names);
    return names;
}

void WriteFile(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string ReadFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

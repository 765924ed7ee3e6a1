// Libraries of the system, and files that bear their names.
#include "framework/controls/SystemLibrary.Win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/ScratchFolder.h"

namespace {

std::filesystem::path PathOf(HMODULE module) {
    wchar_t path[MAX_PATH];
    return {std::wstring(path, GetModuleFileNameW(module, path, MAX_PATH))};
}

std::filesystem::path SystemFolder() {
    wchar_t folder[MAX_PATH];
    return {std::wstring(folder, GetSystemDirectoryW(folder, MAX_PATH))};
}

/// Makes a folder the current one as long as the object lives.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::filesystem::path& folder)
        : before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { std::filesystem::current_path(before); }

  private:
    std::filesystem::path before;
};

TEST(SystemLibraryTest, TheSystemsOwnIsLoaded) {
    const HMODULE library = LoadSystemLibrary(L"uxtheme.dll");
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(std::filesystem::equivalent(PathOf(library).parent_path(), SystemFolder()));
    EXPECT_NE(GetProcAddress(library, "SetWindowTheme"), nullptr);
    FreeLibrary(library);
}

TEST(SystemLibraryTest, AFileInTheCurrentFolderIsNot) {
    // A library that nobody has loaded, under a name that the system does not have.
    const ScratchFolder scratch;
    const std::filesystem::path planted = scratch.Path() / "planted.dll";
    std::filesystem::copy_file(SystemFolder() / "version.dll", planted);
    const CurrentFolder current(scratch.Path());
    const HMODULE byName = LoadLibraryW(L"planted.dll");
    ASSERT_NE(byName, nullptr) << "the trap is one";
    FreeLibrary(byName);
    EXPECT_EQ(LoadSystemLibrary(L"planted.dll"), nullptr);
}

TEST(SystemLibraryTest, OneThatIsMissingIsNull) {
    EXPECT_EQ(LoadSystemLibrary(L"zandermolite-has-no-such.dll"), nullptr);
}

}  // namespace

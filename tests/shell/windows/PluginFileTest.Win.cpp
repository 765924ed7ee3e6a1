// The product's file as a host, and the system, see it.
#include <algorithm>
#include <cctype>
#include <functional>
#include <set>
#include <thread>

#include "files/Preferences.h"
#include "host/command/DialogUser.Win.h"
#include "host/plugin/PluginFile.h"
#include "tests/shell/windows/Libraries.Win.h"
#include "tests/support/OwnPreferences.Win.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/windows/DialogDriver.Win.h"
#include "tests/support/windows/Levels.Win.h"

namespace {

class PluginFileTest : public testing::Test {
  protected:
    template <typename T>
    const T* At(std::uintptr_t offset) const {
        return reinterpret_cast<const T*>(reinterpret_cast<const char*>(plugin.Module()) + offset);
    }
    const IMAGE_NT_HEADERS& Headers() const {
        const auto offset = At<IMAGE_DOS_HEADER>(0)->e_lfanew;
        return *At<IMAGE_NT_HEADERS>(static_cast<std::uintptr_t>(offset));
    }
    std::uintptr_t Directory(int number) const {
        return Headers().OptionalHeader.DataDirectory[number].VirtualAddress;
    }
    std::vector<std::uint8_t> Resource(LPCSTR name, LPCSTR type) const {
        const HRSRC found = FindResourceA(plugin.Module(), name, type);
        if (found == nullptr) {
            return {};
        }
        const auto* const bytes =
            static_cast<const std::uint8_t*>(LockResource(LoadResource(plugin.Module(), found)));
        return {bytes, bytes + SizeofResource(plugin.Module(), found)};
    }

    LoadedPlugin plugin;
};

TEST_F(PluginFileTest, ExportsTheEntryAlone) {
    const auto* const exports = At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
    ASSERT_EQ(exports->NumberOfNames, 1u);
    EXPECT_EQ(exports->NumberOfFunctions, 1u);
    const auto* const names = At<DWORD>(exports->AddressOfNames);
    EXPECT_STREQ(At<char>(names[0]), "ENTRYPOINT");
}

TEST_F(PluginFileTest, ImportsTheSystemsLibrariesAlone) {
    const std::set<std::string> systems = {"kernel32.dll", "user32.dll",   "gdi32.dll",
                                           "advapi32.dll", "comdlg32.dll", "shell32.dll",
                                           "comctl32.dll", "msvcrt.dll"};
    int libraries = 0;
    for (const auto* entry = At<IMAGE_IMPORT_DESCRIPTOR>(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT));
         entry->Name != 0; ++entry) {
        std::string name = At<char>(entry->Name);
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char letter) {
            return static_cast<char>(std::tolower(letter));
        });
        EXPECT_EQ(systems.count(name), 1u) << name;
        ++libraries;
    }
    EXPECT_GE(libraries, 2);
}

TEST_F(PluginFileTest, IsProtectedByTheSystem) {
    const auto flags = Headers().OptionalHeader.DllCharacteristics;
    EXPECT_NE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, 0) << "addresses are randomised";
    EXPECT_NE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT, 0) << "data is not executed";
    EXPECT_NE(Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC), 0u) << "and can be moved";
    if (sizeof(void*) == 8) {
        EXPECT_NE(flags & 0x20, 0) << "high-entropy addresses";
    }
}

constexpr bool is64Bit = sizeof(void*) == 8;

// Byte by byte; four-character codes stand in reverse.
const std::string expectedPipl =
    std::string("\x01\0", 2)        // version of the resource
    + std::string("\0\0\0\0", 4)    // version of the list
    + std::string("\x07\0\0\0", 4)  // properties
    + std::string("MIB8dnik\0\0\0\0\x04\0\0\0MFB8", 20) +
    std::string("MIB8eman\0\0\0\0\x14\0\0\0\x13Zandermolite 3.0...", 36) +
    std::string(
        "MIB8gtac\0\0\0\0\x0C\0\0\0\x0A"
        "Brenvalder\0",
        28) +
    std::string("MIB8srev\0\0\0\0\x04\0\0\0\0\0\x04\0", 20) +
    std::string(is64Bit ? "MIB84668\0\0\0\0\x0C\0\0\0ENTRYPOINT\0\0"
                        : "MIB868xw\0\0\0\0\x0C\0\0\0ENTRYPOINT\0\0",
                28) +
    std::string("MIB8edom\0\0\0\0\x04\0\0\0\x10\0\0\0", 20) +
    std::string("MIB8icif\0\0\0\0\x1C\0\0\0", 16) +
    std::string(
        "\x01\x01\0\0\x01\x01\0\0\x04\x01\0\0\x04\x01\0\0"
        "\x04\x01\0\0\x04\x01\0\0\x04\x01\0\0",
        28);

TEST_F(PluginFileTest, TheHostsResourceByteByByte) {
    const std::vector<std::uint8_t> bytes = Resource(MAKEINTRESOURCEA(16000), "PIPL");
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), expectedPipl);
    EXPECT_EQ(Resource(MAKEINTRESOURCEA(16000), "pipl"), bytes);
}

TEST_F(PluginFileTest, AStrictHostReadsItsResource) {
    const host::FilterDescription description =
        host::ParsePipl(Resource(MAKEINTRESOURCEA(16000), "PIPL"));
    EXPECT_EQ(description.name, "Zandermolite 3.0...");
    EXPECT_EQ(description.category, "Brenvalder");
    EXPECT_EQ(description.version, 0x00040000u);
    EXPECT_EQ(description.Entry(), "ENTRYPOINT");
    EXPECT_EQ(description.modes, host::modeRGB);
    ASSERT_TRUE(description.cases);
    for (std::int16_t filterCase = 1; filterCase <= 7; ++filterCase) {
        EXPECT_TRUE(description.Handles(filterCase));
    }
}

TEST(PluginListingTest, TheResourceIsReadWithoutRunningTheLibrary) {
    const HMODULE data =
        LoadLibraryExA(Arguments().plugin.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(data, nullptr);
    EXPECT_NE(FindResourceA(data, MAKEINTRESOURCEA(16000), "PIPL"), nullptr);
    FreeLibrary(data);
}

/// One value of the version resource's texts.
std::string VersionText(const std::vector<char>& version, const std::string& name) {
    void* text = nullptr;
    UINT length = 0;
    VerQueryValueA(version.data(), ("\\StringFileInfo\\040904B0\\" + name).c_str(), &text, &length);
    return text != nullptr ? static_cast<const char*>(text) : "(none)";
}

TEST_F(PluginFileTest, TellsItsVersion) {
    const char* const path = Arguments().plugin.c_str();
    std::vector<char> version(GetFileVersionInfoSizeA(path, nullptr));
    ASSERT_FALSE(version.empty());
    ASSERT_TRUE(GetFileVersionInfoA(path, 0, static_cast<DWORD>(version.size()), version.data()));
    void* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueA(version.data(), "\\", &fixed, &length));
    const auto* const info = static_cast<const VS_FIXEDFILEINFO*>(fixed);
    EXPECT_EQ(info->dwFileVersionMS, 0x00030000u);
    EXPECT_EQ(info->dwFileVersionLS, 0u);
    EXPECT_EQ(info->dwFileType, static_cast<DWORD>(VFT_DLL));
    EXPECT_EQ(VersionText(version, "FileVersion"), "3.0.0");
    EXPECT_EQ(VersionText(version, "ProductVersion"), "3.0.0");
    EXPECT_EQ(VersionText(version, "ProductName"), "Zandermolite");
    EXPECT_EQ(VersionText(version, "OriginalFilename"), "Zandermolite.8bf");
    EXPECT_EQ(VersionText(version, "FileDescription"),
              std::string("Seamlessly tiling textures ") + (is64Bit ? "(64-bit)" : "(32-bit)"));
}

TEST(LevelsTest, TheCountSeesEachKind) {
    const Levels before = CountLevels();
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    EXPECT_EQ(CountLevels().kernelHandles, before.kernelHandles + 1);
    CloseHandle(event);
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_EQ(CountLevels().gdiObjects, before.gdiObjects + 1);
    DeleteObject(brush);
    const HMENU menu = CreateMenu();
    EXPECT_EQ(CountLevels().menus, before.menus + 1);
    DestroyMenu(menu);
    const HWND window =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    EXPECT_GT(CountLevels().windows, before.windows);
    DestroyWindow(window);
}

void SkipNewDialog() {
    Preferences preferences;
    preferences.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(preferences));
}

/// The life of the library in a host that frees it after each use.
void LoadRunAndFree() {
    const LoadedPlugin plugin;
    host::FilterHost filterHost;
    host::Picture picture = host::MakePicture(40, 30, 3, 100);
    const host::Selection selection = host::SelectRectangle({2, 3, 12, 13});
    host::DialogUser user(UsualPresses());
    EXPECT_TRUE(filterHost.Run(plugin.Entry(), picture, selection).Succeeded());
    EXPECT_EQ(user.Finish(), std::nullopt);
    EXPECT_EQ(filterHost.RunAbout(plugin.Entry()).result, 0);
}

/// A run that ends in a fault's dialog, so in an exception. Without the New dialog: from the second
/// fault of a library on, that would close at once.
void Fail(const LoadedPlugin& plugin) {
    host::HostSettings settings;
    settings.without[host::Service::bufferProcs] = true;
    host::FilterHost filterHost(settings);
    host::Picture picture = host::MakePicture(40, 30, 3, 100);
    DriveDialog([&] {
        filterHost.Run(plugin.Entry(), picture, host::SelectRectangle({2, 3, 12, 13}));
    });
}

void LoadFailAndFree() {
    const LoadedPlugin plugin;
    Fail(plugin);
}

void FailOnAThread(const LoadedPlugin& plugin) {
    const HDESK desktop = GetThreadDesktop(GetCurrentThreadId());
    std::thread thread([&plugin, desktop] {
        SetThreadDesktop(desktop);
        Fail(plugin);
    });
    thread.join();
}

/// Whether the levels come back to these. A thread that has been waited for may still take a moment
/// to go, with what it holds; without one, nothing changes by waiting.
bool LevelsReturnTo(const Levels& expected) {
    for (int i = 0; i < 8; ++i) {
        const Levels levels = CountLevels();
        if (levels == expected) {
            return true;
        }
        if (i > 0 && levels.threads == expected.threads) {
            return false;
        }
        Sleep(100);
    }
    return false;
}

/// Succeeds if `use`, repeated, leaks nothing. The system keeps some objects of first uses
/// (pens and brushes of a dialog, when it first paints one in full), so a series of uses may find
/// more than the one before; but what each use leaves would make every series end above its
/// beginning.
testing::AssertionResult LeavesNothingBehind(int times, const std::function<void()>& use) {
    constexpr int seriesAllowed = 3;
    Levels before{};
    for (int series = 0; series < seriesAllowed; ++series) {
        before = CountLevels();
        for (int i = 0; i < times; ++i) {
            use();
        }
        if (LevelsReturnTo(before)) {
            return testing::AssertionSuccess();
        }
    }
    return testing::AssertionFailure()
           << times << " uses made " << testing::PrintToString(CountLevels()) << " of "
           << testing::PrintToString(before);
}

TEST(UnloadingTest, NothingIsLeftBehind) {
    const ScratchFolder folder;
    const OwnPreferences preferences(folder.Path());
    EXPECT_TRUE(LeavesNothingBehind(10, LoadRunAndFree));
    SkipNewDialog();
    EXPECT_TRUE(LeavesNothingBehind(5, LoadFailAndFree));
    EXPECT_EQ(GetModuleHandleA("Zandermolite.8bf"), nullptr);
}

TEST(UnloadingTest, ThreadsOfTheHostThatEndLeaveNothing) {
    const ScratchFolder folder;
    const OwnPreferences preferences(folder.Path());
    SkipNewDialog();
    const LoadedPlugin plugin;
    EXPECT_TRUE(LeavesNothingBehind(10, [&plugin] { FailOnAThread(plugin); }));
}

/// The bytes in use on the heaps of the process.
std::size_t BytesOnHeaps() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry)) {
            bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
        }
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

TEST(UnloadingTest, NoMemoryIsLeftBehind) {
    const auto loadAndFree = [] { const LoadedPlugin plugin; };
    loadAndFree();
    loadAndFree();
    const std::size_t before = BytesOnHeaps();
    constexpr int times = 8;
    for (int i = 0; i < times; ++i) {
        loadAndFree();
    }
    const std::size_t after = BytesOnHeaps();
    EXPECT_LT(after, before + times * 256) << before;
}

TEST(UnloadingTest, NoMemoryIsLeftBehindByAThrow) {
    const ScratchFolder folder;
    const OwnPreferences preferences(folder.Path());
    SkipNewDialog();
    // A box of the system's own takes a little each time; the library's reserve was 18 KB and more.
    constexpr std::size_t much = 8192;
    LoadFailAndFree();
    LoadFailAndFree();
    const std::size_t before = BytesOnHeaps();
    constexpr int times = 4;
    for (int i = 0; i < times; ++i) {
        LoadFailAndFree();
    }
    EXPECT_LT(BytesOnHeaps(), before + times * much) << before;
}

#ifdef __i386__
/// Hosts that were built with the compiler of the product may link to its shared library, with
/// which the start-up code then registers the product's unwind tables.
TEST(SharedRuntimeTest, AFaultInAHostWithTheCompilersLibraryEndsNothing) {
    const LoadedLibrary threads(Arguments().threads);
    const LoadedLibrary unwinder(Arguments().unwinder);
    ASSERT_NE(GetModuleHandleA("libgcc_s_dw2-1.dll"), nullptr);
    const ScratchFolder folder;
    const OwnPreferences preferences(folder.Path());
    LoadRunAndFree();
    SkipNewDialog();
    for (int i = 0; i < 3; ++i) {
        LoadFailAndFree();
    }
}
#endif

TEST(LevelsTest, WhatEachUseLeavesIsFound) {
    std::vector<HBRUSH> left;
    EXPECT_FALSE(
        LeavesNothingBehind(3, [&left] { left.push_back(CreateSolidBrush(RGB(1, 2, 3))); }));
    for (const HBRUSH brush : left) {
        DeleteObject(brush);
    }
}

}  // namespace

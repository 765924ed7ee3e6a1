// The preference file with the registry and the alerts of the system.
#include "files/Preferences.h"

#include <windows.h>

#include <filesystem>

#include "base/AnsiPath.Win.h"
#include "base/LeadByte.Win.h"
#include "base/Module.Win.h"
#include "files/File.h"
#include "files/PreferencePlace.h"
#include "shell/FatalError.Win.h"
#include "tests/files/windows/HoldingProcess.Win.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/PreferenceBytes.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/windows/DialogDriver.Win.h"
#include "tests/support/windows/OwnRegistry.Win.h"

namespace {

/// As it is before the fixture puts its own in place.
const PlatformServices systemsServices = platformServices;

class SystemPreferencesTest : public CoreTest {
  protected:
    explicit SystemPreferencesTest(DWORD registryOptions = REG_OPTION_NON_VOLATILE)
        : registry(registryOptions) {
        instanceHandle = GetModuleHandleA(nullptr);
        platformServices.reportFault = ShowFatalError;
        platformServices.showAlert = systemsServices.showAlert;
        char path[MAX_PATH] = "";
        GetModuleFileNameA(nullptr, path, sizeof path);
        standardPath = (std::filesystem::path(path).parent_path() / "Zandermolite3.prf").string();
        Remove(standardPath);
        dialogPlaces = {};
    }
    ~SystemPreferencesTest() override {
        Remove(standardPath);
        instanceHandle = nullptr;
        errorCell = 0;
    }

    static void Remove(const std::string& path) {
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileA(path.c_str());
    }
    std::string PathOf(const char* name) const { return (folder.Path() / name).string(); }
    void StorePath(const std::string& path) { registry.SetValue(REG_SZ, path); }
    /// The registry's value, which must be a text; the system may add a zero to it.
    std::string StoredPath() {
        DWORD type = REG_NONE;
        const std::string value = registry.Value(type);
        EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
        return value.c_str();
    }

    ScratchFolder folder;
    FileSystemOverride system;
    OwnRegistry registry;
    std::string standardPath;
    Preferences preferences;
};

TEST_F(SystemPreferencesTest, TheFirstRunStoresThePathBesideTheModule) {
    EXPECT_TRUE(ReadLaunchFlag());
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_EQ(StoredPath(), standardPath);
    EXPECT_EQ(BytesOf(standardPath), "");
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(standardPath), FirstPreferenceFile());
    EXPECT_TRUE(LoadPreferences(preferences));
}

TEST_F(SystemPreferencesTest, TheStoredPathIsUsed) {
    for (const char* const name : {"mine.prf", "other.prf"}) {
        StorePath(PathOf(name));
        EXPECT_TRUE(SavePreferences(preferences));
        EXPECT_EQ(BytesOf(PathOf(name)), FirstPreferenceFile());
        EXPECT_EQ(StoredPath(), PathOf(name));
    }
    EXPECT_FALSE(std::filesystem::exists(standardPath));
}

TEST_F(SystemPreferencesTest, WhatIsNoUsablePathIsReplaced) {
    const struct {
        DWORD type;
        std::string bytes;
    } values[] = {
        {REG_DWORD, std::string("\1\2\3\4")},  {REG_BINARY, PathOf("binary.prf")},
        {REG_EXPAND_SZ, PathOf("expand.prf")}, {REG_SZ, ""},
        {REG_SZ, PathOf("gone\\mine.prf")},    {REG_SZ, folder.Path().string()},
        {REG_SZ, std::string(1100, 'x')},
    };
    for (const auto& [type, bytes] : values) {
        registry.SetValue(type, bytes);
        EXPECT_TRUE(SavePreferences(preferences));
        EXPECT_EQ(StoredPath(), standardPath);
        EXPECT_EQ(BytesOf(standardPath), FirstPreferenceFile());
        Remove(standardPath);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << "nothing was made elsewhere";
}

TEST_F(SystemPreferencesTest, AReadOnlyFolderIsLeftForTheStandardOne) {
    // Under Wine a folder in which not even an administrator makes files; elsewhere it is not
    // there.
    StorePath("Z:\\proc\\mine.prf");
    preferences.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(StoredPath(), standardPath);
    EXPECT_FALSE(ReadLaunchFlag());
    File file;
    file.SetPath("Z:\\proc\\mine.dat");
    EXPECT_EQ(file.Create(), 19007);
}

/// The user's root and the folder of their application data are this test's own.
class OrdinaryUserTest : public SystemPreferencesTest {
  protected:
    OrdinaryUserTest() { user.SetDataFolder(folder.Path().wstring()); }
    ~OrdinaryUserTest() override {
        registry.AllowWriting();
        RemoveDirectoryA(standardPath.c_str());
    }

    std::string UsersPath() const {
        return (folder.Path() / "Zandermolite" / "Zandermolite3.prf").string();
    }
    std::string UsersStoredPath() {
        DWORD type = REG_NONE;
        const std::string value = user.Value(type);
        EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
        return value.c_str();
    }
    /// The system denies everybody to open a folder as a file, also the administrator that the
    /// tests may be.
    static void Deny(const std::string& path) {
        ASSERT_TRUE(CreateDirectoryA(path.c_str(), nullptr));
        EXPECT_EQ(
            fileSystem.open(path.c_str(), FileAccess::readAndWrite, FileDisposition::openOrCreate),
            nullptr);
        EXPECT_TRUE(fileSystem.wasDenied());
    }

    OwnRegistry user{REG_OPTION_NON_VOLATILE, HKEY_CURRENT_USER};
};

TEST_F(OrdinaryUserTest, TheUsersKeyIsTheStoreWhereTheMachinesIsDenied) {
    registry.DenyWriting();
    preferences.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(UsersStoredPath(), standardPath);
    DWORD type = REG_NONE;
    EXPECT_EQ(registry.Value(type), "(none)");
    EXPECT_FALSE(ReadLaunchFlag());
}

TEST_F(OrdinaryUserTest, TheFileLiesAmongTheUsersDataWhereThatBesideTheModuleIsDenied) {
    registry.DenyWriting();
    Deny(standardPath);
    preferences.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(UsersStoredPath(), UsersPath());
    EXPECT_FALSE(ReadLaunchFlag());
    EXPECT_TRUE(LoadPreferences(preferences));
    WriteBytes(UsersPath(), "rubbish");
    DriveDialog([&] { EXPECT_FALSE(LoadPreferences(preferences)); });
    EXPECT_FALSE(std::filesystem::exists(UsersPath())) << "a damaged one is deleted there, too";
}

TEST_F(OrdinaryUserTest, TheMachinesKeyLeadsNobodyToTheDataOfAnAdministrator) {
    Deny(standardPath);
    preferences.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(StoredPath(), standardPath);
    EXPECT_EQ(UsersStoredPath(), UsersPath());
    EXPECT_FALSE(ReadLaunchFlag());
}

/// A user's folder with characters that no single-byte code page has all of.
class ForeignUserTest : public OrdinaryUserTest {
  protected:
    ForeignUserTest() {
        std::filesystem::create_directory(data);
        user.SetDataFolder(data.wstring());
    }

    const std::filesystem::path data = folder.Path() / L"\u05D0\u0416\u03A9\u4E2D";
};

TEST_F(ForeignUserTest, AFolderWithCharactersOutsideTheCodePageServes) {
    registry.DenyWriting();
    Deny(standardPath);
    preferences.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(data / "Zandermolite" / "Zandermolite3.prf").size(),
              FirstPreferenceFile().size());
    EXPECT_FALSE(ReadLaunchFlag());
}

TEST(AnsiPathTest, OrdinaryPathsStayAsTheyAre) {
    EXPECT_EQ(AnsiPath(L"C:\\windows"), "C:\\windows");
    EXPECT_EQ(AnsiPath(L"C:\\not there"), "C:\\not there");
    EXPECT_EQ(AnsiPath(L"C:\\not there \u05D0\u4E2D"), "") << "there is no short form";
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    EXPECT_EQ(AnsiPathOf(nullptr), path);
}

TEST_F(OrdinaryUserTest, APathForAllUsersIsReadFirst) {
    StorePath(PathOf("everybody.prf"));
    user.SetValue(REG_SZ, PathOf("mine.prf"));
    registry.DenyWriting();
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(PathOf("everybody.prf")), FirstPreferenceFile());
    Remove(PathOf("everybody.prf"));
    Deny(PathOf("everybody.prf"));
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(PathOf("mine.prf")), FirstPreferenceFile());
}

TEST_F(OrdinaryUserTest, WithoutAFolderForTheFileThereIsNone) {
    registry.DenyWriting();
    Deny(standardPath);
    WriteBytes(folder.Path() / "Zandermolite", "in the folder's place");
    const SeenDialog dialog =
        DriveDialog([&] { EXPECT_EQ(FaultOf([&] { SavePreferences(preferences); }), 19000); });
    EXPECT_EQ(dialog.title, "Zandermolite");
}

TEST_F(SystemPreferencesTest, AFileThatAnotherProcessHoldsIsReportedAndKept) {
    ASSERT_TRUE(SavePreferences(preferences));
    preferences.launchFlag = 0;
    {
        const HoldingProcess holder(standardPath);
        ASSERT_TRUE(holder.Holds());
        const SeenDialog dialog =
            DriveDialog([&] { EXPECT_EQ(FaultOf([&] { SavePreferences(preferences); }), 19000); });
        EXPECT_EQ(dialog.title, "Zandermolite");
        EXPECT_EQ(dialog.Text(3),
                  "Could not create a preference file. The disk may be full or locked. You will "
                  "not be able to save or load the settings.");
        // A file of one's own meets the statuses, without an alert.
        File file;
        file.SetPath(standardPath);
        EXPECT_EQ(file.Exists(), 19005);
        EXPECT_EQ(file.Open("r"), 19006);
        EXPECT_EQ(file.Create(), 19007);
        EXPECT_EQ(file.Delete(), 19008);
    }
    EXPECT_EQ(BytesOf(standardPath), FirstPreferenceFile());
    EXPECT_TRUE(SavePreferences(preferences));
}

TEST_F(SystemPreferencesTest, ADamagedFileIsReportedAndDeleted) {
    StorePath(PathOf("mine.prf"));
    std::string bytes = FirstPreferenceFile();
    bytes[4] = 2;
    WriteBytes(PathOf("mine.prf"), bytes);
    EXPECT_TRUE(ReadLaunchFlag());
    const SeenDialog dialog = DriveDialog([&] { EXPECT_FALSE(LoadPreferences(preferences)); });
    EXPECT_EQ(dialog.title, "Zandermolite") << "whatever the resource says";
    EXPECT_EQ(dialog.Text(3),
              "An error occured while reading your user preferences from disk. Default preferences "
              "will be used instead.");
    EXPECT_FALSE(std::filesystem::exists(PathOf("mine.prf")));
    EXPECT_EQ(StoredPath(), PathOf("mine.prf")) << "the next file lies there again";
}

TEST_F(SystemPreferencesTest, AFullDiskIsReportedAndTheFileDeleted) {
    StorePath(PathOf("mine.prf"));
    ASSERT_TRUE(SavePreferences(preferences));
    fileSystem.write = [](void*, const void*, std::int32_t, std::int32_t* transferred) {
        *transferred = 0;
        SetLastError(ERROR_DISK_FULL);
        return false;
    };
    const SeenDialog dialog = DriveDialog([&] { EXPECT_FALSE(SavePreferences(preferences)); });
    EXPECT_EQ(dialog.Text(3),
              "An error occured while writing your user preferences to disk. Next time you use "
              "Zandermolite, default preferences will be used.");
    EXPECT_FALSE(std::filesystem::exists(PathOf("mine.prf")));
    EXPECT_EQ(errorCell, 0) << "an alert closes no dialogs";
}

TEST_F(SystemPreferencesTest, NobodyRemovesTheFileWhileItIsOpen) {
    StorePath(PathOf("mine.prf"));
    static std::string path;
    path = PathOf("mine.prf");
    static bool (*systemsWrite)(void*, const void*, std::int32_t, std::int32_t*);
    systemsWrite = fileSystem.write;
    fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                          std::int32_t* transferred) {
        EXPECT_FALSE(DeleteFileA(path.c_str()));
        return systemsWrite(handle, buffer, count, transferred);
    };
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(path), FirstPreferenceFile());
}

/// Under a key that goes with the session no lasting key can be made.
class RefusingRegistryTest : public SystemPreferencesTest {
  protected:
    RefusingRegistryTest() : SystemPreferencesTest(REG_OPTION_VOLATILE) {}
};

TEST_F(RefusingRegistryTest, AKeyThatCannotBeMadeIsAFatalError) {
    const SeenDialog dialog =
        DriveDialog([&] { EXPECT_EQ(FaultOf([&] { LoadPreferences(preferences); }), 20008); });
    EXPECT_EQ(dialog.Text(3), "A fatal error of type = 20008 occured.");
    EXPECT_EQ(dialog.Text(4), "File: PreferenceFile");
    EXPECT_EQ(errorCell, 20008);
    EXPECT_FALSE(std::filesystem::exists(standardPath));
}

// The file system's own results that the neutral tests cannot bring about.

TEST(SystemFileTest, BlocksThatAreNotThereAreFound) {
    char writable[2] = {};
    EXPECT_TRUE(fileSystem.isReadable("text", 4));
    EXPECT_TRUE(fileSystem.isWritable(writable, 2));
    EXPECT_FALSE(fileSystem.isReadable(nullptr, 1));
    EXPECT_FALSE(fileSystem.isWritable(nullptr, 1));
    constexpr SIZE_T page = 4096;
    auto* const pages =
        static_cast<char*>(VirtualAlloc(nullptr, 3 * page, MEM_RESERVE, PAGE_READWRITE));
    VirtualAlloc(pages, page, MEM_COMMIT, PAGE_READWRITE);
    VirtualAlloc(pages + page, page, MEM_COMMIT, PAGE_READONLY);
    EXPECT_TRUE(fileSystem.isWritable(pages, page));
    EXPECT_FALSE(fileSystem.isWritable(pages + 1, page)) << "its last byte can only be read";
    EXPECT_TRUE(fileSystem.isReadable(pages + 1, page));
    EXPECT_FALSE(fileSystem.isReadable(pages + page, page + 1)) << "its last byte is not there";
    VirtualFree(pages, 0, MEM_RELEASE);
}

TEST(SystemFileTest, LeadBytesAreThoseOfTheCodePage) {
    constexpr UINT shiftJis = 932;
    constexpr UINT westEuropean = 1252;
    ASSERT_TRUE(IsValidCodePage(shiftJis));
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const bool isShiftJis =
            (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC);
        EXPECT_EQ(IsLeadByteOf(shiftJis, byte), isShiftJis) << value;
        EXPECT_FALSE(IsLeadByteOf(westEuropean, byte)) << value;
        EXPECT_EQ(IsLeadByte(byte), IsLeadByteOf(GetACP(), byte)) << value;
    }
    EXPECT_EQ(fileSystem.isLeadByte, &IsLeadByte);
}

}  // namespace

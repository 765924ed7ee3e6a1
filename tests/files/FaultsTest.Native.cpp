// The statuses when the system refuses: a full disk, a folder that cannot be written, a file
// in use, a file that goes away.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "files/PreferenceFile.h"
#include "files/Preferences.h"
#include "fixtures/PreferencePlaceInMemory.h"
#include "tests/files/Refusals.Native.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/PreferenceBytes.h"
#include "tests/support/ScratchFolder.h"

namespace {

class FaultsTest : public CoreTest {
  protected:
    FaultsTest() : place((folder.Path() / "Zandermolite.8bf").string()) {
        dialogPlaces = {};
        preferences.presets[presetSkew].Append(new SkewParams{2}, "kept");
    }
    ~FaultsTest() override { errorCell = 0; }

    std::string PathOf(const char* name) const { return (folder.Path() / name).string(); }
    std::string PreferencePath() const { return PathOf("Zandermolite3.prf"); }
    bool PresetIsKept() const {
        char name[nameCapacity];
        return preferences.presets[presetSkew].NameAt(1, name) && std::string(name) == "kept";
    }
    static std::vector<int> Alerts() {
        std::vector<int> ids;
        for (const ShownAlert& alert : Log().alerts) {
            ids.push_back(alert.id);
        }
        return ids;
    }

    static constexpr std::size_t preferenceSize = 383 + 260;

    ScratchFolder folder;
    FileSystemOverride system;
    PreferencePlaceInMemory place;
    Preferences preferences;
};

TEST_F(FaultsTest, AFullDiskIsTheStatusOfAWriteThatGrows) {
    std::filesystem::create_symlink("/dev/full", PathOf("full.dat"));
    File file;
    file.SetPath(PathOf("full.dat"));
    ASSERT_EQ(file.Create(), 0);
    EXPECT_EQ(file.Write("abc", 0, 3), 19011);
    EXPECT_EQ(GetLastFileError(), 19011);
    EXPECT_EQ(file.position, 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(FaultsTest, ADiskThatFillsUpKeepsWhatWasWritten) {
    File file;
    file.SetPath(PathOf("some.dat"));
    ASSERT_EQ(file.Create(), 0);
    {
        const FileSizeLimit limit(5);
        EXPECT_EQ(file.Write("abc", 0, 3), 0);
        EXPECT_EQ(file.Write("def", 3, 3), 19011);
        EXPECT_EQ(file.position, 3);
        EXPECT_EQ(file.Write("de", 3, 2), 0);
        EXPECT_EQ(file.Close(), 0);
    }
    EXPECT_EQ(BytesOf(PathOf("some.dat")), "abcde");
}

TEST_F(FaultsTest, PreferencesOnAFullDiskAreReportedAndTheFileDeleted) {
    std::filesystem::create_symlink("/dev/full", PreferencePath());
    EXPECT_FALSE(SavePreferences(preferences));
    EXPECT_EQ(Alerts(), std::vector<int>{16103});
    EXPECT_FALSE(std::filesystem::is_symlink(PreferencePath()));
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
    EXPECT_TRUE(PresetIsKept());
    EXPECT_TRUE(SavePreferences(preferences)) << "once there is room";
    EXPECT_EQ(BytesOf(PreferencePath()).size(), preferenceSize);
}

TEST_F(FaultsTest, PreferencesThatFitHalfAreReportedAndTheFileDeleted) {
    {
        const FileSizeLimit limit(200);
        EXPECT_FALSE(SavePreferences(preferences));
    }
    EXPECT_EQ(Alerts(), std::vector<int>{16103});
    EXPECT_FALSE(std::filesystem::exists(PreferencePath()));
    EXPECT_TRUE(PresetIsKept());
    EXPECT_EQ(errorCell, 0) << "an alert closes no dialogs";
}

TEST_F(FaultsTest, InAReadOnlyFolderNothingIsMadeOrDeleted) {
    WriteBytes(PathOf("some.dat"), "abc");
    {
        const ReadOnlyFolder readOnly(folder.Path());
        File file;
        file.SetPath(PathOf("new.dat"));
        EXPECT_EQ(file.Create(), 19007);
        file.SetPath(PathOf("some.dat"));
        EXPECT_EQ(file.Exists(), 0);
        EXPECT_EQ(file.Delete(), 19008);
        EXPECT_EQ(FaultOf([&] { SavePreferences(preferences); }), 19000);
        EXPECT_EQ(FaultOf([] { ReadLaunchFlag(); }), 19000);
    }
    EXPECT_EQ(Alerts(), std::vector<int>{}) << "19000 is a fault's dialog of its own";
    EXPECT_EQ(Log().faults.size(), 2u);
    EXPECT_EQ(BytesOf(PathOf("some.dat")), "abc");
    EXPECT_TRUE(PresetIsKept());
    EXPECT_TRUE(SavePreferences(preferences));
}

TEST_F(FaultsTest, AReadOnlyFileCanBeReadAlone) {
    const std::string path = PathOf("some.dat");
    WriteBytes(path, "abc");
    chmod(path.c_str(), 0444);
    const ReadOnlyFolder readOnly(folder.Path());
    File file;
    file.SetPath(path);
    EXPECT_EQ(file.Open(), 19006);
    EXPECT_EQ(file.Create(), 19007);
    EXPECT_EQ(file.Open("r"), 0);
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(file.Close(), 0);
}

TEST_F(FaultsTest, AStoredPathInAReadOnlyFolderIsReplaced) {
    const std::filesystem::path locked = folder.Path() / "locked";
    std::filesystem::create_directory(locked);
    chmod(folder.Path().c_str(), 0777);
    place->stored = (locked / "mine.prf").string();
    place->hasPath = true;
    {
        const ReadOnlyFolder readOnly(locked);
        EXPECT_TRUE(SavePreferences(preferences));
    }
    EXPECT_EQ(place->stored, PreferencePath());
    EXPECT_EQ(BytesOf(PreferencePath()).size(), preferenceSize);
    EXPECT_EQ(Alerts(), std::vector<int>{});
}

TEST_F(FaultsTest, AFileInUseByAnotherProcessIsLeftAlone) {
    ASSERT_TRUE(SavePreferences(preferences));
    const std::string before = BytesOf(PreferencePath());
    preferences.launchFlag = 0;
    {
        const HoldingProcess holder(PreferencePath());
        ASSERT_TRUE(holder.Holds());
        File file;
        file.SetPath(PreferencePath());
        EXPECT_EQ(file.Exists(), 19005);
        EXPECT_EQ(file.Open("r"), 19006);
        EXPECT_EQ(file.Create(), 19007);
        EXPECT_EQ(FaultOf([&] { SavePreferences(preferences); }), 19000);
        EXPECT_EQ(Alerts(), std::vector<int>{});
    }
    EXPECT_EQ(BytesOf(PreferencePath()), before);
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_FALSE(ReadLaunchFlag());
}

TEST_F(FaultsTest, AFileThatGoesAwayInTheMiddleIsWrittenAnewNextTime) {
    static std::string path;
    static bool (*systemsWrite)(void*, const void*, std::int32_t, std::int32_t*);
    path = PreferencePath();
    systemsWrite = fileSystem.write;
    fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                          std::int32_t* transferred) {
        unlink(path.c_str());
        return systemsWrite(handle, buffer, count, transferred);
    };
    EXPECT_TRUE(SavePreferences(preferences)) << "the system keeps it until it is closed";
    EXPECT_FALSE(std::filesystem::exists(PreferencePath()));
    fileSystem.write = systemsWrite;
    Preferences next;
    EXPECT_FALSE(LoadPreferences(next)) << "as in a first run";
    EXPECT_EQ(Alerts(), std::vector<int>{});
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(PreferencePath()).size(), preferenceSize);
}

TEST_F(FaultsTest, AFileThatIsCutInTheMiddleIsReportedAndDeleted) {
    ASSERT_TRUE(SavePreferences(preferences));
    static std::string path;
    static int reads;
    static bool (*systemsRead)(void*, void*, std::int32_t, std::int32_t*);
    path = PreferencePath();
    reads = 0;
    systemsRead = fileSystem.read;
    fileSystem.read = [](void* handle, void* buffer, std::int32_t count,
                         std::int32_t* transferred) {
        if (++reads == 10) {
            std::filesystem::resize_file(path, 10);
        }
        return systemsRead(handle, buffer, count, transferred);
    };
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_EQ(Alerts(), std::vector<int>{16104});
    EXPECT_FALSE(std::filesystem::exists(PreferencePath()));
    EXPECT_TRUE(PresetIsKept());
}

TEST_F(FaultsTest, APipeDoesNotHoldTheProgramUp) {
    ASSERT_EQ(mkfifo(PathOf("pipe").c_str(), 0600), 0);
    File file;
    file.SetPath(PathOf("pipe"));
    EXPECT_EQ(file.Open("w"), 19006) << "nobody reads it";
}

}  // namespace

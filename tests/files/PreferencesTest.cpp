#include "files/Preferences.h"

#include <filesystem>

#include "files/PreferenceFile.h"
#include "fixtures/PreferencePlaceInMemory.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/PreferenceBytes.h"
#include "tests/support/ScratchFolder.h"

namespace {

class PreferencesTest : public CoreTest {
  protected:
    PreferencesTest() : place((folder.Path() / "Zandermolite.8bf").string()) { dialogPlaces = {}; }
    ~PreferencesTest() override {
        dialogPlaces = {};
        errorCell = 0;
    }

    std::filesystem::path File() const { return folder.Path() / "Zandermolite3.prf"; }
    bool Exists() const { return std::filesystem::exists(File()); }
    /// The alerts shown since the last look; none of them has texts of its own.
    static std::vector<int> Alerts() {
        std::vector<int> ids;
        for (const ShownAlert& alert : Log().alerts) {
            EXPECT_EQ(alert.texts, (std::array<std::string, 4>{}));
            ids.push_back(alert.id);
        }
        Log().alerts.clear();
        return ids;
    }
    static void AddSkew(Preferences& to, const char* name) {
        to.presets[presetSkew].Append(new SkewParams{3}, name);
    }
    static int CountOf(const SimpleLink& list) {
        void* data = nullptr;
        short n = 1;
        while (list.DataAt(n, &data)) {
            ++n;
        }
        return n - 1;
    }
    /// A file with a preset and a place, cut to `size` bytes.
    void WriteCutFile(std::size_t size) {
        std::string bytes = FirstPreferenceFile();
        bytes.replace(listsOffset + 2 * presetSkew, 2,
                      WordBytes(2) + NameBytes("kept") + FromHex("03000000"));
        bytes[7] = 0x55;
        bytes[bytes.size() - placesSize] = 0x44;
        WriteBytes(File(), bytes.substr(0, size));
    }
    static constexpr std::size_t cutFileSize = 383 + 260;

    ScratchFolder folder;
    FileSystemOverride system;
    PreferencePlaceInMemory place;
    Preferences preferences;
};

TEST_F(PreferencesTest, TheFirstRunIsSilentAndLeaves383Bytes) {
    EXPECT_TRUE(ReadLaunchFlag());
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_TRUE(Exists());
    EXPECT_EQ(BytesOf(File()), "");
    SetDefaultPreferences(preferences);
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(File()), FirstPreferenceFile());
    EXPECT_EQ(Alerts(), std::vector<int>{});
    EXPECT_TRUE(LoadPreferences(preferences));
}

TEST_F(PreferencesTest, TheLaunchFlagIsReadOnItsOwn) {
    std::string bytes = FirstPreferenceFile();
    for (const int flag : {0, 1, 2, 255}) {
        bytes[6] = static_cast<char>(flag);
        WriteBytes(File(), bytes);
        EXPECT_EQ(ReadLaunchFlag(), flag != 0) << flag;
    }
    WriteBytes(File(), bytes.substr(0, 6) + '\0');
    EXPECT_FALSE(ReadLaunchFlag()) << "nothing behind it is looked at";
}

TEST_F(PreferencesTest, AFlagThatCannotBeReadIsOneAndTheFileIsLeftAlone) {
    for (const std::string& bytes :
         {std::string("V"), std::string("VELK"), FromHex("56454C4B 01"), FromHex("56454C4B 0100"),
          FromHex("56454C4B 0200 00"), std::string("VELL\1\0\0", 7)}) {
        WriteBytes(File(), bytes);
        EXPECT_TRUE(ReadLaunchFlag());
        EXPECT_EQ(BytesOf(File()), bytes);
    }
    WriteBytes(File(), FirstPreferenceFile());
    fileSystem.read = [](void*, void*, std::int32_t, std::int32_t*) { return false; };
    EXPECT_TRUE(ReadLaunchFlag());
    EXPECT_EQ(Alerts(), std::vector<int>{});
}

TEST_F(PreferencesTest, AnotherVersionIsReportedAndDeletedByTheEditorAlone) {
    std::string bytes = FirstPreferenceFile();
    bytes[4] = 2;
    WriteBytes(File(), bytes);
    EXPECT_TRUE(ReadLaunchFlag());
    EXPECT_EQ(Alerts(), std::vector<int>{});
    EXPECT_EQ(BytesOf(File()), bytes);
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_EQ(Alerts(), std::vector<int>{16104});
    EXPECT_FALSE(Exists());
}

TEST_F(PreferencesTest, AFileThatEndsEarlyIsReportedAndDeleted) {
    for (std::size_t size = 1; size < cutFileSize; size += 31) {
        Preferences fresh;
        WriteCutFile(size);
        EXPECT_FALSE(LoadPreferences(fresh)) << size;
        EXPECT_EQ(Alerts(), std::vector<int>{16104}) << size;
        EXPECT_FALSE(Exists()) << size;
    }
    WriteCutFile(cutFileSize);
    EXPECT_TRUE(LoadPreferences(preferences));
    EXPECT_EQ(Alerts(), std::vector<int>{});
}

TEST_F(PreferencesTest, AFileCutInsideThePlacesLosesAllButWhatStaysForGood) {
    WriteCutFile(cutFileSize - 8);
    preferences.combine.amount = 7;
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_EQ(preferences.foreground.red, 0x55) << "read before the end came";
    EXPECT_EQ(preferences.combine.amount, 7);
    SetDefaultPreferences(preferences);
    EXPECT_EQ(preferences.foreground, black16);
    EXPECT_EQ(preferences.combine.amount, 50);
    EXPECT_EQ(CountOf(preferences.presets[presetSkew]), 1) << "presets stay";
    EXPECT_EQ(preferences.editorPlace.top, 0x44) << "so do places";
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(File()).size(), cutFileSize);
}

TEST_F(PreferencesTest, TheDefaultsLeaveTheUnusedBytesAlone) {
    preferences.dividers.foreground = {1, 2, 3};
    preferences.dividers.background = {4, 5, 6};
    preferences.dividers.lines = 7;
    preferences.shapes.unused45[0] = 8;
    preferences.shapes.unused45[8] = 9;
    preferences.shapes.color = {1, 2, 3};
    SetDefaultPreferences(preferences);
    EXPECT_EQ(preferences.dividers.foreground, (RGBColor16{1, 2, 3}));
    EXPECT_EQ(preferences.dividers.background, (RGBColor16{4, 5, 6}));
    EXPECT_EQ(preferences.dividers.lines, 50);
    EXPECT_EQ(preferences.shapes.unused45[0], 8);
    EXPECT_EQ(preferences.shapes.unused45[8], 9);
    EXPECT_EQ(preferences.shapes.color, (RGBColor16{0x7FFF, 0x7FFF, 0x7FFF}));
}

TEST_F(PreferencesTest, TheDefaultsReachEveryFieldOfTheHead) {
    std::string bytes = FirstPreferenceFile();
    for (std::size_t at = 6; at < listsOffset; ++at) {
        bytes[at] = 0x11;
    }
    WriteBytes(File(), bytes);
    ASSERT_TRUE(LoadPreferences(preferences));
    SetDefaultPreferences(preferences);
    ASSERT_TRUE(SavePreferences(preferences));
    const std::string saved = BytesOf(File());
    for (const PreferenceRow& row : DefaultHeadRows()) {
        const bool isUntouched = row.offset == 95 || row.offset == 178;
        EXPECT_EQ(saved.substr(row.offset, row.bytes.size()),
                  isUntouched ? std::string(row.bytes.size(), 0x11) : row.bytes)
            << "at " << row.offset;
    }
}

TEST_F(PreferencesTest, CombineStartsAnewInEveryRun) {
    preferences.combine.mode = 3;
    preferences.combine.amount = 99;
    ASSERT_TRUE(SavePreferences(preferences));
    ASSERT_TRUE(LoadPreferences(preferences));
    EXPECT_EQ(preferences.combine.mode, 1);
    EXPECT_EQ(preferences.combine.amount, 50);
    preferences.combine.mode = 3;
    SetDefaultPreferences(preferences);
    EXPECT_EQ(preferences.combine.mode, 1);
}

TEST_F(PreferencesTest, DeletedPresetsLeaveAStaleTailThatDoesNoHarm) {
    AddSkew(preferences, "one");
    AddSkew(preferences, "two");
    ASSERT_TRUE(SavePreferences(preferences));
    const std::size_t size = BytesOf(File()).size();
    EXPECT_EQ(size, 383u + 2 * 260);
    ASSERT_TRUE(preferences.presets[presetSkew].Remove(1));
    ASSERT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(File()).size(), size);
    Preferences loaded;
    EXPECT_TRUE(LoadPreferences(loaded));
    EXPECT_EQ(CountOf(loaded.presets[presetSkew]), 1);
    char name[nameCapacity];
    ASSERT_TRUE(loaded.presets[presetSkew].NameAt(1, name));
    EXPECT_STREQ(name, "two");
    EXPECT_EQ(Alerts(), std::vector<int>{});
}

TEST_F(PreferencesTest, ANameIsTakenWhateverItsCase) {
    AddSkew(preferences, "Gentle");
    const SimpleLink& list = preferences.presets[presetSkew];
    EXPECT_FALSE(list.IsUnique("last used"));
    EXPECT_FALSE(list.IsUnique("gENTLE"));
    EXPECT_TRUE(list.IsUnique("Gentle 2"));
    EXPECT_TRUE(preferences.presets[presetWaves].IsUnique("Gentle")) << "each effect has its own";
}

// Refusals of the system.

TEST_F(PreferencesTest, AWriteErrorIsReportedAndTheFileIsDeleted) {
    AddSkew(preferences, "kept");
    ASSERT_TRUE(SavePreferences(preferences));
    static bool (*systemsWrite)(void*, const void*, std::int32_t, std::int32_t*);
    systemsWrite = fileSystem.write;
    for (const bool isShort : {false, true}) {
        static bool answer;
        answer = isShort;
        fileSystem.write = [](void* handle, const void* buffer, std::int32_t,
                              std::int32_t* transferred) {
            // In the middle of a list.
            return systemsWrite(handle, buffer, 400, transferred) && answer;
        };
        EXPECT_FALSE(SavePreferences(preferences));
        EXPECT_EQ(Alerts(), std::vector<int>{16103});
        EXPECT_FALSE(Exists());
    }
    EXPECT_EQ(CountOf(preferences.presets[presetSkew]), 1) << "nothing is lost in memory";
    fileSystem.write = systemsWrite;
    EXPECT_TRUE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(File()).size(), 383u + 260);
}

TEST_F(PreferencesTest, AWriteThatIsRefusedLeavesTheFileAsItWas) {
    ASSERT_TRUE(SavePreferences(preferences));
    const std::string before = BytesOf(File());
    AddSkew(preferences, "new");
    static int writes;
    static bool (*systemsWrite)(void*, const void*, std::int32_t, std::int32_t*);
    systemsWrite = fileSystem.write;
    // Nor does the system delete what it does not write.
    fileSystem.remove = [](const char*) { return false; };
    static int last;
    last = 0;
    do {
        EXPECT_EQ(BytesOf(File()), before) << last;
        ++last;
        writes = 0;
        fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                              std::int32_t* transferred) {
            return ++writes != last && systemsWrite(handle, buffer, count, transferred);
        };
    } while (!SavePreferences(preferences));
    EXPECT_EQ(BytesOf(File()).size(), before.size() + 260);
}

TEST_F(PreferencesTest, AReadErrorIsReportedAndTheFileIsDeleted) {
    ASSERT_TRUE(SavePreferences(preferences));
    fileSystem.read = [](void*, void*, std::int32_t, std::int32_t*) { return false; };
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_EQ(Alerts(), std::vector<int>{16104});
    EXPECT_FALSE(Exists());
}

TEST_F(PreferencesTest, TheFileIsThereUntilTheUserHasReadTheAlert) {
    static std::filesystem::path path;
    path = File();
    static int shown;
    shown = 0;
    platformServices.showAlert = [](std::int16_t, const std::array<const char*, 4>&) {
        EXPECT_TRUE(std::filesystem::exists(path));
        ++shown;
        return 1;
    };
    WriteBytes(path, "VELL");
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_FALSE(Exists());
    fileSystem.write = [](void*, const void*, std::int32_t, std::int32_t*) { return false; };
    EXPECT_FALSE(SavePreferences(preferences));
    EXPECT_FALSE(Exists());
    EXPECT_EQ(shown, 2);
}

TEST_F(PreferencesTest, AFailedCloseIsAFailureWithoutAWord) {
    static bool (*systemsClose)(void*);
    systemsClose = fileSystem.close;
    fileSystem.close = [](void* handle) {
        systemsClose(handle);
        return false;
    };
    EXPECT_FALSE(SavePreferences(preferences));
    EXPECT_EQ(BytesOf(File()), FirstPreferenceFile());
    EXPECT_FALSE(LoadPreferences(preferences));
    EXPECT_EQ(Alerts(), std::vector<int>{});
    EXPECT_TRUE(Exists());
}

TEST_F(PreferencesTest, WithoutAFileAtAllTheCallersGetTheFault) {
    std::filesystem::create_directory(File());
    EXPECT_EQ(FaultOf([] { ReadLaunchFlag(); }), 19000);
    EXPECT_EQ(FaultOf([&] { LoadPreferences(preferences); }), 19000);
    EXPECT_EQ(FaultOf([&] { SavePreferences(preferences); }), 19000);
    place->canOpen = false;
    EXPECT_EQ(FaultOf([] { ReadLaunchFlag(); }), 20008);
    EXPECT_EQ(FaultOf([&] { LoadPreferences(preferences); }), 20008);
    EXPECT_EQ(FaultOf([&] { SavePreferences(preferences); }), 20008);
    EXPECT_EQ(Alerts(), std::vector<int>{});
}

TEST_F(PreferencesTest, AFileThatAnotherProgramHoldsIsNeitherReadNorHarmed) {
    ASSERT_TRUE(SavePreferences(preferences));
    ::File other;
    other.SetPath(File().string());
    ASSERT_EQ(other.Open("r"), 0);
    EXPECT_EQ(FaultOf([] { ReadLaunchFlag(); }), 19000);
    EXPECT_EQ(FaultOf([&] { LoadPreferences(preferences); }), 19000);
    preferences.launchFlag = 0;
    EXPECT_EQ(FaultOf([&] { SavePreferences(preferences); }), 19000);
    ASSERT_EQ(other.Close(), 0);
    EXPECT_EQ(BytesOf(File()), FirstPreferenceFile());
    EXPECT_TRUE(LoadPreferences(preferences));
}

}  // namespace

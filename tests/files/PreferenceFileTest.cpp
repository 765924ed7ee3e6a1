#include "files/PreferenceFile.h"

#include <filesystem>

#include "fixtures/PreferencePlaceInMemory.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/ScratchFolder.h"

namespace {

class PreferenceFileTest : public CoreTest {
  protected:
    PreferenceFileTest() : place((folder.Path() / "Zandermolite.8bf").string()) {}
    ~PreferenceFileTest() override { errorCell = 0; }

    std::string StandardPath() const { return (folder.Path() / "Zandermolite3.prf").string(); }
    void Store(const std::filesystem::path& path) {
        place->stored = path.string();
        place->hasPath = true;
    }
    /// The id that opening throws, reported from this source.
    int OpeningFault() {
        const int id = FaultOf([&] { file.OpenPreferenceFile(); });
        if (id != 0) {
            EXPECT_EQ(Log().faults.back().id, id);
            EXPECT_EQ(Log().faults.back().file, "PreferenceFile");
        }
        return id;
    }

    ScratchFolder folder;
    FileSystemOverride system;
    PreferencePlaceInMemory place;
    PreferenceFile file;
};

TEST_F(PreferenceFileTest, TheFirstRunMakesAnEmptyFileBesideTheModule) {
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, StandardPath());
    EXPECT_EQ(file.GetSize(), 0);
    EXPECT_EQ(place->stored, StandardPath());
    EXPECT_EQ(place->closes, 1);
    EXPECT_EQ(file.unused, 0);
    EXPECT_TRUE(std::filesystem::exists(StandardPath()));
}

TEST_F(PreferenceFileTest, AStoredPathIsUsedAndStaysAsItIs) {
    const std::filesystem::path elsewhere = folder.Path() / "mine.prf";
    WriteBytes(elsewhere, "abc");
    Store(elsewhere);
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, elsewhere.string());
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(place->writes, 0);
    EXPECT_FALSE(std::filesystem::exists(StandardPath()));
}

TEST_F(PreferenceFileTest, AStoredPathInAFolderThatIsGoneIsReplaced) {
    Store(folder.Path() / "gone" / "mine.prf");
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, StandardPath());
    EXPECT_EQ(place->stored, StandardPath());
    EXPECT_EQ(place->writes, 1);
}

TEST_F(PreferenceFileTest, AnEmptyStoredPathIsReplaced) {
    Store("");
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(place->stored, StandardPath());
}

TEST_F(PreferenceFileTest, TheStandardPathIsTriedOnceAlone) {
    Store(folder.Path() / "gone" / "mine.prf");
    std::filesystem::create_directory(StandardPath());
    fileSystem.wasDenied = [] { return false; };  // Windows calls that a denial, which leads on
    EXPECT_EQ(OpeningFault(), 19000);
    EXPECT_EQ(place->writes, 1);
    EXPECT_EQ(place->closes, 1);
    EXPECT_EQ(place->stored, StandardPath());
    EXPECT_EQ(file.handle, nullptr);
}

TEST_F(PreferenceFileTest, AFileThatAnotherProgramHoldsIsNotOpened) {
    WriteBytes(StandardPath(), "abc");
    File other;
    other.SetPath(StandardPath());
    ASSERT_EQ(other.Open("r"), 0);
    EXPECT_EQ(OpeningFault(), 19000);
    EXPECT_EQ(other.Close(), 0);
    EXPECT_EQ(BytesOf(StandardPath()), "abc");
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
}

TEST_F(PreferenceFileTest, AStoreThatCannotBeUsedIsAnError) {
    place->canOpen = false;
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(place->closes, 0);
    place->canOpen = true;
    place->canWrite = false;
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(place->closes, 1) << "the store is not left open";
    EXPECT_FALSE(std::filesystem::exists(StandardPath()));
    place->canWrite = true;
    place->canClose = false;
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(place->closes, 2);
}

// An ordinary user: no right to the machine's store, nor to what an administrator installed.

TEST_F(PreferenceFileTest, WhereTheMachinesStoreIsDeniedTheUsersTakesItsPlace) {
    place->isMachineDenied = true;
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, StandardPath());
    EXPECT_EQ(place->stored, StandardPath());
    EXPECT_EQ(place->closes, 1);
}

TEST_F(PreferenceFileTest, AnyOtherFailureOfTheMachinesStoreIsAnError) {
    static int asked;
    asked = 0;
    preferencePlace.open = [](PreferenceOwner) {
        ++asked;
        return PreferenceStore{nullptr, false};
    };
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(asked, 1) << "the user's is not tried";
}

TEST_F(PreferenceFileTest, BothStoresDeniedIsAnError) {
    place->isMachineDenied = true;
    place->canOpen = false;
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(place->closes, 0);
}

TEST_F(PreferenceFileTest, AUsersStoreThatCannotBeWrittenIsAnError) {
    place->isMachineDenied = true;
    place->canWrite = false;
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(place->closes, 1);
}

TEST_F(PreferenceFileTest, ThePathForAllUsersComesFirst) {
    const std::filesystem::path everybodys = folder.Path() / "everybody.prf";
    WriteBytes(everybodys, "abc");
    Store(folder.Path() / "mine.prf");
    place->machinePath = everybodys.string();
    place->isMachineDenied = true;
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, everybodys.string());
    EXPECT_EQ(place->writes, 0);
}

TEST_F(PreferenceFileTest, APathForAllUsersInAFolderThatIsGoneIsReplacedInTheUsersStore) {
    Store(folder.Path() / "mine.prf");
    place->machinePath = (folder.Path() / "gone" / "everybody.prf").string();
    place->isMachineDenied = true;
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, StandardPath());
    EXPECT_EQ(place->stored, StandardPath());
    EXPECT_EQ(place->writes, 1);
}

/// Somebody else's file, which is closed while the plug-in waits for the nth time.
class BusyPreferenceFileTest : public PreferenceFileTest {
  protected:
    BusyPreferenceFileTest() {
        WriteBytes(StandardPath(), "abc");
        other.SetPath(StandardPath());
        EXPECT_EQ(other.Open("r"), 0);
        waits = 0;
        systemsWait = fileSystem.waitsForOthers;
        fileSystem.waitsForOthers = [] {
            const bool isWaiting = systemsWait();
            if (++waits == closesAt) {
                EXPECT_EQ(other.Close(), 0);
            }
            return isWaiting;
        };
    }
    ~BusyPreferenceFileTest() override { other.Close(); }

    static inline File other;
    static inline int waits;
    static inline int closesAt;
    static inline bool (*systemsWait)();
};

TEST_F(BusyPreferenceFileTest, AFileThatIsClosedInAMomentIsWaitedFor) {
    closesAt = 3;
    Store(StandardPath());
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(place->writes, 0) << "the stored path stays";
    EXPECT_GE(waits, 3);
}

TEST_F(BusyPreferenceFileTest, PatienceEnds) {
    closesAt = 0;
    Store(StandardPath());
    EXPECT_EQ(OpeningFault(), 19000);
    EXPECT_EQ(waits, 50) << "for both paths together";
}

/// In a folder in which this user may make no file.
class DeniedPreferenceFileTest : public PreferenceFileTest {
  protected:
    DeniedPreferenceFileTest() {
        std::filesystem::create_directory(folder.Path() / "user");
        place->userFolder = (folder.Path() / "user" / "").string();
        denied = StandardPath();
        alsoDenied.clear();
        systems = fileSystem;
        fileSystem.open = [](const char* path, FileAccess access,
                             FileDisposition disposition) -> void* {
            wasDenied = path == denied || path == alsoDenied;
            return wasDenied ? nullptr : systems.open(path, access, disposition);
        };
        fileSystem.wasDenied = [] { return wasDenied; };
    }

    std::string UsersPath() { return place->userFolder + "Zandermolite3.prf"; }

    static inline std::string denied;
    static inline std::string alsoDenied;
    static inline bool wasDenied;
    static inline FileSystemServices systems;
};

TEST_F(DeniedPreferenceFileTest, TheFileIsMadeAmongTheUsersData) {
    place->isMachineDenied = true;
    PreferenceFile made;
    EXPECT_EQ(made.OpenPreferenceFile(), 0);
    EXPECT_EQ(made.path, UsersPath());
    EXPECT_EQ(place->stored, UsersPath());
    made.WriteNext("abc", 3);
    EXPECT_EQ(made.Close(), 0);
    const int writes = place->writes;
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, UsersPath()) << "from now on it is found by the store";
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(place->writes, writes);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.Delete(), 0);
    EXPECT_FALSE(std::filesystem::exists(UsersPath()));
}

TEST_F(DeniedPreferenceFileTest, TheMachinesStoreLeadsNobodyToTheDataOfAnAdministrator) {
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, UsersPath());
    EXPECT_EQ(place->stored, StandardPath());
    EXPECT_EQ(place->own, UsersPath());
    EXPECT_EQ(place->closes, 2);
    file.WriteNext("abc", 3);
    EXPECT_EQ(file.Close(), 0);
    place->own = (folder.Path() / "user" / "chosen.prf").string();
    std::filesystem::rename(UsersPath(), place->own);
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, place->own) << "what their own store says counts";
    EXPECT_EQ(file.GetSize(), 3);
}

TEST_F(DeniedPreferenceFileTest, APathForAllUsersThatIsDeniedIsLeftForTheirOwn) {
    const std::filesystem::path mine = folder.Path() / "mine.prf";
    Store(mine);
    place->machinePath = alsoDenied = (folder.Path() / "everybody.prf").string();
    place->isMachineDenied = true;
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
    EXPECT_EQ(file.path, mine.string());
    EXPECT_EQ(place->writes, 0);
}

TEST_F(DeniedPreferenceFileTest, AUsersStoreThatCannotBeOpenedIsAnError) {
    preferencePlace.open = [](PreferenceOwner owner) {
        static int machines;
        return PreferenceStore{owner == PreferenceOwner::machine ? &machines : nullptr, false};
    };
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(place->closes, 1) << "the machine's is not left open";
}

TEST_F(DeniedPreferenceFileTest, WithoutAFolderThereItIsAnError) {
    place->userFolder.clear();
    EXPECT_EQ(OpeningFault(), 19000);
    EXPECT_EQ(place->stored, StandardPath());
    EXPECT_EQ(place->own, "");
    EXPECT_EQ(place->closes, 2);
}

TEST_F(DeniedPreferenceFileTest, AUsersFileThatCannotBeOpenedIsAnError) {
    std::filesystem::create_directory(UsersPath());
    EXPECT_EQ(OpeningFault(), 19000);
    EXPECT_EQ(place->closes, 2);
}

TEST_F(DeniedPreferenceFileTest, AnyOtherFailureBesideTheModuleIsAnError) {
    fileSystem.wasDenied = [] { return false; };
    EXPECT_EQ(OpeningFault(), 19000);
    EXPECT_FALSE(std::filesystem::exists(UsersPath()));
}

TEST_F(PreferenceFileTest, AModuleWithoutAPathIsAnError) {
    place->module.clear();
    EXPECT_EQ(OpeningFault(), 20008);
    EXPECT_EQ(place->closes, 1);
    EXPECT_EQ(place->writes, 0);
}

TEST_F(PreferenceFileTest, ReadsAndWritesInSequence) {
    ASSERT_EQ(file.OpenPreferenceFile(), 0);
    file.WriteNext("abc", 3);
    file.WriteNext("defg", 4);
    EXPECT_EQ(file.position, 0) << "not the position of these";
    ASSERT_EQ(file.Close(), 0);
    EXPECT_EQ(BytesOf(StandardPath()), "abcdefg");
    ASSERT_EQ(file.OpenPreferenceFile(), 0);
    std::string read(5, '-');
    file.ReadNext(read.data(), 2);
    EXPECT_EQ(read, "ab---");
    file.ReadNext(read.data(), 5);
    EXPECT_EQ(read, "cdefg");
    EXPECT_EQ(file.position, 0);
}

TEST_F(PreferenceFileTest, AShortReadAndAShortWriteAreThrown) {
    WriteBytes(StandardPath(), "abc");
    ASSERT_EQ(file.OpenPreferenceFile(), 0);
    char bytes[4];
    EXPECT_EQ(FaultOf([&] { file.ReadNext(bytes, 4); }), -39);
    EXPECT_EQ(FaultOf([&] { file.ReadNext(bytes, 1); }), -39);
    fileSystem.write = [](void*, const void*, std::int32_t count, std::int32_t* transferred) {
        *transferred = count - 1;
        return true;
    };
    EXPECT_EQ(FaultOf([&] { file.WriteNext("x", 1); }), -34);
    EXPECT_TRUE(Log().faults.empty()) << "nothing is reported to the user from here";
}

TEST_F(PreferenceFileTest, TheSystemsErrorIsThrown) {
    ASSERT_EQ(file.OpenPreferenceFile(), 0);
    fileSystem.read = [](void*, void*, std::int32_t, std::int32_t*) { return false; };
    fileSystem.write = [](void*, const void*, std::int32_t, std::int32_t*) { return false; };
    fileSystem.lastError = [] { return 112; };
    char byte = 0;
    EXPECT_EQ(FaultOf([&] { file.ReadNext(&byte, 1); }), 112);
    EXPECT_EQ(FaultOf([&] { file.WriteNext(&byte, 1); }), 112);
}

TEST_F(PreferenceFileTest, ClosesItself) {
    {
        PreferenceFile first;
        ASSERT_EQ(first.OpenPreferenceFile(), 0);
    }
    EXPECT_EQ(file.OpenPreferenceFile(), 0);
}

// The system's own table.

TEST(PreferencePlaceTest, TheModuleIsTheFileOfThisProgram) {
    char path[filePathCapacity];
    ASSERT_TRUE(preferencePlace.modulePath(path, sizeof path));
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(std::filesystem::path(path).stem(), "core-tests");
    EXPECT_FALSE(preferencePlace.modulePath(path, 4)) << "half a path is none";
}

#ifndef _WIN32
TEST(PreferencePlaceTest, WithoutARegistryThePathIsRememberedForTheRun) {
    void* const store = preferencePlace.open(PreferenceOwner::machine).handle;
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(preferencePlace.open(PreferenceOwner::user).handle, store) << "there is one";
    char path[filePathCapacity];
    ASSERT_TRUE(preferencePlace.writePath(store, "/some/where.prf"));
    ASSERT_TRUE(preferencePlace.readPath(store, path, sizeof path));
    EXPECT_STREQ(path, "/some/where.prf");
    EXPECT_FALSE(preferencePlace.readPath(store, path, 4));
    EXPECT_TRUE(preferencePlace.writePath(store, ""));
    EXPECT_FALSE(preferencePlace.readPath(store, path, sizeof path)) << "as at first";
    EXPECT_FALSE(preferencePlace.readMachinePath(path, sizeof path));
    EXPECT_FALSE(preferencePlace.userFolder(path, sizeof path));
    EXPECT_TRUE(preferencePlace.close(store));
}
#endif

}  // namespace

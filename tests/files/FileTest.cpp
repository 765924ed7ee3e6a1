#include "tests/files/FileTest.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <utility>

namespace {

TEST_F(FileTest, BeginsClosedAndWithoutAName) {
    EXPECT_EQ(file.callback, nullptr);
    EXPECT_EQ(file.tag, 0u);
    EXPECT_EQ(file.handle, nullptr);
    EXPECT_EQ(file.position, 0);
    EXPECT_EQ(file.type, noFileType);
    EXPECT_FALSE(file.HasName());
    EXPECT_EQ(file.owner, nullptr);
}

TEST_F(FileTest, ExistsSaysWhetherTheFileCanBeRead) {
    EXPECT_EQ(file.Exists(), 19005);
    EXPECT_EQ(GetLastFileError(), 19005);
    Name("none.dat");
    EXPECT_EQ(file.Exists(), 19005);
    Put("abc");
    EXPECT_EQ(file.Exists(), 0);
    EXPECT_EQ(file.handle, nullptr);
    EXPECT_EQ(GetLastFileError(), 19005) << "a success leaves the last error alone";
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.Exists(), 0);
    File other;
    other.SetPath(file.path);
    EXPECT_EQ(other.Exists(), 19005) << "it is this file's alone";
}

TEST_F(FileTest, OpenNeedsAFileThatExists) {
    Name("none.dat");
    EXPECT_EQ(file.Open(), 19006);
    EXPECT_EQ(file.handle, nullptr);
    EXPECT_EQ(GetLastFileError(), 19006);
    EXPECT_FALSE(std::filesystem::exists(file.path));
    Put("abc");
    EXPECT_EQ(file.Open(), 0);
    EXPECT_NE(file.handle, nullptr);
    EXPECT_EQ(GetLastFileError(), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(Bytes(), "abc");
}

TEST_F(FileTest, EveryOperationButExistsForgetsTheLastError) {
    Put("abc");
    char bytes[4] = "xyz";
    const std::pair<const char*, std::function<void()>> operations[] = {
        {"Open", [&] { file.Open(); }},
        {"Read", [&] { file.Read(bytes, 0, 1); }},
        {"Write", [&] { file.Write(bytes, 0, 1); }},
        {"Append", [&] { file.Append(bytes, 1); }},
        {"GetSize", [&] { file.GetSize(); }},
        {"SetSize", [&] { file.SetSize(2); }},
        {"Close", [&] { file.Close(); }},
        {"a second Close", [&] { file.Close(); }},
        {"Read of a closed file", [&] { file.Read(bytes, 0, 1); }},
        {"Write of a closed file", [&] { file.Write(bytes, 0, 1); }},
        {"Delete", [&] { file.Delete(); }},
        {"Delete without a name", [&] { file.Delete(); }},
        {"Create", [&] {
             Name("other.dat");
             file.Create();
         }}};
    for (const auto& [name, operation] : operations) {
        lastFileError = 19005;
        operation();
        EXPECT_EQ(GetLastFileError(), 0) << name;
    }
}

TEST_F(FileTest, AFolderIsNoFile) {
    file.SetPath(folder.Path().string());
    EXPECT_EQ(file.Open("r"), 19006);
    EXPECT_EQ(file.Create(), 19007);
    EXPECT_EQ(file.Exists(), 19005);
}

TEST_F(FileTest, OpenWithoutANameOrTwiceIsAnError) {
    EXPECT_EQ(Fault([&] { file.Open(); }), 20002);
    EXPECT_EQ(GetLastFileError(), 0);
    EXPECT_EQ(Fault([&] { file.Create(); }), 20002);
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(Fault([&] { file.Open(); }), 20002);
    EXPECT_EQ(Fault([&] { file.Create(); }), 20002);
    EXPECT_EQ(file.GetSize(), 3) << "it is open as before";
}

TEST_F(FileTest, TheModeTextGivesTheAccess) {
    static std::vector<FileAccess> asked;
    asked.clear();
    fileSystem.open = [](const char*, FileAccess access, FileDisposition disposition) -> void* {
        EXPECT_EQ(disposition, FileDisposition::existing);
        asked.push_back(access);
        return nullptr;
    };
    Name("some.dat");
    for (const char* const mode :
         {static_cast<const char*>(nullptr), "r", "w", "", "R", "x", "rwb"}) {
        EXPECT_EQ(file.Open(mode), 19006);
    }
    using enum FileAccess;
    EXPECT_EQ(asked, (std::vector<FileAccess>{readAndWrite, read, write, readAndWrite, readAndWrite,
                                              readAndWrite, readAndWrite}));
    for (const char* const mode : {"rw", "RW", "rW", "Rw"}) {
        EXPECT_EQ(Fault([&] { file.Open(mode); }), 20008);
        EXPECT_EQ(file.handle, nullptr);
    }
}

TEST_F(FileTest, AFileThatOnlyReadsCannotWriteAndTheOtherWayRound) {
    Put("abc");
    ASSERT_EQ(file.Open("r"), 0);
    EXPECT_EQ(file.Write("xyz", 0, 4), 19011) << "growing fails as a status";
    EXPECT_EQ(Fault([&] { file.Write("x", 0, 1); }), 20002);
    file.Close();
    ASSERT_EQ(file.Open("w"), 0);
    char byte = '-';
    EXPECT_EQ(Fault([&] { file.Read(&byte, 0, 1); }), 20002);
    EXPECT_EQ(file.Write("x", 0, 1), 0);
    file.Close();
    EXPECT_EQ(Bytes(), "xbc");
}

TEST_F(FileTest, CreateMakesOrEmptiesTheFile) {
    Name("new.dat");
    EXPECT_EQ(file.Create(), 0);
    EXPECT_EQ(file.Write("abc", 0, 3), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(Bytes(), "abc");
    EXPECT_EQ(file.Create(), 0);
    EXPECT_EQ(file.GetSize(), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(Bytes(), "");
}

TEST_F(FileTest, CreateInAFolderThatIsNotThereFails) {
    file.SetPath((folder.Path() / "none" / "new.dat").string());
    EXPECT_EQ(file.Create(), 19007);
    EXPECT_EQ(GetLastFileError(), 19007);
    EXPECT_EQ(file.handle, nullptr);
}

TEST_F(FileTest, AFileInUseIsNeitherOpenedNorEmptied) {
    Put("abc");
    ASSERT_EQ(file.Open("r"), 0);
    File other;
    other.SetPath(file.path);
    EXPECT_EQ(other.Open("r"), 19006);
    EXPECT_EQ(other.Create(), 19007);
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(other.Open("r"), 0);
    EXPECT_EQ(other.Close(), 0);
    EXPECT_EQ(Bytes(), "abc");
}

TEST_F(FileTest, CloseOfAClosedFileIsFine) {
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(GetLastFileError(), 0);
}

TEST_F(FileTest, CloseFlushesFirst) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    static std::vector<std::string> steps;
    steps.clear();
    static FileSystemServices real;
    real = fileSystem;
    fileSystem.flush = [](void* handle) {
        steps.push_back("flush");
        real.flush(handle);
        return false;  // which is not looked at
    };
    fileSystem.close = [](void* handle) {
        steps.push_back("close");
        return real.close(handle);
    };
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(steps, (std::vector<std::string>{"flush", "close"}));
}

TEST_F(FileTest, AFailedCloseIsAStatusAndStillClears) {
    Put("abc");
    ASSERT_EQ(file.Open("r"), 0);
    static bool (*systemsClose)(void*);
    systemsClose = fileSystem.close;
    fileSystem.close = [](void* handle) {
        systemsClose(handle);
        return false;
    };
    EXPECT_EQ(file.Close(), 19009);
    EXPECT_EQ(GetLastFileError(), 19009);
    EXPECT_EQ(file.handle, nullptr);
}

TEST_F(FileTest, DeleteClearsTheNameWhateverTheOutcome) {
    EXPECT_EQ(file.Delete(), 0) << "no name, nothing to do";
    Put("abc");
    const std::filesystem::path path = file.path;
    EXPECT_EQ(file.Delete(), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(file.HasName());
    Name("none.dat");
    EXPECT_EQ(file.Delete(), 19008);
    EXPECT_EQ(GetLastFileError(), 19008);
    EXPECT_FALSE(file.HasName());
    file.SetPath(folder.Path().string());
    EXPECT_EQ(file.Delete(), 19008) << "folders stay";
    EXPECT_TRUE(std::filesystem::exists(folder.Path()));
}

}  // namespace

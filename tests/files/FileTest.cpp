#include "files/File.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "files/FileDialog.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/FileTypes.h"
#include "tests/support/ScratchFolder.h"

namespace {

class FileTest : public CoreTest {
  protected:
    FileTest() { lastFileError = 1; }
    ~FileTest() override {
        file.Close();
        lastFileError = 0;
        errorCell = 0;
    }

    std::filesystem::path PathOf(const char* name) const { return folder.Path() / name; }
    void Name(const char* name) { file.SetPath(PathOf(name).string()); }
    /// Names a file with these bytes.
    void Put(const std::string& bytes) {
        Name("some.dat");
        WriteBytes(file.path, bytes);
    }
    std::string Bytes() const { return BytesOf(file.path); }

    /// The id thrown, which must have been reported from File.
    template <typename Operation>
    static int Fault(Operation operation) {
        const int id = FaultOf(operation);
        if (id != 0) {
            EXPECT_EQ(Log().faults.back().id, id);
            EXPECT_EQ(Log().faults.back().file, "File");
        }
        return id;
    }

    ScratchFolder folder;
    FileSystemOverride system;
    File file;
};

TEST_F(FileTest, BeginsClosedAndWithoutAName) {
    EXPECT_EQ(file.callback, nullptr);
    EXPECT_EQ(file.tag, 0u);
    EXPECT_EQ(file.handle, nullptr);
    EXPECT_EQ(file.position, 0);
    EXPECT_EQ(file.type, noFileType);
    EXPECT_FALSE(file.HasName());
    EXPECT_EQ(file.owner, nullptr);
}

// Paths.

/// With Windows' separator, and a code page in which 0x81 begins a double-byte character.
class FilePathTest : public FileTest {
  protected:
    FilePathTest() {
        platformServices.pathSeparator = '\\';
        fileSystem.isLeadByte = [](unsigned char byte) { return byte == 0x81; };
    }
};

TEST_F(FilePathTest, NameAndDirectoryPartAtTheLastSeparator) {
    file.SetPath("C:\\one\\two.jpg");
    EXPECT_EQ(file.GetFileName(), "two.jpg");
    EXPECT_EQ(file.GetDirectory(), "C:\\one\\");
    file.SetPath("two.jpg");
    EXPECT_EQ(file.GetFileName(), "two.jpg");
    EXPECT_EQ(file.GetDirectory(), "");
    file.SetPath("C:\\one\\");
    EXPECT_EQ(file.GetFileName(), "");
    EXPECT_EQ(file.GetDirectory(), "C:\\one\\");
    file.ClearName();
    EXPECT_EQ(file.GetFileName(), "");
    EXPECT_EQ(file.GetDirectory(), "");
}

TEST_F(FilePathTest, ADoubleByteCharacterThatEndsInABackslashIsNotCut) {
    file.SetPath("C:\\one\\a\x81\\b.jpg");
    EXPECT_EQ(file.GetFileName(), "a\x81\\b.jpg");
    EXPECT_EQ(file.GetDirectory(), "C:\\one\\");
    file.SetPath("C:\\\x81\x81\\b.jpg");
    EXPECT_EQ(file.GetFileName(), "b.jpg");
    // Half a character at the end is one of its own.
    file.SetPath("C:\\one\x81");
    EXPECT_EQ(file.GetFileName(), "one\x81");
}

TEST_F(FilePathTest, SetFileNameKeepsTheDirectory) {
    file.SetPath("C:\\one\\two.jpg");
    file.SetFileName("three");
    EXPECT_STREQ(file.path, "C:\\one\\three");
    file.SetFileName("");
    EXPECT_STREQ(file.path, "C:\\one\\");
    file.ClearName();
    file.SetFileName("four");
    EXPECT_STREQ(file.path, "four");
}

TEST_F(FilePathTest, APathHas1023BytesAtMost) {
    file.SetPath("C:\\one");
    EXPECT_EQ(Fault([&] { file.SetPath(std::string(1024, 'x')); }), 20008);
    EXPECT_EQ(Fault([&] { file.SetFileName(std::string(1021, 'x')); }), 20008);
    EXPECT_STREQ(file.path, "C:\\one");
    file.SetFileName(std::string(1020, 'x'));
    EXPECT_EQ(std::strlen(file.path), 1023u);
    EXPECT_EQ(Fault([&] { file.SetExtensionForType(jpegExtension); }), 20008);
    EXPECT_EQ(std::strlen(file.path), 1023u);
}

TEST_F(FilePathTest, TheTypeIsThatOfTheLastExtension) {
    EXPECT_EQ(FileTypeOf("C:\\one\\tile.jpg"), Type(".JPG"));
    EXPECT_EQ(FileTypeOf("tile.JpG"), Type(".JPG"));
    EXPECT_EQ(FileTypeOf("a.tar.gz"), Type(".GZ "));
    EXPECT_EQ(FileTypeOf("a.b"), Type(".B  "));
    EXPECT_EQ(FileTypeOf("tile.jpeg"), Type(".JPE"));
    EXPECT_EQ(FileTypeOf("tile."), Type(".   "));
    EXPECT_EQ(FileTypeOf(".jpg"), Type(".JPG"));
}

TEST_F(FilePathTest, ANameWithoutADotHasNoType) {
    EXPECT_EQ(FileTypeOf("tile"), noFileType);
    EXPECT_EQ(FileTypeOf(""), noFileType);
    EXPECT_EQ(FileTypeOf("C:\\one.jpg\\tile"), noFileType);
    // The second byte of a double-byte character looks like a dot.
    EXPECT_EQ(FileTypeOf("tile\x81.jpg"), noFileType);
    EXPECT_EQ(FileTypeOf("tile.jpg\x81."), Type(".JPG"));
}

TEST_F(FilePathTest, TheSearchForADotEndsAfter1024Bytes) {
    EXPECT_EQ(FileTypeOf(std::string(1020, 'x') + ".jpg"), Type(".JPG"));
    EXPECT_EQ(FileTypeOf(std::string(1024, 'x') + ".jpg"), noFileType);
}

TEST_F(FilePathTest, TheExtensionIsAppendedUnlessTheTypeIsThere) {
    file.SetPath("C:\\tile");
    file.SetExtensionForType(jpegExtension);
    EXPECT_STREQ(file.path, "C:\\tile.JPG");
    file.SetExtensionForType(jpegExtension);
    EXPECT_STREQ(file.path, "C:\\tile.JPG");
    file.SetPath("C:\\tile.jpg");
    file.SetExtensionForType(jpegExtension);
    EXPECT_STREQ(file.path, "C:\\tile.jpg");
    file.SetPath("C:\\tile.png");
    file.SetExtensionForType(Type(".GZ "));
    EXPECT_STREQ(file.path, "C:\\tile.png.GZ");
    file.SetExtensionForType(noFileType);
    EXPECT_STREQ(file.path, "C:\\tile.png.GZ");
}

// Opening, creating, closing, deleting.

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

// Reading.

TEST_F(FileTest, ReadsFromAnyPlace) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    std::string read(4, '-');
    EXPECT_EQ(file.Read(read.data(), 3, 4), 4);
    EXPECT_EQ(read, "3456");
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(file.Read(read.data(), file.position, 2), 2);
    EXPECT_EQ(read, "7856");
    EXPECT_EQ(file.position, 9);
    EXPECT_EQ(GetLastFileError(), 0);
}

TEST_F(FileTest, ReadsNoFurtherThanTheEnd) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    std::string read(4, '-');
    EXPECT_EQ(file.Read(read.data(), 8, 4), 2);
    EXPECT_EQ(read, "89--");
    EXPECT_EQ(file.position, 10);
    EXPECT_EQ(file.Read(read.data(), 10, 4), 0);
    EXPECT_EQ(file.position, 10);
}

TEST_F(FileTest, ReadFromBehindTheEndLeavesThePositionAtTheEnd) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    char byte = '-';
    for (const std::int32_t start : {11, 1000, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(file.Read(&byte, start, 1), 0);
        EXPECT_EQ(file.position, 10);
    }
    EXPECT_EQ(byte, '-');
    EXPECT_EQ(file.Read(nullptr, 11, 1), 0) << "nothing is read, so nothing is checked";
}

TEST_F(FileTest, ReadOfACountBelowZeroReadsNothing) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    EXPECT_EQ(file.Read(nullptr, 5, -2), 0);
    EXPECT_EQ(file.position, 3);
    constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(file.Read(nullptr, lowest, lowest), 0);
    EXPECT_EQ(file.position, lowest);
}

TEST_F(FileTest, ReadFromBelowZeroIsAnError) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    char bytes[4];
    EXPECT_EQ(Fault([&] { file.Read(bytes, -1, 4); }), 20002);
}

TEST_F(FileTest, AClosedFileReadsNothing) {
    Put("abc");
    char byte = '-';
    file.position = 7;
    EXPECT_EQ(file.Read(&byte, 0, 1), 0);
    EXPECT_EQ(byte, '-');
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(GetLastFileError(), 0);
}

TEST_F(FileTest, FailuresOfReadingAreFaults) {
    Put("abc");
    ASSERT_EQ(file.Open("r"), 0);
    char bytes[3];
    EXPECT_EQ(Fault([&] { file.Read(nullptr, 0, 3); }), 20008);
    {
        const FileSystemOverride step;
        fileSystem.isWritable = [](void*, std::int32_t) { return false; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20008);
    }
    {
        const FileSystemOverride step;
        fileSystem.seek = [](void*, std::int32_t) { return false; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20002);
    }
    {
        const FileSystemOverride step;
        fileSystem.read = [](void*, void*, std::int32_t, std::int32_t*) { return false; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20002);
    }
    {
        const FileSystemOverride step;
        fileSystem.read = [](void*, void*, std::int32_t count, std::int32_t* transferred) {
            *transferred = count - 1;
            return true;
        };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20008);
    }
    {
        const FileSystemOverride step;
        fileSystem.size = [](void*) { return std::int64_t{-1}; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20002);
        EXPECT_EQ(Fault([&] { file.GetSize(); }), 20002);
    }
    EXPECT_EQ(file.Read(bytes, 0, 3), 3);
}

// Writing.

TEST_F(FileTest, WritesToAnyPlace) {
    Put("0123456789");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.Write("abc", 3, 3), 0);
    EXPECT_EQ(file.position, 6);
    EXPECT_EQ(file.GetSize(), 10);
    EXPECT_EQ(file.Write("xyz", 9, 3), 0);
    EXPECT_EQ(file.position, 12);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(Bytes(), "012abc678xyz");
}

TEST_F(FileTest, WriteBehindTheEndGrowsTheFileFirst) {
    Put("012");
    ASSERT_EQ(file.Open(), 0);
    static std::vector<std::string> steps;
    static FileSystemServices real;
    steps.clear();
    real = fileSystem;
    fileSystem.setEnd = [](void* handle) {
        steps.push_back("end");
        return real.setEnd(handle);
    };
    fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                          std::int32_t* transferred) {
        steps.push_back("write");
        return real.write(handle, buffer, count, transferred);
    };
    fileSystem.flush = [](void* handle) {
        steps.push_back("flush");
        return real.flush(handle);
    };
    EXPECT_EQ(file.Write("ab", 6, 2), 0);
    EXPECT_EQ(steps, (std::vector<std::string>{"end", "write", "flush"}));
    EXPECT_EQ(file.position, 8);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(Bytes(), std::string("012\0\0\0ab", 8));
}

TEST_F(FileTest, AClosedFileOnlyGetsItsPosition) {
    Put("abc");
    EXPECT_EQ(file.Write("xy", 5, 2), 0);
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(Bytes(), "abc");
}

TEST_F(FileTest, NothingToWriteOnlyGrowsTheFile) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.Write(nullptr, 2, 0), 0);
    EXPECT_EQ(file.position, 2);
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(file.Write(nullptr, 5, 0), 0);
    EXPECT_EQ(file.position, 5);
    EXPECT_EQ(file.GetSize(), 5);
    EXPECT_EQ(file.Write("x", 7, -1), 0);
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(file.GetSize(), 5);
}

TEST_F(FileTest, PlacesThatNoFileHasAreRefused) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.Write("xy", std::numeric_limits<std::int32_t>::max(), 2), 19011);
    EXPECT_EQ(file.Write("xy", -2, 2), 19011);
    EXPECT_EQ(GetLastFileError(), 19011);
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(file.position, 0);
}

TEST_F(FileTest, FailuresOfWriting) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(Fault([&] { file.Write(nullptr, 0, 3); }), 20008);
    {
        const FileSystemOverride step;
        fileSystem.isReadable = [](const void*, std::int32_t) { return false; };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20008);
    }
    {
        const FileSystemOverride step;
        fileSystem.setEnd = [](void*) { return false; };
        EXPECT_EQ(file.Write("wxyz", 0, 4), 19011);
        EXPECT_EQ(GetLastFileError(), 19011);
    }
    {
        const FileSystemOverride step;
        fileSystem.seek = [](void*, std::int32_t) { return false; };
        EXPECT_EQ(file.Write("xyz", 0, 3), 19011);
        EXPECT_EQ(GetLastFileError(), 19011);
        EXPECT_EQ(file.SetSize(3), 19011);
    }
    {
        const FileSystemOverride step;
        fileSystem.write = [](void*, const void*, std::int32_t, std::int32_t*) { return false; };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20002);
    }
    {
        const FileSystemOverride step;
        fileSystem.write = [](void*, const void*, std::int32_t count, std::int32_t* transferred) {
            *transferred = count - 1;
            return true;
        };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20008);
    }
    EXPECT_EQ(file.position, 0);
    {
        const FileSystemOverride step;
        fileSystem.flush = [](void*) { return false; };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20008);
    }
    EXPECT_EQ(file.Write("XYZ", 0, 3), 0);
}

// Sizes.

TEST_F(FileTest, TheSizeCanBeAskedAndSet) {
    EXPECT_EQ(Fault([&] { file.GetSize(); }), 20002);
    EXPECT_EQ(file.SetSize(3), 19011) << "a closed file has no size";
    Put("0123456789");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.GetSize(), 10);
    EXPECT_EQ(file.SetSize(4), 0);
    EXPECT_EQ(file.GetSize(), 4);
    EXPECT_EQ(file.SetSize(6), 0);
    EXPECT_EQ(file.SetSize(-1), 19011);
    EXPECT_EQ(GetLastFileError(), 19011);
    file.Close();
    EXPECT_EQ(Bytes(), std::string("0123\0\0", 6));
}

TEST_F(FileTest, ALargerSizeThanANumberHoldsIsTheLargest) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    fileSystem.size = [](void*) { return std::int64_t{1} << 32; };
    EXPECT_EQ(file.GetSize(), std::numeric_limits<std::int32_t>::max());
}

}  // namespace

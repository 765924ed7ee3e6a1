#include <algorithm>
#include <cstring>

#include "files/FileDialog.h"
#include "tests/files/FileTest.h"
#include "tests/support/FileTypes.h"

namespace {

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

}  // namespace

#include "files/FileDialog.h"

#include <cstring>

#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/FileTypes.h"

namespace {

constexpr FileType pictureTypes[] = {Type("JPEG"), Type("JFIF"), Type(".JPG"), noFileType};
constexpr FileType twoExtensions[] = {Type(".JPG"), Type(".GZ "), noFileType};
constexpr FileType noExtension[] = {Type("JPEG"), noFileType};

using std::string_literals::operator""s;

class FileDialogTest : public CoreTest {
  protected:
    FileDialogTest() {
        platformServices.pathSeparator = '\\';
        platformServices.runFileDialog = [](FileDialog& dialog) {
            asked.push_back(dialog);
            if (choice.empty()) {
                return false;
            }
            std::strcpy(dialog.path, choice.c_str());
            return true;
        };
        asked.clear();
        choice.clear();
    }
    ~FileDialogTest() override { errorCell = 0; }

    FileSystemOverride system;

    static std::string Enforced(const char* name, FileType chosen) {
        char path[filePathCapacity];
        std::strcpy(path, name);
        EnforceExtension(path, chosen);
        return path;
    }

    static inline std::vector<FileDialog> asked;
    /// The path that the user chooses; empty to cancel.
    static inline std::string choice;
    File file;
};

TEST_F(FileDialogTest, AProposalHoldsNothingThatNoFileCanBeCalled) {
    char name[filePathCapacity] = "a\\b/c:d*e?f\"g<h>i|j\x1fk. l.JPG";
    MakeProposable(name);
    EXPECT_STREQ(name, "a_b_c_d_e_f_g_h_i_j_k. l.JPG");
    fileSystem.isLeadByte = [](unsigned char byte) { return byte == 0x83; };
    char japanese[filePathCapacity] = "\x83\\?\x83";
    MakeProposable(japanese);
    EXPECT_STREQ(japanese, "\x83\\_\x83") << "a backslash that is half a character stays";
}

TEST_F(FileDialogTest, WithoutAnExtensionToEnforceANameStays) {
    char path[filePathCapacity] = "C:\\a.txt";
    EXPECT_FALSE(EnforceExtension(path, noFileType));
    EXPECT_STREQ(path, "C:\\a.txt");
}

TEST_F(FileDialogTest, OpeningOffersAllExtensionsInOneEntry) {
    EXPECT_EQ(MakeFileDialog(FileDialogMode::open, nullptr, pictureTypes).filter,
              "*.JPG\0*.JPG\0\0"s);
    EXPECT_EQ(MakeFileDialog(FileDialogMode::open, nullptr, twoExtensions).filter,
              "*.JPG;*.GZ\0*.JPG;*.GZ\0\0"s);
}

TEST_F(FileDialogTest, SavingOffersAnEntryForEachExtension) {
    const FileDialog dialog = MakeFileDialog(FileDialogMode::save, nullptr, twoExtensions);
    EXPECT_EQ(dialog.filter, "*.JPG\0*.JPG\0*.GZ\0*.GZ\0\0"s);
    EXPECT_EQ(dialog.types, (std::vector<FileType>{Type(".JPG"), Type(".GZ ")}));
    EXPECT_EQ(DefaultExtension(dialog), "JPG");
}

TEST_F(FileDialogTest, WithoutExtensionsAllFilesAreOffered) {
    for (const FileDialogMode mode : {FileDialogMode::open, FileDialogMode::save}) {
        const FileDialog dialog = MakeFileDialog(mode, nullptr, noExtension);
        EXPECT_EQ(dialog.filter, "*.*\0*.*\0\0"s);
        EXPECT_EQ(DefaultExtension(dialog), "");
    }
}

TEST_F(FileDialogTest, AFilterHas1024BytesAtMost) {
    // When saving each type takes 12 bytes, or 10 with two letters; the end takes one.
    const auto types = [](std::size_t threeLetters, std::size_t twoLetters) {
        std::vector<FileType> list(threeLetters, Type(".JPG"));
        list.insert(list.end(), twoLetters, Type(".GZ "));
        list.push_back(noFileType);
        return list;
    };
    const std::vector<FileType> most = types(81, 5);
    EXPECT_EQ(MakeFileDialog(FileDialogMode::save, nullptr, most.data()).filter.size(), 1023u);
    const std::vector<FileType> tooMany = types(82, 4);
    EXPECT_EQ(FaultOf([&] { MakeFileDialog(FileDialogMode::save, nullptr, tooMany.data()); }),
              20008);
    EXPECT_EQ(FaultOf([&] { file.ChooseFile(FileDialogMode::save, nullptr, tooMany.data(), 1); }),
              20008);
    EXPECT_TRUE(asked.empty());
}

TEST_F(FileDialogTest, ThePathGivesTheProposal) {
    int window = 0;
    file.SetPath("C:\\one\\tile.jpg");
    file.ChooseFile(FileDialogMode::open, &window, pictureTypes, 1);
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].mode, FileDialogMode::open);
    EXPECT_EQ(asked[0].ownerWindow, &window);
    EXPECT_EQ(asked[0].folder, "C:\\one\\");
    EXPECT_STREQ(asked[0].path, "tile.jpg");
    file.ClearName();
    file.ChooseFile(FileDialogMode::save, nullptr, pictureTypes, 1);
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[1].mode, FileDialogMode::save);
    EXPECT_EQ(asked[1].folder, "");
    EXPECT_STREQ(asked[1].path, "");
}

TEST_F(FileDialogTest, TheChoiceBecomesPathAndType) {
    choice = "D:\\two\\b.tar.gz";
    EXPECT_EQ(file.ChooseFile(FileDialogMode::open, nullptr, pictureTypes, 1), 0);
    EXPECT_STREQ(file.path, "D:\\two\\b.tar.gz");
    EXPECT_EQ(file.type, Type(".GZ "));
    choice = "D:\\two\\plain";
    EXPECT_EQ(file.ChooseFile(FileDialogMode::open, nullptr, pictureTypes, 1), 0);
    EXPECT_EQ(file.type, noFileType);
}

TEST_F(FileDialogTest, CancelKeepsThePathAndClearsTheType) {
    file.SetPath("C:\\one\\tile.jpg");
    file.type = Type(".JPG");
    EXPECT_EQ(file.ChooseFile(FileDialogMode::open, nullptr, pictureTypes, 1), 32512);
    EXPECT_STREQ(file.path, "C:\\one\\tile.jpg");
    EXPECT_EQ(file.type, noFileType);
}

TEST_F(FileDialogTest, SavingWithoutADialogIdGivesTheFirstType) {
    choice = "D:\\two\\b.gz";
    EXPECT_EQ(file.ChooseFile(FileDialogMode::save, nullptr, twoExtensions, 0), 0);
    EXPECT_EQ(file.type, Type(".JPG"));
    EXPECT_EQ(file.ChooseFile(FileDialogMode::save, nullptr, twoExtensions, 1), 0);
    EXPECT_EQ(file.type, Type(".GZ "));
    EXPECT_EQ(file.ChooseFile(FileDialogMode::open, nullptr, twoExtensions, 0), 0);
    EXPECT_EQ(file.type, Type(".GZ "));
}

TEST_F(FileDialogTest, TheChosenTypesExtensionIsEnforced) {
    EXPECT_EQ(Enforced("C:\\tile", Type(".JPG")), "C:\\tile.JPG");
    EXPECT_EQ(Enforced("C:\\tile.jpg", Type(".JPG")), "C:\\tile.jpg");
    EXPECT_EQ(Enforced("C:\\tile.png", Type(".JPG")), "C:\\tile.png.JPG");
    EXPECT_EQ(Enforced("C:\\a.jpg", Type(".GZ ")), "C:\\a.jpg.GZ");
    EXPECT_EQ(Enforced("C:\\a.JPG", noFileType), "C:\\a.JPG") << "all files were offered";
    const std::string longest(1023, 'x');
    EXPECT_EQ(Enforced(longest.c_str(), Type(".JPG")), longest) << "there is no room";
    const std::string fitting(1019, 'x');
    EXPECT_EQ(Enforced(fitting.c_str(), Type(".JPG")), fitting + ".JPG");
}

TEST_F(FileDialogTest, AnExtensionThatTheSystemAppendedIsThatOfTheType) {
    const auto unified = [](const char* name, const char* typedName, FileType chosen) {
        char path[filePathCapacity];
        std::strcpy(path, name);
        UnifyExtension(path, typedName, chosen);
        return std::string(path);
    };
    EXPECT_EQ(unified("C:\\tile.jpg", "tile", Type(".JPG")), "C:\\tile.JPG");
    EXPECT_EQ(unified("C:\\tile.jpg", "C:\\a.b\\tile", Type(".JPG")), "C:\\tile.JPG");
    EXPECT_EQ(unified("C:\\tile.gz", "tile", Type(".GZ ")), "C:\\tile.GZ");
    EXPECT_EQ(unified("C:\\tile.jpg", "tile.jpg", Type(".JPG")), "C:\\tile.jpg") << "typed so";
    EXPECT_EQ(unified("C:\\tile", "tile", Type(".JPG")), "C:\\tile") << "none was appended";
    EXPECT_EQ(unified("C:\\tile", "tile", noFileType), "C:\\tile");
}

TEST_F(FileDialogTest, ATypesTextEndsAtTheFirstBlank) {
    EXPECT_EQ(ExtensionText(Type(".JPG")), ".JPG");
    EXPECT_EQ(ExtensionText(Type(".GZ ")), ".GZ");
    EXPECT_EQ(ExtensionText(Type(".   ")), ".");
    EXPECT_EQ(ExtensionText(noFileType), "");
}

}  // namespace

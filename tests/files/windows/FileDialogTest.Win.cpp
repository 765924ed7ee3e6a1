// The system's own dialogs, on the desktop of this program.
#include <windows.h>

#include <atomic>

#include "files/File.h"
#include "files/FileDialog.Win.h"
#include "fixtures/FileDialog.Win.h"
#include "framework/alerts/Alert.Win.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/FileTypes.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/windows/FakeScreens.Win.h"

namespace {

constexpr FileType jpegTypes[] = {Type("JPEG"), Type("JFIF"), jpegExtension, noFileType};
constexpr FileType twoTypes[] = {jpegExtension, Type(".GZ "), noFileType};

class SystemFileDialogTest : public CoreTest {
  protected:
    SystemFileDialogTest() {
        platformServices.runFileDialog = RunFileDialog;
        GetCurrentDirectoryA(sizeof currentDirectory, currentDirectory);
        file.SetPath(PathOf("Untitled"));
    }
    ~SystemFileDialogTest() override {
        // The dialogs go to the folder of the choice, and the process with them.
        char after[MAX_PATH] = "";
        GetCurrentDirectoryA(sizeof after, after);
        EXPECT_STREQ(after, currentDirectory) << "is the host's";
        SetCurrentDirectoryA(currentDirectory);
        if (window != nullptr) {
            DestroyWindow(window);
        }
    }

    std::string PathOf(const char* name) const { return (folder.Path() / name).string(); }
    std::int16_t Choose(FileDialogMode mode, const FileType* types,
                        const std::function<void(const OpenFileDialog&)>& steps) {
        std::int16_t status = -1;
        EXPECT_TRUE(
            DriveFileDialog([&] { status = file.ChooseFile(mode, window, types, 1); }, steps));
        return status;
    }
    std::int16_t Save(const FileType* types,
                      const std::function<void(const OpenFileDialog&)>& steps) {
        return Choose(FileDialogMode::save, types, steps);
    }
    std::int16_t Open(const std::function<void(const OpenFileDialog&)>& steps) {
        return Choose(FileDialogMode::open, jpegTypes, steps);
    }
    /// Saves under a typed name, with one of twoTypes from 0.
    std::string SavedAs(const char* name, int type) {
        EXPECT_EQ(Save(twoTypes,
                       [=](const OpenFileDialog& dialog) {
                           if (type != 0) {
                               dialog.PickType(type);
                           }
                           dialog.TypeName(name);
                           dialog.Accept();
                       }),
                  0);
        return file.GetFileName();
    }

    ScratchFolder folder;
    char currentDirectory[MAX_PATH];
    HWND window = nullptr;
    File file;
};

TEST_F(SystemFileDialogTest, OpensTheNameThatIsTyped) {
    WriteBytes(PathOf("tile.jpg"), "x");
    EXPECT_EQ(Open([&](const OpenFileDialog& dialog) {
                  EXPECT_EQ(dialog.Title(), "Open");
                  EXPECT_EQ(dialog.Name(), "Untitled");
                  EXPECT_EQ(dialog.Types(), std::vector<std::string>{"*.JPG"});
                  dialog.TypeName("tile.jpg");
                  dialog.Accept();
              }),
              0);
    EXPECT_EQ(file.GetFileName(), "tile.jpg");
    EXPECT_EQ(BytesOf(file.path), "x") << "in the folder of the name that was offered";
    EXPECT_EQ(file.type, jpegExtension);
}

TEST_F(SystemFileDialogTest, AFileThatIsNotThereIsNotAccepted) {
    EXPECT_EQ(Open([](const OpenFileDialog& dialog) {
                  dialog.TypeName("none.jpg");
                  dialog.Accept();
                  EXPECT_TRUE(dialog.Answer(IDOK) || dialog.Answer(IDCANCEL));
                  dialog.Cancel();
              }),
              32512);
}

TEST_F(SystemFileDialogTest, CancelKeepsThePath) {
    const std::string before = file.path;
    for (const FileDialogMode mode : {FileDialogMode::open, FileDialogMode::save}) {
        file.type = jpegExtension;
        EXPECT_EQ(Choose(mode, jpegTypes,
                         [](const OpenFileDialog& dialog) {
                             dialog.TypeName("other.jpg");
                             dialog.Cancel();
                         }),
                  32512);
        EXPECT_EQ(file.path, before);
        EXPECT_EQ(file.type, noFileType);
    }
}

TEST_F(SystemFileDialogTest, SavingPutsTheExtensionOfTheChosenTypeAtTheEnd) {
    EXPECT_EQ(SavedAs("tile", 0), "tile.JPG");
    EXPECT_EQ(file.type, jpegExtension);
    EXPECT_EQ(SavedAs("tile.jpg", 0), "tile.jpg");
    EXPECT_EQ(SavedAs("tile.png", 0), "tile.png.JPG");
    EXPECT_EQ(SavedAs("tile", 1), "tile.GZ");
    EXPECT_EQ(file.type, Type(".GZ "));
    EXPECT_EQ(SavedAs("tile.jpg", 1), "tile.jpg.GZ");
    EXPECT_EQ(SavedAs("tile.gz", 1), "tile.gz");
}

TEST_F(SystemFileDialogTest, SavingOffersTheNameAndAllTypes) {
    EXPECT_EQ(Save(twoTypes,
                   [](const OpenFileDialog& dialog) {
                       EXPECT_EQ(dialog.Title(), "Save As");
                       EXPECT_EQ(dialog.Name(), "Untitled");
                       EXPECT_EQ(dialog.Types(), (std::vector<std::string>{"*.JPG", "*.GZ"}));
                       dialog.Accept();
                   }),
              0);
    EXPECT_STREQ(file.path, PathOf("Untitled.JPG").c_str());
}

TEST_F(SystemFileDialogTest, AFileIsReplacedOnlyAfterAQuestion) {
    WriteBytes(PathOf("tile.jpg"), "x");
    EXPECT_EQ(Save(jpegTypes,
                   [](const OpenFileDialog& dialog) {
                       dialog.TypeName("tile.jpg");
                       dialog.Accept();
                       EXPECT_TRUE(dialog.Answer(IDNO));
                       EXPECT_TRUE(dialog.IsWaiting());
                       dialog.Accept();
                       EXPECT_TRUE(dialog.Answer(IDYES));
                   }),
              0);
    EXPECT_EQ(file.GetFileName(), "tile.jpg");
}

TEST_F(SystemFileDialogTest, NorIsOneWhoseNameTheExtensionCompletes) {
    WriteBytes(PathOf("tile.png.JPG"), "x");
    EXPECT_EQ(Save(jpegTypes,
                   [&](const OpenFileDialog& dialog) {
                       dialog.TypeName("tile.png");
                       dialog.Accept();
                       // The whole name appears first; only then there is something to ask.
                       while (dialog.IsWaiting() && dialog.Name() == "tile.png") {
                           Sleep(10);
                       }
                       EXPECT_EQ(dialog.Name(), PathOf("tile.png.JPG"));
                       dialog.Accept();
                       EXPECT_TRUE(dialog.Answer(IDYES));
                   }),
              0);
    EXPECT_EQ(file.GetFileName(), "tile.png.JPG");
}

// A throw while the name is finished must not reach the system, which has called: in 32 bits it
// would end the process.
TEST_F(SystemFileDialogTest, ANameThatCannotBeFinishedIsNotAccepted) {
    static std::atomic<bool> throws;
    static std::atomic<int> thrown;
    throws = false;
    thrown = 0;
    const FileSystemOverride restored;
    fileSystem.isLeadByte = [](unsigned char) {
        if (throws) {
            ++thrown;
            throw std::bad_alloc();
        }
        return false;
    };
    EXPECT_EQ(Save(jpegTypes,
                   [&](const OpenFileDialog& dialog) {
                       dialog.TypeName("tile.png");
                       throws = true;
                       dialog.Accept();
                       WaitUntil("a throw", [] { return thrown > 0; });
                       EXPECT_TRUE(dialog.IsWaiting());
                       throws = false;
                       dialog.Accept();
                   }),
              0);
    EXPECT_EQ(file.GetFileName(), "tile.png.JPG");
    EXPECT_EQ(errorCell, 0);
}

TEST_F(SystemFileDialogTest, TheDialogStandsOverTheMiddleOfItsOwner) {
    window = CreateWindowA("STATIC", "owner", WS_POPUP | WS_VISIBLE, 300, 200, 500, 400, nullptr,
                           nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    for (const FileDialogMode mode : {FileDialogMode::open, FileDialogMode::save}) {
        RECT frame{};
        HWND owner = nullptr;
        EXPECT_EQ(Choose(mode, jpegTypes,
                         [&](const OpenFileDialog& dialog) {
                             frame = dialog.Frame();
                             owner = dialog.Owner();
                             dialog.Cancel();
                         }),
                  32512);
        EXPECT_EQ(owner, window);
        EXPECT_NEAR((frame.left + frame.right) / 2, 550, 1);
        EXPECT_NEAR((frame.top + frame.bottom) / 2, 400, 1);
    }
}

TEST_F(SystemFileDialogTest, StandsOnTheScreenOfItsOwner) {
    for (const Screen& second : SecondScreens()) {
        const TwoScreens screens(second);
        window =
            CreateWindowExA(0, "STATIC", "Editor", WS_POPUP | WS_VISIBLE, second.work.right - 100,
                            second.work.bottom - 100, 90, 90, nullptr, nullptr, nullptr, nullptr);
        for (const FileDialogMode mode : {FileDialogMode::open, FileDialogMode::save}) {
            RECT frame{};
            Choose(mode, jpegTypes, [&](const OpenFileDialog& dialog) {
                // The hook has moved it once the dialog takes names.
                frame = dialog.Frame();
                dialog.Cancel();
            });
            EXPECT_EQ(frame.right, second.work.right - alertMargin);
            EXPECT_EQ(frame.bottom, second.work.bottom - alertMargin);
        }
        DestroyWindow(window);
        window = nullptr;
    }
}

}  // namespace

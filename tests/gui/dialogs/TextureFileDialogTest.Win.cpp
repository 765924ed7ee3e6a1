// Open and Save in the editor, through the system's dialogs.
#include "base/FatalError.h"
#include "editor/TextureDialog.h"
#include "files/TextureFile.h"
#include "fixtures/FileDialog.Win.h"
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

using Texture = TextureItems;

const char* const notLoaded =
    "Loading this file failed (Memory may be full, the bitmap may be bigger than 512 x 512 pixels "
    "or the file may be damaged).";
const char* const notSaved =
    "An error occured while saving the texture. The texture has not been saved.";

class TextureFileDialogTest : public DialogRunTest {
  protected:
    TextureFileDialogTest() { GetCurrentDirectoryA(sizeof currentFolder, currentFolder); }
    // The system's dialogs leave the process in the folder of the choice.
    ~TextureFileDialogTest() override { SetCurrentDirectoryA(currentFolder); }

    std::filesystem::path PathOf(const std::string& name) const { return folder.Path() / name; }
    void Put(const std::string& fixture) const {
        WriteBytes(PathOf(fixture), BytesOf(std::filesystem::path("tests/files/jpeg") / fixture));
    }
    std::unique_ptr<PaintClass> TextureIn(const std::string& name) const {
        ImageFile file;
        file.SetPath(PathOf(name).string());
        return ReadTextureImage(file);
    }
    void Open(const GuiDriver& gui, const DrivenDialog& editor, const std::string& name) const {
        editor.PressToOpen(Texture::open);
        ChooseFile(gui, "Open", PathOf(name));
    }
    void Save(const GuiDriver& gui, const DrivenDialog& editor, const std::string& name) const {
        editor.PressToOpen(Texture::save);
        ChooseFile(gui, "Save As", PathOf(name));
    }
    static void ExpectName(const DrivenDialog& editor, const std::string& name) {
        WaitUntil("the name " + name, [&] { return editor.Text(Texture::name) == name; });
    }

    char currentFolder[MAX_PATH];
};

TEST_F(TextureFileDialogTest, OpenReplacesTheTexture) {
    Put("medium.jpg");
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        Open(gui, editor, "medium.jpg");
        ExpectName(editor, "medium.jpg");
        EXPECT_EQ(editor.Text(Texture::width), "70 pixel");
        EXPECT_EQ(editor.Text(Texture::height), "50 pixel");
    });
    ExpectApplied(*TextureIn("medium.jpg"));
}

TEST_F(TextureFileDialogTest, OpenHasNothingToRedo) {
    Put("medium.jpg");
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Texture::invert);
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
        Open(gui, editor, "medium.jpg");
        ExpectName(editor, "medium.jpg");
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
    });
    ExpectApplied(*TextureIn("medium.jpg"));
}

TEST_F(TextureFileDialogTest, OpenLeavesTheRepeatsAlone) {
    Put("medium.jpg");
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        CloseWith(OpenDialog(gui, editor, Texture::blur, blurDialog), okItem);
        WaitUntil("the repeat", [&] { return editor.IsEnabled(Texture::repeatFilter); });
        Open(gui, editor, "medium.jpg");
        ExpectName(editor, "medium.jpg");
        EXPECT_TRUE(editor.IsEnabled(Texture::repeatFilter));
        EXPECT_FALSE(editor.IsEnabled(Texture::repeatEffect));
        editor.Press(Texture::repeatFilter);
    });
    const std::unique_ptr<PaintClass> expected = TextureIn("medium.jpg");
    RunBlur(*expected, {});
    ExpectApplied(*expected);
}

TEST_F(TextureFileDialogTest, OpenByItsKeyAndACancel) {
    Put("medium.jpg");
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const auto cancel = [&] {
            const DrivenDialog dialog = gui.WaitForTitle("Open");
            dialog.SetText(fileNameField, PathOf("medium.jpg").string());
            CloseWith(dialog, IDCANCEL);
            gui.WaitUntilIdle();
            EXPECT_TRUE(IsWindowEnabled(editor.Window())) << "nothing is told";
        };
        gui.Chord({VK_CONTROL, 'O'});
        cancel();
        editor.ChooseToOpen(commandOpen);
        cancel();
        editor.PressToOpen(Texture::open);
        cancel();
        EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
        EXPECT_EQ(editor.Text(Texture::width), "150 pixel");
    });
    ExpectApplied(*Noise());
}

TEST_F(TextureFileDialogTest, WhatCannotBeOpened) {
    Put("size-513x10.jpg");
    Put("cmyk.jpg");
    WriteBytes(PathOf("torn.jpg"), "no picture");
    WriteBytes(PathOf("empty.jpg"), "");
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const char* const name : {"size-513x10.jpg", "cmyk.jpg", "torn.jpg", "empty.jpg"}) {
            Open(gui, editor, name);
            EXPECT_EQ(AnswerAlert(gui, editor), notLoaded) << name;
            EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
            EXPECT_EQ(editor.Text(Texture::width), "150 pixel");
        }
    });
    ExpectApplied(*Noise());
}

TEST_F(TextureFileDialogTest, WhatWasSavedIsThereAgain) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        Save(gui, editor, "tile");
        ExpectName(editor, "tile.JPG");
        editor.Press(Texture::invert);
        // Loading takes no message, so the next one comes after it.
        Open(gui, editor, "tile.JPG");
        editor.Settle();
    });
    ExpectApplied(*TextureIn("tile.JPG"));
}

TEST_F(TextureFileDialogTest, SaveProposesTheTexturesName) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Chord({VK_CONTROL, 'S'});
        const DrivenDialog dialog = gui.WaitForTitle("Save As");
        EXPECT_EQ(dialog.Text(fileNameField), "Untitled 1");
        CloseWith(dialog, IDCANCEL);
        EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
    });
}

/// Gives access to a private member that nothing changes. An explicit instantiation may name one.
template <auto member>
struct FormatOfFiles {
    friend std::int32_t& FormatOf(TextureDialog& editor) { return editor.*member; }
};
std::int32_t& FormatOf(TextureDialog& editor);
template struct FormatOfFiles<&TextureDialog::fileFormat>;

TEST_F(TextureFileDialogTest, AnUnknownFormatIsAFault) {
    platformServices.reportFault = [](std::int16_t id, const char* file, int line) {
        Log().faults.push_back({id, file, line});
    };
    const std::pair<int, const char*> commands[] = {
        {Texture::open, "TextureDialog / Zeile 1279 !(false)"},
        {Texture::save, "TextureDialog / Zeile 1312 !(false)"}};
    for (const auto& [button, assertion] : commands) {
        const int item = button;
        SkipNewDialog();
        const host::RunReport report = Run([&](const GuiDriver& gui) {
            const DrivenDialog editor = gui.WaitFor(textureDialog);
            FormatOf(static_cast<TextureDialog&>(*NorvantaDialog::Active())) = 2;
            editor.PressToOpen(item);
            editor.WaitUntilClosed();
        });
        ASSERT_FALSE(Log().faults.empty());
        EXPECT_EQ(Log().faults.back().id, 2);
        EXPECT_EQ(Log().faults.back().file, assertion);
        EXPECT_EQ(report.result, 0);
        EXPECT_TRUE(picture.pixels == before.pixels);
        errorCell = 0;
    }
    EXPECT_EQ(Log().faults.size(), 2u);
}

TEST_F(TextureFileDialogTest, WithoutAFormatNothingHappens) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        FormatOf(static_cast<TextureDialog&>(*NorvantaDialog::Active())) = 1;
        for (const int item : {Texture::open, Texture::save}) {
            editor.Press(item);
        }
        gui.WaitUntilIdle();
        EXPECT_TRUE(IsWindowEnabled(editor.Window())) << "no dialog is over it";
    });
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(TextureFileDialogTest, AFileThatCannotBeWritten) {
    WriteBytes(PathOf("locked.jpg"), "x");
    const HANDLE lock = CreateFileA(PathOf("locked.jpg").string().c_str(), GENERIC_READ,
                                    FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(Texture::save);
        const DrivenDialog dialog = gui.WaitForTitle("Save As");
        dialog.SetText(fileNameField, PathOf("locked.jpg").string());
        dialog.PressToOpen(IDOK);
        const HWND question = GetLastActivePopup(dialog.Window());
        WaitUntil("the system's question or the alert", [&] {
            const HWND popup = GetLastActivePopup(dialog.Window());
            if (popup != question && GetDlgItem(popup, IDYES) != nullptr) {
                PostMessageA(GetDlgItem(popup, IDYES), BM_CLICK, 0, 0);
            }
            return !dialog.IsOpen();
        });
        EXPECT_EQ(AnswerAlert(gui, editor), notSaved);
        EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
    });
    CloseHandle(lock);
    EXPECT_EQ(BytesOf(PathOf("locked.jpg")), "x");
    ExpectApplied(*Noise());
}

}  // namespace

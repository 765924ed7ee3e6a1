// Runs of the filter that begin with the New dialog.
#pragma once

#include "files/TextureFile.h"
#include "tests/gui/DialogRun.Win.h"

class NewDialogTest : public DialogRunTest {
  protected:
    NewDialogTest() { GetCurrentDirectoryA(sizeof currentFolder, currentFolder); }
    // The system's dialogs leave the process in the folder of the choice.
    ~NewDialogTest() override { SetCurrentDirectoryA(currentFolder); }

    /// A run with the dialog, which the user accepts; expects that the editor then shows the right
    /// texture.
    host::RunReport RunNew(
        const std::function<void(const GuiDriver& gui, const DrivenDialog& opening)>& user,
        const EditorUser& look = {});
    void Select(const host::Picture& newPicture, const hostapi::VRect& newSelection);
    std::unique_ptr<PaintClass> TextureIn(const std::string& fixture) const;

    char currentFolder[MAX_PATH];
};

inline host::RunReport NewDialogTest::RunNew(
    const std::function<void(const GuiDriver& gui, const DrivenDialog& opening)>& user,
    const EditorUser& look) {
    return Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        user(gui, opening);
        opening.WaitUntilClosed();
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        if (look) {
            look(gui, editor);
        }
        CloseWith(editor, okItem);
    });
}

inline void NewDialogTest::Select(const host::Picture& newPicture,
                                  const hostapi::VRect& newSelection) {
    before = picture = newPicture;
    selection = newSelection;
}

inline std::unique_ptr<PaintClass> NewDialogTest::TextureIn(const std::string& fixture) const {
    ImageFile file;
    file.SetPath((folder.Path() / fixture).string());
    return ReadTextureImage(file);
}

inline int ChosenContents(const DrivenDialog& opening) {
    int chosen = 0;
    for (int item = SizeItems::blank; item <= SizeItems::lastTexture; ++item) {
        if (opening.Value(item) != 0) {
            EXPECT_EQ(chosen, 0) << "only one is on";
            chosen = item;
        }
    }
    return chosen;
}

inline void ExpectSize(const DrivenDialog& editor, const char* width, const char* height) {
    EXPECT_EQ(editor.Text(TextureItems::width), width);
    EXPECT_EQ(editor.Text(TextureItems::height), height);
}

// Works through the program's dialogs as a user does and leaves a picture of each in a folder:
//
//     screenshots FOLDER
//
// People look at the pictures; scripts/screenshots puts them where the documents show them.
#include <cstdio>

#include "files/Preferences.h"
#include "fixtures/InputDesktop.Win.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"

namespace {

using Texture = TextureItems;

std::filesystem::path target;

class Screenshots : public PluginRunTest {
  protected:
    Screenshots();
    static void Shoot(const DrivenDialog& dialog, const std::string& name);
    /// Saves the present values in the Lines dialog as a preset.
    static void SavePreset(const GuiDriver& gui, const DrivenDialog& lines, const char* name);
    static void ShootLines(const GuiDriver& gui, const DrivenDialog& editor);
    static void ShootPresets(const GuiDriver& gui, const DrivenDialog& lines);
};

Screenshots::Screenshots() {
    before = picture = host::MakePicture(512, 512, 3);
    selection = {0, 0, 256, 256};
    Preferences preferences;
    preferences.foreground = {0x2400, 0x5A00, 0x6E00};
    preferences.background = {0xF700, 0xE200, 0xB800};
    preferences.lines.colorMode = linesAverage;
    preferences.lines.color = {0x9000, 0x6200, 0x3C00};
    EXPECT_TRUE(SavePreferences(preferences));
}

void Screenshots::Shoot(const DrivenDialog& dialog, const std::string& name) {
    dialog.Settle();
    host::SavePicture(GrabWithFrame(dialog), target / (name + ".png"));
}

void Screenshots::SavePreset(const GuiDriver& gui, const DrivenDialog& lines, const char* name) {
    lines.PressToOpen(ApplyItems::save);
    const DrivenDialog dialog = gui.WaitFor(presetDialog);
    TypeInto(gui, dialog, PresetItems::name, name);
    Shoot(dialog, "preset");
    dialog.PressToOpen(okItem);
    dialog.WaitUntilClosed();
}

void Screenshots::ShootPresets(const GuiDriver& gui, const DrivenDialog& lines) {
    SavePreset(gui, lines, "Walnut");
    SavePreset(gui, lines, "walnut");
    const DrivenDialog alert = gui.WaitForAlert(lines);
    Shoot(alert, "alert");
    alert.PressToOpen(okItem);
    alert.WaitUntilClosed();
    ChooseEntry(gui, lines, ApplyItems::presets, 3);
    WaitUntil("the preset", [&] { return lines.IsEnabled(ApplyItems::remove); });
    lines.PressToOpen(ApplyItems::remove);
    const DrivenDialog question = gui.WaitForAlert(lines);
    Shoot(question, "question");
    question.PressToOpen(cancelItem);
    question.WaitUntilClosed();
}

void Screenshots::ShootLines(const GuiDriver& gui, const DrivenDialog& editor) {
    editor.PressToOpen(Texture::lines);
    const DrivenDialog lines = gui.WaitFor(linesDialog);
    lines.Press(ApplyItems::apply);
    Shoot(lines, "lines");
    ShootPresets(gui, lines);
    lines.PressToOpen(okItem);
    lines.WaitUntilClosed();
}

void ShootEditor(const DrivenDialog& editor) {
    const RECT button = editor.Bounds(Texture::lines);
    editor.Point(Texture::lines,
                 {(button.right - button.left) / 2, (button.bottom - button.top) / 2});
    WaitUntil("the help",
              [&] { return editor.Text(Texture::helpReadout).starts_with("Create random lines"); });
}

TEST_F(Screenshots, OfAllDialogs) {
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        Shoot(opening, "new");
        opening.PressToOpen(okItem);

        const DrivenDialog editor = gui.WaitFor(textureDialog);
        ShootLines(gui, editor);
        editor.Press(Texture::zoomOut);
        ShootEditor(editor);
        Shoot(editor, "editor");
        SwitchTab(editor);
        Shoot(editor, "preview");
        SwitchTab(editor);

        const auto shootAndCancel = [&](int dialogId, const char* name) {
            const DrivenDialog dialog = gui.WaitFor(dialogId);
            Shoot(dialog, name);
            dialog.PressToOpen(cancelItem);
            dialog.WaitUntilClosed();
        };
        editor.PressToOpen(Texture::blur);
        shootAndCancel(blurDialog, "blur");
        editor.ChooseToOpen(commandBrushSettings);
        shootAndCancel(brushDialog, "brush");
        editor.PressToOpen(Texture::edit);
        shootAndCancel(editDialog, "edit");
        editor.PressToOpen(okItem);
    });
    EXPECT_EQ(report.result, 0);
    ExpectFilledWithApplied();
}

}  // namespace

int main(int count, char** values) {
    testing::InitGoogleTest(&count, values);
    if (count != 2) {
        std::fprintf(stderr, "usage: screenshots FOLDER\n");
        return 2;
    }
    target = values[1];
    EnterOwnDesktop();
    return RUN_ALL_TESTS();
}

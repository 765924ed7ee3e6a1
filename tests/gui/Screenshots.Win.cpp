// Works through the program's windows as a user does and leaves a picture of each in a folder:
//
//     screenshots FOLDER HADROWEN
//
// HADROWEN is the file of the family's shared library, whose About box is one of the windows.
// People look at the pictures; scripts/screenshots puts them where the documents show them.
#include <cstdio>

#include "dialogs/JPEGDialog.h"
#include "editor/Operations.h"
#include "files/Preferences.h"
#include "fixtures/FileDialog.Win.h"
#include "fixtures/InputDesktop.Win.h"
#include "fixtures/LargeScreen.Win.h"
#include "paint/Catalog.h"
#include "resources/Ids.h"
#include "resources/Strings.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"

namespace {

using Texture = TextureItems;

std::filesystem::path target;

void Shoot(const DrivenDialog& dialog, const std::string& name) {
    host::SavePicture(GrabWithFrame(dialog), target / (name + ".png"));
}

class Screenshots : public PluginRunTest {
  protected:
    Screenshots();
    // The system's dialogs leave the process in the folder of the choice.
    ~Screenshots() override { SetCurrentDirectoryA(currentFolder); }

    /// Makes the texture that the other pictures show.
    static void LayBricks(const GuiDriver& gui, const DrivenDialog& editor);
    static void ShootEditor(const DrivenDialog& editor);
    static void ShootOperations(const GuiDriver& gui, const DrivenDialog& editor);
    static void ShootPresets(const GuiDriver& gui, const DrivenDialog& editor);
    void ShootCombine(const GuiDriver& gui, const DrivenDialog& editor) const;
    static void ShootOthers(const GuiDriver& gui, const DrivenDialog& editor);

  private:
    static void SavePreset(const GuiDriver& gui, const DrivenDialog& lines, const char* name);

    char currentFolder[MAX_PATH];
};

/// Stores as last used the settings of the bricks, and for the rest what looks well on them.
void StoreSettings() {
    Preferences settings;
    settings.foreground = {0x2400, 0x5A00, 0x6E00};
    settings.background = {0xF700, 0xE200, 0xB800};
    settings.lines.precision = 0;
    settings.lines.colorMode = linesAverage;
    settings.lines.color = {0xC000, 0xB800, 0xA800};
    settings.blur.amount = 8;
    settings.shapes.kind = shapeSquare;
    settings.shapes.bevel = 24;
    settings.shapes.material = 80;
    settings.shapes.transparency = 0;
    settings.shapes.contrast = 70;
    settings.shapes.angle = 0;
    settings.shapes.sizeX = 0.94;
    settings.shapes.sizeY = 0.9;
    settings.shapes.repeatX = 3;
    settings.shapes.repeatY = 8;
    settings.shapes.color = {0xA400, 0x4800, 0x3400};
    settings.noise.amount = 12;
    settings.noise.mode = noiseGrey;
    settings.addColor.opacity = 25;
    settings.addColor.color = {0xD000, 0x9000, 0x2000};
    EXPECT_TRUE(SavePreferences(settings));
}

Screenshots::Screenshots() {
    before = picture = host::MakePicture(512, 512, 3);
    selection = {0, 0, 192, 192};
    GetCurrentDirectoryA(sizeof currentFolder, currentFolder);
    StoreSettings();
}

void Screenshots::LayBricks(const GuiDriver& gui, const DrivenDialog& editor) {
    for (const short id : {linesDialog, blurDialog, shapesDialog, noiseDialog}) {
        editor.PressToOpen(OperationWithId(id)->item);
        CloseWith(gui.WaitFor(id), okItem);
        editor.Settle();
    }
}

void Screenshots::ShootEditor(const DrivenDialog& editor) {
    const RECT button = editor.Bounds(Texture::shapes);
    editor.Point(Texture::shapes,
                 {(button.right - button.left) / 2, (button.bottom - button.top) / 2});
    WaitUntil("the help",
              [&] { return editor.Text(Texture::helpReadout) == StringText(stringHelpShapes); });
    Shoot(editor, "editor");
    SwitchTab(editor);
    Shoot(editor, "preview");
    SwitchTab(editor);
}

void Screenshots::ShootOperations(const GuiDriver& gui, const DrivenDialog& editor) {
    for (const Operation& operation : AllOperations()) {
        editor.PressToOpen(operation.item);
        const DrivenDialog dialog = gui.WaitFor(operation.id);
        Shoot(dialog, CatalogRowOf(operation.id).name);
        CloseWith(dialog, cancelItem);
    }
}

void Screenshots::SavePreset(const GuiDriver& gui, const DrivenDialog& lines, const char* name) {
    lines.PressToOpen(ApplyItems::save);
    const DrivenDialog dialog = gui.WaitFor(presetDialog);
    TypeInto(gui, dialog, PresetItems::name, name);
    Shoot(dialog, "preset");
    CloseWith(dialog, okItem);
}

void Screenshots::ShootPresets(const GuiDriver& gui, const DrivenDialog& editor) {
    editor.PressToOpen(Texture::lines);
    const DrivenDialog lines = gui.WaitFor(linesDialog);
    SavePreset(gui, lines, "Walnut");
    SavePreset(gui, lines, "walnut");
    const DrivenDialog alert = gui.WaitForAlert(lines);
    Shoot(alert, "alert");
    CloseWith(alert, okItem);
    ChooseEntry(gui, lines, ApplyItems::presets, 3);
    WaitUntil("the preset", [&] { return lines.IsEnabled(ApplyItems::remove); });
    lines.PressToOpen(ApplyItems::remove);
    const DrivenDialog question = gui.WaitForAlert(lines);
    Shoot(question, "question");
    CloseWith(question, cancelItem);
    CloseWith(lines, cancelItem);
}

void Screenshots::ShootCombine(const GuiDriver& gui, const DrivenDialog& editor) const {
    const std::filesystem::path linen = folder.Path() / "linen.jpg";
    editor.PressToOpen(Texture::save);
    ChooseFile(gui, "Save As", linen);
    editor.PressToOpen(Texture::combine);
    const DrivenDialog combine = gui.WaitFor(combineDialog);
    Shoot(combine, "combine-before");
    combine.PressToOpen(CombineItems::choose);
    ChooseFile(gui, "Open", linen);
    WaitUntil("the file", [&] { return combine.IsEnabled(okItem); });
    Shoot(combine, "combine");
    CloseWith(combine, cancelItem);
}

void Screenshots::ShootOthers(const GuiDriver& gui, const DrivenDialog& editor) {
    const auto shootAndCancel = [&](int dialogId, const char* name) {
        const DrivenDialog dialog = gui.WaitFor(dialogId);
        Shoot(dialog, name);
        CloseWith(dialog, cancelItem);
    };
    editor.PressToOpen(Texture::tile);
    shootAndCancel(tileDialog, "tile");
    editor.ChooseToOpen(commandBrushSettings);
    shootAndCancel(brushDialog, "brush");
    editor.ChooseToOpen(commandStampSettings);
    shootAndCancel(cloneDialog, "stamp");
    editor.ChooseToOpen(commandFillSettings);
    shootAndCancel(fillDialog, "fill");
    editor.PressToOpen(Texture::edit);
    shootAndCancel(editDialog, "edit");
    editor.ChooseToOpen(commandAbout);
    const DrivenDialog about = gui.WaitForTitle("About Zandermolite");
    Shoot(about, "about");
    CloseWith(about, okItem);
}

TEST_F(Screenshots, OfTheEditorAndItsDialogs) {
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        Shoot(opening, "new");
        opening.PressToOpen(okItem);

        const DrivenDialog editor = gui.WaitFor(textureDialog);
        LayBricks(gui, editor);
        ShootEditor(editor);
        ShootOperations(gui, editor);
        ShootPresets(gui, editor);
        ShootCombine(gui, editor);
        ShootOthers(gui, editor);
        editor.PressToOpen(okItem);
    });
    EXPECT_EQ(report.result, 0);
    ExpectFilledWithApplied();
}

// The program's own save has a callback, so that no run of the editor opens this window.
TEST_F(Screenshots, OfTheQualityOfAJpeg) {
    File file;
    JPEGQualityChoice choice(file, [](std::int16_t) {});
    RunWithUser([&] { RunJPEGDialog(choice); },
                [](const GuiDriver& gui) {
                    const DrivenDialog dialog = gui.WaitFor(jpegDialog);
                    Shoot(dialog, "jpeg");
                    CloseWith(dialog, cancelItem);
                });
}

}  // namespace

int main(int count, char** values) {
    EnlargeScreen();
    testing::InitGoogleTest(&count, values);
    if (count != 3) {
        std::fprintf(stderr, "usage: screenshots FOLDER HADROWEN\n");
        return 2;
    }
    // The dialogs for files change the folder that a relative path begins in.
    target = std::filesystem::absolute(values[1]);
    if (LoadLibraryA(values[2]) == nullptr) {
        std::fprintf(stderr, "screenshots: cannot load %s\n", values[2]);
        return 1;
    }
    EnterOwnDesktop();
    return RUN_ALL_TESTS();
}

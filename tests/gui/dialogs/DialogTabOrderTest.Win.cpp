// Tab goes through the windows as they are read. Those of the operations: OperationDialogsTest.
#include "base/Module.Win.h"
#include "fixtures/DialogTemplate.Win.h"
#include "tests/gui/DialogRun.Win.h"
#include "tests/gui/ReadingOrder.Win.h"

namespace {

using Texture = TextureItems;

class DialogTabOrderTest : public DialogRunTest {
  protected:
    static void ExpectInReadingOrder(const GuiDriver& gui, const DrivenDialog& dialog) {
        const std::vector<int> reading = ReadingOrder(dialog);
        TabTo(gui, dialog, reading.front());
        EXPECT_EQ(TabOrder(gui, dialog), reading) << dialog.Title();
    }
};

TEST_F(DialogTabOrderTest, OfTheEditor) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        // Without them the repeats are grey.
        for (const auto& [item, dialogId] :
             {std::pair<int, int>{Texture::skew, skewDialog}, {Texture::blur, blurDialog}}) {
            editor.PressToOpen(item);
            CloseWith(gui.WaitFor(dialogId), okItem);
        }
        WaitUntil("the repeats", [&] {
            return editor.IsEnabled(Texture::repeatEffect) &&
                   editor.IsEnabled(Texture::repeatFilter);
        });
        ExpectInReadingOrder(gui, editor);
        SwitchTab(editor);
        ExpectInReadingOrder(gui, editor);
    });
}

/// The ids of a dialog's controls, from the top.
std::vector<int> Stacking(const DrivenDialog& dialog) {
    std::vector<int> controls;
    for (HWND control = GetWindow(dialog.Window(), GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        controls.push_back(GetDlgCtrlID(control));
    }
    return controls;
}

TEST_F(DialogTabOrderTest, TheEditorOpensWithoutMovingItsControls) {
    // To put its 63 into another order would take a tenth of what they all take to be made.
    RunBlank([](const GuiDriver&, const DrivenDialog& editor) {
        EXPECT_EQ(Stacking(editor), DialogTemplate(instanceHandle, textureDialog).Controls());
    });
}

TEST_F(DialogTabOrderTest, OfTheDialogsOverIt) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const auto& [item, dialogId] : {std::pair<int, int>{Texture::combine, combineDialog},
                                             {Texture::tile, tileDialog},
                                             {Texture::edit, editDialog}}) {
            editor.PressToOpen(item);
            const DrivenDialog dialog = gui.WaitFor(dialogId);
            ExpectInReadingOrder(gui, dialog);
            CloseWith(dialog, cancelItem);
        }
        for (const auto& [command, dialogId] :
             {std::pair<int, int>{commandStampSettings, cloneDialog},
              {commandFillSettings, fillDialog},
              {commandBrushSettings, brushDialog}}) {
            editor.ChooseToOpen(command);
            const DrivenDialog dialog = gui.WaitFor(dialogId);
            ExpectInReadingOrder(gui, dialog);
            CloseWith(dialog, cancelItem);
        }
        const DrivenDialog lines = OpenDialog(gui, editor, Texture::lines, linesDialog);
        lines.PressToOpen(ApplyItems::save);
        const DrivenDialog name = gui.WaitFor(presetDialog);
        gui.Type("some");
        WaitUntil("OK", [&] { return name.IsEnabled(okItem); });
        ExpectInReadingOrder(gui, name);
        CloseWith(name, cancelItem);
        CloseWith(lines, cancelItem);
    });
}

TEST_F(DialogTabOrderTest, OfTheNewDialog) {
    Run([](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        ExpectInReadingOrder(gui, opening);
        CloseWith(opening, cancelItem);
    });
}

}  // namespace

// New and Edit from the editor: a texture's name and size.
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

using Texture = TextureItems;

const char* const outOfMemory =
    "The operation could not be completed, because of a shortage of memory.";

class EditDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenEdit(const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(Texture::edit);
        return gui.WaitFor(editDialog);
    }
    static DrivenDialog OpenNew(const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(Texture::newTexture);
        return gui.WaitForTitle("New");
    }
    static void ExpectSize(const DrivenDialog& editor, const char* across, const char* down) {
        WaitUntil(std::string(across) + " by " + down, [&] {
            return editor.Text(Texture::width) == across && editor.Text(Texture::height) == down;
        });
    }
};

TEST_F(EditDialogTest, NewMakesAWhiteTexture) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenNew(gui, editor);
        EXPECT_EQ(dialog.Text(SizeItems::name), "Untitled 1");
        EXPECT_EQ(dialog.Text(SizeItems::width), "150");
        EXPECT_EQ(dialog.Text(SizeItems::height), "100");
        EXPECT_EQ(dialog.Text(SizeItems::resolution), "72 dpi");
        EXPECT_EQ(dialog.Text(SizeItems::size), "58 kB");
        TypeInto(gui, dialog, SizeItems::name, "Felt");
        TypeInto(gui, dialog, SizeItems::width, "30");
        TypeInto(gui, dialog, SizeItems::height, "40");
        WaitUntil("the size", [&] { return dialog.Text(SizeItems::size) == "4 kB"; });
        CloseWith(dialog, okItem);
        ExpectSize(editor, "30 pixel", "40 pixel");
        EXPECT_EQ(editor.Text(Texture::name), "Felt");
        EXPECT_EQ(editor.Text(Texture::size), "4 kB");
    });
    EXPECT_EQ(Applied()->grX, 30);
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(30 * 40, Color(255, 255, 255)));
}

TEST_F(EditDialogTest, NewHasNothingToRedo) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Texture::invert);
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
        CloseWith(OpenNew(gui, editor), okItem);
        editor.Settle();
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
        editor.Press(Texture::invert);
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
    });
    ExpectApplied(*Blank());
}

TEST_F(EditDialogTest, ACancelledNewChangesNothing) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenNew(gui, editor);
        TypeInto(gui, dialog, SizeItems::name, "Felt");
        TypeInto(gui, dialog, SizeItems::width, "30");
        ChooseEntry(gui, dialog, SizeItems::units, 3);
        CloseWith(dialog, cancelItem);
        ExpectSize(editor, "150 pixel", "100 pixel");
        EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
        const DrivenDialog again = OpenEdit(gui, editor);
        EXPECT_EQ(again.Value(SizeItems::units), 1) << "the unit is as it was, too";
        CloseWith(again, cancelItem);
    });
    ExpectApplied(*Noise());
}

TEST_F(EditDialogTest, NewByItsKeyAndMenu) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Chord({VK_CONTROL, 'N'});
        CloseWith(gui.WaitForTitle("New"), cancelItem);
        editor.ChooseToOpen(commandNew);
        CloseWith(gui.WaitForTitle("New"), cancelItem);
        gui.Chord({VK_CONTROL, 'D'});
        CloseWith(gui.WaitFor(editDialog), cancelItem);
        editor.ChooseToOpen(commandEdit);
        CloseWith(gui.WaitFor(editDialog), cancelItem);
    });
}

TEST_F(EditDialogTest, EditStretchesToTheNewSize) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        EXPECT_EQ(dialog.Title(), "Edit");
        TypeInto(gui, dialog, SizeItems::width, "211");
        TypeInto(gui, dialog, SizeItems::height, "37");
        CloseWith(dialog, okItem);
        ExpectSize(editor, "211 pixel", "37 pixel");
        // The snapshot is of the new size: Undo finds nothing to take back.
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
        ExpectSize(editor, "211 pixel", "37 pixel");
    });
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*RunResize(*Noise(), 211, 37)));
}

TEST_F(EditDialogTest, TheSameSizeTouchesNoPixelAndTakesNoSnapshot) {
    const std::unique_ptr<PaintClass> noise = Noise();
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Texture::invert);
        const DrivenDialog dialog = OpenEdit(gui, editor);
        TypeInto(gui, dialog, SizeItems::name, "Other");
        CloseWith(dialog, okItem);
        WaitUntil("the name", [&] { return editor.Text(Texture::name) == "Other"; });
        editor.Choose(commandUndo);
        ExpectShown(editor, *noise);
    });
    ExpectApplied(*Noise());
}

TEST_F(EditDialogTest, ACancelledEditChangesNothing) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        TypeInto(gui, dialog, SizeItems::name, "Other");
        TypeInto(gui, dialog, SizeItems::width, "20");
        gui.Chord({VK_ESCAPE});
        dialog.WaitUntilClosed();
        ExpectSize(editor, "150 pixel", "100 pixel");
        EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
    });
    ExpectApplied(*Noise());
}

TEST_F(EditDialogTest, TheUnitGoesToTheReadouts) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        ChooseEntry(gui, dialog, SizeItems::units, 3);
        WaitUntil("centimetres", [&] { return dialog.Text(SizeItems::width) == "5.3"; });
        EXPECT_EQ(dialog.Text(SizeItems::height), "3.5");
        CloseWith(dialog, okItem);
        ExpectSize(editor, "5.3 cm", "3.5 cm");
        const DrivenDialog again = OpenEdit(gui, editor);
        EXPECT_EQ(again.Value(SizeItems::units), 3);
        ChooseEntry(gui, again, SizeItems::units, 2);
        WaitUntil("inches", [&] { return again.Text(SizeItems::width) == "2.1"; });
        CloseWith(again, okItem);
        ExpectSize(editor, "2.1 inch", "1.4 inch");
    });
    ExpectApplied(*Noise());
}

/// Inches that are typed are rounded to pixels: there and back need not meet.
TEST_F(EditDialogTest, AMeasureInInchesBecomesPixels) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        ChooseEntry(gui, dialog, SizeItems::units, 2);
        TypeInto(gui, dialog, SizeItems::height, "1.4");
        ChooseEntry(gui, dialog, SizeItems::units, 1);
        WaitUntil("pixels",
                  [&] { return dialog.Text(SizeItems::height).find('.') == std::string::npos; });
        EXPECT_EQ(dialog.Text(SizeItems::width), "150");
        EXPECT_EQ(dialog.Text(SizeItems::height), "101") << "1.4 was not all of it";
        ChooseEntry(gui, dialog, SizeItems::units, 2);
        TypeInto(gui, dialog, SizeItems::height, "1.5");
        ChooseEntry(gui, dialog, SizeItems::units, 1);
        WaitUntil("pixels", [&] { return dialog.Text(SizeItems::height) == "108"; });
        CloseWith(dialog, okItem);
    });
    EXPECT_EQ(Applied()->grY, 108);
}

TEST_F(EditDialogTest, AnEmptyFieldTakesItsMeasureInTheNewUnit) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        ChooseEntry(gui, dialog, SizeItems::units, 1);
        TabTo(gui, dialog, SizeItems::width);
        gui.Chord({VK_DELETE});
        WaitUntil("nothing", [&] { return dialog.Text(SizeItems::width).empty(); });
        OpenMenuOf(dialog, SizeItems::units);
        gui.Chord({VK_END});
        gui.Chord({VK_RETURN});
        WaitUntil("centimetres", [&] { return dialog.Value(SizeItems::units) == 3; });
        TabTo(gui, dialog, okItem);
        EXPECT_EQ(dialog.Text(SizeItems::width), "5.3");
        EXPECT_EQ(dialog.Text(SizeItems::height), "3.5");
        CloseWith(dialog, cancelItem);
    });
}

TEST_F(EditDialogTest, NewWithoutMemoryKeepsTheTexture) {
    settings.memoryBudget = 400 << 10;
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenNew(gui, editor);
        TypeInto(gui, dialog, SizeItems::name, "Large");
        TypeInto(gui, dialog, SizeItems::width, "512");
        TypeInto(gui, dialog, SizeItems::height, "512");
        CloseWith(dialog, okItem);
        EXPECT_EQ(AnswerAlert(gui, editor), outOfMemory);
        ExpectSize(editor, "150 pixel", "100 pixel");
        EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
    });
    ExpectApplied(*Noise());
}

TEST_F(EditDialogTest, EditWithoutMemoryTakesNameAndUnitAlone) {
    settings.memoryBudget = 400 << 10;
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        TypeInto(gui, dialog, SizeItems::name, "Large");
        TypeInto(gui, dialog, SizeItems::width, "512");
        TypeInto(gui, dialog, SizeItems::height, "512");
        ChooseEntry(gui, dialog, SizeItems::units, 2);
        CloseWith(dialog, okItem);
        EXPECT_EQ(AnswerAlert(gui, editor), outOfMemory);
        ExpectSize(editor, "2.1 inch", "1.4 inch");
        EXPECT_EQ(editor.Text(Texture::name), "Large");
    });
    ExpectApplied(*Noise());
}

TEST_F(EditDialogTest, ComesBackWhereItWas) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        SetWindowPos(dialog.Window(), nullptr, 71, 93, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        dialog.Settle();
        CloseWith(dialog, cancelItem);
        // New is the same dialog.
        const DrivenDialog again = OpenNew(gui, editor);
        RECT frame;
        GetWindowRect(again.Window(), &frame);
        EXPECT_EQ(frame.left, 71);
        EXPECT_EQ(frame.top, 93);
        CloseWith(again, cancelItem);
    });
}

TEST_F(EditDialogTest, TheKeyboard) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog dialog = OpenEdit(gui, editor);
        TabTo(gui, dialog, okItem);
        EXPECT_EQ(TabOrder(gui, dialog),
                  (std::vector<int>{okItem, cancelItem, SizeItems::name, SizeItems::width,
                                    SizeItems::height, SizeItems::units}));
        gui.Chord({VK_MENU, 'E'});
        WaitUntil("the height", [&] { return FocusedItem(dialog) == SizeItems::height; });
        gui.Type("9");
        WaitUntil("9", [&] { return dialog.Text(SizeItems::height) == "9"; });
        gui.Chord({VK_MENU, 'N'});
        WaitUntil("the name", [&] { return FocusedItem(dialog) == SizeItems::name; });
        gui.Chord({VK_RETURN});
        dialog.WaitUntilClosed();
        ExpectSize(editor, "150 pixel", "9 pixel");
    });
}

}  // namespace

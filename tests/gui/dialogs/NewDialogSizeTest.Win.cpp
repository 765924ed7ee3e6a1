// The New dialog: name, size and units.
#include "fixtures/FileDialog.Win.h"
#include "paint/EffectRun.h"
#include "tests/gui/dialogs/NewDialogTest.Win.h"

namespace {

using Texture = TextureItems;

TEST_F(NewDialogTest, NameAndSizeGoToTheEditor) {
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            TypeInto(gui, opening, SizeItems::name, "My felt");
            TypeInto(gui, opening, SizeItems::width, "37");
            TypeInto(gui, opening, SizeItems::height, "21");
            WaitUntil("the size", [&] { return opening.Text(SizeItems::size) == "3 kB"; });
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            EXPECT_EQ(editor.Text(Texture::name), "My felt");
            ExpectSize(editor, "37 pixel", "21 pixel");
        });
    EXPECT_EQ(Applied()->grX, 37);
    EXPECT_EQ(Applied()->grY, 21);
}

TEST_F(NewDialogTest, ANameIsAtMost31CharactersLong) {
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            TabTo(gui, opening, SizeItems::name);
            opening.SetText(SizeItems::name, std::string(31, 'a'));
            PostMessageA(opening.Control(SizeItems::name), EM_SETSEL, 31, 31);
            gui.Type("b");
            EXPECT_EQ(AnswerAlert(gui, opening),
                      "The length of this text field must be less than 31 characters.");
            WaitUntil("the name before",
                      [&] { return opening.Text(SizeItems::name) == std::string(31, 'a'); });
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            EXPECT_EQ(editor.Text(Texture::name), std::string(31, 'a'));
        });
}

TEST_F(NewDialogTest, ASideOf0BecomesThatOf1) {
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            const std::string question =
                "An integer in the range between 1 and 512 required. Would you like to insert the "
                "closest value?";
            for (const int side : {SizeItems::width, SizeItems::height}) {
                TabTo(gui, opening, side);
                gui.Type("0");
                EXPECT_EQ(AnswerAlert(gui, opening), question);
                WaitUntil("1", [&] { return opening.Text(side) == "1"; });
            }
            WaitUntil("the size", [&] { return opening.Text(SizeItems::size) == "1 kB"; });
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            ExpectSize(editor, "1 pixel", "1 pixel");
        });
}

TEST_F(NewDialogTest, ASideBeyond512BecomesThatOf512) {
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            // 512 itself is taken as it is.
            TypeInto(gui, opening, SizeItems::width, "512");
            for (const int side : {SizeItems::width, SizeItems::height}) {
                TypeInto(gui, opening, side, "51");
                gui.Type("3");
                EXPECT_EQ(AnswerAlert(gui, opening),
                          "An integer in the range between 1 and 512 required. Would you like to "
                          "insert the closest value?");
                WaitUntil("512", [&] { return opening.Text(side) == "512"; });
            }
            EXPECT_EQ(opening.Text(SizeItems::size), "1024 kB");
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            ExpectSize(editor, "512 pixel", "512 pixel");
        });
    EXPECT_EQ(Applied()->grX, 512);
    EXPECT_EQ(Applied()->grY, 512);
}

TEST_F(NewDialogTest, NoInchesAreOnePixel) {
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            ChooseEntry(gui, opening, SizeItems::units, 2);
            TypeInto(gui, opening, SizeItems::width, "0");
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            ExpectSize(editor, "0.0 inch", "1.4 inch");
        });
    EXPECT_EQ(Applied()->grX, 1);
    EXPECT_EQ(Applied()->grY, 100);
}

TEST_F(NewDialogTest, TheUnitsAtTheScreensResolution) {
    Select(host::MakePicture(512, 512, 3), {0, 0, 512, 512});
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            ChooseEntry(gui, opening, SizeItems::units, 2);
            WaitUntil("inches", [&] { return opening.Text(SizeItems::width) == "7.1"; });
            EXPECT_EQ(opening.Text(SizeItems::height), "7.1");
            ChooseEntry(gui, opening, SizeItems::units, 3);
            WaitUntil("centimetres", [&] { return opening.Text(SizeItems::width) == "18.1"; });
            EXPECT_EQ(opening.Text(SizeItems::height), "18.1");
            CloseWith(opening, okItem);
        },
        [](const GuiDriver& gui, const DrivenDialog& editor) {
            ExpectSize(editor, "18.1 cm", "18.1 cm");
            // The Edit dialog goes on in the unit.
            editor.PressToOpen(Texture::edit);
            const DrivenDialog edit = gui.WaitFor(editDialog);
            EXPECT_EQ(edit.Value(SizeItems::units), 3);
            EXPECT_EQ(edit.Text(SizeItems::width), "18.1");
            CloseWith(edit, cancelItem);
        });
}

TEST_F(NewDialogTest, TheUnitsAt300DotsAnInch) {
    claimedResolution = 300;
    Select(host::MakePicture(512, 512, 3), {0, 0, 512, 512});
    RunNew([&](const GuiDriver& gui, const DrivenDialog& opening) {
        EXPECT_EQ(opening.Text(SizeItems::resolution), "300 dpi");
        ChooseEntry(gui, opening, SizeItems::units, 2);
        WaitUntil("inches", [&] { return opening.Text(SizeItems::width) == "1.7"; });
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(Applied()->grX, 512);
}

TEST_F(NewDialogTest, AMeasureBeyondTheLimitInInches) {
    RunNew([&](const GuiDriver& gui, const DrivenDialog& opening) {
        ChooseEntry(gui, opening, SizeItems::units, 2);
        TabTo(gui, opening, SizeItems::width);
        gui.Type("8");
        EXPECT_EQ(AnswerAlert(gui, opening),
                  "A real number in the range between 0.0 and 7.1 required. Would you like to "
                  "insert the closest value?");
        WaitUntil("the limit", [&] { return opening.Text(SizeItems::width) == "7.1"; });
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(Applied()->grX, 512);
}

}  // namespace

// The New dialog at the filter's start: what it begins with.
#include "tests/gui/dialogs/NewDialogTest.Win.h"
#include "fixtures/FileDialog.Win.h"
#include "paint/EffectRun.h"

namespace {

using Texture = TextureItems;

/// The dialog's controls of the size: labels, fields, readouts and the popup.
bool IsSizeEnabled(const DrivenDialog& opening) {
    const bool first = opening.IsEnabled(SizeItems::width);
    for (int item = SizeItems::width - 1; item <= SizeItems::units; ++item) {
        EXPECT_EQ(opening.IsEnabled(item), first) << item;
    }
    return first;
}

TEST_F(NewDialogTest, StartsWithTheSelectionsSizeAndABlankTexture) {
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        EXPECT_EQ(opening.Title(), "New");
        EXPECT_EQ(opening.Text(SizeItems::name), "Untitled 1");
        EXPECT_EQ(opening.Text(SizeItems::width), "150");
        EXPECT_EQ(opening.Text(SizeItems::height), "100");
        EXPECT_EQ(opening.Text(SizeItems::resolution), "72 dpi");
        EXPECT_EQ(opening.Text(SizeItems::size), "58 kB");
        EXPECT_EQ(opening.Value(SizeItems::units), 1);
        EXPECT_EQ(Entries(opening, SizeItems::units),
                  (std::vector<std::string>{"Pixels", "Inch", "cm"}));
        EXPECT_EQ(ChosenContents(opening), SizeItems::blank);
        EXPECT_TRUE(IsSizeEnabled(opening));
        EXPECT_TRUE(opening.IsEnabled(SizeItems::selection));
        EXPECT_FALSE(opening.IsEnabled(SizeItems::lastTexture));
        EXPECT_EQ(opening.Value(SizeItems::showNextTime), 1);
        CloseWith(opening, okItem);
    });
    ExpectApplied(*Blank());
    EXPECT_TRUE(ReadLaunchFlag());
}

TEST_F(NewDialogTest, ALargeSelectionCannotBeTheTexture) {
    Select(host::MakePicture(1000, 300, 3), {0, 0, 300, 1000});
    RunNew(
        [&](const GuiDriver&, const DrivenDialog& opening) {
            EXPECT_FALSE(opening.IsEnabled(SizeItems::selection));
            EXPECT_EQ(opening.Text(SizeItems::width), "512");
            EXPECT_EQ(opening.Text(SizeItems::height), "300");
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            ExpectSize(editor, "512 pixel", "300 pixel");
        });
}

TEST_F(NewDialogTest, ASelectionOf512By512Can) {
    host::Picture grey = host::MakePicture(512, 512, 3, 77);
    Select(grey, {0, 0, 512, 512});
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        EXPECT_TRUE(opening.IsEnabled(SizeItems::selection));
        EXPECT_EQ(opening.Text(SizeItems::size), "1024 kB");
        opening.Press(SizeItems::selection);
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(512 * 512, Color(77, 77, 77)));
}

TEST_F(NewDialogTest, OneOf513Cannot) {
    Select(host::MakePicture(20, 513, 3), {0, 0, 513, 20});
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        EXPECT_FALSE(opening.IsEnabled(SizeItems::selection));
        CloseWith(opening, okItem);
    });
}

TEST_F(NewDialogTest, TheContentsByTheMouse) {
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        opening.Click(SizeItems::selection, {6, 8});
        WaitUntil("the selection", [&] { return opening.Value(SizeItems::selection) == 1; });
        EXPECT_EQ(ChosenContents(opening), SizeItems::selection);
        EXPECT_FALSE(IsSizeEnabled(opening));
        opening.Click(SizeItems::blank, {6, 8});
        WaitUntil("blank", [&] { return opening.Value(SizeItems::blank) == 1; });
        EXPECT_EQ(ChosenContents(opening), SizeItems::blank);
        EXPECT_TRUE(IsSizeEnabled(opening));
        opening.Press(SizeItems::selection);
        CloseWith(opening, okItem);
    });
    ExpectApplied(*Noise());
}

TEST_F(NewDialogTest, TheLastTextureIsThereOnceOneWasApplied) {
    host::FilterHost filterHost(settings);
    RunIn(filterHost, [&](const GuiDriver& gui) {
        CloseWith(gui.WaitFor(createrDialog), okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.Press(Texture::invert);
        CloseWith(editor, okItem);
    });
    picture = before;
    selection = {0, 0, 30, 40};
    RunIn(filterHost, [&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        EXPECT_TRUE(opening.IsEnabled(SizeItems::lastTexture));
        opening.Click(SizeItems::lastTexture, {6, 8});
        WaitUntil("the last", [&] { return opening.Value(SizeItems::lastTexture) == 1; });
        EXPECT_EQ(ChosenContents(opening), SizeItems::lastTexture);
        EXPECT_FALSE(IsSizeEnabled(opening));
        CloseWith(opening, okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        ExpectSize(editor, "150 pixel", "100 pixel");
        CloseWith(editor, okItem);
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(150 * 100, Color(0, 0, 0)));
}

/// The lost texture is reported as a lack of memory by the host alone.
TEST_F(NewDialogTest, ALastTextureThatIsGone) {
    host::FilterHost filterHost(settings);
    RunIn(filterHost, [&](const GuiDriver& gui) {
        CloseWith(gui.WaitFor(createrDialog), okItem);
        CloseWith(gui.WaitFor(textureDialog), okItem);
    });
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        if (entry.path().extension() == ".tmp") {
            std::filesystem::remove(entry.path());
        }
    }
    const host::RunReport report = RunIn(filterHost, [&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        opening.Press(SizeItems::lastTexture);
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(report.result, -108);
}

TEST_F(NewDialogTest, AfterACancelTheDialogComesAgain) {
    host::FilterHost filterHost(settings);
    const auto cancel = [](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        EXPECT_FALSE(opening.IsEnabled(SizeItems::lastTexture));
        CloseWith(opening, cancelItem);
    };
    EXPECT_EQ(RunIn(filterHost, cancel).result, -128);
    EXPECT_EQ(RunIn(filterHost, cancel).result, -128);
    EXPECT_TRUE(picture.pixels == before.pixels);
    EXPECT_EQ(BytesOf(folder.Path() / "Zandermolite3.prf"), "") << "no editor has written it";
}

TEST_F(NewDialogTest, WithoutTheCheckMarkTheNextRunGoesStraightToTheEditor) {
    RunNew(
        [&](const GuiDriver&, const DrivenDialog& opening) {
            opening.Click(SizeItems::showNextTime, {6, 8});
            WaitUntil("no mark", [&] { return opening.Value(SizeItems::showNextTime) == 0; });
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            EXPECT_FALSE(editor.IsMenuChecked(commandNewAtLaunch));
        });
    EXPECT_FALSE(ReadLaunchFlag());
    picture = before;
    Run([](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        EXPECT_FALSE(editor.IsMenuChecked(commandNewAtLaunch)) << "nobody has asked for it";
        CloseWith(editor, cancelItem);
    });
    EXPECT_FALSE(ReadLaunchFlag());
}

TEST_F(NewDialogTest, TheCheckMarkTwiceIsThere) {
    RunNew(
        [&](const GuiDriver&, const DrivenDialog& opening) {
            opening.Press(SizeItems::showNextTime);
            opening.Press(SizeItems::showNextTime);
            EXPECT_EQ(opening.Value(SizeItems::showNextTime), 1);
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            EXPECT_TRUE(editor.IsMenuChecked(commandNewAtLaunch));
        });
}

TEST_F(NewDialogTest, ComesBackWhereItWas) {
    const auto close = [this](int x, int y) {
        RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
            SetWindowPos(opening.Window(), nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
            opening.Settle();
            CloseWith(opening, okItem);
        });
        picture = before;
    };
    close(71, 93);
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        RECT frame;
        GetWindowRect(opening.Window(), &frame);
        EXPECT_EQ(frame.left, 71);
        EXPECT_EQ(frame.top, 93);
        CloseWith(opening, okItem);
    });
}

TEST_F(NewDialogTest, TheKeyboard) {
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            TabTo(gui, opening, okItem);
            EXPECT_EQ(TabOrder(gui, opening),
                      (std::vector<int>{okItem, cancelItem, SizeItems::open, SizeItems::name,
                                        SizeItems::width, SizeItems::height, SizeItems::units,
                                        SizeItems::blank, SizeItems::showNextTime}));
            gui.Chord({VK_MENU, 'H'});
            WaitUntil("no mark", [&] { return opening.Value(SizeItems::showNextTime) == 0; });
            gui.Chord({VK_MENU, 'S'});
            WaitUntil("the selection", [&] { return opening.Value(SizeItems::selection) == 1; });
            gui.Chord({VK_MENU, 'B'});
            WaitUntil("blank", [&] { return opening.Value(SizeItems::blank) == 1; });
            gui.Chord({VK_MENU, 'W'});
            WaitUntil("the width", [&] { return FocusedItem(opening) == SizeItems::width; });
            gui.Type("40");
            WaitUntil("40", [&] { return opening.Text(SizeItems::width) == "40"; });
            gui.Chord({VK_RETURN});
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            ExpectSize(editor, "40 pixel", "100 pixel");
        });
    EXPECT_FALSE(ReadLaunchFlag());
}

TEST_F(NewDialogTest, EscapeIsCancel) {
    const host::RunReport report = Run([](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        gui.Chord({VK_ESCAPE});
        opening.WaitUntilClosed();
    });
    EXPECT_EQ(report.result, -128);
}

}  // namespace

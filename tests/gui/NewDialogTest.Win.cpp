// The New dialog at the filter's start.
#include "files/TextureFile.h"
#include "fixtures/FileDialog.Win.h"
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

using Items = SizeItems;
using Texture = TextureItems;

class NewDialogTest : public DialogRunTest {
  protected:
    NewDialogTest() { GetCurrentDirectoryA(sizeof currentFolder, currentFolder); }
    // The system's dialogs leave the process in the folder of the choice.
    ~NewDialogTest() override { SetCurrentDirectoryA(currentFolder); }

    /// A run with the dialog, in which the user is to press OK or what does the same; then, in the
    /// editor, that it opened on the right texture.
    host::RunReport RunNew(
        const std::function<void(const GuiDriver& gui, const DrivenDialog& opening)>& user,
        const EditorUser& look = {});
    void Select(const host::Picture& newPicture, const hostapi::VRect& newSelection);
    std::unique_ptr<PaintClass> TextureIn(const std::string& fixture) const;

    char currentFolder[MAX_PATH];
};

host::RunReport NewDialogTest::RunNew(
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

void NewDialogTest::Select(const host::Picture& newPicture, const hostapi::VRect& newSelection) {
    before = picture = newPicture;
    selection = newSelection;
}

std::unique_ptr<PaintClass> NewDialogTest::TextureIn(const std::string& fixture) const {
    ImageFile file;
    file.SetPath((folder.Path() / fixture).string());
    return ReadTextureImage(file);
}

/// The dialog's controls of the size: labels, fields, readouts and the popup.
bool IsSizeEnabled(const DrivenDialog& opening) {
    const bool first = opening.IsEnabled(Items::width);
    for (int item = Items::width - 1; item <= Items::units; ++item) {
        EXPECT_EQ(opening.IsEnabled(item), first) << item;
    }
    return first;
}

int ChosenContents(const DrivenDialog& opening) {
    int chosen = 0;
    for (int item = Items::blank; item <= Items::lastTexture; ++item) {
        if (opening.Value(item) != 0) {
            EXPECT_EQ(chosen, 0) << "only one is on";
            chosen = item;
        }
    }
    return chosen;
}

void ExpectSize(const DrivenDialog& editor, const char* width, const char* height) {
    EXPECT_EQ(editor.Text(Texture::width), width);
    EXPECT_EQ(editor.Text(Texture::height), height);
}

TEST_F(NewDialogTest, StartsWithTheSelectionsSizeAndABlankTexture) {
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        EXPECT_EQ(opening.Title(), "New");
        EXPECT_EQ(opening.Text(Items::name), "Untitled 1");
        EXPECT_EQ(opening.Text(Items::width), "150");
        EXPECT_EQ(opening.Text(Items::height), "100");
        EXPECT_EQ(opening.Text(Items::resolution), "72 dpi");
        EXPECT_EQ(opening.Text(Items::size), "58 kB");
        EXPECT_EQ(opening.Value(Items::units), 1);
        EXPECT_EQ(Entries(opening, Items::units),
                  (std::vector<std::string>{"Pixels", "Inch", "cm"}));
        EXPECT_EQ(ChosenContents(opening), Items::blank);
        EXPECT_TRUE(IsSizeEnabled(opening));
        EXPECT_TRUE(opening.IsEnabled(Items::selection));
        EXPECT_FALSE(opening.IsEnabled(Items::lastTexture));
        EXPECT_EQ(opening.Value(Items::showNextTime), 1);
        CloseWith(opening, okItem);
    });
    ExpectApplied(*Blank());
    EXPECT_TRUE(ReadLaunchFlag());
}

TEST_F(NewDialogTest, ALargeSelectionCannotBeTheTexture) {
    Select(host::MakePicture(1000, 300, 3), {0, 0, 300, 1000});
    RunNew(
        [&](const GuiDriver&, const DrivenDialog& opening) {
            EXPECT_FALSE(opening.IsEnabled(Items::selection));
            EXPECT_EQ(opening.Text(Items::width), "512");
            EXPECT_EQ(opening.Text(Items::height), "300");
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
        EXPECT_TRUE(opening.IsEnabled(Items::selection));
        EXPECT_EQ(opening.Text(Items::size), "1024 kB");
        opening.Press(Items::selection);
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(512 * 512, Color(77, 77, 77)));
}

TEST_F(NewDialogTest, OneOf513Cannot) {
    Select(host::MakePicture(20, 513, 3), {0, 0, 513, 20});
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        EXPECT_FALSE(opening.IsEnabled(Items::selection));
        CloseWith(opening, okItem);
    });
}

TEST_F(NewDialogTest, TheContentsByTheMouse) {
    RunNew([&](const GuiDriver&, const DrivenDialog& opening) {
        opening.Click(Items::selection, {6, 8});
        WaitUntil("the selection", [&] { return opening.Value(Items::selection) == 1; });
        EXPECT_EQ(ChosenContents(opening), Items::selection);
        EXPECT_FALSE(IsSizeEnabled(opening));
        opening.Click(Items::blank, {6, 8});
        WaitUntil("blank", [&] { return opening.Value(Items::blank) == 1; });
        EXPECT_EQ(ChosenContents(opening), Items::blank);
        EXPECT_TRUE(IsSizeEnabled(opening));
        opening.Press(Items::selection);
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
        EXPECT_TRUE(opening.IsEnabled(Items::lastTexture));
        opening.Click(Items::lastTexture, {6, 8});
        WaitUntil("the last", [&] { return opening.Value(Items::lastTexture) == 1; });
        EXPECT_EQ(ChosenContents(opening), Items::lastTexture);
        EXPECT_FALSE(IsSizeEnabled(opening));
        CloseWith(opening, okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        ExpectSize(editor, "150 pixel", "100 pixel");
        CloseWith(editor, okItem);
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(150 * 100, Color(0, 0, 0)));
}

/// The host says that there is no memory, nobody else says anything.
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
        opening.Press(Items::lastTexture);
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(report.result, -108);
}

TEST_F(NewDialogTest, AfterACancelTheDialogComesAgain) {
    host::FilterHost filterHost(settings);
    const auto cancel = [](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        EXPECT_FALSE(opening.IsEnabled(Items::lastTexture));
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
            opening.Click(Items::showNextTime, {6, 8});
            WaitUntil("no mark", [&] { return opening.Value(Items::showNextTime) == 0; });
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
            opening.Press(Items::showNextTime);
            opening.Press(Items::showNextTime);
            EXPECT_EQ(opening.Value(Items::showNextTime), 1);
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            EXPECT_TRUE(editor.IsMenuChecked(commandNewAtLaunch));
        });
}

TEST_F(NewDialogTest, NameAndSizeGoToTheEditor) {
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            TypeInto(gui, opening, Items::name, "My felt");
            TypeInto(gui, opening, Items::width, "37");
            TypeInto(gui, opening, Items::height, "21");
            WaitUntil("the size", [&] { return opening.Text(Items::size) == "3 kB"; });
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
            TabTo(gui, opening, Items::name);
            opening.SetText(Items::name, std::string(31, 'a'));
            PostMessageA(opening.Control(Items::name), EM_SETSEL, 31, 31);
            gui.Type("b");
            EXPECT_EQ(AnswerAlert(gui, opening),
                      "The length of this text field must be less than 31 characters.");
            WaitUntil("the name before",
                      [&] { return opening.Text(Items::name) == std::string(31, 'a'); });
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
            for (const int side : {Items::width, Items::height}) {
                TabTo(gui, opening, side);
                gui.Type("0");
                EXPECT_EQ(AnswerAlert(gui, opening), question);
                WaitUntil("1", [&] { return opening.Text(side) == "1"; });
            }
            WaitUntil("the size", [&] { return opening.Text(Items::size) == "1 kB"; });
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
            TypeInto(gui, opening, Items::width, "512");
            for (const int side : {Items::width, Items::height}) {
                TypeInto(gui, opening, side, "51");
                gui.Type("3");
                EXPECT_EQ(AnswerAlert(gui, opening),
                          "An integer in the range between 1 and 512 required. Would you like to "
                          "insert the closest value?");
                WaitUntil("512", [&] { return opening.Text(side) == "512"; });
            }
            EXPECT_EQ(opening.Text(Items::size), "1024 kB");
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
            ChooseEntry(gui, opening, Items::units, 2);
            TypeInto(gui, opening, Items::width, "0");
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
            ChooseEntry(gui, opening, Items::units, 2);
            WaitUntil("inches", [&] { return opening.Text(Items::width) == "7.1"; });
            EXPECT_EQ(opening.Text(Items::height), "7.1");
            ChooseEntry(gui, opening, Items::units, 3);
            WaitUntil("centimetres", [&] { return opening.Text(Items::width) == "18.1"; });
            EXPECT_EQ(opening.Text(Items::height), "18.1");
            CloseWith(opening, okItem);
        },
        [](const GuiDriver& gui, const DrivenDialog& editor) {
            ExpectSize(editor, "18.1 cm", "18.1 cm");
            // The Edit dialog goes on in the unit.
            editor.PressToOpen(Texture::edit);
            const DrivenDialog edit = gui.WaitFor(editDialog);
            EXPECT_EQ(edit.Value(Items::units), 3);
            EXPECT_EQ(edit.Text(Items::width), "18.1");
            CloseWith(edit, cancelItem);
        });
}

TEST_F(NewDialogTest, TheUnitsAt300DotsAnInch) {
    claimedResolution = 300;
    Select(host::MakePicture(512, 512, 3), {0, 0, 512, 512});
    RunNew([&](const GuiDriver& gui, const DrivenDialog& opening) {
        EXPECT_EQ(opening.Text(Items::resolution), "300 dpi");
        ChooseEntry(gui, opening, Items::units, 2);
        WaitUntil("inches", [&] { return opening.Text(Items::width) == "1.7"; });
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(Applied()->grX, 512);
}

TEST_F(NewDialogTest, AMeasureBeyondTheLimitInInches) {
    RunNew([&](const GuiDriver& gui, const DrivenDialog& opening) {
        ChooseEntry(gui, opening, Items::units, 2);
        TabTo(gui, opening, Items::width);
        gui.Type("8");
        EXPECT_EQ(AnswerAlert(gui, opening),
                  "A real number in the range between 0.0 and 7.1 required. Would you like to "
                  "insert the closest value?");
        WaitUntil("the limit", [&] { return opening.Text(Items::width) == "7.1"; });
        CloseWith(opening, okItem);
    });
    EXPECT_EQ(Applied()->grX, 512);
}

TEST_F(NewDialogTest, OpenGoesStraightToTheEditor) {
    WriteBytes(folder.Path() / "baseline.jpg", BytesOf("tests/files/jpeg/baseline.jpg"));
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            opening.PressToOpen(Items::open);
            ChooseFile(gui, "Open", folder.Path() / "baseline.jpg");
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            EXPECT_EQ(editor.Text(Texture::name), "baseline.jpg");
            ExpectSize(editor, "37 pixel", "21 pixel");
        });
    ExpectApplied(*TextureIn("baseline.jpg"));
}

TEST_F(NewDialogTest, AFileOf512By512IsOpened) {
    WriteBytes(folder.Path() / "big.jpg", BytesOf("tests/files/jpeg/size-512x512.jpg"));
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            opening.PressToOpen(Items::open);
            ChooseFile(gui, "Open", folder.Path() / "big.jpg");
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            ExpectSize(editor, "512 pixel", "512 pixel");
        });
}

TEST_F(NewDialogTest, LargerFilesAreRefusedAndForgotten) {
    const auto names = {"size-513x10.jpg", "size-10x513.jpg", "size-40000x1.jpg"};
    for (const char* const name : names) {
        WriteBytes(folder.Path() / name, BytesOf(std::filesystem::path("tests/files/jpeg") / name));
    }
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            for (const char* const name : names) {
                opening.PressToOpen(Items::open);
                ChooseFile(gui, "Open", folder.Path() / name);
                EXPECT_EQ(AnswerAlert(gui, opening),
                          "The bitmap inside the choosen file is bigger than 512 x 512 pixels. "
                          "Zandermolite cannot open it.")
                    << name;
                EXPECT_TRUE(opening.IsOpen()) << name;
            }
            CloseWith(opening, okItem);
        },
        [](const GuiDriver&, const DrivenDialog& editor) {
            EXPECT_EQ(editor.Text(Texture::name), "Untitled 1");
        });
    ExpectApplied(*Blank());
}

TEST_F(NewDialogTest, ADamagedFileLeadsToAnAlertAndABlankTexture) {
    WriteBytes(folder.Path() / "torn.jpg", "no picture");
    Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        opening.PressToOpen(Items::open);
        ChooseFile(gui, "Open", folder.Path() / "torn.jpg");
        EXPECT_EQ(AnswerAlert(gui, opening),
                  "Loading this file failed (Memory may be full, the bitmap may be bigger than 512 "
                  "x 512 pixels or the file may be damaged).");
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        ExpectSize(editor, "128 pixel", "128 pixel");
        CloseWith(editor, okItem);
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(128 * 128, Color(255, 255, 255)));
}

TEST_F(NewDialogTest, AHostWithoutMemoryForTheTextureIsTold) {
    settings.memoryBudget = 300 << 10;
    Select(host::MakePicture(512, 512, 3, 77), {0, 0, 512, 512});
    for (const int contents : {Items::blank, Items::selection}) {
        const host::RunReport report = Run([&](const GuiDriver& gui) {
            const DrivenDialog opening = gui.WaitFor(createrDialog);
            opening.Press(contents);
            CloseWith(opening, okItem);
        });
        EXPECT_EQ(report.result, -108) << contents;
        EXPECT_TRUE(picture.pixels == before.pixels);
    }
}

TEST_F(NewDialogTest, AnAbortedSelectionIsWhiteFromThereOn) {
    constexpr short delivered = 50;
    settings.abortAfterRow = delivered;
    const std::unique_ptr<PaintClass> expected = Noise();
    for (short y = delivered; y < height; ++y) {
        for (short x = 0; x < width; ++x) {
            expected->SetRGB(x, y, 255, 255, 255);
        }
    }
    Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        opening.Press(Items::selection);
        CloseWith(opening, okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        ExpectShown(editor, *expected);
        CloseWith(editor, cancelItem);
    });
}

TEST_F(NewDialogTest, ADamagedSettingsFileCostsAnAlertAndTheSettings) {
    WriteBytes(folder.Path() / "Zandermolite3.prf", "VELX and more");
    Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        CloseWith(opening, okItem);
        EXPECT_EQ(AnswerAlert(gui, opening),
                  "An error occured while reading your user preferences from disk. Default "
                  "preferences will be used instead.");
        CloseWith(gui.WaitFor(textureDialog), okItem);
    });
    ExpectApplied(*Blank());
    Preferences after;
    EXPECT_TRUE(LoadPreferences(after));
    EXPECT_EQ(after.lines.angle, 45);
}

TEST_F(NewDialogTest, ACancelledOpenStays) {
    RunNew([&](const GuiDriver& gui, const DrivenDialog& opening) {
        opening.PressToOpen(Items::open);
        CloseWith(gui.WaitForTitle("Open"), IDCANCEL);
        EXPECT_TRUE(opening.IsOpen());
        CloseWith(opening, okItem);
    });
    ExpectApplied(*Blank());
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
            EXPECT_EQ(
                TabOrder(gui, opening),
                (std::vector<int>{okItem, cancelItem, Items::name, Items::width, Items::height,
                                  Items::units, Items::open, Items::blank, Items::showNextTime}));
            gui.Chord({VK_MENU, 'H'});
            WaitUntil("no mark", [&] { return opening.Value(Items::showNextTime) == 0; });
            gui.Chord({VK_MENU, 'S'});
            WaitUntil("the selection", [&] { return opening.Value(Items::selection) == 1; });
            gui.Chord({VK_MENU, 'B'});
            WaitUntil("blank", [&] { return opening.Value(Items::blank) == 1; });
            gui.Chord({VK_MENU, 'W'});
            WaitUntil("the width", [&] { return FocusedItem(opening) == Items::width; });
            gui.Type("40");
            WaitUntil("40", [&] { return opening.Text(Items::width) == "40"; });
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

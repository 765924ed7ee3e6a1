// The New dialog: files that are opened, and faults of the files and the host.
#include "fixtures/FileDialog.Win.h"
#include "paint/EffectRun.h"
#include "tests/gui/dialogs/NewDialogTest.Win.h"

namespace {

using Texture = TextureItems;

TEST_F(NewDialogTest, OpenGoesStraightToTheEditor) {
    WriteBytes(folder.Path() / "baseline.jpg", BytesOf("tests/files/jpeg/baseline.jpg"));
    RunNew(
        [&](const GuiDriver& gui, const DrivenDialog& opening) {
            opening.PressToOpen(SizeItems::open);
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
            opening.PressToOpen(SizeItems::open);
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
                opening.PressToOpen(SizeItems::open);
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
        opening.PressToOpen(SizeItems::open);
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
    for (const int contents : {SizeItems::blank, SizeItems::selection}) {
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
    // The first row is tried before the dialog opens.
    settings.abortAfterRow = delivered + 1;
    const std::unique_ptr<PaintClass> expected = Noise();
    for (short y = delivered; y < height; ++y) {
        for (short x = 0; x < width; ++x) {
            expected->SetRGB(x, y, 255, 255, 255);
        }
    }
    Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        opening.Press(SizeItems::selection);
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
        opening.PressToOpen(SizeItems::open);
        CloseWith(gui.WaitForTitle("Open"), IDCANCEL);
        EXPECT_TRUE(opening.IsOpen());
        CloseWith(opening, okItem);
    });
    ExpectApplied(*Blank());
}

}  // namespace

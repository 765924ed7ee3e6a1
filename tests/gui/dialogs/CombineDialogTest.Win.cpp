// Combine: the texture mixed with one from a file.
#include "files/TextureFile.h"
#include "fixtures/FileDialog.Win.h"
#include "fixtures/InputDesktop.Win.h"
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"
#include "tests/gui/RecipeRun.Win.h"

namespace {

using Texture = TextureItems;

const char* const nothingChosen = "[choose a texture by clicking on the button]";

class CombineDialogTest : public DialogRunTest {
  protected:
    CombineDialogTest() { GetCurrentDirectoryA(sizeof currentFolder, currentFolder); }
    // The system's dialogs leave the process in the folder of the choice.
    ~CombineDialogTest() override { SetCurrentDirectoryA(currentFolder); }

    static DrivenDialog OpenCombine(const GuiDriver& gui, const DrivenDialog& editor) {
        return OpenDialog(gui, editor, Texture::combine, combineDialog);
    }
    std::filesystem::path PathOf(const std::string& name) const { return folder.Path() / name; }
    /// Leaves a texture of the selection's size in a file.
    void Put(const std::string& name, std::uint16_t resolution = 0) const {
        const std::unique_ptr<PaintClass> pattern = Blank();
        RunLines(*pattern, {});
        ImageFile file;
        file.callback = [](File&, std::int16_t, std::int16_t) { return textureQuality; };
        file.SetPath(PathOf(name).string());
        EXPECT_EQ(WriteTexture(file, *pattern, resolution), 0);
    }
    std::unique_ptr<PaintClass> TextureIn(const std::string& name) const {
        ImageFile file;
        file.SetPath(PathOf(name).string());
        return ReadTextureImage(file);
    }
    std::unique_ptr<PaintClass> Combined(const std::string& name, short amount, int mode) const {
        std::unique_ptr<PaintClass> texture = Noise();
        EXPECT_TRUE(RunCombine(*texture, *TextureIn(name), amount, mode));
        return texture;
    }
    void Choose(const GuiDriver& gui, const DrivenDialog& combine, const std::string& name) const {
        combine.PressToOpen(CombineItems::choose);
        ChooseFile(gui, "Open", PathOf(name));
        WaitUntil("the name", [&] { return combine.Text(CombineItems::fileName) == name; });
    }

    char currentFolder[MAX_PATH];
};

TEST_F(CombineDialogTest, AFileIsWantedBeforeOk) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog combine = OpenCombine(gui, editor);
        EXPECT_EQ(combine.Title(), "Combine");
        EXPECT_EQ(combine.Text(CombineItems::fileName), nothingChosen);
        EXPECT_FALSE(combine.IsEnabled(okItem));
        EXPECT_TRUE(combine.IsEnabled(ApplyItems::apply));
        EXPECT_EQ(combine.Value(CombineItems::mode), 1);
        EXPECT_EQ(combine.Text(CombineItems::amount), "50");
        EXPECT_EQ(combine.Value(CombineItems::slider), 50);
        EXPECT_EQ(
            Entries(combine, CombineItems::mode),
            (std::vector<std::string>{"Blend this texture with", "Structure this texture with",
                                      "Color this texture with"}));
        Keep(combine, "combine-without-a-file");
        combine.ClickMiddle(ApplyItems::apply);
        TabTo(gui, combine, CombineItems::slider);
        gui.Chord({VK_RETURN});
        gui.WaitUntilIdle();
        EXPECT_TRUE(combine.IsOpen()) << "Return presses a grey OK";
        combine.PressToOpen(CombineItems::choose);
        CloseWith(gui.WaitForTitle("Open"), IDCANCEL);
        EXPECT_EQ(combine.Text(CombineItems::fileName), nothingChosen);
        EXPECT_FALSE(combine.IsEnabled(okItem));
        gui.Chord({VK_ESCAPE});
        combine.WaitUntilClosed();
    });
    ExpectApplied(*Noise());
}

TEST_F(CombineDialogTest, OkCombinesWithTheChosenFile) {
    Put("lines.jpg");
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog combine = OpenCombine(gui, editor);
        gui.Chord({VK_MENU, 'T'});
        ChooseFile(gui, "Open", PathOf("lines.jpg"));
        WaitUntil("OK", [&] { return combine.IsEnabled(okItem); });
        EXPECT_EQ(combine.Text(CombineItems::fileName), "lines.jpg");
        Keep(combine, "combine");
        TabTo(gui, combine, CombineItems::slider);
        gui.Chord({VK_RETURN});
        combine.WaitUntilClosed();
        editor.Settle();
        EXPECT_FALSE(editor.IsEnabled(Texture::repeatFilter));
        EXPECT_FALSE(editor.IsEnabled(Texture::repeatEffect));
    });
    ExpectApplied(*Combined("lines.jpg", 50, 1));
}

// Only width and height have to be the same.
TEST_F(CombineDialogTest, AFileOfAnotherResolutionIsCombined) {
    constexpr std::uint16_t resolution = 300;
    Put("fine.jpg", resolution);
    ImageFile file;
    file.SetPath(PathOf("fine.jpg").string());
    ImageInfo info;
    ASSERT_EQ(file.ReadImageInfo(&info), 0);
    ASSERT_EQ(info.xResolution, resolution);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        EXPECT_EQ(editor.Text(Texture::resolution), "72 dpi");
        const DrivenDialog combine = OpenCombine(gui, editor);
        Choose(gui, combine, "fine.jpg");
        CloseWith(combine, okItem);
    });
    ExpectApplied(*Combined("fine.jpg", 50, 1));
}

TEST_F(CombineDialogTest, EveryControlTakesTheResultBack) {
    Put("lines.jpg");
    const std::unique_ptr<PaintClass> noise = Noise();
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog combine = OpenCombine(gui, editor);
        Choose(gui, combine, "lines.jpg");
        short amount = 50;
        int mode = 1;
        const auto expectTakenBack = [&](const std::function<void()>& change) {
            combine.Press(ApplyItems::apply);
            ExpectShown(editor, *Combined("lines.jpg", amount, mode));
            change();
            ExpectShown(editor, *noise);
        };
        expectTakenBack([&] {
            TypeInto(gui, combine, CombineItems::amount, "81");
            WaitUntil("the slider", [&] { return combine.Value(CombineItems::slider) == 81; });
            amount = 81;
        });
        expectTakenBack([&] {
            DragSlider(combine, CombineItems::slider, {0, 100}, {0, 100}, [&](int value) {
                WaitUntil("the field", [&] {
                    return combine.Text(CombineItems::amount) == std::to_string(value);
                });
            });
            amount = 100;
        });
        expectTakenBack([&] {
            TabTo(gui, combine, CombineItems::slider);
            gui.Chord({VK_LEFT});
            WaitUntil("the field", [&] { return combine.Text(CombineItems::amount) == "99"; });
            amount = 99;
        });
        expectTakenBack([&] {
            ChooseEntry(gui, combine, CombineItems::mode, 2);
            mode = 2;
        });
        expectTakenBack([&] {
            ChooseEntryByMouse(gui, combine, CombineItems::mode, 3);
            mode = 3;
        });
        CloseWith(combine, okItem);
    });
    ExpectApplied(*Combined("lines.jpg", 99, 3));
}

TEST_F(CombineDialogTest, TheThreeModesMakeWhatARecipeMakes) {
    // The texture has another resolution.
    Put("lines.jpg", 300);
    const std::vector<int> amounts{37, 90, 64};
    std::vector<Pixel> expected;
    {
        RecipeRun recipe([&] { return Noise(); }, folder.Path());
        for (int mode = 1; mode <= 3; ++mode) {
            recipe.Run("combine file=lines.jpg mode=" + std::to_string(mode) +
                       " amount=" + std::to_string(amounts.at(static_cast<std::size_t>(mode) - 1)));
        }
        expected = recipe.Colors();
    }
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int mode = 1; mode <= 3; ++mode) {
            const DrivenDialog combine = OpenCombine(gui, editor);
            if (mode == 1) {
                Choose(gui, combine, "lines.jpg");
            }
            ChooseEntry(gui, combine, CombineItems::mode, mode);
            TypeInto(gui, combine, CombineItems::amount,
                     std::to_string(amounts.at(static_cast<std::size_t>(mode) - 1)));
            CloseWith(combine, okItem);
        }
    });
    EXPECT_EQ(ColorsOf(*Applied()), expected);
    ExpectFilledWithApplied();
}

TEST_F(CombineDialogTest, AMenuLeftWithoutAChoiceKeepsModeAndResult) {
    Put("lines.jpg");
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog combine = OpenCombine(gui, editor);
        Choose(gui, combine, "lines.jpg");
        combine.Press(ApplyItems::apply);
        ExpectShown(editor, *Combined("lines.jpg", 50, 1));
        OpenMenuOf(combine, CombineItems::mode);
        PointAtEntry(combine, CombineItems::mode, 3);
        gui.Chord({VK_ESCAPE});
        WaitUntilMenuIsClosed(gui, combine);
        WaitUntil("the mode before", [&] { return combine.Value(CombineItems::mode) == 1; });
        ExpectShown(editor, *Combined("lines.jpg", 50, 1));
        CloseWith(combine, okItem);
    });
    ExpectApplied(*Combined("lines.jpg", 50, 1));
}

TEST_F(CombineDialogTest, OpensAppliedWithTheFileOfBefore) {
    Put("lines.jpg");
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog first = OpenCombine(gui, editor);
        Choose(gui, first, "lines.jpg");
        TypeInto(gui, first, CombineItems::amount, "30");
        CloseWith(first, okItem);
        const DrivenDialog again = OpenCombine(gui, editor);
        EXPECT_EQ(again.Text(CombineItems::fileName), "lines.jpg");
        EXPECT_EQ(again.Text(CombineItems::amount), "30");
        EXPECT_TRUE(again.IsEnabled(okItem));
        CloseWith(again, okItem);
    });
    // Once.
    ExpectApplied(*Combined("lines.jpg", 30, 1));
}

TEST_F(CombineDialogTest, AChosenFileSurvivesACancelThatTakesTheResultBack) {
    Put("lines.jpg");
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog combine = OpenCombine(gui, editor);
        Choose(gui, combine, "lines.jpg");
        combine.Press(ApplyItems::apply);
        ExpectShown(editor, *Combined("lines.jpg", 50, 1));
        CloseWith(combine, cancelItem);
        ExpectShown(editor, *Noise());
        const DrivenDialog again = OpenCombine(gui, editor);
        EXPECT_EQ(again.Text(CombineItems::fileName), "lines.jpg");
        CloseWith(again, cancelItem);
    });
    ExpectApplied(*Noise());
}

TEST_F(CombineDialogTest, WhatCannotBeCombinedIsTold) {
    WriteBytes(PathOf("torn.jpg"), "no picture");
    for (const char* const name : {"medium.jpg", "size-513x10.jpg"}) {
        WriteBytes(PathOf(name), BytesOf(std::filesystem::path("tests/files/jpeg") / name));
    }
    const std::string notLoaded =
        "Loading this file failed (Memory may be full, the bitmap may be bigger than 512 x 512 "
        "pixels or the file may be damaged).";
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog combine = OpenCombine(gui, editor);
        const auto tell = [&](const char* name) {
            Choose(gui, combine, name);
            combine.PressToOpen(ApplyItems::apply);
            return AnswerAlert(gui, combine);
        };
        EXPECT_EQ(tell("torn.jpg"), notLoaded);
        EXPECT_EQ(tell("size-513x10.jpg"), notLoaded);
        for (const int mode : {2, 3, 1}) {
            ChooseEntry(gui, combine, CombineItems::mode, mode);
            EXPECT_EQ(tell("medium.jpg"),
                      "Only textures of same size can be combined. The choosen texture has a "
                      "different size.");
        }
        ExpectShown(editor, *Noise());
        // Changed after the Apply, so that OK tries once more.
        TypeInto(gui, combine, CombineItems::amount, "10");
        combine.PressToOpen(okItem);
        EXPECT_EQ(AnswerAlert(gui, editor),
                  "Only textures of same size can be combined. The choosen texture has a different "
                  "size.");
        combine.WaitUntilClosed();
    });
    ExpectApplied(*Noise());
}

TEST_F(CombineDialogTest, AmountsBeyondTheLimitsAsk) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const std::string question =
            "An integer in the range between 0 and 100 required. Would you like to insert the "
            "closest value?";
        const DrivenDialog combine = OpenCombine(gui, editor);
        TypeInto(gui, combine, CombineItems::amount, "10");
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, combine), question);
        WaitUntil("the most", [&] { return combine.Value(CombineItems::slider) == 100; });
        gui.Type("-1");
        EXPECT_EQ(AnswerAlert(gui, combine), question);
        WaitUntil("the least", [&] { return combine.Value(CombineItems::slider) == 0; });
        TabTo(gui, combine, cancelItem);
        gui.Chord({VK_MENU, 'A'});
        WaitUntil("the amount", [&] { return FocusedItem(combine) == CombineItems::amount; });
        TabTo(gui, combine, cancelItem);
        // OK is grey.
        EXPECT_EQ(
            TabOrder(gui, combine),
            (std::vector<int>{cancelItem, ApplyItems::apply, CombineItems::mode,
                              CombineItems::choose, CombineItems::slider, CombineItems::amount}));
        CloseWith(combine, cancelItem);
    });
}

}  // namespace

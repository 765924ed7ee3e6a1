// Tile: the texture is replaced by copies of itself, and there is no way back.
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"
#include "tests/gui/RecipeRun.Win.h"

namespace {

using Texture = TextureItems;

class TileDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenTile(const GuiDriver& gui, const DrivenDialog& editor) {
        return OpenDialog(gui, editor, Texture::tile, tileDialog);
    }
};

TEST_F(TileDialogTest, StartsWithTwoByTwo) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog tile = OpenTile(gui, editor);
        EXPECT_EQ(tile.Title(), "Tile");
        EXPECT_EQ(tile.Text(TileItems::horizontal), "2");
        EXPECT_EQ(tile.Text(TileItems::vertical), "2");
        EXPECT_FALSE(tile.IsEnabled(TileItems::apply));
        CloseWith(tile, okItem);
        editor.Settle();
        EXPECT_FALSE(editor.IsEnabled(Texture::repeatFilter));
        EXPECT_FALSE(editor.IsEnabled(Texture::repeatEffect));
    });
    ExpectApplied(*RunTile(*Noise(), 2, 2));
}

TEST_F(TileDialogTest, TakesTheTwoCounts) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog tile = OpenTile(gui, editor);
        TypeInto(gui, tile, TileItems::horizontal, "3");
        TypeInto(gui, tile, TileItems::vertical, "1");
        CloseWith(tile, okItem);
    });
    ExpectApplied(*RunTile(*Noise(), 3, 1));
}

TEST_F(TileDialogTest, MakesWhatARecipeMakes) {
    const std::vector<std::pair<int, int>> counts{{3, 2}, {1, 1}, {1, 4}};
    std::vector<Pixel> expected;
    {
        RecipeRun recipe([&] { return Noise(); });
        for (const auto& [across, down] : counts) {
            recipe.Run("tile horizontal=" + std::to_string(across) +
                       " vertical=" + std::to_string(down));
        }
        // Something that the repeats do not bring.
        recipe.Run("skew");
        expected = recipe.Colors();
    }
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const auto& [across, down] : counts) {
            const DrivenDialog tile = OpenTile(gui, editor);
            TypeInto(gui, tile, TileItems::horizontal, std::to_string(across));
            TypeInto(gui, tile, TileItems::vertical, std::to_string(down));
            CloseWith(tile, okItem);
        }
        editor.PressToOpen(Texture::skew);
        CloseWith(gui.WaitFor(skewDialog), okItem);
    });
    EXPECT_EQ(ColorsOf(*Applied()), expected);
    ExpectFilledWithApplied();
}

TEST_F(TileDialogTest, UndoLeadsBackToTheTiledTexture) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        CloseWith(OpenTile(gui, editor), okItem);
        editor.Settle();
        editor.Choose(commandUndo);
    });
    ExpectApplied(*RunTile(*Noise(), 2, 2));
}

TEST_F(TileDialogTest, CancelLeavesTheTexture) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog tile = OpenTile(gui, editor);
        tile.SetText(TileItems::horizontal, "5");
        CloseWith(tile, cancelItem);
    });
    ExpectApplied(*Noise());
}

TEST_F(TileDialogTest, CountsBeyondTheLimits) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const std::string question =
            "An integer in the range between 1 and 12 required. Would you like to insert the "
            "closest value?";
        const DrivenDialog tile = OpenTile(gui, editor);
        TabTo(gui, tile, TileItems::horizontal);
        gui.Type("0");
        EXPECT_EQ(AnswerAlert(gui, tile), question);
        WaitUntil("the least", [&] { return tile.Text(TileItems::horizontal) == "1"; });
        TypeInto(gui, tile, TileItems::vertical, "1");
        gui.Type("3");
        EXPECT_EQ(AnswerAlert(gui, tile), question);
        WaitUntil("the most", [&] { return tile.Text(TileItems::vertical) == "12"; });
        CloseWith(tile, okItem);
    });
    ExpectApplied(*RunTile(*Noise(), 1, 12));
}

TEST_F(TileDialogTest, TheReadoutsAndTheToolSettingsAreThoseOfTheNewTexture) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.ChooseToOpen(commandBrushSettings);
        const DrivenDialog brush = gui.WaitFor(brushDialog);
        brush.SetText(BrushItems::size, "17");
        CloseWith(brush, okItem);
        const std::string narrow = editor.Text(Texture::width);
        CloseWith(OpenTile(gui, editor), okItem);
        WaitUntil("another width", [&] { return editor.Text(Texture::width) != narrow; });
        editor.ChooseToOpen(commandBrushSettings);
        const DrivenDialog again = gui.WaitFor(brushDialog);
        EXPECT_EQ(again.Text(BrushItems::size), "11");
        CloseWith(again, cancelItem);
    });
}

// The texture looks the same and is another one.
TEST_F(TileDialogTest, OneCopyIsANewTextureWithoutAWayBack) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.ChooseToOpen(commandBrushSettings);
        const DrivenDialog brush = gui.WaitFor(brushDialog);
        brush.SetText(BrushItems::size, "17");
        CloseWith(brush, okItem);
        editor.Press(Texture::invert);
        const DrivenDialog tile = OpenTile(gui, editor);
        TypeInto(gui, tile, TileItems::horizontal, "1");
        TypeInto(gui, tile, TileItems::vertical, "1");
        CloseWith(tile, okItem);
        editor.Settle();
        editor.ChooseToOpen(commandBrushSettings);
        const DrivenDialog again = gui.WaitFor(brushDialog);
        EXPECT_EQ(again.Text(BrushItems::size), "11");
        CloseWith(again, cancelItem);
        editor.Choose(commandUndo);
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    expected->Invert();
    ExpectApplied(*expected);
}

TEST_F(TileDialogTest, TheKeyboard) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog tile = OpenTile(gui, editor);
        TabTo(gui, tile, okItem);
        EXPECT_EQ(TabOrder(gui, tile), (std::vector<int>{okItem, cancelItem, TileItems::horizontal,
                                                         TileItems::vertical}));
        gui.Chord({VK_MENU, 'V'});
        WaitUntil("the rows", [&] { return FocusedItem(tile) == TileItems::vertical; });
        gui.Type("1");
        gui.Chord({VK_RETURN});
        tile.WaitUntilClosed();
    });
    ExpectApplied(*RunTile(*Noise(), 2, 1));
}

}  // namespace

// The settings of the Fill tool.
#include "tests/gui/DialogRun.Win.h"

namespace {

using Texture = TextureItems;

class FillDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenFill(const GuiDriver& gui, const DrivenDialog& editor) {
        editor.ChooseToOpen(commandFillSettings);
        return gui.WaitFor(fillDialog);
    }
    /// A click with the tool in the texture's middle.
    void Fill(const GuiDriver& gui, const DrivenDialog& editor) const {
        ChooseTool(gui, editor, 'k', 7);
        Stroke(editor, {PlaceOfPixel(editor, width + 60, height + 50)});
    }
    void ExpectFilled(short tolerance, short antiAlias) const {
        const std::unique_ptr<PaintClass> expected = Noise();
        expected->SetColors(&stored.foreground, &stored.background);
        expected->fillTolerance = tolerance;
        expected->fillAntiAlias = antiAlias;
        expected->FloodFill({height + 50, width + 60});
        EXPECT_NE(ColorsOf(*expected), ColorsOf(*Noise()));
        ExpectApplied(*expected);
    }
};

TEST_F(FillDialogTest, TheFieldMovesTheSlider) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog fill = OpenFill(gui, editor);
        EXPECT_EQ(fill.Title(), "Fill Tool Settings");
        EXPECT_EQ(fill.Text(FillItems::tolerance), "25");
        EXPECT_EQ(fill.Value(FillItems::slider), 25);
        EXPECT_EQ(fill.Value(FillItems::antiAlias), 1);
        TypeInto(gui, fill, FillItems::tolerance, "93");
        WaitUntil("the slider", [&] { return fill.Value(FillItems::slider) == 93; });
        CloseWith(fill, okItem);
        const DrivenDialog again = OpenFill(gui, editor);
        EXPECT_EQ(again.Text(FillItems::tolerance), "93");
        CloseWith(again, cancelItem);
        Fill(gui, editor);
    });
    ExpectFilled(93, 1);
}

TEST_F(FillDialogTest, TheSliderWritesTheFieldAndTheBoxToggles) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog fill = OpenFill(gui, editor);
        DragSlider(fill, FillItems::slider, {0, 100}, {100, 0, 80}, [&](int value) {
            WaitUntil("the field",
                      [&] { return fill.Text(FillItems::tolerance) == std::to_string(value); });
        });
        fill.Click(FillItems::antiAlias, {6, 8});
        WaitUntil("the box", [&] { return fill.Value(FillItems::antiAlias) == 0; });
        CloseWith(fill, okItem);
        const DrivenDialog again = OpenFill(gui, editor);
        EXPECT_EQ(again.Value(FillItems::antiAlias), 0);
        CloseWith(again, cancelItem);
        Fill(gui, editor);
    });
    ExpectFilled(80, 0);
}

TEST_F(FillDialogTest, CancelKeepsTheSettings) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog fill = OpenFill(gui, editor);
        fill.SetText(FillItems::tolerance, "100");
        fill.Press(FillItems::antiAlias);
        CloseWith(fill, cancelItem);
        Fill(gui, editor);
    });
    ExpectFilled(25, 1);
}

TEST_F(FillDialogTest, AToleranceBeyondTheLimits) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog fill = OpenFill(gui, editor);
        TypeInto(gui, fill, FillItems::tolerance, "10");
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, fill),
                  "An integer in the range between 0 and 100 required. Would you like to insert "
                  "the closest value?");
        WaitUntil("the most", [&] { return fill.Text(FillItems::tolerance) == "100"; });
        CloseWith(fill, okItem);
        Fill(gui, editor);
    });
    ExpectFilled(100, 1);
}

TEST_F(FillDialogTest, ADoubleClickOnTheToolOpensIt) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const RECT palette = editor.Bounds(Texture::toolPalette);
        const ItemPlace seventh{static_cast<int>(palette.right - palette.left) / 4,
                                static_cast<int>(palette.bottom - palette.top) * 7 / 8};
        editor.Click(Texture::toolPalette, seventh);
        editor.Click(Texture::toolPalette, seventh);
        CloseWith(gui.WaitFor(fillDialog), okItem);
        EXPECT_EQ(editor.Value(Texture::toolPalette), 7);
    });
}

TEST_F(FillDialogTest, TheKeyboard) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog fill = OpenFill(gui, editor);
        TabTo(gui, fill, okItem);
        EXPECT_EQ(TabOrder(gui, fill), (std::vector<int>{okItem, cancelItem, FillItems::tolerance,
                                                         FillItems::slider, FillItems::antiAlias}));
        gui.Chord({VK_MENU, 'A'});
        WaitUntil("the box by its letter", [&] { return fill.Value(FillItems::antiAlias) == 0; });
        gui.Chord({VK_MENU, 'T'});
        WaitUntil("the field", [&] { return FocusedItem(fill) == FillItems::tolerance; });
        gui.Chord({VK_RETURN});
        fill.WaitUntilClosed();
        Fill(gui, editor);
    });
    ExpectFilled(25, 0);
}

}  // namespace

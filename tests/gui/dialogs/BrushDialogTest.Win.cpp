// The settings of the brush.
#include "paint/Stroke.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

using Texture = TextureItems;

constexpr short standardSize = 11;

class BrushDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenBrush(const GuiDriver& gui, const DrivenDialog& editor) {
        editor.ChooseToOpen(commandBrushSettings);
        return gui.WaitFor(brushDialog);
    }
    /// A click with the brush in the texture's middle.
    void Stamp(const GuiDriver& gui, const DrivenDialog& editor) const {
        gui.Type("b");
        WaitUntil("the brush", [&] { return editor.Value(Texture::toolPalette) == 2; });
        Stroke(editor, {PlaceOfPixel(editor, width + 60, height + 50)});
    }
    void ExpectStampOf(short size) const {
        PaintClass expected(width, height);
        const RGBColor16 black = black16;
        const RGBColor16 white = white16;
        expected.SetColors(&black, &white);
        expected.brushSize = size;
        {
            BrushStroke stroke(expected);
            stroke.Paint({50, 60}, {50, 60});
        }
        ExpectApplied(expected);
    }
};

TEST_F(BrushDialogTest, TheFieldMovesTheSlider) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog brush = OpenBrush(gui, editor);
        EXPECT_EQ(brush.Title(), "Brush Tool Settings");
        EXPECT_EQ(brush.Text(BrushItems::size), std::to_string(standardSize));
        EXPECT_EQ(brush.Value(BrushItems::slider), standardSize);
        brush.SetText(BrushItems::size, "17");
        WaitUntil("the slider", [&] { return brush.Value(BrushItems::slider) == 17; });
        CloseWith(brush, okItem);
        const DrivenDialog again = OpenBrush(gui, editor);
        EXPECT_EQ(again.Text(BrushItems::size), "17");
        CloseWith(again, cancelItem);
        Stamp(gui, editor);
    });
    ExpectStampOf(17);
}

TEST_F(BrushDialogTest, TheSliderWritesTheField) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog brush = OpenBrush(gui, editor);
        DragSlider(brush, BrushItems::slider, {2, 20}, {20, 2, 5}, [&](int value) {
            WaitUntil("the field",
                      [&] { return brush.Text(BrushItems::size) == std::to_string(value); });
        });
        CloseWith(brush, okItem);
        Stamp(gui, editor);
    });
    ExpectStampOf(5);
}

TEST_F(BrushDialogTest, CancelKeepsTheSize) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog brush = OpenBrush(gui, editor);
        brush.SetText(BrushItems::size, "17");
        gui.Chord({VK_ESCAPE});
        brush.WaitUntilClosed();
        Stamp(gui, editor);
    });
    ExpectStampOf(standardSize);
}

TEST_F(BrushDialogTest, ADoubleClickOnTheBrushOpensIt) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const RECT palette = editor.Bounds(Texture::toolPalette);
        const ItemPlace second{static_cast<int>(palette.right - palette.left) * 3 / 4, 8};
        editor.Click(Texture::toolPalette, second);
        editor.Click(Texture::toolPalette, second);
        const DrivenDialog brush = gui.WaitFor(brushDialog);
        EXPECT_EQ(editor.Value(Texture::toolPalette), 2);
        CloseWith(brush, okItem);
    });
}

TEST_F(BrushDialogTest, SizesBeyondTheLimits) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const std::string question =
            "An integer in the range between 2 and 20 required. Would you like to insert the "
            "closest value?";
        const DrivenDialog brush = OpenBrush(gui, editor);
        TypeInto(gui, brush, BrushItems::size, "2");
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, brush), question);
        WaitUntil("the most", [&] { return brush.Text(BrushItems::size) == "20"; });
        EXPECT_EQ(brush.Value(BrushItems::slider), 20);
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, brush), question);
        WaitUntil("the least", [&] { return brush.Text(BrushItems::size) == "2"; });
        CloseWith(brush, okItem);
        Stamp(gui, editor);
    });
    ExpectStampOf(2);
}

TEST_F(BrushDialogTest, ANewTextureHasTheStandardSize) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog brush = OpenBrush(gui, editor);
        brush.SetText(BrushItems::size, "17");
        CloseWith(brush, okItem);
        editor.PressToOpen(Texture::newTexture);
        CloseWith(gui.WaitForTitle("New"), okItem);
        editor.Settle();
        Stamp(gui, editor);
    });
    ExpectStampOf(standardSize);
}

TEST_F(BrushDialogTest, TheKeyboard) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog brush = OpenBrush(gui, editor);
        TabTo(gui, brush, okItem);
        EXPECT_EQ(TabOrder(gui, brush),
                  (std::vector<int>{okItem, cancelItem, BrushItems::size, BrushItems::slider}));
        gui.Chord({VK_MENU, 'S'});
        WaitUntil("the size", [&] { return FocusedItem(brush) == BrushItems::size; });
        gui.Chord({VK_UP});
        WaitUntil("one more", [&] { return brush.Text(BrushItems::size) == "12"; });
        gui.Chord({VK_RETURN});
        brush.WaitUntilClosed();
        Stamp(gui, editor);
    });
    ExpectStampOf(12);
}

TEST_F(BrushDialogTest, ComesBackWhereItWas) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog brush = OpenBrush(gui, editor);
        SetWindowPos(brush.Window(), nullptr, 71, 93, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        brush.Settle();
        CloseWith(brush, cancelItem);
        const DrivenDialog again = OpenBrush(gui, editor);
        RECT frame;
        GetWindowRect(again.Window(), &frame);
        EXPECT_EQ(frame.left, 71);
        EXPECT_EQ(frame.top, 93);
        CloseWith(again, cancelItem);
    });
}

}  // namespace

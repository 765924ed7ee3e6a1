// The settings of the Rubber Stamp.
#include "paint/Stroke.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

using Texture = TextureItems;

class CloneDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenClone(const GuiDriver& gui, const DrivenDialog& editor) {
        editor.ChooseToOpen(commandStampSettings);
        return gui.WaitFor(cloneDialog);
    }
    /// A stroke in the texture's middle.
    void Paint(const GuiDriver& gui, const DrivenDialog& editor) const {
        ChooseTool(gui, editor, 's', 6);
        DragStamp(gui, editor,
                  {PlaceOfPixel(editor, width + 60, height + 50),
                   PlaceOfPixel(editor, width + 70, height + 52)});
    }
    void ExpectPainted(short size, short offsetH, short offsetV) const {
        const std::unique_ptr<PaintClass> expected = Noise();
        expected->stampSize = size;
        expected->stampOffsetH = offsetH;
        expected->stampOffsetV = offsetV;
        {
            StampStroke stroke(*expected);
            stroke.Paint({height + 50, width + 60}, {height + 52, width + 70});
        }
        ExpectApplied(*expected);
    }
};

TEST_F(CloneDialogTest, StartsWithTheDefaults) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog clone = OpenClone(gui, editor);
        EXPECT_EQ(clone.Title(), "Rubber Stamp Tool Settings");
        EXPECT_EQ(clone.Text(CloneItems::size), "16");
        EXPECT_EQ(clone.Value(CloneItems::slider), 16);
        EXPECT_EQ(clone.Text(CloneItems::horizontalOffset), "0");
        EXPECT_EQ(clone.Text(CloneItems::verticalOffset), "0");
        CloseWith(clone, cancelItem);
    });
}

// A positive vertical offset points upwards here.
TEST_F(CloneDialogTest, TheOffsetsAreThoseOfTheStroke) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog clone = OpenClone(gui, editor);
        TypeInto(gui, clone, CloneItems::size, "9");
        WaitUntil("the slider", [&] { return clone.Value(CloneItems::slider) == 9; });
        TypeInto(gui, clone, CloneItems::horizontalOffset, "-31");
        TypeInto(gui, clone, CloneItems::verticalOffset, "22");
        CloseWith(clone, okItem);
        const DrivenDialog again = OpenClone(gui, editor);
        EXPECT_EQ(again.Text(CloneItems::size), "9");
        EXPECT_EQ(again.Text(CloneItems::horizontalOffset), "-31");
        EXPECT_EQ(again.Text(CloneItems::verticalOffset), "22");
        CloseWith(again, cancelItem);
        Paint(gui, editor);
    });
    ExpectPainted(9, -31, -22);
}

TEST_F(CloneDialogTest, TheSliderWritesTheField) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog clone = OpenClone(gui, editor);
        clone.SetText(CloneItems::horizontalOffset, "40");
        DragSlider(clone, CloneItems::slider, {1, 20}, {20, 1, 6}, [&](int value) {
            WaitUntil("the field",
                      [&] { return clone.Text(CloneItems::size) == std::to_string(value); });
        });
        CloseWith(clone, okItem);
        Paint(gui, editor);
    });
    ExpectPainted(6, 40, 0);
}

TEST_F(CloneDialogTest, CancelKeepsTheSettings) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        DrivenDialog clone = OpenClone(gui, editor);
        clone.SetText(CloneItems::horizontalOffset, "40");
        CloseWith(clone, okItem);
        clone = OpenClone(gui, editor);
        clone.SetText(CloneItems::size, "3");
        clone.SetText(CloneItems::horizontalOffset, "7");
        clone.SetText(CloneItems::verticalOffset, "8");
        CloseWith(clone, cancelItem);
        Paint(gui, editor);
    });
    ExpectPainted(16, 40, 0);
}

TEST_F(CloneDialogTest, ValuesBeyondTheLimits) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog clone = OpenClone(gui, editor);
        TypeInto(gui, clone, CloneItems::size, "2");
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, clone),
                  "An integer in the range between 1 and 20 required. Would you like to insert the "
                  "closest value?");
        WaitUntil("the most", [&] { return clone.Text(CloneItems::size) == "20"; });
        TypeInto(gui, clone, CloneItems::verticalOffset, "100");
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, clone),
                  "An integer in the range between -1000 and 1000 required. Would you like to "
                  "insert the closest value?");
        WaitUntil("the farthest", [&] { return clone.Text(CloneItems::verticalOffset) == "1000"; });
        CloseWith(clone, okItem);
        Paint(gui, editor);
    });
    ExpectPainted(20, 0, -1000);
}

TEST_F(CloneDialogTest, ADoubleClickOnTheStampOpensIt) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const RECT palette = editor.Bounds(Texture::toolPalette);
        const ItemPlace sixth{static_cast<int>(palette.right - palette.left) * 3 / 4,
                              static_cast<int>(palette.bottom - palette.top) * 5 / 8};
        editor.Click(Texture::toolPalette, sixth);
        editor.Click(Texture::toolPalette, sixth);
        CloseWith(gui.WaitFor(cloneDialog), okItem);
        EXPECT_EQ(editor.Value(Texture::toolPalette), 6);
    });
}

TEST_F(CloneDialogTest, TheKeyboard) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog clone = OpenClone(gui, editor);
        TabTo(gui, clone, okItem);
        EXPECT_EQ(TabOrder(gui, clone),
                  (std::vector<int>{okItem, cancelItem, CloneItems::size, CloneItems::slider,
                                    CloneItems::horizontalOffset, CloneItems::verticalOffset}));
        gui.Chord({VK_MENU, 'V'});
        WaitUntil("the vertical offset",
                  [&] { return FocusedItem(clone) == CloneItems::verticalOffset; });
        gui.Chord({VK_ESCAPE});
        clone.WaitUntilClosed();
    });
}

}  // namespace

// The Gradient, which draws a rubber band over the view while it is dragged.
#include "tests/gui/DialogRun.Win.h"

namespace {

using Items = TextureItems;

class RubberBandTest : public DialogRunTest {
  protected:
    /// A place in the tile that the size marks enclose.
    ItemPlace InBaseTile(const DrivenDialog& editor, int x, int y) const {
        return PlaceOfPixel(editor, width + x, height + y);
    }
    /// The same pixel as the tools see it.
    static hostapi::Point TexturePoint(int x, int y) {
        return {static_cast<short>(height + y), static_cast<short>(width + x)};
    }

    /// Drags in one jump, so that the tool sees the two ends alone.
    void Jump(const DrivenDialog& editor, ItemPlace from, ItemPlace to) const {
        editor.WaitUntilPainted();
        editor.Drag(Items::drawingArea, {from, to}, [&] { editor.Settle(); });
        editor.Settle();
    }

    std::unique_ptr<PaintClass> Colored(std::unique_ptr<PaintClass> texture) const {
        texture->SetColors(&stored.foreground, &stored.background);
        return texture;
    }

    void ExpectGradient(ItemPlace from, ItemPlace to, hostapi::Point end) {
        stored.foreground = {0xFF00, 0x2000, 0x1000};
        stored.background = {0x1000, 0x8000, 0xF000};
        RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
            ChooseTool(gui, editor, 'g', 5);
            Jump(editor, InBaseTile(editor, from.x, from.y), InBaseTile(editor, to.x, to.y));
        });
        const std::unique_ptr<PaintClass> expected = Colored(Noise());
        expected->Gradient(TexturePoint(from.x, from.y), end);
        ExpectApplied(*expected);
    }
};

TEST_F(RubberBandTest, AGradientRunsDownWhereTheDragIsSteep) {
    ExpectGradient({60, 20}, {75, 50}, TexturePoint(60, 50));
}

TEST_F(RubberBandTest, AGradientRunsUp) {
    ExpectGradient({60, 60}, {65, 20}, TexturePoint(60, 20));
}

TEST_F(RubberBandTest, AGradientRunsAcrossWhereTheDragIsFlat) {
    ExpectGradient({60, 20}, {100, 30}, TexturePoint(100, 20));
}

TEST_F(RubberBandTest, AGradientOfADiagonalDragRunsAcross) {
    ExpectGradient({60, 20}, {85, 45}, TexturePoint(85, 20));
}

TEST_F(RubberBandTest, AGradientRunsOverTheSeam) {
    ExpectGradient({10, 20}, {-20, 21}, TexturePoint(-20, 20));
}

TEST_F(RubberBandTest, AClickOfTheGradientPaintsNothingAndCostsAnUndoStep) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Items::invert);
        ChooseTool(gui, editor, 'g', 5);
        editor.Click(Items::drawingArea, InBaseTile(editor, 60, 20));
        editor.Settle();
        editor.Choose(commandUndo);
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    expected->Invert();
    ExpectApplied(*expected);
}

TEST_F(RubberBandTest, TheBandIsBlackAndStandsUprightOnADiagonal) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'g', 5);
        editor.WaitUntilPainted();
        const ItemPlace from = InBaseTile(editor, 50, 30);
        const RECT area = editor.Bounds(Items::drawingArea);
        const auto redAt = [&](const host::Picture& view, int x, int y) {
            return *view.Pixel(static_cast<int>(area.left) + x, static_cast<int>(area.top) + y);
        };
        bool isFirst = true;
        editor.Drag(Items::drawingArea, {from, {from.x + 20, from.y + 20}}, [&] {
            editor.Settle();
            if (std::exchange(isFirst, false)) {
                return;
            }
            WaitUntil("the band", [&] {
                const host::Picture view = editor.Grab();
                return redAt(view, from.x, from.y + 10) == 0 &&
                       redAt(view, from.x + 10, from.y) == 255;
            });
        });
        editor.Settle();
    });
}

}  // namespace

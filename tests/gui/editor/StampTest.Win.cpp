// The Rubber Stamp: its source, its strokes, the cross that shows where it reads.
#include "fixtures/Screenshot.Win.h"
#include "paint/Stroke.h"
#include "tests/gui/DialogRun.Win.h"
#include "tests/gui/ShownView.Win.h"

namespace {

using Items = TextureItems;
/// Pixels of the tile that the size marks enclose.
using Path = std::vector<ItemPlace>;

constexpr int cursorStamp = 16006;

hostapi::Point TexturePoint(ItemPlace inTile) {
    return {static_cast<short>(DialogRunTest::height + inTile.y),
            static_cast<short>(DialogRunTest::width + inTile.x)};
}

/// Paints a stroke as the editor does. The offset is that of the source from the first place that
/// the mouse moves to, not from where it was pressed.
void PaintStamp(PaintClass& texture, const Path& path) {
    StampStroke stroke(texture);
    for (std::size_t i = 1; i < path.size(); ++i) {
        stroke.Paint(TexturePoint(path[i - 1]), TexturePoint(path[i]));
    }
}

void Aim(PaintClass& texture, ItemPlace source, ItemPlace firstMove) {
    texture.stampOffsetH = static_cast<short>(source.x - firstMove.x);
    texture.stampOffsetV = static_cast<short>(source.y - firstMove.y);
}

class StampTest : public DialogRunTest {
  protected:
    ItemPlace InBaseTile(const DrivenDialog& editor, ItemPlace inTile, double zoom = 1.0) const {
        return PlaceOfPixel(editor, width + inTile.x, height + inTile.y, zoom);
    }

    void TakeSource(const GuiDriver& gui, const DrivenDialog& editor, ItemPlace inTile,
                    double zoom = 1.0) const {
        TakeStampSource(gui, editor, InBaseTile(editor, inTile, zoom));
    }

    void DragAlong(const GuiDriver& gui, const DrivenDialog& editor, const Path& path,
                   double zoom = 1.0, const std::function<void()>& before = {}) const {
        std::vector<ItemPlace> places;
        for (const ItemPlace& inTile : path) {
            places.push_back(InBaseTile(editor, inTile, zoom));
        }
        DragStamp(gui, editor, places, before);
    }

    /// During a stroke: the place under the mouse becomes the source.
    static void TakeSourceInStroke(const GuiDriver& gui, const DrivenDialog& editor) {
        gui.HoldKey(VK_MENU);
        WaitUntil("the new source", [] { return GuiDriver::CursorId() == cursorStampSource; });
        ReleaseAlt(gui);
        WaitUntil("Alt to be up", [] { return (GetAsyncKeyState(VK_MENU) & 0x8000) == 0; });
        editor.Settle();
    }

    /// Drags without a source: an alert ends the stroke.
    void ExpectRefusal(const GuiDriver& gui, const DrivenDialog& editor) const {
        editor.WaitUntilPainted();
        editor.Point(Items::drawingArea, InBaseTile(editor, {90, 50}));
        gui.PressMouse();
        WaitUntil("the stroke to begin", [&] { return HasCapture(editor.Window()); });
        editor.Settle();
        editor.Point(Items::drawingArea, InBaseTile(editor, {95, 50}));
        const DrivenDialog alert = gui.WaitForAlert(editor);
        EXPECT_EQ(alert.Text(3),
                  "Could not use the rubber stamp because the area to clone has not been defined "
                  "(alt-click to define a source point).");
        gui.ReleaseMouse();
        CloseWith(alert, okItem);
    }

    /// Waits until the cross stands with its centre there. The view is white.
    static void ExpectCross(const DrivenDialog& editor, ItemPlace centre) {
        WaitUntil("the cross", [&] {
            // Other items wait with their painting until the stroke ends.
            const ShownView view(editor, GrabClient(editor.Window()));
            const auto isBlack = [&](int h, int v) {
                return (view.At({centre.x + h, centre.y + v}) & 0x00FFFFFF) == 0;
            };
            return isBlack(-5, 0) && isBlack(5, 0) && isBlack(0, -5) && isBlack(0, 5) &&
                   !isBlack(-6, 0) && !isBlack(6, 0) && !isBlack(0, -6) && !isBlack(0, 6) &&
                   !isBlack(3, 3);
        });
    }
};

TEST_F(StampTest, CopiesFromItsSource) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        DragAlong(gui, editor, {{90, 50}, {100, 55}, {110, 40}});
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    Aim(*expected, {20, 30}, {100, 55});
    PaintStamp(*expected, {{90, 50}, {100, 55}, {110, 40}});
    ExpectApplied(*expected);
}

TEST_F(StampTest, CopiesOverTheSeam) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {-10, -5});
        DragAlong(gui, editor, {{140, 90}, {155, 104}});
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    Aim(*expected, {-10, -5}, {155, 104});
    PaintStamp(*expected, {{140, 90}, {155, 104}});
    ExpectApplied(*expected);
}

TEST_F(StampTest, LaterStrokesKeepTheOffset) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        DragAlong(gui, editor, {{90, 50}, {100, 55}});
        DragAlong(gui, editor, {{30, 80}, {10, 80}});
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    Aim(*expected, {20, 30}, {100, 55});
    PaintStamp(*expected, {{90, 50}, {100, 55}});
    PaintStamp(*expected, {{30, 80}, {10, 80}});
    ExpectApplied(*expected);
}

TEST_F(StampTest, AltDuringAStrokeTakesANewSource) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        DragAlong(gui, editor, {{90, 50}, {100, 55}, {110, 55}}, 1.0,
                  [&] { TakeSourceInStroke(gui, editor); });
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    {
        StampStroke stroke(*expected);
        Aim(*expected, {20, 30}, {100, 55});
        stroke.Paint(TexturePoint({90, 50}), TexturePoint({100, 55}));
        Aim(*expected, {100, 55}, {110, 55});
        stroke.Paint(TexturePoint({100, 55}), TexturePoint({110, 55}));
    }
    ExpectApplied(*expected);
}

// The view is white, but for the crosses.
TEST_F(StampTest, ANewSourceDuringAStrokeTakesTheCrossOfTheOneBeforeAway) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        const ItemPlace first = InBaseTile(editor, {20, 30});
        const ItemPlace second = InBaseTile(editor, {100, 55});
        DragAlong(gui, editor, {{90, 50}, {100, 55}, {120, 60}}, 1.0, [&] {
            ExpectCross(editor, first);
            TakeSourceInStroke(gui, editor);
            const int drawnBefore = Displays();
            editor.Point(Items::drawingArea, InBaseTile(editor, {110, 55}));
            WaitUntil("the stamp to be drawn", [&] { return Displays() > drawnBefore; });
            ExpectCross(editor, second);
            const ShownView view(editor, GrabClient(editor.Window()));
            for (const int h : {-5, -4, -3, 3, 4, 5}) {
                EXPECT_EQ(view.At({first.x + h, first.y}) & 0x00FFFFFF, 0x00FFFFFFu) << h;
            }
        });
    });
}

// At four times its size the middle of the texture is in the view once, and parts of its repeats
// around it.
TEST_F(StampTest, AStrokeBeginsWithARedrawOfTheWholeView) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int press = 0; press < 5; ++press) {
            editor.Press(Items::zoomIn);
        }
        constexpr double zoom = 4.0;
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {70, 45}, zoom);
        DragAlong(gui, editor, {{75, 50}, {76, 50}}, zoom);
        editor.WaitUntilPainted();
        editor.Settle();
        const int drawnBefore = Displays();
        DragAlong(gui, editor, {{75, 50}, {76, 50}, {77, 50}}, zoom,
                  [&] { EXPECT_GT(Displays() - drawnBefore, 1); });
    });
}

// A press waits for the mouse to move, also after the release of the button.
TEST_F(StampTest, AClickWithoutAMovementPaintsNothingAndCostsAnUndoStep) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        editor.Press(Items::invert);
        DragAlong(gui, editor, {{90, 50}});
        editor.Choose(commandUndo);
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    expected->Invert();
    ExpectApplied(*expected);
}

TEST_F(StampTest, AnAltClickCostsAnUndoStep) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Items::invert);
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        editor.Choose(commandUndo);
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    expected->Invert();
    ExpectApplied(*expected);
}

TEST_F(StampTest, AStrokeIsUndoneAsAWhole) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        DragAlong(gui, editor, {{90, 50}, {100, 55}, {120, 70}});
        editor.Choose(commandUndo);
    });
    ExpectApplied(*Noise());
}

// At zoom 1, with the base tile around the brush: the source is in another repeat.
TEST_F(StampTest, TheCrossIsNotWrapped) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {-40, -30});
        const ItemPlace source = InBaseTile(editor, {-40, -30});
        DragAlong(gui, editor, {{80, 50}, {90, 60}, {100, 56}}, 1.0, [&] {
            ExpectCross(editor, source);
            const ItemPlace wrapped = InBaseTile(editor, {width - 40, height - 30});
            const ShownView view(editor, GrabClient(editor.Window()));
            EXPECT_EQ(view.At({wrapped.x - 4, wrapped.y}) & 0x00FFFFFF, 0x00FFFFFFu);
        });
    });
}

TEST_F(StampTest, WithoutASourceItSaysSo) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        ExpectRefusal(gui, editor);
        // The alert ends the stroke alone.
        TakeSource(gui, editor, {20, 30});
        DragAlong(gui, editor, {{90, 50}, {100, 55}});
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    Aim(*expected, {20, 30}, {100, 55});
    PaintStamp(*expected, {{90, 50}, {100, 55}});
    ExpectApplied(*expected);
}

TEST_F(StampTest, AnOffsetThatIsTypedIsNoSource) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        editor.ChooseToOpen(commandStampSettings);
        const DrivenDialog settings = gui.WaitFor(cloneDialog);
        settings.SetText(CloneItems::horizontalOffset, "-25");
        settings.SetText(CloneItems::verticalOffset, "-8");
        CloseWith(settings, okItem);
        DragAlong(gui, editor, {{90, 50}, {100, 55}});
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    expected->stampOffsetH = -25;
    expected->stampOffsetV = 8;
    PaintStamp(*expected, {{90, 50}, {100, 55}});
    ExpectApplied(*expected);
}

TEST_F(StampTest, OffsetsOfNothingAreNoSource) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        TakeSource(gui, editor, {20, 30});
        DragAlong(gui, editor, {{90, 50}, {100, 55}});
        editor.ChooseToOpen(commandStampSettings);
        const DrivenDialog settings = gui.WaitFor(cloneDialog);
        EXPECT_EQ(settings.Text(CloneItems::horizontalOffset), "-80");
        EXPECT_EQ(settings.Text(CloneItems::verticalOffset), "25");
        TypeInto(gui, settings, CloneItems::horizontalOffset, "0");
        TypeInto(gui, settings, CloneItems::verticalOffset, "0");
        CloseWith(settings, okItem);
        ExpectRefusal(gui, editor);
    });
    const std::unique_ptr<PaintClass> expected = Noise();
    Aim(*expected, {20, 30}, {100, 55});
    PaintStamp(*expected, {{90, 50}, {100, 55}});
    ExpectApplied(*expected);
}

TEST_F(StampTest, TheCrossShowsWhereItReadsAtEachZoom) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        const auto expectCross = [&](double zoom) {
            TakeSource(gui, editor, {40, 20}, zoom);
            const ItemPlace source = InBaseTile(editor, {40, 20}, zoom);
            const ItemPlace end = InBaseTile(editor, {100, 56}, zoom);
            const ItemPlace moved = InBaseTile(editor, {90, 60}, zoom);
            DragAlong(gui, editor, {{80, 50}, {90, 60}, {100, 56}}, zoom,
                      [&] { ExpectCross(editor, source); });
            // The redraw after the stroke erases it.
            editor.WaitUntilPainted();
            const ItemPlace last{source.x + end.x - moved.x, source.y + end.y - moved.y};
            EXPECT_EQ(ShownView(editor).At({last.x - 4, last.y}) & 0x00FFFFFF, 0x00FFFFFFu) << zoom;
        };
        expectCross(1.0);
        editor.Press(Items::zoomIn);
        editor.Press(Items::zoomIn);
        expectCross(2.0);
        // Away from the middle, where the view was scrolled to.
        editor.Press(Items::zoomOut);
        editor.Press(Items::zoomOut);
        for (int i = 0; i < 2; ++i) {
            editor.Press(Items::zoomOut);
        }
        expectCross(0.5);
    });
}

TEST_F(StampTest, ItsCursorIsThatOfTheSourceWhileAltIsDown) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 's', 6);
        editor.Point(Items::drawingArea, InBaseTile(editor, {60, 40}));
        WaitUntil("the stamp's cursor", [] { return GuiDriver::CursorId() == cursorStamp; });
        gui.HoldKey(VK_MENU);
        WaitUntil("the source's cursor", [] { return GuiDriver::CursorId() == cursorStampSource; });
        ReleaseAlt(gui);
        WaitUntil("the stamp's again", [] { return GuiDriver::CursorId() == cursorStamp; });
    });
}

}  // namespace

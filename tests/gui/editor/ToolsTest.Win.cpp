// The editor's tools with a real mouse: how they are chosen, their cursors, what a press does.
#include "files/Preferences.h"
#include "paint/EffectRun.h"
#include "paint/Stroke.h"
#include "resources/Ids.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/Pictures.h"

namespace {

using Items = TextureItems;

const std::string toolKeys = "vbengskihz";

class ToolsTest : public PluginRunTest {
  protected:
    /// A place in the tile that the size marks enclose.
    ItemPlace InBaseTile(const DrivenDialog& editor, int x, int y) const {
        return PlaceOfPixel(editor, width + x, height + y);
    }

    static void WaitForCursor(int id) {
        WaitUntil("cursor " + std::to_string(id), [=] { return GuiDriver::CursorId() == id; });
    }

    /// A blank texture in the editor's first colours.
    std::unique_ptr<PaintClass> Blank() const {
        auto pic = std::make_unique<PaintClass>(short{width}, short{height});
        pic->SetColors(&black16, &white16);
        return pic;
    }

    /// Compares a stroke of the class on a blank texture with what was applied.
    template <typename StrokeClass>
    void ExpectStroke(hostapi::Point from, hostapi::Point to) const {
        const std::unique_ptr<PaintClass> expected = Blank();
        {
            StrokeClass stroke(*expected);
            stroke.Paint(from, from);
            stroke.Paint(from, to);
        }
        EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*expected));
    }
};

// --- Choosing ---

TEST_F(ToolsTest, KeysChooseInEitherCaseAndThePaletteFollows) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int tool = 10; tool >= 1; --tool) {
            const char key = toolKeys[static_cast<std::size_t>(tool - 1)];
            ChooseTool(gui, editor, key, tool);
            EXPECT_EQ(editor.Value(Items::toolPalette), tool <= 8 ? tool : 0);
            EXPECT_EQ(editor.Value(Items::viewPalette), tool <= 8 ? 0 : tool - 8);
        }
        for (int tool = 1; tool <= 10; ++tool) {
            const char key = toolKeys[static_cast<std::size_t>(tool - 1)];
            ChooseTool(gui, editor, static_cast<char>(key - 'a' + 'A'), tool);
        }
    });
}

TEST_F(ToolsTest, EachToolHasItsCursor) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int tool = 1; tool <= 10; ++tool) {
            ChooseTool(gui, editor, toolKeys[static_cast<std::size_t>(tool - 1)], tool);
            editor.Point(Items::drawingArea, InBaseTile(editor, 10 + tool, 10));
            WaitForCursor(cursorTool + tool);
        }
        editor.Point(Items::apply, {5, 5});
        WaitForCursor(arrowCursor);
    });
}

TEST_F(ToolsTest, ClicksInThePalettesChoose) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        const RECT tools = editor.Bounds(Items::toolPalette);
        const RECT views = editor.Bounds(Items::viewPalette);
        const auto clickCell = [&](int palette, const RECT& bounds, int rows, int cell) {
            editor.Click(palette, {(bounds.right - bounds.left) / 2 * (cell % 2) + 8,
                                   (bounds.bottom - bounds.top) / rows * (cell / 2) + 8});
        };
        for (const int cell : {7, 2, 4}) {
            clickCell(Items::toolPalette, tools, 4, cell);
            WaitUntil("tool " + std::to_string(cell + 1),
                      [&] { return editor.Value(Items::toolPalette) == cell + 1; });
            EXPECT_EQ(editor.Value(Items::viewPalette), 0);
            editor.Point(Items::drawingArea, InBaseTile(editor, 10 + cell, 10));
            WaitForCursor(cursorTool + cell + 1);
        }
        for (const int cell : {1, 0}) {
            clickCell(Items::viewPalette, views, 1, cell);
            WaitUntil("view tool " + std::to_string(cell + 1),
                      [&] { return editor.Value(Items::viewPalette) == cell + 1; });
            EXPECT_EQ(editor.Value(Items::toolPalette), 0);
            editor.Point(Items::drawingArea, InBaseTile(editor, 20 + cell, 10));
            WaitForCursor(cursorTool + 9 + cell);
        }
    });
}

TEST_F(ToolsTest, ADoubleClickOnThePaintbrushOpensItsSettings) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const RECT bounds = editor.Bounds(Items::toolPalette);
        const ItemPlace brush{(bounds.right - bounds.left) / 2 + 8, 8};
        editor.Click(Items::toolPalette, brush);
        editor.Click(Items::toolPalette, brush);
        const DrivenDialog settingsDialog = gui.WaitFor(brushDialog);
        EXPECT_EQ(settingsDialog.Text(BrushItems::size), "11");
        settingsDialog.PressToOpen(cancelItem);
        settingsDialog.WaitUntilClosed();
        EXPECT_EQ(editor.Value(Items::toolPalette), 2);
    });
}

// --- Painting ---

TEST_F(ToolsTest, ThePencilDrawsAcrossTheSeam) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {InBaseTile(editor, 140, 30), InBaseTile(editor, 158, 37)});
    });
    ExpectStroke<PencilStroke>({130, 290}, {137, 308});
}

TEST_F(ToolsTest, AClickOfTheBrushIsOneStamp) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'b', 2);
        // A corner of the tile, which shows in all four.
        Stroke(editor, {InBaseTile(editor, 0, 0)});
    });
    ExpectStroke<BrushStroke>({100, 150}, {100, 150});
    const std::unique_ptr<PaintClass> pic = Applied();
    for (const auto& [x, y] : {std::pair<short, short>{1, 1}, {-2, 1}, {1, -2}, {-2, -2}}) {
        EXPECT_NE(pic->GetPixelWrapped(x, y) & 0xFFFFFF, 0xFFFFFFu) << x << ", " << y;
    }
}

TEST_F(ToolsTest, TheEraserPaintsTheBackgroundColour) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Items::invert);
        ChooseTool(gui, editor, 'e', 3);
        Stroke(editor, {InBaseTile(editor, 60, 40), InBaseTile(editor, 80, 45)});
    });
    const std::unique_ptr<PaintClass> expected = Blank();
    expected->Invert();
    {
        EraserStroke stroke(*expected);
        stroke.Paint({140, 210}, {140, 210});
        stroke.Paint({140, 210}, {145, 230});
    }
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*expected));
}

/// The last pixel of the nine tiles is the last one of the tile.
TEST_F(ToolsTest, APressInAnyRepeatIsOneInTheTile) {
    selection = {10, 20, 10 + 40, 20 + 60};
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {PlaceOfPixel(editor, 3 * 60 - 1, 3 * 40 - 1)});
        Stroke(editor, {PlaceOfPixel(editor, 0, 2 * 40)});
    });
    PaintClass expected(60, 40);
    expected.SetRGB(59, 39, 0, 0, 0);
    expected.SetRGB(0, 0, 0, 0, 0);
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
}

TEST_F(ToolsTest, FillTakesThePixelOfThePress) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'k', 7);
        Stroke(editor, {InBaseTile(editor, 5, 5)});
    });
    const std::unique_ptr<PaintClass> expected = Blank();
    expected->FloodFill({105, 155});
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*expected));
    EXPECT_NE(ColorsOf(*expected), ColorsOf(*Blank()));
}

TEST_F(ToolsTest, MoveTakesTheTextureWithTheMouse) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {InBaseTile(editor, 20, 20)});
        ChooseTool(gui, editor, 'v', 1);
        editor.WaitUntilPainted();
        editor.Point(Items::drawingArea, InBaseTile(editor, 50, 50));
        gui.PressMouse();
        WaitForCursor(cursorMoveDrag);
        const int drawnBefore = Displays();
        editor.Point(Items::drawingArea, InBaseTile(editor, 57, 45));
        WaitUntil("the texture to move", [&] { return Displays() > drawnBefore; });
        editor.Settle();
        gui.ReleaseMouse();
        editor.Settle();
    });
    const std::unique_ptr<PaintClass> expected = Blank();
    expected->SetRGB(27, 15, 0, 0, 0);
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*expected));
}

TEST_F(ToolsTest, OneUndoRemovesOneStroke) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {InBaseTile(editor, 20, 20), InBaseTile(editor, 40, 20)});
        Stroke(editor, {InBaseTile(editor, 20, 60), InBaseTile(editor, 40, 60),
                        InBaseTile(editor, 40, 70)});
        editor.Choose(commandUndo);
    });
    ExpectStroke<PencilStroke>({120, 170}, {120, 190});
}

TEST_F(ToolsTest, StrokesGrowWhileTheButtonIsDown) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        const ItemPlace from = InBaseTile(editor, 20, 20);
        const ItemPlace to = InBaseTile(editor, 60, 20);
        const RECT area = editor.Bounds(Items::drawingArea);
        int looks = 0;
        editor.WaitUntilPainted();
        int drawnBefore = Displays();
        editor.Drag(Items::drawingArea, {from, to}, [&] {
            WaitUntil("the stroke to be drawn", [&] { return Displays() > drawnBefore; });
            editor.Settle();
            drawnBefore = Displays();
            const host::Picture shown = editor.Grab();
            EXPECT_EQ(shown.Pixel(area.left + from.x, area.top + from.y)[0], 0);
            EXPECT_EQ(shown.Pixel(area.left + to.x, area.top + to.y)[0], looks == 0 ? 255 : 0);
            ++looks;
        });
        EXPECT_EQ(looks, 2);
    });
}

// --- Looking ---

TEST_F(ToolsTest, TheEyedropperTakesTheColourIntoTheHighByte) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'i', 8);
        // White, over black.
        const RECT wells = editor.Bounds(Items::colorWells);
        editor.Drag(Items::drawingArea, {InBaseTile(editor, 20, 20)}, [&] {
            WaitUntil("the well", [&] {
                return editor.Grab().Pixel(wells.left + 15, wells.top + 12)[0] == 255;
            });
        });
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
    });
    Preferences stored;
    ASSERT_TRUE(LoadPreferences(stored));
    EXPECT_EQ(stored.foreground, (RGBColor16{0xFF00, 0xFF00, 0xFF00}));
    EXPECT_EQ(stored.background, white16);
}

TEST_F(ToolsTest, TheHandScrolls) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int step = 0; step < 4; ++step) {
            editor.Press(Items::zoomIn);
        }
        const int across = editor.ScrollPosition(Items::horizontalScroll);
        const int down = editor.ScrollPosition(Items::verticalScroll);
        ChooseTool(gui, editor, 'h', 9);
        editor.WaitUntilPainted();
        editor.Point(Items::drawingArea, {200, 200});
        gui.PressMouse();
        WaitForCursor(cursorHandDrag);
        editor.Point(Items::drawingArea, {170, 212});
        WaitUntil("the view to scroll", [&] {
            return editor.ScrollPosition(Items::horizontalScroll) == across + 30 &&
                   editor.ScrollPosition(Items::verticalScroll) == down - 12;
        });
        gui.ReleaseMouse();
        editor.Settle();
        WaitForCursor(cursorTool + 9);
    });
}

TEST_F(ToolsTest, TheZoomToolZooms) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const RECT area = editor.Bounds(Items::drawingArea);
        const int view = area.right - area.left - 4 - 15;
        ChooseTool(gui, editor, 'z', 10);
        const auto waitForZoom = [&](int percent) {
            WaitUntil("zoom " + std::to_string(percent), [&] {
                return editor.ScrollPosition(Items::horizontalScroll) ==
                       (3 * width * percent / 100 - view) / 2;
            });
        };
        for (const int percent : {150, 200, 300}) {
            editor.Click(Items::drawingArea, {100, 100});
            waitForZoom(percent);
        }
        gui.HoldKey(VK_MENU);
        WaitForCursor(cursorZoomOut);
        for (const int percent : {200, 150}) {
            editor.Click(Items::drawingArea, {100, 100});
            waitForZoom(percent);
        }
        // Alt pressed and released without another key would go to the menu.
        gui.Chord({VK_CONTROL});
        gui.ReleaseKey(VK_MENU);
        WaitForCursor(cursorTool + 10);
    });
}

// --- The tile preview ---

TEST_F(ToolsTest, PaintingToolsDoNothingInThePreview) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {InBaseTile(editor, 60, 60), InBaseTile(editor, 70, 60)});
        SwitchTab(editor);
        for (int tool = 1; tool <= 8; ++tool) {
            ChooseTool(gui, editor, toolKeys[static_cast<std::size_t>(tool - 1)], tool);
            // From the black line of the tile to its white ground.
            editor.Drag(Items::drawingArea, {{62 + 2, 60 + 2}, {80 + 2, 70 + 2}},
                        [&] { gui.WaitUntilIdle(); });
            EXPECT_EQ(GuiDriver::CursorId(), arrowCursor) << tool;
        }
        editor.Choose(commandUndo);
        editor.Choose(commandUndo);
        // Hand and Zoom keep working.
        ChooseTool(gui, editor, 'h', 9);
        editor.Point(Items::drawingArea, {80, 80});
        WaitForCursor(cursorTool + 9);
        ChooseTool(gui, editor, 'z', 10);
        for (int click = 0; click < 5; ++click) {
            editor.Click(Items::drawingArea, {90, 90});
        }
        // At 4.0 a tile is 400 pixels high, and the view is not.
        WaitUntil("a scroll bar", [&] {
            SCROLLINFO info{sizeof info, SIF_RANGE, 0, 0, 0, 0, 0};
            GetScrollInfo(editor.Control(Items::verticalScroll), SB_CTL, &info);
            return info.nMax > 0;
        });
    });
    ExpectStroke<PencilStroke>({160, 210}, {160, 220});
    Preferences stored;
    ASSERT_TRUE(LoadPreferences(stored));
    EXPECT_EQ(stored.foreground, black16) << "not taken from the white ground";
}

/// The eraser's white would not show on white, nor the others' black on black.
TEST_F(ToolsTest, TheSwappedColoursDoNothingInThePreviewEither) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("x");
        SwitchTab(editor);
        for (int tool = 2; tool <= 7; ++tool) {
            ChooseTool(gui, editor, toolKeys[static_cast<std::size_t>(tool - 1)], tool);
            editor.Drag(Items::drawingArea, {{62, 60}, {80, 70}}, [&] { gui.WaitUntilIdle(); });
        }
    });
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*Blank()));
}

TEST_F(ToolsTest, HiddenButtonsDoNotTakeKeysInThePreview) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.ClickMiddle(Items::invert);
        gui.Type("p");
        WaitUntil("the preview", [&] { return editor.Value(Items::tab) == 2; });
        gui.Chord({VK_SPACE});
        gui.WaitUntilIdle();
        gui.Type("p");
        WaitUntil("the drawing", [&] { return editor.Value(Items::tab) == 1; });
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(width * height, Color(0, 0, 0)));
}

TEST_F(ToolsTest, TheTinyTileFillsThePreview) {
    selection = {10, 20, 11, 21};
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        editor.Choose(commandInvert);
        editor.WaitUntilPainted();
        const int drawnBefore = Displays();
        SwitchTab(editor);
        editor.WaitUntilPainted();
        EXPECT_LT(Displays() - drawnBefore, 1000);
        EXPECT_GT(Displays() - drawnBefore, 0);
    });
}

// --- Accelerators ---

TEST_F(ToolsTest, ControlAndALetterIsACommandAndNoTool) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {InBaseTile(editor, 20, 20), InBaseTile(editor, 60, 50)});
        for (const WORD key : {WORD{'B'}, WORD{'I'}, WORD{'H'}, WORD{'J'}}) {
            editor.WaitUntilPainted();
            const int drawnBefore = Displays();
            gui.Chord({VK_CONTROL, key});
            WaitUntil("the command", [&] { return Displays() > drawnBefore; });
        }
        EXPECT_EQ(editor.Value(Items::toolPalette), 4);
        EXPECT_EQ(editor.Value(Items::viewPalette), 0);
    });
    const std::unique_ptr<PaintClass> expected = Blank();
    {
        PencilStroke stroke(*expected);
        stroke.Paint({120, 170}, {150, 210});
    }
    expected->AddBump();
    expected->Invert();
    expected->Flip(1);
    expected->Flip(0);
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*expected));
}

TEST_F(ToolsTest, ControlOpensDialogs) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog&) {
        const auto open = [&](WORD key, int dialogId) {
            gui.Chord({VK_CONTROL, key});
            const DrivenDialog dialog = gui.WaitFor(dialogId);
            dialog.PressToOpen(cancelItem);
            dialog.WaitUntilClosed();
        };
        open('D', editDialog);
        gui.Chord({VK_CONTROL, 'N'});
        const DrivenDialog opening = gui.WaitForTitle("New");
        opening.PressToOpen(cancelItem);
        opening.WaitUntilClosed();
        gui.Chord({VK_CONTROL, 'O'});
        const DrivenDialog files = gui.WaitForTitle("Open");
        files.PressToOpen(cancelItem);
        files.WaitUntilClosed();
    });
}

/// The buttons are out of sight there.
TEST_F(ToolsTest, ControlAndALetterWorkInThePreview) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {InBaseTile(editor, 20, 20), InBaseTile(editor, 60, 50)});
        for (const auto& [item, dialogId] :
             {std::pair<int, int>{Items::skew, skewDialog}, {Items::blur, blurDialog}}) {
            editor.PressToOpen(item);
            const DrivenDialog dialog = gui.WaitFor(dialogId);
            dialog.PressToOpen(okItem);
            dialog.WaitUntilClosed();
        }
        SwitchTab(editor);
        for (const char key : {'B', 'I', 'H', 'J', 'E', 'F', 'I', 'Z'}) {
            editor.WaitUntilPainted();
            const int drawnBefore = Displays();
            gui.Chord({VK_CONTROL, static_cast<WORD>(key)});
            WaitUntil(std::string("Ctrl+") + key, [&] { return Displays() > drawnBefore; });
        }
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
        for (const auto& [key, title] : {std::pair<char, const char*>{'N', "New"},
                                         {'D', "Edit"},
                                         {'O', "Open"},
                                         {'S', "Save As"}}) {
            gui.Chord({VK_CONTROL, static_cast<WORD>(key)});
            const DrivenDialog dialog = gui.WaitForTitle(title);
            dialog.PressToOpen(cancelItem);
            dialog.WaitUntilClosed();
        }
        EXPECT_EQ(editor.Value(Items::tab), 2);
        EXPECT_EQ(editor.Value(Items::toolPalette), 4) << "no letter chose a tool";
    });
    const std::unique_ptr<PaintClass> expected = Blank();
    {
        PencilStroke stroke(*expected);
        stroke.Paint({120, 170}, {150, 210});
    }
    RunSkew(*expected, {});
    RunBlur(*expected, {});
    expected->AddBump();
    expected->Invert();
    expected->Flip(1);
    expected->Flip(0);
    RunSkew(*expected, {});
    RunBlur(*expected, {});
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(*expected));
}

TEST_F(ToolsTest, TheKeypadZooms) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const RECT area = editor.Bounds(Items::drawingArea);
        const int view = area.right - area.left - 4 - 15;
        const auto waitForZoom = [&](int percent) {
            WaitUntil("zoom " + std::to_string(percent), [&] {
                return editor.ScrollPosition(Items::horizontalScroll) ==
                       (3 * width * percent / 100 - view) / 2;
            });
        };
        gui.Chord({VK_CONTROL, VK_ADD});
        gui.Chord({VK_CONTROL, VK_ADD});
        waitForZoom(200);
        gui.Chord({VK_CONTROL, VK_SUBTRACT});
        waitForZoom(150);
        gui.Chord({VK_CONTROL, '0'});
        waitForZoom(100);
    });
}

}  // namespace

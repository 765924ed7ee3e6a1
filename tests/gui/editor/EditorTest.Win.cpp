// The editor's commands, readouts, menu and keys.
#include "files/Preferences.h"
#include "paint/EffectRun.h"
#include "resources/Ids.h"
#include "resources/Strings.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/gui/ShownView.Win.h"
#include "tests/support/FileSource.h"
#include "tests/support/Pictures.h"

namespace {

using Items = TextureItems;

std::vector<Pixel> All(const Pixel color) {
    return std::vector<Pixel>(PluginRunTest::width * PluginRunTest::height, color);
}

class EditorTest : public PluginRunTest {
  protected:
    /// A texture with a black pixel that has no mirror.
    static void DrawDot(const GuiDriver& gui, const DrivenDialog& editor, ItemPlace place) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {place});
    }
};

TEST_F(EditorTest, StartsWithItsDefaults) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        EXPECT_EQ(editor.Title(), "Zandermolite");
        EXPECT_EQ(editor.Text(Items::name), "Untitled 1");
        EXPECT_EQ(editor.Text(Items::width), "150 pixel");
        EXPECT_EQ(editor.Text(Items::height), "100 pixel");
        EXPECT_EQ(editor.Text(Items::resolution), "72 dpi");
        EXPECT_EQ(editor.Text(Items::size), "58 kB");
        EXPECT_EQ(editor.Value(Items::toolPalette), 1);
        EXPECT_EQ(editor.Value(Items::viewPalette), 0);
        EXPECT_EQ(editor.Value(Items::sizeMarks), 1);
        EXPECT_EQ(editor.Value(Items::tab), 1);
        EXPECT_FALSE(editor.IsEnabled(Items::repeatEffect));
        EXPECT_FALSE(editor.IsEnabled(Items::repeatFilter));
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
        EXPECT_FALSE(editor.IsMenuChecked(commandNewAtLaunch));
    });
}

TEST_F(EditorTest, NothingButTheRepeatsIsDisabled) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        for (int item = Items::newTexture; item <= Items::combine; ++item) {
            const bool isRepeat = item == Items::repeatEffect || item == Items::repeatFilter;
            EXPECT_EQ(editor.IsEnabled(item), !isRepeat) << item;
        }
        for (const int command : {commandSkew, commandMosaic, commandCombine, commandTile,
                                  commandStampSettings, commandFillSettings}) {
            EXPECT_TRUE(editor.IsMenuEnabled(command)) << command;
        }
    });
}

TEST_F(EditorTest, InvertUndoRedo) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Items::invert);
        gui.Chord({VK_CONTROL, 'Z'});
        WaitUntil("Redo", [&] { return editor.MenuText(commandUndo) == "Redo\tCtrl+Z"; });
        gui.Chord({VK_CONTROL, 'Z'});
        WaitUntil("Undo", [&] { return editor.MenuText(commandUndo) == "Undo\tCtrl+Z"; });
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(150 * 100, Color(0, 0, 0)));
}

TEST_F(EditorTest, AnOperationAfterAnUndoLosesTheRedo) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        editor.Press(Items::invert);
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
        editor.Press(Items::flipVertical);
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
        editor.Choose(commandUndo);
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(150 * 100, Color(255, 255, 255)));
}

/// Strokes leave other alpha bytes than the texture began with.
TEST_F(EditorTest, UndoTwiceLeavesEveryByteAsItWas) {
    const auto draw = [&](const GuiDriver& gui, const DrivenDialog& editor) {
        DrawDot(gui, editor, PlaceOfPixel(editor, width + 3, height + 5));
        editor.Press(Items::addBump);
        ChooseTool(gui, editor, 'b', 2);
        Stroke(editor, {PlaceOfPixel(editor, width + 40, height + 30)});
    };
    RunEditor(draw);
    const std::vector<Pixel> once = PixelsOf(*Applied());
    picture = before;
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        draw(gui, editor);
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
    });
    EXPECT_EQ(PixelsOf(*Applied()), once);
    EXPECT_NE(once, std::vector<Pixel>(once.size(), once.front()));
}

/// The host has no memory for the store alone, and there is no file.
TEST_F(EditorTest, WithoutAStoreUndoDoesNothing) {
    static int stores;
    stores = 0;
    const FileSource noFiles([] {
        ++stores;
        return FilePointer();
    });
    constexpr int allocationOfTheStore = 3;
    settings.failAllocation = allocationOfTheStore;
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        EXPECT_EQ(stores, 1);
        DrawDot(gui, editor, PlaceOfPixel(editor, width + 3, height + 5));
        editor.Press(Items::invert);
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z");
        editor.Choose(commandUndo);
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
        editor.Choose(commandUndo);
        // The dialog cannot take an Apply back either.
        editor.PressToOpen(Items::blur);
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        blur.Press(ApplyItems::apply);
        blur.PressToOpen(cancelItem);
        blur.WaitUntilClosed();
    });
    PaintClass expected(width, height);
    expected.SetRGB(3, 5, 0, 0, 0);
    expected.Invert();
    RunBlur(expected, {});
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
}

TEST_F(EditorTest, CommandsWithoutADialog) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("n");
        WaitUntil("the pencil", [&] { return editor.Value(Items::toolPalette) == 4; });
        Stroke(editor, {PlaceOfPixel(editor, 150 + 3, 100 + 5)});
        editor.Choose(commandFlipHorizontal);
        editor.Choose(commandFlipVertical);
        editor.Choose(commandInvert);
    });
    PaintClass expected(150, 100);
    expected.SetRGB(3, 5, 0, 0, 0);
    expected.Flip(1);
    expected.Flip(0);
    expected.Invert();
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
}

TEST_F(EditorTest, ClearIsWhiteWhateverTheColours) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("x");
        gui.WaitUntilIdle();
        editor.Press(Items::invert);
        editor.Choose(commandClear);
        EXPECT_EQ(editor.MenuText(commandUndo), "Undo\tCtrl+Z");
    });
    EXPECT_EQ(ColorsOf(*Applied()), All(white));
    Preferences stored;
    EXPECT_TRUE(LoadPreferences(stored));
    EXPECT_EQ(stored.background, black16) << "the keys came before";
}

TEST_F(EditorTest, ClearCanBeUndone) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        editor.Press(Items::invert);
        editor.Choose(commandClear);
        editor.Choose(commandUndo);
    });
    EXPECT_EQ(ColorsOf(*Applied()), All(black));
}

TEST_F(EditorTest, RepeatCommandsWaitForSomethingToRepeat) {
    platformServices.reportFault = [](std::int16_t id, const char* file, int line) {
        Log().faults.push_back({id, file, line});
    };
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Press(Items::invert);
        editor.Choose(commandUndo);
        editor.Choose(commandRepeatEffect);
        editor.Choose(commandRepeatFilter);
        gui.Chord({VK_CONTROL, 'E'});
        gui.Chord({VK_CONTROL, 'F'});
        gui.WaitUntilIdle();
        EXPECT_EQ(editor.MenuText(commandUndo), "Redo\tCtrl+Z") << "nothing was begun";
        editor.Choose(commandUndo);
    });
    EXPECT_EQ(ColorsOf(*Applied()), All(black));
    EXPECT_TRUE(Log().faults.empty());
}

/// Each kind by its own command and its own key.
TEST_F(EditorTest, TheRepeatCommandsRepeatTheirOwnKind) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(Items::blur);
        gui.WaitFor(blurDialog).PressToOpen(okItem);
        WaitUntil("the filter", [&] { return editor.IsEnabled(Items::repeatFilter); });
        DrawDot(gui, editor, PlaceOfPixel(editor, width + 3, height + 5));
        editor.Choose(commandRepeatEffect);
        gui.Chord({VK_CONTROL, 'E'});
        gui.WaitUntilIdle();
        EXPECT_EQ(ShownView(editor).At(PlaceOfPixel(editor, width + 3, height + 5)), black);
        editor.Choose(commandRepeatFilter);
        gui.Chord({VK_CONTROL, 'F'});
        gui.WaitUntilIdle();
    });
    PaintClass expected(width, height);
    RunBlur(expected, BlurParams{});
    expected.SetRGB(3, 5, 0, 0, 0);
    RunBlur(expected, BlurParams{});
    RunBlur(expected, BlurParams{});
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
}

TEST_F(EditorTest, TheRepeatRunsTheStoredRecord) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(Items::lines);
        gui.WaitFor(linesDialog).PressToOpen(okItem);
        WaitUntil("the effect", [&] { return editor.IsEnabled(Items::repeatEffect); });
        Log().clock = testClock + 1;
        editor.Press(Items::repeatEffect);
    });
    PaintClass expected(150, 100);
    RunLines(expected, LinesParams{});
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
}

TEST_F(EditorTest, ThePreviewTakesThePanelsPlace) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        const RECT area = editor.Bounds(Items::drawingArea);
        const RECT button = editor.Bounds(Items::lines);
        const RECT panel = editor.Bounds(Items::toolPanel);
        const RECT zoom = editor.Bounds(Items::zoomIn);
        const int aside = panel.right - panel.left;
        SwitchTab(editor);
        EXPECT_EQ(editor.Bounds(Items::drawingArea).left, area.left - aside);
        EXPECT_EQ(editor.Bounds(Items::drawingArea).right, area.right);
        EXPECT_EQ(editor.Bounds(Items::zoomIn).left, zoom.left - aside);
        EXPECT_EQ(editor.Bounds(Items::lines).left, button.left + 0x1000);
        EXPECT_EQ(editor.Bounds(Items::lines).top, button.top + 0x1000);
        // Commands still work there.
        editor.Choose(commandInvert);
        SwitchTab(editor);
        EXPECT_EQ(editor.Bounds(Items::drawingArea).left, area.left);
        EXPECT_EQ(editor.Bounds(Items::lines).left, button.left);
    });
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(150 * 100, Color(0, 0, 0)));
}

TEST_F(EditorTest, TheHelpReadoutFollowsThePointer) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        int items = 0;
        for (int item = 1; item <= 63; ++item) {
            const std::string text = StringText(static_cast<StringId>(16000 + item));
            if (text.empty()) {
                continue;
            }
            ++items;
            const RECT bounds = editor.Bounds(item);
            const ItemPlace middle{(bounds.right - bounds.left) / 2,
                                   (bounds.bottom - bounds.top) / 2};
            // The frame's middle is the readout.
            editor.Point(item, item == Items::helpFrame ? ItemPlace{1, 1} : middle);
            WaitUntil("the help of item " + std::to_string(item),
                      [&] { return editor.Text(Items::helpReadout) == text; });
        }
        EXPECT_EQ(items, 48);
    });
}

TEST_F(EditorTest, TheHelpReadoutKnowsThePartsOfPalettesAndWells) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        const auto expectHelp = [&](int item, ItemPlace place, int stringId) {
            editor.Point(item, place);
            const std::string text = StringText(static_cast<StringId>(stringId));
            WaitUntil(text, [&] { return editor.Text(Items::helpReadout) == text; });
        };
        const auto cell = [&](int item, int columns, int rows, int number) -> ItemPlace {
            const RECT bounds = editor.Bounds(item);
            return {(bounds.right - bounds.left) / columns * (number % columns) + 5,
                    (bounds.bottom - bounds.top) / rows * (number / columns) + 5};
        };
        for (int number = 0; number < 8; ++number) {
            expectHelp(Items::toolPalette, cell(Items::toolPalette, 2, 4, number), 16101 + number);
        }
        for (int number = 0; number < 2; ++number) {
            expectHelp(Items::viewPalette, cell(Items::viewPalette, 2, 1, number), 16109 + number);
        }
        const RECT wells = editor.Bounds(Items::colorWells);
        expectHelp(Items::colorWells, {12, 10}, 16111);
        expectHelp(Items::colorWells,
                   {wells.right - wells.left - 15, wells.bottom - wells.top - 12}, 16112);
        expectHelp(Items::switchColors, {3, 3}, 16113);
        expectHelp(Items::defaultColors, {3, 3}, 16114);
    });
}

TEST_F(EditorTest, TheLaunchEntryIsStored) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        editor.Choose(commandNewAtLaunch);
        EXPECT_TRUE(editor.IsMenuChecked(commandNewAtLaunch));
    });
    EXPECT_TRUE(ReadLaunchFlag());
}

TEST_F(EditorTest, AResizeIsKeptForTheNextRun) {
    RECT after;
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        const RECT readout = editor.Bounds(Items::helpReadout);
        const RECT area = editor.Bounds(Items::drawingArea);
        RECT frame;
        GetWindowRect(editor.Window(), &frame);
        SetWindowPos(editor.Window(), nullptr, 5, 5, frame.right - frame.left + 40,
                     frame.bottom - frame.top + 30, SWP_NOZORDER);
        editor.Settle();
        EXPECT_EQ(editor.Bounds(Items::helpReadout).right, readout.right + 40);
        EXPECT_EQ(editor.Bounds(Items::helpReadout).bottom - editor.Bounds(Items::helpReadout).top,
                  readout.bottom - readout.top);
        EXPECT_EQ(editor.Bounds(Items::drawingArea).right, area.right + 40);
        EXPECT_EQ(editor.Bounds(Items::drawingArea).bottom, area.bottom + 30);
        GetWindowRect(editor.Window(), &after);
    });
    picture = before;
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        RECT frame;
        GetWindowRect(editor.Window(), &frame);
        EXPECT_TRUE(EqualRect(&frame, &after));
        editor.PressToOpen(okItem);
    });
}

}  // namespace

// The editor's commands, readouts, menu and keys.
#include <algorithm>

#include "files/Preferences.h"
#include "paint/EffectRun.h"
#include "resources/Ids.h"
#include "resources/Strings.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/Pictures.h"

namespace {

using Items = TextureItems;

constexpr int width = 150;
constexpr int height = 100;

std::vector<Pixel> All(const Pixel color) {
    return std::vector<Pixel>(width * height, color);
}

const Pixel white = Color(255, 255, 255);
const Pixel black = Color(0, 0, 0);

/// The drawing area as it is on the screen.
class ShownView {
  public:
    explicit ShownView(const DrivenDialog& editor)
        : picture(editor.Grab()), area(editor.Bounds(Items::drawingArea)) {}

    Pixel At(ItemPlace place) const {
        const std::uint8_t* const pixel = picture.Pixel(static_cast<int>(area.left) + place.x,
                                                        static_cast<int>(area.top) + place.y);
        return Color(pixel[0], pixel[1], pixel[2]);
    }
    /// How many pixels of the row (or column) through the view's middle are not its grey ground.
    int Across() const { return Count(area.right - area.left, area.bottom - area.top, true); }
    int Down() const { return Count(area.bottom - area.top, area.right - area.left, false); }

  private:
    int Count(LONG length, LONG breadth, bool across) const {
        constexpr int frame = 2;
        constexpr int scrollBar = 15;
        const int middle = static_cast<int>(breadth - scrollBar) / 2;
        int count = 0;
        for (int i = frame; i < length - frame - scrollBar; ++i) {
            const Pixel pixel = At(across ? ItemPlace{i, middle} : ItemPlace{middle, i});
            count += pixel != Color(0x9C, 0x9C, 0x9C) ? 1 : 0;
        }
        return count;
    }

    host::Picture picture;
    RECT area;
};

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

TEST_F(EditorTest, TheClipboardCommandsStandThereDisabled) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const std::pair<int, std::string> commands[] = {{commandCut, "Cu&t\tCtrl+X"},
                                                        {commandCopy, "&Copy\tCtrl+C"},
                                                        {commandPaste, "&Paste\tCtrl+V"}};
        DrawDot(gui, editor, PlaceOfPixel(editor, width + 3, height + 5));
        for (const WORD key : {WORD{'X'}, WORD{'C'}, WORD{'V'}}) {
            gui.Chord({VK_CONTROL, key});
        }
        gui.WaitUntilIdle();
        // Opening a menu brings its entries up to date.
        SendMessageA(editor.Window(), WM_INITMENUPOPUP,
                     reinterpret_cast<WPARAM>(GetSubMenu(GetMenu(editor.Window()), 1)), 1);
        for (const auto& [command, text] : commands) {
            EXPECT_EQ(editor.MenuText(command), text);
            EXPECT_FALSE(editor.IsMenuEnabled(command)) << text;
        }
        EXPECT_TRUE(editor.IsMenuEnabled(commandClear));
        EXPECT_EQ(editor.Value(Items::toolPalette), 4) << "V alone is a tool";
    });
    PaintClass expected(width, height);
    expected.SetRGB(3, 5, 0, 0, 0);
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
    Preferences stored;
    EXPECT_TRUE(LoadPreferences(stored));
    EXPECT_EQ(stored.foreground, black16) << "X alone swaps the colours";
}

TEST_F(EditorTest, WhatHasNoDialogYetIsDisabled) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        for (const int item : {Items::shapes, Items::skew, Items::sharpen, Items::mosaic,
                               Items::tile, Items::combine}) {
            EXPECT_FALSE(editor.IsEnabled(item)) << item;
        }
        for (const int command : {commandSkew, commandMosaic, commandCombine, commandTile,
                                  commandStampSettings, commandFillSettings}) {
            EXPECT_FALSE(editor.IsMenuEnabled(command)) << command;
        }
        for (const int item : {Items::lines, Items::blur, Items::addBump, Items::invert,
                               Items::flipHorizontal, Items::flipVertical}) {
            EXPECT_TRUE(editor.IsEnabled(item)) << item;
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

TEST_F(EditorTest, ZoomWalksItsLadderAndStopsAtTheEnds) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        // Without the marks, which reach beyond a small texture.
        gui.Type("m");
        WaitUntil("no marks", [&] { return editor.Value(Items::sizeMarks) == 0; });
        const RECT area = editor.Bounds(Items::drawingArea);
        const int viewAcross = static_cast<int>(area.right - area.left) - 4 - 15;
        const int viewDown = static_cast<int>(area.bottom - area.top) - 4 - 15;
        const auto expectZoom = [&](double zoom) {
            const ShownView shown(editor);
            const auto tiles = [zoom](int side) { return 3 * static_cast<int>(side * zoom); };
            EXPECT_EQ(shown.Across(), std::min(tiles(width), viewAcross)) << zoom;
            EXPECT_EQ(shown.Down(), std::min(tiles(height), viewDown)) << zoom;
            // What does not fit can be scrolled, and stands in the middle.
            const auto middle = [zoom](int side, int view) {
                return std::max(static_cast<int>(side * zoom * 3) - view, 0) / 2;
            };
            EXPECT_EQ(editor.ScrollPosition(Items::horizontalScroll), middle(width, viewAcross))
                << zoom;
            EXPECT_EQ(editor.ScrollPosition(Items::verticalScroll), middle(height, viewDown))
                << zoom;
            EXPECT_EQ(editor.IsEnabled(Items::horizontalScroll), middle(width, viewAcross) > 0);
            EXPECT_EQ(editor.IsEnabled(Items::verticalScroll), middle(height, viewDown) > 0);
        };
        expectZoom(1.0);
        for (const double zoom : {1.5, 2.0, 3.0, 4.0, 4.0}) {
            editor.Choose(commandZoomIn);
            expectZoom(zoom);
        }
        for (const double zoom : {3.0, 2.0, 1.5, 1.0, 0.75, 0.5, 0.33, 0.25, 0.25}) {
            editor.Press(Items::zoomOut);
            expectZoom(zoom);
        }
        editor.Press(Items::zoomIn);
        expectZoom(0.33);
        editor.Choose(commandActualPixels);
        expectZoom(1.0);
        editor.Choose(commandZoomOut);
        expectZoom(0.75);
    });
}

TEST_F(EditorTest, SizeMarksAndViewsByKeys) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("m");
        WaitUntil("no marks", [&] { return editor.Value(Items::sizeMarks) == 0; });
        gui.Type("P");
        WaitUntil("the preview", [&] { return editor.Value(Items::tab) == 2; });
        gui.Type("M");
        WaitUntil("marks", [&] { return editor.Value(Items::sizeMarks) == 1; });
        EXPECT_FALSE(IsWindowVisible(editor.Control(Items::sizeMarks)));
        gui.Type("p");
        WaitUntil("the drawing", [&] { return editor.Value(Items::tab) == 1; });
        EXPECT_TRUE(IsWindowVisible(editor.Control(Items::sizeMarks)));
    });
}

TEST_F(EditorTest, SizeMarksStandAtTheCornersOfTheMiddleTile) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const ItemPlace corner = PlaceOfPixel(editor, width, height);
        const auto at = [&](const ShownView& shown, int right, int down) {
            return shown.At({corner.x + right, corner.y + down});
        };
        // From 8 pixels before the corner on, 16 long; at its sides, a pixel's width.
        const auto expectMarks = [&](Pixel ground, Pixel line, Pixel side) {
            const ShownView shown(editor);
            for (const bool across : {true, false}) {
                const auto along = [&](int place, int aside) {
                    return across ? at(shown, place, aside) : at(shown, aside, place);
                };
                for (int place = -24; place <= -9; ++place) {
                    EXPECT_EQ(along(place, 0), line) << place;
                    EXPECT_EQ(along(place, -1), side) << place;
                    EXPECT_EQ(along(place, 1), side) << place;
                    EXPECT_EQ(along(place, 2), ground) << place;
                }
                EXPECT_EQ(along(-25, 0), ground);
                EXPECT_EQ(along(-8, 0), ground);
                const int other = across ? width : height;
                EXPECT_EQ(along(other + 7, 0), ground);
                EXPECT_EQ(along(other + 8, 0), line);
                EXPECT_EQ(along(other + 23, 0), line);
                EXPECT_EQ(along(other + 24, 0), ground);
            }
        };
        expectMarks(white, black, white);
        editor.Press(Items::invert);
        expectMarks(black, black, white);
        editor.Press(Items::sizeMarks);
        expectMarks(black, black, black);
        gui.Type("m");
        WaitUntil("marks", [&] { return editor.Value(Items::sizeMarks) == 1; });
        expectMarks(black, black, white);
    });
}

TEST_F(EditorTest, ThePreviewShowsTheTileFromTheCornerOnAndItsMarks) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        DrawDot(gui, editor, PlaceOfPixel(editor, width + 30, height + 50));
        SwitchTab(editor);
        constexpr int frame = 2;
        const auto at = [](const ShownView& shown, int x, int y) {
            return shown.At({frame + x, frame + y});
        };
        const auto expectTiles = [&](bool marked) {
            const ShownView shown(editor);
            for (const auto& [left, top] :
                 {std::pair{0, 0}, {width, 0}, {0, height}, {width, height}}) {
                EXPECT_EQ(at(shown, left + 30, top + 50), black) << left << ", " << top;
                EXPECT_EQ(at(shown, left + 31, top + 50), white);
                EXPECT_EQ(at(shown, left + 30, top + 49), white);
            }
            for (int reach = -8; reach <= 8; ++reach) {
                EXPECT_EQ(at(shown, width + reach, height), marked ? black : white) << reach;
                EXPECT_EQ(at(shown, width, height + reach), marked ? black : white) << reach;
            }
            for (const int beyond : {-9, 9}) {
                EXPECT_EQ(at(shown, width + beyond, height), white);
                EXPECT_EQ(at(shown, width, height + beyond), white);
            }
        };
        expectTiles(true);
        gui.Type("m");
        WaitUntil("no marks", [&] { return editor.Value(Items::sizeMarks) == 0; });
        expectTiles(false);
    });
}

/// The command of the entry with this text in a menu or one below it; 0 for none.
int CommandNamed(HMENU menu, const std::string& text) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        char entry[256] = "";
        GetMenuStringA(menu, static_cast<UINT>(i), entry, sizeof entry, MF_BYPOSITION);
        if (const HMENU below = GetSubMenu(menu, i); below != nullptr) {
            if (const int command = CommandNamed(below, text); command != 0) {
                return command;
            }
        } else if (entry == text) {
            return static_cast<int>(GetMenuItemID(menu, i));
        }
    }
    return 0;
}

TEST_F(EditorTest, TheEntriesOfTheMenuOpenTheirDialogs) {
    static int abouts;
    abouts = 0;
    platformServices.showAbout = [] { ++abouts; };
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const HMENU menu = GetMenu(editor.Window());
        const std::pair<const char*, std::string> dialogs[] = {
            {"&New...\tCtrl+N", "New"},
            {"&Edit...\tCtrl+D", CaptionOf(editDialog)},
            {"&Open...\tCtrl+O", "Open"},
            {"&Save...\tCtrl+S", "Save As"},
            {"&Lines...", CaptionOf(linesDialog)},
            {"&Blur...", CaptionOf(blurDialog)},
            {"&Brush...", CaptionOf(brushDialog)}};
        for (const auto& [entry, title] : dialogs) {
            editor.ChooseToOpen(CommandNamed(menu, entry));
            const DrivenDialog dialog = gui.WaitForTitle(title);
            dialog.PressToOpen(cancelItem);
            dialog.WaitUntilClosed();
        }
        editor.Choose(CommandNamed(menu, "&About Zandermolite..."));
        EXPECT_EQ(abouts, 1);
    });
}

TEST_F(EditorTest, AnEntryIsEnabledWhenItsButtonIs) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        const std::pair<const char*, int> entries[] = {
            {"&Lines...", Items::lines},
            {"&Shapes...", Items::shapes},
            {"&Drops...", Items::drops},
            {"D&ividers...", Items::dividers},
            {"&Waves...", Items::waves},
            {"&Twirls...", Items::twirls},
            {"S&kew...", Items::skew},
            {"&Combine...", Items::combine},
            {"Til&e...", Items::tile},
            {"&Blur...", Items::blur},
            {"&Sharpen...", Items::sharpen},
            {"&Noise...", Items::noise},
            {"S&aturation...", Items::saturation},
            {"Brightness / &Contrast...", Items::brightContr},
            {"A&dd Color...", Items::addColor},
            {"&Mosaic...", Items::mosaic}};
        for (const auto& [text, item] : entries) {
            const int command = CommandNamed(GetMenu(editor.Window()), text);
            EXPECT_EQ(editor.IsMenuEnabled(command), editor.IsEnabled(item)) << text;
        }
    });
}

TEST_F(EditorTest, TheOtherEntriesOfTheMenuDoWhatTheySay) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const auto choose = [&](const char* text) {
            editor.Choose(CommandNamed(GetMenu(editor.Window()), text));
        };
        DrawDot(gui, editor, PlaceOfPixel(editor, width + 3, height + 5));
        choose("C&lear");
        choose("Undo\tCtrl+Z");
        choose("Add Bum&p\tCtrl+B");
        choose("&Invert\tCtrl+I");
        choose("Flip &Horizontal\tCtrl+H");
        choose("Flip &Vertical\tCtrl+J");
        const RECT area = editor.Bounds(Items::drawingArea);
        const int view = static_cast<int>(area.right - area.left) - 4 - 15;
        const auto expectZoom = [&](int percent) {
            EXPECT_EQ(editor.ScrollPosition(Items::horizontalScroll),
                      std::max(3 * width * percent / 100 - view, 0) / 2);
        };
        choose("Zoom &in\tCtrl++");
        choose("Zoom &in\tCtrl++");
        choose("Zoom &in\tCtrl++");
        expectZoom(300);
        choose("Zoom &out\tCtrl+-");
        expectZoom(200);
        choose("&Actual Pixels\tCtrl+0");
        expectZoom(100);
        choose("&Show New dialog at launch");
    });
    PaintClass expected(width, height);
    expected.SetRGB(3, 5, 0, 0, 0);
    expected.AddBump();
    expected.Invert();
    expected.Flip(1);
    expected.Flip(0);
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
    EXPECT_TRUE(ReadLaunchFlag());
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

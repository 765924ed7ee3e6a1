// The menu bar: each entry, found by its text.
#include <algorithm>

#include "files/Preferences.h"
#include "framework/help/Help.Win.h"
#include "resources/Ids.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/Pictures.h"

namespace {

using Items = TextureItems;

class MenuTest : public PluginRunTest {};

TEST_F(MenuTest, TheClipboardCommandsStandThereDisabled) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const std::pair<int, std::string> commands[] = {{commandCut, "Cu&t\tCtrl+X"},
                                                        {commandCopy, "&Copy\tCtrl+C"},
                                                        {commandPaste, "&Paste\tCtrl+V"}};
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {PlaceOfPixel(editor, width + 3, height + 5)});
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

TEST_F(MenuTest, TheEntriesOfTheMenuOpenTheirDialogs) {
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

TEST_F(MenuTest, AnEntryIsEnabledWhenItsButtonIs) {
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

TEST_F(MenuTest, HelpIsThereWhereItsPagesAre) {
    const FileTest before = isHelpThere;
    static bool isThere;
    isHelpThere = [](const char*) { return isThere; };
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        for (const bool answer : {true, false}) {
            isThere = answer;
            // Opening a menu brings its entries up to date.
            SendMessageA(editor.Window(), WM_INITMENUPOPUP,
                         reinterpret_cast<WPARAM>(GetSubMenu(GetMenu(editor.Window()), 0)), 0);
            EXPECT_EQ(editor.IsMenuEnabled(commandHelp), answer);
        }
    });
    isHelpThere = before;
}

TEST_F(MenuTest, TheOtherEntriesOfTheMenuDoWhatTheySay) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const auto choose = [&](const char* text) {
            editor.Choose(CommandNamed(GetMenu(editor.Window()), text));
        };
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {PlaceOfPixel(editor, width + 3, height + 5)});
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

}  // namespace

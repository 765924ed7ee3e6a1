// The colour wells: clicks, keys, the system's colour dialog.
#include "editor/ColorPicker.h"
#include "files/Preferences.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/Pictures.h"

namespace {

using Items = TextureItems;

constexpr ItemPlace inForeground{15, 12};

class WellsTest : public PluginRunTest {
  protected:
    /// In the upright bar of the background well.
    static ItemPlace InBackground(const DrivenDialog& editor) {
        const RECT bounds = editor.Bounds(Items::colorWells);
        return {bounds.right - bounds.left - 15, bounds.bottom - bounds.top - 12};
    }

    /// The screen's colour at a place in the wells.
    static std::array<int, 3> Shown(const DrivenDialog& editor, ItemPlace place) {
        const RECT bounds = editor.Bounds(Items::colorWells);
        const host::Picture picture = editor.Grab();
        const std::uint8_t* const pixel =
            picture.Pixel(bounds.left + place.x, bounds.top + place.y);
        return {pixel[0], pixel[1], pixel[2]};
    }

    static void WaitForColors(const DrivenDialog& editor, const std::array<int, 3>& foreground,
                              const std::array<int, 3>& background) {
        WaitUntil("the colours", [&] {
            return Shown(editor, inForeground) == foreground &&
                   Shown(editor, InBackground(editor)) == background;
        });
    }

    static void ChooseInDialog(const GuiDriver& gui, const std::array<const char*, 3>& color,
                               int button) {
        constexpr int redField = 706;
        const DrivenDialog dialog = gui.WaitForTitle("Color");
        for (int i = 0; i < 3; ++i) {
            dialog.SetText(redField + i, color[static_cast<std::size_t>(i)]);
        }
        dialog.PressToOpen(button);
        dialog.WaitUntilClosed();
    }

    static void ExpectStored(const RGBColor16& foreground, const RGBColor16& background) {
        Preferences stored;
        EXPECT_TRUE(LoadPreferences(stored));
        EXPECT_EQ(stored.foreground, foreground);
        EXPECT_EQ(stored.background, background);
    }
};

constexpr std::array<int, 3> blackWell = {0, 0, 0};
constexpr std::array<int, 3> whiteWell = {255, 255, 255};

TEST_F(WellsTest, WithoutColoursOrADialogThereAreNone) {
    platformServices.reportFault = [](std::int16_t id, const char* file, int line) {
        Log().faults.push_back({id, file, line});
    };
    filterRecord = &record;
    SmallPSDialog dialog(sharpenDialog);
    RGBColor16 color{};
    const auto assertionWith = [](RGBColor16* f, RGBColor16* b, SmallPSDialog* d) {
        return AssertionOf([=] { ColorPicker(f, b, ColorWells{}, d); });
    };
    EXPECT_EQ(assertionWith(nullptr, &color, &dialog), "ColorPicker / Zeile 29 !(f != NULL)");
    EXPECT_EQ(assertionWith(&color, nullptr, &dialog), "ColorPicker / Zeile 30 !(b != NULL)");
    EXPECT_EQ(assertionWith(&color, &color, nullptr), "ColorPicker / Zeile 31 !(d != NULL)");
    errorCell = 0;
}

TEST_F(WellsTest, KeysSwapAndReset) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        WaitForColors(editor, blackWell, whiteWell);
        gui.Type("x");
        WaitForColors(editor, whiteWell, blackWell);
        gui.Type("X");
        WaitForColors(editor, blackWell, whiteWell);
        gui.Type("x");
        WaitForColors(editor, whiteWell, blackWell);
        gui.Type("d");
        WaitForColors(editor, blackWell, whiteWell);
    });
    ExpectStored(black16, white16);
}

/// The wells lie in their item as `WellsIn` says.
TEST_F(WellsTest, BothWellsHaveABlackOutline) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("x");
        WaitForColors(editor, whiteWell, blackWell);
        const RECT bounds = editor.Bounds(Items::colorWells);
        const int right = bounds.right - bounds.left;
        const int bottom = bounds.bottom - bounds.top;
        const host::Picture shown = editor.Grab();
        const auto isBlack = [&](int x, int y) {
            const std::uint8_t* const pixel = shown.Pixel(bounds.left + x, bounds.top + y);
            return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
        };
        // Two pixels outside the white foreground: 7 from the top, 9 from the left.
        const int last = right - 22 + 1;
        const int lowest = bottom - 20 + 1;
        for (int x = 7; x <= last; ++x) {
            EXPECT_TRUE(isBlack(x, 5)) << x;
            EXPECT_TRUE(isBlack(x, lowest)) << x;
        }
        for (int y = 5; y <= lowest; ++y) {
            EXPECT_TRUE(isBlack(7, y)) << y;
            EXPECT_TRUE(isBlack(last, y)) << y;
        }
        for (const auto& [x, y] : {std::pair{8, 6}, {last - 1, 6}, {8, lowest - 1}}) {
            EXPECT_FALSE(isBlack(x, y)) << x << ", " << y << ": between frame and well";
        }
        gui.Type("x");
        WaitForColors(editor, blackWell, whiteWell);
        const host::Picture swapped = editor.Grab();
        const auto isOutline = [&](int x, int y) {
            return swapped.Pixel(bounds.left + x, bounds.top + y)[0] == 0;
        };
        // Around the white background: the upright bar's right side, the lower one's bottom.
        for (int y = 19; y <= bottom - 8; ++y) {
            EXPECT_TRUE(isOutline(right - 9, y)) << y;
        }
        for (int x = 19; x <= right - 9; ++x) {
            EXPECT_TRUE(isOutline(x, bottom - 8)) << x;
        }
        EXPECT_TRUE(isOutline(19, bottom - 12)) << "the lower bar's left end";
        EXPECT_TRUE(isOutline(right - 15, 19)) << "the upright bar's top";
        EXPECT_FALSE(isOutline(right - 10, bottom - 9));
    });
}

TEST_F(WellsTest, SymbolsSwapAndReset) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.ClickMiddle(Items::switchColors);
        WaitForColors(editor, whiteWell, blackWell);
        editor.ClickMiddle(Items::defaultColors);
        WaitForColors(editor, blackWell, whiteWell);
        // Between the parts.
        editor.Click(Items::colorWells, {2, 2});
        gui.WaitUntilIdle();
        EXPECT_TRUE(IsWindowEnabled(editor.Window())) << "no dialog of the system";
        WaitForColors(editor, blackWell, whiteWell);
    });
}

TEST_F(WellsTest, WhiteOfTheSystemsDialogIsNotTheFirstWhite) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Click(Items::colorWells, inForeground);
        ChooseInDialog(gui, {"255", "255", "255"}, IDOK);
        WaitForColors(editor, whiteWell, whiteWell);
    });
    ExpectStored({0xFF00, 0xFF00, 0xFF00}, white16);
}

TEST_F(WellsTest, TheBackgroundTakesAColourAndPaintsIt) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Click(Items::colorWells, InBackground(editor));
        ChooseInDialog(gui, {"10", "20", "30"}, IDOK);
        WaitForColors(editor, blackWell, {10, 20, 30});
        gui.Type("x");
        WaitForColors(editor, {10, 20, 30}, blackWell);
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {PlaceOfPixel(editor, 150 + 7, 100 + 9)});
    });
    EXPECT_EQ(Applied()->GetPixelWrapped(7, 9) & 0xFFFFFF, Color(10, 20, 30));
    ExpectStored({0x0A00, 0x1400, 0x1E00}, black16);
}

TEST_F(WellsTest, CancelInTheSystemsDialogKeepsTheColour) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Click(Items::colorWells, inForeground);
        ChooseInDialog(gui, {"10", "20", "30"}, IDCANCEL);
        WaitForColors(editor, blackWell, whiteWell);
    });
    ExpectStored(black16, white16);
}

TEST_F(WellsTest, TheKeyboardReachesAllParts) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        TabTo(gui, editor, Items::save);
        const host::Picture before = editor.Grab();
        TabTo(gui, editor, Items::colorWells);
        std::vector<host::Picture> frames;
        const auto expectOtherFrame = [&] {
            WaitUntil("another frame", [&] {
                const host::Picture shown = editor.Grab();
                return !(shown == before) && (frames.empty() || !(shown == frames.back()));
            });
            frames.push_back(editor.Grab());
        };
        expectOtherFrame();
        gui.Chord({VK_SPACE});
        ChooseInDialog(gui, {"10", "20", "30"}, IDOK);
        WaitForColors(editor, {10, 20, 30}, whiteWell);
        gui.Chord({VK_RIGHT});
        gui.WaitUntilIdle();
        gui.Chord({VK_RETURN});
        ChooseInDialog(gui, {"40", "50", "60"}, IDOK);
        WaitForColors(editor, {10, 20, 30}, {40, 50, 60});
        gui.Chord({VK_UP});
        gui.WaitUntilIdle();
        gui.Chord({VK_SPACE});
        WaitForColors(editor, {40, 50, 60}, {10, 20, 30});
        gui.Chord({VK_RIGHT});
        gui.WaitUntilIdle();
        // It is the last part.
        gui.Chord({VK_RIGHT});
        gui.WaitUntilIdle();
        gui.Chord({VK_SPACE});
        WaitForColors(editor, blackWell, whiteWell);
        expectOtherFrame();
        gui.Chord({VK_LEFT});
        expectOtherFrame();
        gui.Chord({VK_DOWN});
        expectOtherFrame();
        gui.Chord({VK_DOWN});
        expectOtherFrame();
        TabTo(gui, editor, Items::save);
        WaitUntil("no frame", [&] { return editor.Grab() == before; });
    });
}

TEST_F(WellsTest, TheSystemsDialogOpensOnBlack) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.Click(Items::colorWells, InBackground(editor));
        const DrivenDialog dialog = gui.WaitForTitle("Color");
        EXPECT_EQ(dialog.Text(706), "0");
        dialog.PressToOpen(IDCANCEL);
        dialog.WaitUntilClosed();
    });
}

}  // namespace

// The windows on screens of several resolutions: sizes in pixels grow from 96 dots an inch to the
// resolution, and no items overlap that do not overlap at 96.
//
// The resolution is that of the screen on which the program runs; see docs/testing.md.
#include "editor/Operations.h"
#include "files/Preferences.h"
#include "framework/dialog/DialogGeometry.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/gui/ScreenPixels.Win.h"
#include "tests/gui/screens/EditorLayout.Win.h"
#include "tests/gui/screens/ItemLayout.Win.h"
#include "tests/gui/screens/ItemPictures.Win.h"

namespace {

using Items = TextureItems;

RECT WindowRect(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

/// On the screen.
RECT ClientRect(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

RECT WorkArea() {
    RECT area{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

class Resolution : public PluginRunTest {
  protected:
    Resolution() {
        before = picture = host::MakePicture(256, 256, 3);
        selection = {0, 0, 192, 192};
    }

    /// Runs the editor with a remembered place and says where it opened, its client area.
    RECT OpenWith(const hostapi::Rect& place, int resolution) {
        Preferences preferences;
        preferences.launchFlag = 0;
        preferences.editorPlace = place;
        preferences.placeResolution = static_cast<std::int16_t>(resolution);
        EXPECT_TRUE(SavePreferences(preferences));
        return OpenAgain();
    }
    /// The same with what the last run left.
    RECT OpenAgain() {
        RECT client{};
        Run([&](const GuiDriver& gui) {
            const DrivenDialog editor = gui.WaitFor(textureDialog);
            EXPECT_TRUE(Contains(WorkArea(), WindowRect(editor.Window())));
            client = ClientRect(editor.Window());
            editor.PressToOpen(okItem);
        });
        return client;
    }
};

/// In an order in which each opens over the editor, with a button or a menu entry.
struct Opened {
    int dialogId;
    int item;
    int command;
};
constexpr Opened otherDialogs[] = {
    {combineDialog, Items::combine, 0},     {tileDialog, Items::tile, 0},
    {editDialog, Items::edit, 0},           {brushDialog, 0, commandBrushSettings},
    {cloneDialog, 0, commandStampSettings}, {fillDialog, 0, commandFillSettings},
};

void ExpectSound(const DrivenDialog& dialog, int dialogId) {
    ExpectNoOthersMeet(dialog, dialogId);
    ExpectAllInside(dialog, dialogId);
    EXPECT_TRUE(Contains(WorkArea(), WindowRect(dialog.Window()))) << dialogId;
}

TEST_F(Resolution, EveryWindowIsLaidOutAsAt96) {
    int pictures = 0;
    const auto inspect = [&](const DrivenDialog& dialog, int dialogId) {
        ExpectSound(dialog, dialogId);
        pictures += CountFittingPictures(dialog, dialogId);
        if (dialogId == linesDialog || dialogId == shapesDialog) {
            ExpectKnob(dialog, dialogId == linesDialog ? 11 : 58);
        }
    };
    Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        inspect(opening, createrDialog);
        opening.PressToOpen(okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        inspect(editor, textureDialog);
        ExpectButtonPictures(editor);
        ExpectPalettePictures(editor);
        ExpectRowBelowView(editor);
        ExpectWellsBesideSymbols(editor);
        const auto inspectAndCancel = [&](int dialogId) {
            const DrivenDialog dialog = gui.WaitFor(dialogId);
            inspect(dialog, dialogId);
            CloseWith(dialog, cancelItem);
        };
        for (const Operation& operation : AllOperations()) {
            editor.PressToOpen(operation.item);
            inspectAndCancel(operation.id);
        }
        for (const Opened& other : otherDialogs) {
            if (other.item != 0) {
                editor.PressToOpen(other.item);
            } else {
                editor.ChooseToOpen(other.command);
            }
            inspectAndCancel(other.dialogId);
        }
        SwitchTab(editor);
        ExpectNoOthersMeet(editor, textureDialog);
        ExpectRowBelowView(editor);
        editor.PressToOpen(okItem);
    });
    EXPECT_EQ(pictures, 3 + 1 + 2 + 6 + 4) << "editor, Blur, Mosaic, Shapes, Skew";
}

TEST_F(Resolution, TheEditorOpensInsideTheWorkArea) {
    const RECT area = WorkArea();
    const auto at = [](LONG left, LONG top, int width, int height) {
        return ::ToRect(ScreenRect{static_cast<int>(left), static_cast<int>(top),
                                   static_cast<int>(left) + width, static_cast<int>(top) + height});
    };
    OpenWith({}, ScreenResolution());
    OpenWith(at(area.right - 50, area.bottom - 50, Scaled(860), Scaled(520)), ScreenResolution());
    OpenWith(at(-300, 5, Scaled(860), Scaled(520)), ScreenResolution());
    const RECT largest = OpenWith(at(20, 60, 20000, 15000), ScreenResolution());
    EXPECT_GT(Width(largest), Width(area) - Scaled(20));
    EXPECT_GT(Height(largest), Height(area) - Scaled(80));
}

TEST_F(Resolution, ARememberedSizeIsScaled) {
    for (const int stored : {96, 120, 144, 192}) {
        SCOPED_TRACE(stored);
        const auto then = [stored](int pixels) { return pixels * stored / 96; };
        const RECT client = OpenWith(
            {120, 30, static_cast<short>(120 + then(580)), static_cast<short>(30 + then(900))},
            stored);
        EXPECT_EQ(Width(client), Scaled(900));
        EXPECT_EQ(Height(client), Scaled(580));
        EXPECT_EQ(client.left, 30);
        EXPECT_EQ(client.top, 120);
        Preferences left;
        EXPECT_TRUE(LoadPreferences(left));
        EXPECT_EQ(left.placeResolution, ScreenResolution());
        EXPECT_TRUE(AreEqual(left.editorPlace, ToRect(client)));
    }
}

TEST_F(Resolution, TheSizeStaysFromRunToRun) {
    const hostapi::Rect place{120, 30, static_cast<short>(120 + Scaled(560)),
                              static_cast<short>(30 + Scaled(900))};
    OpenWith(place, ScreenResolution());
    for (int run = 0; run < 2; ++run) {
        EXPECT_TRUE(AreEqual(ToRect(OpenAgain()), place));
    }
}

}  // namespace

// The windows on screens of several resolutions: what is given in pixels at 96 dots an inch is
// larger there by the resolution, and nothing stands over anything that it does not stand over
// at 96.
//
// The resolution is that of the screen on which the program runs; see docs/testing.md.
#include <cmath>
#include <set>

#include "base/Rectangles.h"
#include "editor/ColorWells.h"
#include "editor/Operations.h"
#include "editor/ViewGeometry.h"
#include "files/Preferences.h"
#include "fixtures/LargeScreen.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "framework/dialog/DialogGeometry.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"

namespace {

using Items = TextureItems;

/// Pixels on this screen for pixels at 96 dots an inch.
int Scaled(int pixels) {
    return static_cast<int>(std::lround(pixels * ScreenResolution() / 96.0));
}

int Width(const RECT& rect) {
    return static_cast<int>(rect.right - rect.left);
}

int Height(const RECT& rect) {
    return static_cast<int>(rect.bottom - rect.top);
}

bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool Meet(const RECT& a, const RECT& b) {
    RECT both;
    return IntersectRect(&both, &a, &b) != FALSE;
}

hostapi::Rect ToRect(const RECT& rect) {
    return {static_cast<short>(rect.top), static_cast<short>(rect.left),
            static_cast<short>(rect.bottom), static_cast<short>(rect.right)};
}

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

LONG StyleOf(HWND control) {
    return GetWindowLongA(control, GWL_STYLE);
}

bool IsStatic(HWND control, LONG type) {
    return ClassOf(control) == "Static" && (StyleOf(control) & SS_TYPEMASK) == type;
}

std::vector<int> VisibleItems(const DrivenDialog& dialog) {
    std::vector<int> items;
    for (int item = 1; GetDlgItem(dialog.Window(), item) != nullptr; ++item) {
        if ((StyleOf(dialog.Control(item)) & WS_VISIBLE) != 0) {
            items.push_back(item);
        }
    }
    return items;
}

/// Group boxes, pages and frames, which others stand in.
bool HoldsOthers(HWND control) {
    const std::string name = ClassOf(control);
    return (name == "Button" && (StyleOf(control) & BS_TYPEMASK) == BS_GROUPBOX) ||
           name == "SysTabControl32" || IsStatic(control, SS_ETCHEDFRAME);
}

/// Two items that stand over each other at 96 dots an inch.
struct Pair {
    int dialog;
    int first;
    int second;
};
constexpr Pair meetingPairs[] = {
    // The drawing area, and what stands along its edges.
    {textureDialog, Items::progress, Items::drawingArea},
    {textureDialog, Items::growBox, Items::drawingArea},
    {textureDialog, Items::zoomIn, Items::drawingArea},
    {textureDialog, Items::zoomOut, Items::drawingArea},
    {textureDialog, Items::zoomReadout, Items::drawingArea},
    {textureDialog, Items::verticalScroll, Items::drawingArea},
    {textureDialog, Items::horizontalScroll, Items::drawingArea},
    // The zoom readout between its buttons.
    {textureDialog, Items::zoomIn, Items::zoomReadout},
    {textureDialog, Items::zoomOut, Items::zoomReadout},
    // The symbols beside the wells; the palette in its frame.
    {textureDialog, Items::colorWells, Items::switchColors},
    {textureDialog, Items::colorWells, Items::defaultColors},
    {textureDialog, Items::toolPalette, Items::paletteFrame},
    // A check box in place of a group box's title.
    {blurDialog, 7, 17},
};

bool MayMeet(int dialogId, int first, int second) {
    return std::any_of(std::begin(meetingPairs), std::end(meetingPairs), [&](const Pair& pair) {
        return pair.dialog == dialogId && pair.first == first && pair.second == second;
    });
}

struct SeenItem {
    int item;
    RECT bounds;
    bool holdsOthers;

    bool Holds(const SeenItem& other) const {
        return holdsOthers && Contains(bounds, other.bounds);
    }
};

std::vector<SeenItem> SeenItems(const DrivenDialog& dialog) {
    std::vector<SeenItem> seen;
    for (const int item : VisibleItems(dialog)) {
        seen.push_back({item, dialog.Bounds(item), HoldsOthers(dialog.Control(item))});
    }
    return seen;
}

void ExpectNoOthersMeet(const DrivenDialog& dialog, int dialogId) {
    const std::vector<SeenItem> seen = SeenItems(dialog);
    for (auto first = seen.begin(); first != seen.end(); ++first) {
        for (auto second = first + 1; second != seen.end(); ++second) {
            EXPECT_TRUE(!Meet(first->bounds, second->bounds) || first->Holds(*second) ||
                        second->Holds(*first) || MayMeet(dialogId, first->item, second->item))
                << "items " << first->item << " and " << second->item << " of " << dialogId;
        }
    }
}

void ExpectAllInside(const DrivenDialog& dialog, int dialogId) {
    RECT client{};
    GetClientRect(dialog.Window(), &client);
    for (const int item : VisibleItems(dialog)) {
        EXPECT_TRUE(Contains(client, dialog.Bounds(item))) << item << " of " << dialogId;
    }
}

// --- Pictures ---

SIZE IconSize(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) {
        return {0, 0};
    }
    BITMAP mask{};
    GetObjectA(info.hbmMask, sizeof mask, &mask);
    const LONG height = info.hbmColor != nullptr ? mask.bmHeight : mask.bmHeight / 2;
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return {mask.bmWidth, height};
}

/// The symbols of the windows, with their sizes at 96 dots an inch.
int PlainSymbolSide(int dialogId, int item) {
    if (dialogId == textureDialog) {
        return item == Items::sizeMarksSymbol ? 13 : 11;
    }
    return 32;
}

/// Cards fill their items; symbols have the size that they have at 96, scaled, and room for it.
int CountFittingPictures(const DrivenDialog& dialog, int dialogId) {
    int count = 0;
    for (const int item : VisibleItems(dialog)) {
        const HWND control = dialog.Control(item);
        SCOPED_TRACE("item " + std::to_string(item) + " of " + std::to_string(dialogId));
        if (IsStatic(control, SS_BITMAP)) {
            ++count;
            BITMAP bitmap{};
            GetObjectA(reinterpret_cast<HGDIOBJ>(Ask(control, STM_GETIMAGE, IMAGE_BITMAP)),
                       sizeof bitmap, &bitmap);
            EXPECT_EQ(bitmap.bmWidth, Width(dialog.Bounds(item)));
            EXPECT_EQ(bitmap.bmHeight, Height(dialog.Bounds(item)));
        } else if (IsStatic(control, SS_ICON)) {
            ++count;
            const SIZE size = IconSize(reinterpret_cast<HICON>(Ask(control, STM_GETICON)));
            EXPECT_EQ(size.cx, Scaled(PlainSymbolSide(dialogId, item)));
            EXPECT_EQ(size.cy, size.cx);
        }
    }
    return count;
}

/// The box around what differs from the face of a button or a palette within a part of the client
/// area.
RECT InkIn(const host::Picture& client, const RECT& part) {
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    RECT ink{part.right, part.bottom, part.left, part.top};
    for (LONG y = part.top; y < part.bottom; ++y) {
        for (LONG x = part.left; x < part.right; ++x) {
            if (ColorAt(client, static_cast<int>(x), static_cast<int>(y)) != face) {
                ink.left = std::min(ink.left, x);
                ink.top = std::min(ink.top, y);
                ink.right = std::max(ink.right, x + 1);
                ink.bottom = std::max(ink.bottom, y + 1);
            }
        }
    }
    return ink;
}

/// The box around what is drawn in a picture at 100 percent.
RECT InkOfResource(int id) {
    const HDC context = CreateCompatibleDC(nullptr);
    const HANDLE bitmap = LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), IMAGE_BITMAP,
                                     0, 0, LR_CREATEDIBSECTION);
    const HGDIOBJ before = SelectObject(context, bitmap);
    BITMAP size{};
    GetObjectA(bitmap, sizeof size, &size);
    RECT ink{size.bmWidth, size.bmHeight, 0, 0};
    for (int y = 0; y < size.bmHeight; ++y) {
        for (int x = 0; x < size.bmWidth; ++x) {
            if (GetPixel(context, x, y) != RGB(255, 255, 255)) {
                ink = {std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y),
                       std::max<LONG>(ink.right, x + 1), std::max<LONG>(ink.bottom, y + 1)};
            }
        }
    }
    SelectObject(context, before);
    DeleteObject(bitmap);
    DeleteDC(context);
    return ink;
}

/// Edges of shapes between two pixels end in the one or the other.
void ExpectNear(const RECT& actual, const RECT& expected) {
    const double tolerance = Scaled(1) + 0.5;
    EXPECT_NEAR(static_cast<double>(actual.left), static_cast<double>(expected.left), tolerance);
    EXPECT_NEAR(static_cast<double>(actual.top), static_cast<double>(expected.top), tolerance);
    EXPECT_NEAR(static_cast<double>(actual.right), static_cast<double>(expected.right), tolerance);
    EXPECT_NEAR(static_cast<double>(actual.bottom), static_cast<double>(expected.bottom),
                tolerance);
}

RECT ScaledAt(const RECT& plain, LONG x, LONG y) {
    const auto scaled = [](LONG pixels) { return LONG{Scaled(static_cast<int>(pixels))}; };
    return {x + scaled(plain.left), y + scaled(plain.top), x + scaled(plain.right),
            y + scaled(plain.bottom)};
}

/// 3 pixels from the left, in the middle and one higher.
void ExpectButtonPictures(const DrivenDialog& editor) {
    constexpr LONG edge = 3;
    const host::Picture shown = editor.Grab();
    int count = 0;
    for (const int item : VisibleItems(editor)) {
        if (ClassOf(editor.Control(item)) != "tBitmapButton" || !editor.IsEnabled(item)) {
            continue;
        }
        ++count;
        SCOPED_TRACE(item);
        const bool isAlone = editor.Text(item).empty();
        const int width = Scaled(isAlone ? 21 : 16);
        const int height = Scaled(isAlone ? 15 : 16);
        const RECT bounds = editor.Bounds(item);
        const LONG left = bounds.left + Scaled(3);
        const LONG top = bounds.top + (Height(bounds) - height) / 2 - Scaled(1);
        // A little more than its place: a picture that is too large is seen.
        const RECT around{left - 1, bounds.top + edge,
                          std::min<LONG>(left + width + Scaled(2), bounds.right - edge),
                          bounds.bottom - edge};
        ExpectNear(InkIn(shown, around), ScaledAt(InkOfResource(item), left, top));
        // The text begins 5 pixels after it.
        const RECT gap{left + width, bounds.top + edge, left + width + Scaled(5),
                       bounds.bottom - edge};
        EXPECT_TRUE(isAlone || InkIn(shown, gap).left >= gap.right - 1) << "in the gap";
    }
    EXPECT_EQ(count, 24) << "all but the two Repeats";
}

void ExpectPalettePictures(const DrivenDialog& editor) {
    const host::Picture shown = editor.Grab();
    for (const int item : {Items::toolPalette, Items::viewPalette}) {
        const int rows = item == Items::toolPalette ? 4 : 1;
        const RECT bounds = editor.Bounds(item);
        const int cellWidth = Width(bounds) / 2;
        const int cellHeight = Height(bounds) / rows;
        EXPECT_GE(cellWidth, Scaled(24));
        EXPECT_GE(cellHeight, Scaled(20));
        // The last cell is never the chosen one here.
        const LONG left = bounds.left + cellWidth;
        const LONG top = bounds.top + (rows - 1) * cellHeight;
        const RECT ink =
            InkIn(shown, {left + 2, top + 2, left + cellWidth - 2, top + cellHeight - 2});
        SCOPED_TRACE(item);
        // Eyedropper and magnifying glass take the height of their cells but for a pixel or two.
        EXPECT_GE(ink.bottom - ink.top, Scaled(16));
        EXPECT_LE(ink.bottom - ink.top, Scaled(20));
        EXPECT_NEAR((ink.top + ink.bottom) / 2.0, top + cellHeight / 2.0, Scaled(2));
        EXPECT_NEAR((ink.left + ink.right) / 2.0, left + cellWidth / 2.0, Scaled(2));
    }
}

void ExpectRowBelowView(const DrivenDialog& editor) {
    const RECT area = editor.Bounds(Items::drawingArea);
    const hostapi::Rect view = ViewRect(ToRect(area), {ScreenResolution()});
    EXPECT_EQ(area.right - view.right, Scaled(2) + Scaled(15));
    EXPECT_EQ(Width(editor.Bounds(Items::verticalScroll)), Scaled(15));
    EXPECT_EQ(editor.Bounds(Items::verticalScroll).left, view.right);
    for (const int item : {Items::progress, Items::zoomIn, Items::zoomOut, Items::zoomReadout,
                           Items::horizontalScroll}) {
        EXPECT_EQ(editor.Bounds(item).top, view.bottom) << item;
        EXPECT_EQ(Height(editor.Bounds(item)), Scaled(15)) << item;
    }
    for (const int item : {Items::zoomIn, Items::zoomOut}) {
        const HWND button = editor.Control(item);
        const SIZE icon = IconSize(reinterpret_cast<HICON>(Ask(button, BM_GETIMAGE, IMAGE_ICON)));
        EXPECT_EQ(icon.cx, Scaled(9)) << item;
        EXPECT_EQ(Width(editor.Bounds(item)), Scaled(15)) << item;
    }
    // "100%" in the port's font, between the buttons.
    const HDC context = GetDC(editor.Window());
    const HGDIOBJ before = SelectObject(context, GetStockObject(DEFAULT_GUI_FONT));
    SIZE text{};
    GetTextExtentPoint32A(context, "100%", 4, &text);
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    SelectObject(context, before);
    ReleaseDC(editor.Window(), context);
    EXPECT_LE(text.cy - metrics.tmInternalLeading, Scaled(15) - 2 * Scaled(1));
    EXPECT_LE(text.cx, Width(editor.Bounds(Items::zoomReadout)) - 2 * Scaled(16));
    // All of its height is there: the ink of the digits is whole.
    const RECT readout = editor.Bounds(Items::zoomReadout);
    const RECT digits =
        InkIn(editor.Grab(), {readout.left + Scaled(16), readout.top + Scaled(1),
                              readout.right - Scaled(16), readout.bottom - Scaled(1)});
    EXPECT_GT(digits.top, readout.top + Scaled(1));
    EXPECT_LT(digits.bottom, readout.bottom - Scaled(1));
}

/// The symbols lie clear of the wells and their lines.
void ExpectWellsBesideSymbols(const DrivenDialog& editor) {
    const auto bounds = [&](int item) { return ToRect(editor.Bounds(item)); };
    const ColorWells wells = WellsIn(bounds(Items::colorWells), bounds(Items::switchColors),
                                     bounds(Items::defaultColors), {ScreenResolution()});
    const hostapi::Rect fore = Inset(wells.foreRect, -Scaled(2), -Scaled(2));
    EXPECT_FALSE(hostapi::Meet(wells.foreRect, wells.backRectRight));
    EXPECT_FALSE(hostapi::Meet(wells.foreRect, wells.backRectBottom));
    for (const int item : {Items::switchColors, Items::defaultColors}) {
        const RECT control = editor.Bounds(item);
        const LONG side = Scaled(11);
        const LONG left = (control.left + control.right - side) / 2;
        const LONG top = (control.top + control.bottom - side) / 2;
        const hostapi::Rect symbol = ToRect({left, top, left + side, top + side});
        for (const hostapi::Rect& well : {fore, wells.backRectRight, wells.backRectBottom}) {
            EXPECT_FALSE(hostapi::Meet(well, symbol)) << item;
        }
    }
}

/// The knob is coral; so is nothing else on a dial.
void ExpectKnob(const DrivenDialog& dialog, int item) {
    const host::Picture shown = dialog.Grab();
    const RECT bounds = dialog.Bounds(item);
    RECT knob{bounds.right, bounds.bottom, bounds.left, bounds.top};
    for (LONG y = bounds.top; y < bounds.bottom; ++y) {
        for (LONG x = bounds.left; x < bounds.right; ++x) {
            const COLORREF color = ColorAt(shown, static_cast<int>(x), static_cast<int>(y));
            if (GetRValue(color) > GetBValue(color) + 60) {
                knob = {std::min(knob.left, x), std::min(knob.top, y), std::max(knob.right, x + 1),
                        std::max(knob.bottom, y + 1)};
            }
        }
    }
    // 13 pixels less the dark line around it, and what is mixed with that.
    EXPECT_NEAR(Width(knob), Scaled(9), Scaled(1));
    EXPECT_NEAR(Height(knob), Scaled(9), Scaled(1));
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

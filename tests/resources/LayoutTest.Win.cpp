// Every dialog at every resolution: nothing overlaps, nothing is cut off, every text has room.
#include <gtest/gtest.h>

// The common controls need the system's header first.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <set>

#include "tests/resources/OpenedDialog.Win.h"
#include "tests/resources/Tables.h"

namespace {

constexpr int margin = 7;
/// The system may make an etched line this much longer at each end than it is told to.
constexpr int lineOverhang = 2;
/// Inside a group box, in dialog units: at its sides and its bottom, and below its title.
constexpr int groupMargin = 4;
constexpr int groupTop = 9;
/// A check box or radio button at 96 dots an inch: the box and the gap to its text.
constexpr int checkBoxSize = 13;
constexpr int checkWidth = checkBoxSize + 5;
/// A push button's text keeps this clear of each edge.
constexpr int buttonMargin = 5;
constexpr int groupTitleMargin = 9;
constexpr int editMargin = 3;
/// A button with a picture: the gaps, the picture, the last gap.
constexpr int pictureButtonWidth = 3 + 16 + 5 + 4;
/// A popup's box around its text, without the arrow.
constexpr int popupBoxMargin = 4;

constexpr int editor = 16001;

/// An item that others stand in, and the part of it that they may use.
struct Container {
    int dialog;
    int item;
    std::set<int> contents;
};

const std::vector<Container>& Containers() {
    static const std::vector<Container> containers = [] {
        Container tab{editor, 63, {}};
        for (int item = 5; item <= 60; ++item) {
            tab.contents.insert(item);
        }
        return std::vector<Container>{
            tab,                                    // the pages
            {editor, 13, {5, 6, 7, 8, 9, 11, 12}},  // along the drawing area's edges
            {editor, 9, {7, 8}},                    // the zoom readout between its buttons
            {editor, 15, {31, 32}},                 // the symbols beside the wells
            {editor, 57, {14}},                     // the palette's frame
            {editor, 4, {61}},                      // the help readout's frame
            {16007, 17, {7}},                       // a check box in place of a title
        };
    }();
    return containers;
}

bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool Meet(const RECT& a, const RECT& b) {
    RECT both;
    return IntersectRect(&both, &a, &b) != FALSE;
}

bool IsGroupBox(const Control& control) {
    return control.className == L"Button" && control.Type() == BS_GROUPBOX;
}

bool MayContain(int dialog, const Control& outer, const Control& inner) {
    return std::any_of(Containers().begin(), Containers().end(), [&](const Container& container) {
        return container.dialog == dialog && container.item == outer.id &&
               container.contents.count(inner.id) != 0;
    });
}

/// Where the contents of a group box stand.
RECT GroupRoom(const OpenedDialog& dialog, const Control& group) {
    const SIZE side = dialog.Pixels(groupMargin, groupMargin);
    const SIZE top = dialog.Pixels(0, groupTop);
    return {group.bounds.left + side.cx, group.bounds.top + top.cy, group.bounds.right - side.cx,
            group.bounds.bottom - side.cy};
}

bool StandTogether(int id, const OpenedDialog& dialog, const Control& a, const Control& b) {
    for (const auto& [outer, inner] : {std::pair(a, b), std::pair(b, a)}) {
        if (IsGroupBox(outer) && Contains(GroupRoom(dialog, outer), inner.bounds)) {
            return true;
        }
        if (MayContain(id, outer, inner) && Contains(outer.bounds, inner.bounds)) {
            return true;
        }
    }
    return false;
}

std::vector<Control> VisibleControls(const OpenedDialog& dialog) {
    std::vector<Control> controls = dialog.Controls();
    controls.erase(std::remove_if(controls.begin(), controls.end(),
                                  [](const Control& control) { return !control.IsVisible(); }),
                   controls.end());
    return controls;
}

std::string Name(int dialog, const Control& control) {
    return "item " + std::to_string(control.id) + " of " + std::to_string(dialog);
}

std::string Describe(const Control& control) {
    const RECT& bounds = control.bounds;
    return std::to_string(control.id) + " (" + std::to_string(bounds.left) + ", " +
           std::to_string(bounds.top) + " to " + std::to_string(bounds.right) + ", " +
           std::to_string(bounds.bottom) + ")";
}

/// The box of a popup without a label begins 4 pixels (at 96 dots an inch) inside its control.
RECT SeenBounds(const OpenedDialog& dialog, const Control& control) {
    RECT bounds = control.bounds;
    if (control.IsPopup() && control.text.empty()) {
        bounds.left += dialog.Scaled(popupBoxMargin);
    }
    if (control.className == L"Static" && control.Type() == SS_ETCHEDHORZ) {
        InflateRect(&bounds, -lineOverhang, 0);
    }
    return bounds;
}

bool IsText(const Control& control) {
    return control.className == L"Static" &&
           (control.Type() == SS_LEFT || control.Type() == SS_RIGHT ||
            control.Type() == SS_LEFTNOWORDWRAP);
}

// --- Room for texts ---

/// The size that `text` takes, in the control's own way; 0 where any size will do.
SIZE NeededSize(const OpenedDialog& dialog, const Control& control, const std::wstring& text) {
    SIZE size = dialog.Measure(text);
    if (control.className == L"Static" && !IsText(control)) {
        return {0, 0};
    }
    if (IsText(control)) {
        const bool wraps = control.Type() == SS_LEFT && text.find(L' ') != std::wstring::npos;
        return wraps ? dialog.Measure(text, control.bounds.right - control.bounds.left) : size;
    }
    if (control.className == L"Edit") {
        return {size.cx + 2 * dialog.Scaled(editMargin), size.cy + 2 * dialog.Scaled(editMargin)};
    }
    if (control.className == L"tBitmapButton") {
        return {text.empty() ? 0 : size.cx + dialog.Scaled(pictureButtonWidth), size.cy};
    }
    if (control.className == L"Button") {
        switch (control.Type()) {
            case BS_GROUPBOX:
                return {size.cx + 2 * dialog.Scaled(groupTitleMargin), size.cy};
            case BS_CHECKBOX:
            case BS_RADIOBUTTON:
                return {dialog.Scaled(text.empty() ? checkBoxSize : checkWidth) + size.cx, size.cy};
            default:
                if ((control.style & BS_ICON) != 0) {
                    return {0, 0};
                }
                return {size.cx + 2 * dialog.Scaled(buttonMargin), size.cy};
        }
    }
    return {0, 0};
}

/// Label, box, the widest entry and the arrow.
SIZE NeededPopupSize(const OpenedDialog& dialog, int id, const Control& control) {
    const int height = control.bounds.bottom - control.bounds.top;
    const std::size_t tabs =
        static_cast<std::size_t>(std::count(control.text.begin(), control.text.end(), L'\t'));
    const std::wstring label = control.text.substr(0, control.text.find(L'\t'));
    const int averageWidth = dialog.Pixels(4, 0).cx;
    int labelWidth = dialog.Measure(label).cx;
    if (tabs > 0) {
        EXPECT_LE(labelWidth, 4 * averageWidth * static_cast<int>(tabs)) << Name(id, control);
        labelWidth = 4 * averageWidth * static_cast<int>(tabs);
    }
    const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id + control.id));
    const HMENU entries = GetSubMenu(menu, 0);
    int entryWidth = 0;
    for (int position = 0; position < GetMenuItemCount(entries); ++position) {
        wchar_t text[128] = L"";
        GetMenuStringW(entries, static_cast<UINT>(position), text, 128, MF_BYPOSITION);
        entryWidth = std::max(entryWidth, static_cast<int>(dialog.Measure(text).cx));
    }
    DestroyMenu(menu);
    return {labelWidth + dialog.Scaled(4 + 2 * popupBoxMargin) + entryWidth + height * 2 / 3,
            dialog.Measure(label).cy};
}

void ExpectRoom(const OpenedDialog& dialog, int id, const Control& control,
                const std::wstring& text) {
    const SIZE needed = NeededSize(dialog, control, text);
    EXPECT_LE(needed.cx, control.bounds.right - control.bounds.left)
        << Name(id, control) << ": " << std::string(text.begin(), text.end());
    EXPECT_LE(needed.cy, control.bounds.bottom - control.bounds.top)
        << Name(id, control) << ": " << std::string(text.begin(), text.end());
}

// --- The checks, one dialog at one resolution ---

class Layout : public testing::TestWithParam<int> {
  protected:
    static void ForEachDialog(void (*check)(int, const OpenedDialog&)) {
        for (int id : DialogResources()) {
            const OpenedDialog& dialog = Opened(id, GetParam());
            ASSERT_TRUE(dialog.IsOpen()) << id;
            check(id, dialog);
        }
    }
};

TEST_P(Layout, NothingOverlaps) {
    ForEachDialog([](int id, const OpenedDialog& dialog) {
        const std::vector<Control> controls = VisibleControls(dialog);
        for (std::size_t i = 0; i < controls.size(); ++i) {
            for (std::size_t j = i + 1; j < controls.size(); ++j) {
                EXPECT_TRUE(!Meet(controls[i].bounds, controls[j].bounds) ||
                            StandTogether(id, dialog, controls[i], controls[j]))
                    << "items " << Describe(controls[i]) << " and " << Describe(controls[j])
                    << " of " << id;
            }
        }
    });
}

TEST_P(Layout, MarginsAreEqualAndNothingIsCutOff) {
    ForEachDialog([](int id, const OpenedDialog& dialog) {
        const RECT area = dialog.ClientArea();
        RECT used{area.right, area.bottom, 0, 0};
        for (const Control& control : VisibleControls(dialog)) {
            const RECT bounds = SeenBounds(dialog, control);
            used.left = std::min(used.left, bounds.left);
            used.top = std::min(used.top, bounds.top);
            used.right = std::max(used.right, bounds.right);
            used.bottom = std::max(used.bottom, bounds.bottom);
        }
        const SIZE wanted = dialog.Pixels(margin, margin);
        const int tolerance = dialog.Scaled(1);
        // Alerts and faults have their icon at the left margin, and their text a little lower.
        const bool hasStockIcon = dialog.Item(3).bounds.left == dialog.Pixels(38, 0).cx;
        if (!hasStockIcon) {
            EXPECT_NEAR(used.left, wanted.cx, tolerance) << id;
            EXPECT_NEAR(used.top, wanted.cy, tolerance) << id;
        }
        EXPECT_NEAR(area.right - used.right, wanted.cx, tolerance) << id;
        EXPECT_NEAR(area.bottom - used.bottom, wanted.cy, tolerance) << id;
    });
}

TEST_P(Layout, EveryTextFits) {
    ForEachDialog([](int id, const OpenedDialog& dialog) {
        for (const Control& control : VisibleControls(dialog)) {
            if (control.IsPopup()) {
                const SIZE needed = NeededPopupSize(dialog, id, control);
                EXPECT_LE(needed.cx, control.bounds.right - control.bounds.left)
                    << Name(id, control);
                EXPECT_LE(needed.cy, control.bounds.bottom - control.bounds.top)
                    << Name(id, control);
            } else {
                ExpectRoom(dialog, id, control, control.text);
            }
        }
    });
}

TEST_P(Layout, TextsThatComeLaterFit) {
    for (const LongText& later : longestTexts) {
        const OpenedDialog& dialog = Opened(later.dialog, GetParam());
        const Control control = dialog.Item(later.item);
        ASSERT_NE(control.window, nullptr);
        ExpectRoom(dialog, later.dialog, control, later.text);
    }
}

TEST_P(Layout, EveryHelpTextFitsItsReadout) {
    const OpenedDialog& dialog = Opened(editor, GetParam());
    const Control readout = dialog.Item(61);
    int count = 0;
    for (const ExpectedText& help : expectedStrings) {
        if (help.id < 16200) {
            ExpectRoom(dialog, editor, readout, help.text);
            ++count;
        }
    }
    EXPECT_GT(count, 50);
}

TEST_P(Layout, ALongPathFitsAFileAlert) {
    std::wstring path =
        L"C:\\Documents and Settings\\Somebody\\My Documents\\My Pictures\\Textures";
    path += L"\\Stone and Marble\\a texture with quite a long name.jpg";
    for (int id : {16110, 16120, 19005, 19006, 19007, 19008, 19009, 19010, 19011}) {
        const OpenedDialog& dialog = Opened(id, GetParam());
        const Control text = dialog.Item(3);
        std::wstring whole = text.text;
        whole.replace(whole.find(L"^0"), 2, path);
        ExpectRoom(dialog, id, text, whole);
    }
}

/// Labels that their dialogs tie to another item than the next tab stop.
struct TiedLabel {
    int dialog;
    int label;
    int item;
};
constexpr TiedLabel tiedLabels[] = {
    {16300, 5, 8},   {16500, 10, 15}, {16500, 16, 22}, {16600, 14, 11},
    {16600, 18, 15}, {16600, 22, 19}, {16600, 26, 23}, {16600, 37, 35},
    {16600, 40, 38}, {16600, 44, 41}, {16600, 57, 60},
};

/// The item that a label is tied to; 0 for none.
int TiedItem(int dialog, int label) {
    for (const TiedLabel& tied : tiedLabels) {
        if (tied.dialog == dialog && tied.label == label) {
            return tied.item;
        }
    }
    return 0;
}

/// A static's mnemonic leads to the next tab stop, if it is tied to nothing else; that must be what
/// the static is the label of.
TEST_P(Layout, LabelsWithMnemonicsStandBesideTheirFields) {
    ForEachDialog([](int id, const OpenedDialog& dialog) {
        const std::vector<Control> controls = VisibleControls(dialog);
        for (std::size_t i = 0; i < controls.size(); ++i) {
            const bool isLabel = controls[i].className == L"Static" &&
                                 (controls[i].style & SS_NOPREFIX) == 0 &&
                                 controls[i].text.find(L'&') != std::wstring::npos;
            if (!isLabel) {
                continue;
            }
            const int tied = TiedItem(id, controls[i].id);
            const auto first = controls.begin() + static_cast<std::ptrdiff_t>(tied == 0 ? i : 0);
            const auto field = std::find_if(first, controls.end(), [&](const Control& control) {
                return tied != 0 ? control.id == tied : (control.style & WS_TABSTOP) != 0;
            });
            ASSERT_NE(field, controls.end()) << Name(id, controls[i]);
            const int labelMiddle = (controls[i].bounds.top + controls[i].bounds.bottom) / 2;
            const int fieldMiddle = (field->bounds.top + field->bounds.bottom) / 2;
            EXPECT_NEAR(labelMiddle, fieldMiddle, 2) << Name(id, controls[i]);
            EXPECT_LT(controls[i].bounds.left, field->bounds.left) << Name(id, controls[i]);
        }
    });
}

TEST_P(Layout, EditorIsNotLargerThanAScreen) {
    const OpenedDialog& dialog = Opened(editor, GetParam());
    const RECT area = dialog.ClientArea();
    EXPECT_LE(area.right, dialog.Scaled(1000));
    EXPECT_LE(area.bottom, dialog.Scaled(700));
}

TEST_P(Layout, EditorTabsStandBesideTheCheckBox) {
    const OpenedDialog dialog(editor, GetParam());
    const Control tab = dialog.Item(63);
    std::wstring names[] = {L"Drawing", L"Tile\x00A0Preview"};
    for (int i = 0; i < 2; ++i) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = names[i].data();
        SendMessageW(tab.window, TCM_INSERTITEMW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&item));
    }
    RECT last;
    ASSERT_TRUE(SendMessageW(tab.window, TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&last)));
    EXPECT_LT(tab.bounds.left + last.right, dialog.Item(10).bounds.left);
    // The page begins above what stands on it.
    EXPECT_LE(tab.bounds.top + last.bottom + 2, dialog.Item(13).bounds.top);
    EXPECT_LE(tab.bounds.top + last.bottom + 2, dialog.Item(56).bounds.top);
}

/// The tile preview moves the drawing area's left edge by the panel's width, to where that begins.
TEST_P(Layout, EditorPanelEndsAtTheDrawingArea) {
    const OpenedDialog& dialog = Opened(editor, GetParam());
    const Control panel = dialog.Item(62);
    EXPECT_FALSE(panel.IsVisible());
    EXPECT_NEAR(panel.bounds.right, dialog.Item(13).bounds.left, 1);
    EXPECT_GT(panel.bounds.left, dialog.Item(63).bounds.left);
    for (int item = 14; item <= 59; ++item) {
        EXPECT_TRUE(Contains(panel.bounds, dialog.Item(item).bounds)) << item;
    }
}

INSTANTIATE_TEST_SUITE_P(Resolutions, Layout, testing::ValuesIn(Resolutions()));

/// At 96 dots an inch the bars fill what the view leaves of the drawing area: 15 pixels, inside a
/// frame of 2, and the readout leaves 16 to each of its buttons.
TEST(EditorLayout, BarsStandBesideTheView) {
    const OpenedDialog& dialog = Opened(editor);
    const RECT area = dialog.Item(13).bounds;
    const RECT view{area.left + 2, area.top + 2, area.right - 2 - 15, area.bottom - 2 - 15};
    for (int item : {5, 6, 7, 8, 9, 11, 12}) {
        EXPECT_FALSE(Meet(view, dialog.Item(item).bounds)) << item;
    }
    EXPECT_EQ(dialog.Item(11).bounds.left, view.right);
    EXPECT_NEAR(dialog.Item(12).bounds.top, view.bottom, 1);
    const RECT readout = dialog.Item(9).bounds;
    EXPECT_LE(dialog.Item(8).bounds.right, readout.left + 16);
    EXPECT_GE(dialog.Item(7).bounds.left, readout.right - 16);
}

TEST(EditorLayout, PaletteCellsHaveRoomForTheirPictures) {
    const OpenedDialog& dialog = Opened(editor);
    for (int item : {3, 14}) {
        const RECT bounds = dialog.Item(item).bounds;
        const int rows = item == 3 ? 1 : 4;
        EXPECT_GE((bounds.right - bounds.left) / 2, 24 + 4);
        EXPECT_GE((bounds.bottom - bounds.top) / rows, 20 + 4);
    }
}

}  // namespace

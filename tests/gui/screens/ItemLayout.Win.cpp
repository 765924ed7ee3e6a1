#include "tests/gui/screens/ItemLayout.Win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/ScreenPixels.Win.h"

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

namespace {

using Items = TextureItems;

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

}  // namespace

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

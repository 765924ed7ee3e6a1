#include "tests/gui/screens/EditorLayout.Win.h"

#include <gtest/gtest.h>

#include "base/Rectangles.h"
#include "editor/ColorWells.h"
#include "editor/ViewGeometry.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/ScreenPixels.Win.h"
#include "tests/gui/screens/ItemPictures.Win.h"

namespace {

using Items = TextureItems;

}  // namespace

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
        const hostapi::Rect symbol = ToRect(RECT{left, top, left + side, top + side});
        for (const hostapi::Rect& well : {fore, wells.backRectRight, wells.backRectBottom}) {
            EXPECT_FALSE(hostapi::Meet(well, symbol)) << item;
        }
    }
}

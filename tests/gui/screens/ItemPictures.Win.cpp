#include "tests/gui/screens/ItemPictures.Win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "fixtures/Screenshot.Win.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/ScreenPixels.Win.h"
#include "tests/gui/screens/ItemLayout.Win.h"

namespace {

using Items = TextureItems;

/// The symbols of the windows, with their sizes at 96 dots an inch.
int PlainSymbolSide(int dialogId, int item) {
    if (dialogId == textureDialog) {
        return item == Items::sizeMarksSymbol ? 13 : 11;
    }
    return 32;
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

}  // namespace

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

// tToolPalette: a grid of tools, of which one or none is chosen.
#include "base/Platform.h"
#include "framework/controls/ControlSupport.Win.h"
#include "framework/controls/PaletteLayout.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

struct ToolPalette {
    GdiObject picture;
    PaletteLayout layout;
    int selected = 1;
    bool wasClicked = false;
    std::uint32_t lastClick = 0;
};

/// Pixels between the edge of a chosen cell and its highlight.
constexpr int highlightInset = 2;

void Load(HWND control, ToolPalette& palette) {
    palette.picture = LoadPicture(PictureId(control));
}

/// At each use: the control follows its dialog's size.
const PaletteLayout& LayOut(HWND control, ToolPalette& palette) {
    const SIZE size = BitmapSize(As<HBITMAP>(palette.picture));
    RECT client{};
    GetClientRect(control, &client);
    palette.layout = LayOutPalette(size.cx, size.cy, client.right, client.bottom);
    return palette.layout;
}

void PaintCell(HDC context, const ToolPalette& palette, int cell, bool isEnabled) {
    const bool isSelected = cell == palette.selected;
    RECT bounds = ToSystem(CellBounds(palette.layout, cell));
    UINT state = DFCS_BUTTONPUSH;
    state |= isSelected ? DFCS_PUSHED : 0;
    state |= isEnabled ? 0 : DFCS_INACTIVE;
    DrawFrameControl(context, &bounds, DFC_BUTTON, state);
    if (isSelected) {
        RECT inside = bounds;
        InflateRect(&inside, -highlightInset, -highlightInset);
        FillRect(context, &inside, GetSysColorBrush(COLOR_BTNHIGHLIGHT));
    }
    const int shift = isSelected ? 1 : 0;
    const int x = bounds.left + (palette.layout.cellWidth - pictureImageWidth) / 2 + shift;
    const int y = bounds.top + (palette.layout.cellHeight - pictureImageHeight) / 2 + shift;
    IntersectClipRect(context, bounds.left, bounds.top, bounds.right, bounds.bottom);
    DrawTransparent(context, As<HBITMAP>(palette.picture),
                    ToSystem(CellImage(palette.layout, cell)), x, y, isEnabled);
    SelectClipRgn(context, nullptr);
}

void Paint(HWND control, ToolPalette& palette) {
    const BufferedPaint paint(control);
    const int count = LayOut(control, palette).CellCount();
    for (int cell = 1; cell <= count; ++cell) {
        PaintCell(paint.Context(), palette, cell, IsControlEnabled(control));
    }
}

/// Whether this click of the palette follows another closely.
bool IsSecondClick(ToolPalette& palette) {
    const std::uint32_t now = platformServices.tickCount();
    const bool isSecond = palette.wasClicked && now - palette.lastClick <= GetDoubleClickTime();
    palette.wasClicked = true;
    palette.lastClick = now;
    return isSecond;
}

void Click(HWND control, ToolPalette& palette, LPARAM place) {
    const int cell = CellAt(LayOut(control, palette), static_cast<std::int16_t>(LOWORD(place)),
                            static_cast<std::int16_t>(HIWORD(place)));
    if (cell == 0) {
        return;
    }
    const bool isSecond = IsSecondClick(palette);
    const bool isChange = cell != palette.selected;
    if (isChange) {
        palette.selected = cell;
        Redraw(control);
    }
    TellDialog(control, isChange || isSecond ? UINT{WM_NOTIFY} : UINT{messageClicked}, control);
}

void Select(HWND control, ToolPalette& palette, int cell) {
    const bool isCell = cell >= 0 && cell <= LayOut(control, palette).CellCount();
    if (isCell && cell != palette.selected) {
        palette.selected = cell;
        Redraw(control);
    }
}

LRESULT Take(HWND control, ToolPalette& palette, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Load(control, palette);
            return 0;
        case WM_PAINT:
            Paint(control, palette);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            Click(control, palette, lParam);
            return 0;
        case controlGetValue:
            return palette.selected;
        case controlGetMinimum:
            return 0;
        case controlGetCount:
            return LayOut(control, palette).CellCount();
        case controlSetValue:
            Select(control, palette, static_cast<int>(lParam));
            return 0;
        default:
            return TakeAsPainted(control, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK ToolPaletteProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlProcedure<ToolPalette, Take>(control, message, wParam, lParam);
}

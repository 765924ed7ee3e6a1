// tToolPalette: a grid of tools, of which one or none is chosen.
#include "base/Platform.h"
#include "framework/controls/ControlSupport.Win.h"
#include "framework/controls/PaletteLayout.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

struct ToolPalette {
    Picture picture;
    ScreenScale scale;
    PaletteLayout layout;
    int selected = 1;
    bool wasClicked = false;
    std::uint32_t lastClick = 0;
};

/// Pixels at 96 dots an inch between the edge of a chosen cell and its highlight.
constexpr int highlightInset = 2;

void Load(HWND control, ToolPalette& palette) {
    palette.scale = ScaleOf(control);
    palette.picture = LoadPicture(PictureId(control), palette.scale);
}

/// At each use: the control follows its dialog's size.
const PaletteLayout& LayOut(HWND control, ToolPalette& palette) {
    const SIZE size = palette.picture.plain;
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
        const int inset = palette.scale.Pixels(highlightInset);
        InflateRect(&inside, -inset, -inset);
        FillRect(context, &inside, GetSysColorBrush(COLOR_BTNHIGHLIGHT));
    }
    const int shift = isSelected ? palette.scale.Pixels(1) : 0;
    const int width = palette.scale.Pixels(pictureImageWidth);
    const int height = palette.scale.Pixels(pictureImageHeight);
    const LONG x = bounds.left + (palette.layout.cellWidth - width) / 2 + shift;
    const LONG y = bounds.top + (palette.layout.cellHeight - height) / 2 + shift;
    IntersectClipRect(context, bounds.left, bounds.top, bounds.right, bounds.bottom);
    DrawTransparent(context, As<HBITMAP>(palette.picture.bitmap),
                    ToSystem(CellImage(palette.layout, cell, palette.picture.percent)),
                    {x, y, x + width, y + height}, isEnabled);
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
        ShowValue(control);
    }
    TellDialog(control, isChange || isSecond ? UINT{WM_NOTIFY} : UINT{messageClicked}, control);
}

void Select(HWND control, ToolPalette& palette, int cell) {
    const bool isCell = cell >= 0 && cell <= LayOut(control, palette).CellCount();
    if (isCell && cell != palette.selected) {
        palette.selected = cell;
        ShowValue(control);
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

// tLinearSlider: a thumb on a track.
#include <optional>

#include "framework/controls/ControlSupport.Win.h"
#include "framework/controls/ScrollStep.h"
#include "framework/controls/SliderGeometry.h"
#include "framework/dialog/DialogState.h"
#include "framework/drawing/InterfaceLib.Win.h"

namespace {

struct LinearSlider {
    SliderRange range;
    bool isTracking = false;
};

SliderGeometry Measure(HWND control) {
    RECT client{};
    GetClientRect(control, &client);
    return MeasureSlider(FromSystem(client), ScaleOf(control));
}

void PaintGroove(HDC context, const SliderGeometry& geometry, const SliderRange& range,
                 bool isEnabled) {
    RECT groove = ToSystem(geometry.groove);
    DrawEdge(context, &groove, EDGE_SUNKEN, isEnabled ? BF_RECT : BF_RECT | BF_FLAT);
    if (HasGapAtZero(range)) {
        const int center = ThumbCenter(geometry, range, 0);
        const int left = center - geometry.gapWidth / 2;
        const RECT gap{left, geometry.groove.top, left + geometry.gapWidth, geometry.groove.bottom};
        FillRect(context, &gap, GetSysColorBrush(COLOR_BTNFACE));
    }
}

/// The face of the thumb, under its bevels.
void FillThumb(HDC context, int center, const SliderGeometry& geometry) {
    const int size = geometry.thumbSize;
    const int bottom = geometry.groove.bottom;
    const int base = bottom - geometry.baseHeight;
    const POINT corners[] = {{center - size + 1, bottom - 1}, {center - size + 1, base - 1},
                             {center, base - size},           {center + 1, base - size},
                             {center + size - 1, base - 1},   {center + size - 1, bottom - 1}};
    const Selection brush(context, GetSysColorBrush(COLOR_BTNFACE));
    const Selection pen(context, GetStockObject(NULL_PEN));
    Polygon(context, corners, static_cast<int>(std::size(corners)));
}

void PaintThumb(HDC context, const SliderGeometry& geometry, const LinearSlider& slider,
                bool isEnabled) {
    const int center = ThumbCenter(geometry, slider.range, slider.range.value);
    const int size = geometry.thumbSize;
    const int bottom = geometry.groove.bottom;
    const int baseTop = bottom - geometry.baseHeight;
    FillThumb(context, center, geometry);
    RECT base{center - size + 1, baseTop, center + size, bottom};
    if (!isEnabled) {
        DrawEdge(context, &base, EDGE_RAISED, BF_BOTTOMLEFT | BF_RIGHT | BF_FLAT);
    }
    const UINT lit = slider.isTracking ? EDGE_SUNKEN : EDGE_RAISED;
    const UINT flat = isEnabled ? 0 : BF_FLAT;
    RECT left{center - size + 1, baseTop - size, center + 1, baseTop + 1};
    RECT right{center, baseTop - size, center + size, baseTop + 1};
    DrawEdge(context, &left, lit, BF_DIAGONAL_ENDTOPRIGHT | flat);
    DrawEdge(context, &right, lit, BF_DIAGONAL_ENDBOTTOMRIGHT | flat);
    if (isEnabled) {
        DrawEdge(context, &base, lit, BF_LEFT | BF_BOTTOM | BF_RIGHT);
    }
}

void Paint(HWND control, const LinearSlider& slider) {
    const BufferedPaint paint(control);
    const SliderGeometry geometry = Measure(control);
    const bool isEnabled = IsControlEnabled(control);
    PaintGroove(paint.Context(), geometry, slider.range, isEnabled);
    PaintThumb(paint.Context(), geometry, slider, isEnabled);
    if (GetFocus() == control) {
        DrawFocusRect(paint.Context(), &paint.Client());
    }
}

/// The value goes in 16 bits.
void Tell(HWND control, int code, int value) {
    SendMessageA(GetParent(control), WM_HSCROLL,
                 MAKEWPARAM(static_cast<WORD>(code), static_cast<WORD>(value)),
                 reinterpret_cast<LPARAM>(control));
}

void Follow(HWND control, LinearSlider& slider, LPARAM place) {
    const int x = static_cast<std::int16_t>(LOWORD(place));
    if (SetSliderValue(slider.range, ValueAt(Measure(control), slider.range, x))) {
        ShowValue(control);
        Tell(control, scrollThumb, slider.range.value);
    }
}

void Press(HWND control, LinearSlider& slider, LPARAM place) {
    if (!slider.isTracking) {
        ++dialogState.dragDepth;
        slider.isTracking = true;
        SetCapture(control);
        SetFocus(control);
        Redraw(control);
    }
    Follow(control, slider, place);
}

/// Whether there was a drag.
bool EndTracking(LinearSlider& slider) {
    if (!slider.isTracking) {
        return false;
    }
    --dialogState.dragDepth;
    slider.isTracking = false;
    return true;
}

void Release(HWND control, LinearSlider& slider) {
    if (!EndTracking(slider)) {
        return;
    }
    Redraw(control);
    if (GetCapture() == control) {
        ReleaseCapture();
    }
    Tell(control, scrollThumbEnd, slider.range.value);
}

std::optional<SliderKey> KeyOf(WPARAM key) {
    switch (key) {
        case VK_PRIOR:
            return SliderKey::pageUp;
        case VK_NEXT:
            return SliderKey::pageDown;
        case VK_END:
            return SliderKey::end;
        case VK_HOME:
            return SliderKey::home;
        case VK_LEFT:
        case VK_DOWN:
            return SliderKey::back;
        case VK_RIGHT:
        case VK_UP:
            return SliderKey::on;
        default:
            return std::nullopt;
    }
}

void Press(HWND control, LinearSlider& slider, SliderKey key) {
    const bool isShiftDown = (GetKeyState(VK_SHIFT) & 0x8000) != 0;
    if (SetSliderValue(slider.range, SliderValueAfter(slider.range, key, isShiftDown))) {
        ShowValue(control);
        Tell(control, scrollThumbEnd, slider.range.value);
    }
}

void SetRange(HWND control, LinearSlider& slider, WPARAM redraws, LPARAM limits) {
    SetSliderRange(slider.range, static_cast<std::int16_t>(LOWORD(limits)),
                   static_cast<std::int16_t>(HIWORD(limits)));
    if (redraws != 0) {
        Redraw(control);
    }
}

LRESULT Take(HWND control, LinearSlider& slider, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint(control, slider);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            Press(control, slider, lParam);
            return 0;
        case WM_MOUSEMOVE:
            if (slider.isTracking) {
                Follow(control, slider, lParam);
            }
            return 0;
        case WM_LBUTTONUP:
        case WM_CAPTURECHANGED:
            Release(control, slider);
            return 0;
        case WM_DESTROY:
            EndTracking(slider);
            return 0;
        case WM_KEYDOWN:
            if (const auto key = KeyOf(wParam)) {
                Press(control, slider, *key);
                return 0;
            }
            return TakeAsFocusable(control, message, wParam, lParam);
        case controlGetValue:
            return slider.range.value;
        case controlSetValue:
            if (SetSliderValue(slider.range, static_cast<int>(lParam))) {
                ShowValue(control);
            }
            return 0;
        case controlSetRange:
            SetRange(control, slider, wParam, lParam);
            return 0;
        default:
            return TakeAsFocusable(control, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK LinearSliderProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlProcedure<LinearSlider, Take>(control, message, wParam, lParam);
}

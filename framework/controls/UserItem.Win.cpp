// tUserItem: a rectangle that the dialog paints, and in which it follows the mouse.
#include "framework/controls/ControlSupport.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

/// The word of the window: whether the button is held on it.
bool IsHeld(HWND control) {
    return GetWindowLongPtrA(control, 0) != 0;
}

void Hold(HWND control) {
    ++dialogState.dragDepth;
    SetWindowLongPtrA(control, 0, 1);
    SetCapture(control);
}

/// Whether it was held.
bool Free(HWND control) {
    if (!IsHeld(control)) {
        return false;
    }
    SetWindowLongPtrA(control, 0, 0);
    --dialogState.dragDepth;
    return true;
}

void Press(HWND control) {
    if (!IsHeld(control)) {
        Hold(control);
    }
    TellDialog(control, WM_NOTIFY, nullptr);
}

void Release(HWND control) {
    if (Free(control)) {
        ReleaseCapture();
        TellDialog(control, messageClicked, nullptr);
    }
}

/// In the dialog's client area.
RECT BoundsInParent(HWND control) {
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

/// The dialog has to draw there.
void InvalidateInParent(HWND control) {
    const RECT rect = BoundsInParent(control);
    InvalidateRect(GetParent(control), &rect, FALSE);
}

LRESULT Take(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return TRUE;
        case WM_PAINT:
            ValidateRect(control, nullptr);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            Press(control);
            return 0;
        case WM_LBUTTONUP:
            Release(control);
            return 0;
        case WM_CAPTURECHANGED:
        case WM_DESTROY:
            Free(control);
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            EraseUserItem(control);
            return 0;
        case WM_ENABLE:
            InvalidateInParent(control);
            return 0;
        default:
            return DefWindowProcA(control, message, wParam, lParam);
    }
}

}  // namespace

bool IsUserItem(HWND control) {
    char className[16];
    return GetClassNameA(control, className, static_cast<int>(sizeof className)) != 0 &&
           lstrcmpiA(className, "tUserItem") == 0;
}

void EraseUserItem(HWND control) {
    RECT rect = BoundsInParent(control);
    const int margin = ScaleOf(control).Pixels(focusFrameMargin);
    InflateRect(&rect, margin, margin);
    InvalidateRect(GetParent(control), &rect, TRUE);
}

LRESULT CALLBACK UserItemProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded(LRESULT{0}, [&] { return Take(control, message, wParam, lParam); });
}

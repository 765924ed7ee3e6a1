// tBitmapButton: the system's button with a picture before its text.
#include "framework/controls/ControlSupport.Win.h"

#include <string>

namespace {

struct BitmapButton {
    Picture picture;
    ScreenScale scale;
    HFONT font = nullptr;
    bool isPressed = false;
    bool isFocused = false;
};

// In pixels at 96 dots an inch.

constexpr int pictureLeft = 3;
/// Between the picture and the text.
constexpr int textGap = 5;
/// The text's left without a picture.
constexpr int bareTextLeft = 3;
/// The focus frame's left without a picture, and its distances from the other edges.
constexpr int bareFocusLeft = 18;
constexpr int focusRightMargin = 3;
constexpr int focusMargin = 2;

/// The system's button, on which ours is built.
WNDPROC systemProcedure = nullptr;
/// The offset of our record, after the system's own words.
int recordOffset = 0;

BitmapButton* ButtonOf(HWND control) {
    return reinterpret_cast<BitmapButton*>(GetWindowLongPtrA(control, recordOffset));
}

std::string TextOf(HWND control) {
    char text[256];
    const int length = GetWindowTextA(control, text, static_cast<int>(sizeof text));
    return std::string(text, static_cast<std::size_t>(length));
}

void PaintPicture(HDC context, const BitmapButton& button, int height, bool isEnabled) {
    const int step = button.scale.Pixels(1);
    const int shift = button.isPressed ? step : 0;
    const int above = height - static_cast<int>(button.picture.size.cy);
    DrawTransparent(context, button.picture,
                    {button.scale.Pixels(pictureLeft) + shift, above / 2 - step + shift},
                    isEnabled);
}

/// The offset after the picture, or `bare` without one.
int LeftBehindPicture(const BitmapButton& button, int gap, int bare) {
    return button.picture.bitmap != nullptr
               ? button.scale.Pixels(pictureLeft) + static_cast<int>(button.picture.size.cx) +
                     button.scale.Pixels(gap)
               : button.scale.Pixels(bare);
}

void PaintText(HDC context, const BitmapButton& button, const std::string& text, RECT room,
               bool isEnabled) {
    const int shift = button.isPressed ? button.scale.Pixels(1) : 0;
    room.left = LeftBehindPicture(button, textGap, bareTextLeft) + shift;
    room.top += shift;
    room.bottom += shift;
    const Selection font(context,
                         button.font != nullptr ? button.font : GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(isEnabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawTextA(context, text.c_str(), -1, &room, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
}

void PaintFocus(HDC context, const BitmapButton& button, const RECT& client) {
    const int margin = button.scale.Pixels(focusMargin);
    const RECT frame{LeftBehindPicture(button, focusMargin, bareFocusLeft), client.top + margin,
                     client.right - button.scale.Pixels(focusRightMargin), client.bottom - margin};
    if (frame.right > frame.left) {
        DrawFocusRect(context, &frame);
    }
}

void Paint(HWND control, const BitmapButton& button) {
    const BufferedPaint paint(control);
    const bool isEnabled = IsControlEnabled(control);
    RECT frame = paint.Client();
    UINT state = DFCS_BUTTONPUSH;
    state |= button.isPressed ? DFCS_PUSHED : 0;
    state |= isEnabled ? 0 : DFCS_INACTIVE;
    DrawFrameControl(paint.Context(), &frame, DFC_BUTTON, state);
    if (button.picture.bitmap != nullptr) {
        PaintPicture(paint.Context(), button, paint.Height(), isEnabled);
    }
    PaintText(paint.Context(), button, TextOf(control), paint.Client(), isEnabled);
    if (button.isFocused) {
        PaintFocus(paint.Context(), button, paint.Client());
    }
}

/// The dialog asks for the style; a button that draws itself takes no default look.
void Create(HWND control, BitmapButton& button) {
    const LONG style = GetWindowLongA(control, GWL_STYLE);
    if ((style & BS_TYPEMASK) != BS_OWNERDRAW) {
        SetWindowLongA(control, GWL_STYLE, (style & ~BS_TYPEMASK) | BS_OWNERDRAW);
    }
    button.scale = ScaleOf(control);
    button.picture = LoadPicture(GetDlgCtrlID(control), button.scale);
}

LRESULT TakeSystem(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcA(systemProcedure, control, message, wParam, lParam);
}

LRESULT SetState(HWND control, BitmapButton& button, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = TakeSystem(control, BM_SETSTATE, wParam, lParam);
    const bool isPressed = wParam != 0;
    if (isPressed != button.isPressed) {
        button.isPressed = isPressed;
        Invalidate(control);
    }
    return result;
}

LRESULT Take(HWND control, BitmapButton& button, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE: {
            const LRESULT result = TakeSystem(control, message, wParam, lParam);
            Create(control, button);
            return result;
        }
        case WM_NCPAINT:
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_PAINT:
            Paint(control, button);
            return 0;
        case WM_SETFONT:
            button.font = reinterpret_cast<HFONT>(wParam);
            Invalidate(control);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(button.font);
        case BM_SETSTATE:
            return SetState(control, button, wParam, lParam);
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            button.isFocused = message == WM_SETFOCUS;
            [[fallthrough]];
        case WM_ENABLE:
        case WM_SETTEXT:
        case WM_SIZE: {
            const LRESULT result = TakeSystem(control, message, wParam, lParam);
            Invalidate(control);
            return result;
        }
        default:
            return TakeSystem(control, message, wParam, lParam);
    }
}

LRESULT CALLBACK Procedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded(LRESULT{0}, [&]() -> LRESULT {
        if (message == WM_NCCREATE) {
            SetWindowLongPtrA(control, recordOffset,
                              reinterpret_cast<LONG_PTR>(TryMake<BitmapButton>().release()));
        }
        BitmapButton* const button = ButtonOf(control);
        if (message == WM_NCDESTROY) {
            delete button;
            SetWindowLongPtrA(control, recordOffset, 0);
            return TakeSystem(control, message, wParam, lParam);
        }
        return button != nullptr ? Take(control, *button, message, wParam, lParam)
                                 : TakeSystem(control, message, wParam, lParam);
    });
}

}  // namespace

void TakeOverButton(WNDCLASSA& system) {
    systemProcedure = system.lpfnWndProc;
    recordOffset = system.cbWndExtra;
    system.cbWndExtra += static_cast<int>(sizeof(LONG_PTR));
    system.lpfnWndProc = Procedure;
}

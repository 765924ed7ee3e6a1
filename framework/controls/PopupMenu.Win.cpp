// tPopupMenu and tRealtimeMenu: a label and a box with the chosen entry of a menu.
#include <algorithm>
#include <optional>
#include <string>

#include "base/WindowContext.Win.h"
#include "framework/controls/ControlSupport.Win.h"
#include "framework/controls/PopupEntries.Win.h"
#include "framework/controls/PopupLabel.h"
#include "framework/controls/PopupSteps.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/drawing/InterfaceLib.Win.h"

namespace {

struct PopupMenu {
    PopupEntries entries;
    int selected = 1;
    /// The selection when the menu opened.
    int saved = 1;
    bool isRealtime = false;
    bool isOpen = false;
};

bool Load(HWND control, PopupMenu& popup) {
    char className[16];
    GetClassNameA(control, className, static_cast<int>(sizeof className));
    popup.isRealtime = className[1] == 'R';
    return popup.entries.Load(control);
}

// --- Paint ---

struct BoxLook {
    COLORREF text;
    HBRUSH fill;
};

BoxLook LookOf(HWND control) {
    if (!IsControlEnabled(control)) {
        return {GetSysColor(COLOR_GRAYTEXT), GetSysColorBrush(COLOR_BTNFACE)};
    }
    if (GetFocus() == control) {
        return {GetSysColor(COLOR_HIGHLIGHTTEXT), GetSysColorBrush(COLOR_HIGHLIGHT)};
    }
    // Black on white whatever the user's colours: one alone of the two could vanish.
    return {RGB(0, 0, 0), static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))};
}

struct MeasuredLabel {
    std::string text;
    /// In pixels, as drawn.
    int height;
    /// Where the box begins.
    int boxLeft;
};

/// The font of the popups is selected in `context`.
MeasuredLabel MeasureLabel(HWND control, HDC context) {
    char text[textBufferSize];
    GetWindowTextA(control, text, static_cast<int>(sizeof text));
    const PopupLabel label = SplitPopupLabel(text);
    // Measured as it is drawn: an ampersand marks the mnemonic.
    RECT measured{};
    DrawTextA(context, label.text.c_str(), -1, &measured, DT_SINGLELINE | DT_CALCRECT);
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    return {label.text, static_cast<int>(measured.bottom),
            PopupBoxLeft(label, static_cast<int>(measured.right),
                         static_cast<int>(metrics.tmAveCharWidth), ScaleOf(control))};
}

/// Draws the label. Returns where the box begins.
int PaintLabel(HWND control, HDC context, const RECT& client) {
    const MeasuredLabel label = MeasureLabel(control, context);
    const int top = (static_cast<int>(client.bottom) - label.height) / 2;
    const UINT state = IsControlEnabled(control) ? DSS_NORMAL : DSS_DISABLED;
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    DrawStateA(context, nullptr, nullptr, reinterpret_cast<LPARAM>(label.text.c_str()),
               static_cast<WPARAM>(label.text.size()), 0, top, 0, 0, DST_PREFIXTEXT | state);
    return label.boxLeft;
}

/// A square a little smaller than the box, as far as the edge leaves room for it.
void PaintPicture(HDC context, HBITMAP picture, const RECT& box, const RECT& inside) {
    const SIZE size = BitmapSize(picture);
    const int side = box.bottom - box.top - 2;
    const MemoryContext memory(context, picture);
    IntersectClipRect(context, inside.left, inside.top, inside.right, inside.bottom);
    SetStretchBltMode(context, HALFTONE);
    SetBrushOrgEx(context, 0, 0, nullptr);
    StretchBlt(context, box.left + 1, box.top + 1, side, side, memory.Get(), 0, 0, size.cx, size.cy,
               SRCCOPY);
    SelectClipRgn(context, nullptr);
}

void PaintArrow(HDC context, const RECT& inside, int width, bool isEnabled, bool isOpen) {
    RECT arrow = inside;
    arrow.left = (std::max)(arrow.left, arrow.right - width);
    UINT state = DFCS_SCROLLCOMBOBOX;
    state |= isEnabled ? 0 : DFCS_INACTIVE;
    state |= isOpen ? DFCS_PUSHED : 0;
    DrawFrameControl(context, &arrow, DFC_SCROLL, state);
}

void PaintBox(HWND control, const PopupMenu& popup, HDC context, RECT box) {
    constexpr int edge = 2;
    const int textMargin = ScaleOf(control).Pixels(3);
    const bool isEnabled = IsControlEnabled(control);
    const BoxLook look = LookOf(control);
    const int height = box.bottom - box.top;
    DrawEdge(context, &box, EDGE_SUNKEN, BF_RECT);
    RECT inside = box;
    InflateRect(&inside, -edge, -edge);
    FillRect(context, &inside, look.fill);
    const int arrowWidth = height * 2 / 3;
    PaintArrow(context, inside, arrowWidth, isEnabled, popup.isOpen);
    RECT text = inside;
    text.left += textMargin;
    text.right -= arrowWidth;
    if (popup.entries.HavePictures()) {
        if (const HBITMAP picture = popup.entries.Picture(popup.selected)) {
            PaintPicture(context, picture, box, inside);
        }
        text.left += height;
    }
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, look.text);
    DrawTextA(context, popup.entries.Text(popup.selected).c_str(), -1, &text,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    if (isEnabled && !popup.isOpen) {
        FrameRect(context, &inside, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    }
}

void Paint(HWND control, const PopupMenu& popup) {
    const BufferedPaint paint(control);
    const Selection font(paint.Context(), GetStockObject(DEFAULT_GUI_FONT));
    RECT box = paint.Client();
    box.left = PaintLabel(control, paint.Context(), paint.Client());
    if (box.left < box.right) {
        PaintBox(control, popup, paint.Context(), box);
    }
}

int BoxLeft(HWND control) {
    const WindowContext context(control);
    const Selection font(context.Get(), GetStockObject(DEFAULT_GUI_FONT));
    return MeasureLabel(control, context.Get()).boxLeft;
}

// --- Choosing ---

void Choose(HWND control, PopupMenu& popup, int entry) {
    popup.selected = entry;
    ShowValue(control);
    TellDialog(control, WM_NOTIFY, control);
}

void DropMouseMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE) ||
           PeekMessageA(&message, nullptr, WM_NCMOUSEMOVE, WM_NCMBUTTONDBLCLK, PM_REMOVE)) {
        // The end of the program comes whatever is asked for, and belongs to the loops around.
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
    }
}

/// On the screen.
POINT MenuPlace(HWND control) {
    POINT place{BoxLeft(control), 0};
    ClientToScreen(control, &place);
    return place;
}

/// The entry that the user chose, 0 for none.
int TrackMenu(HWND control, const PopupMenu& popup, POINT place) {
    const DragSection section;
    const int id = TrackPopupMenu(popup.entries.Menu(),
                                  TPM_LEFTALIGN | TPM_TOPALIGN | TPM_LEFTBUTTON | TPM_RETURNCMD,
                                  place.x, place.y, 0, control, nullptr);
    return id != 0 ? popup.entries.WithId(static_cast<UINT>(id)) : 0;
}

void OpenMenu(HWND control, PopupMenu& popup) {
    SetFocus(control);
    // Before anybody is told that the menu opens: it may fail.
    const POINT place = MenuPlace(control);
    popup.isOpen = true;
    popup.saved = popup.selected;
    CheckMenuRadioItem(popup.entries.Menu(), 0, static_cast<UINT>(popup.entries.Count() - 1),
                       static_cast<UINT>(popup.selected - 1), MF_BYPOSITION);
    Redraw(control);
    TellDialog(control, messageMenuOpens, control);
    const int chosen = TrackMenu(control, popup, place);
    DropMouseMessages();
    popup.isOpen = false;
    if (chosen != 0 && (!popup.isRealtime || chosen != popup.selected)) {
        Choose(control, popup, chosen);
    } else if (chosen == 0 && popup.isRealtime && popup.selected != popup.saved) {
        Choose(control, popup, popup.saved);
    }
    TellDialog(control, messageMenuIsClosed, control);
    Redraw(control);
}

/// The pointer, or a key, has moved on in the open menu.
void PassEntry(HWND control, PopupMenu& popup, WPARAM wParam, LPARAM menu) {
    constexpr WORD closing = 0xFFFF;
    if (!popup.isRealtime || (HIWORD(wParam) == closing && menu == 0)) {
        return;
    }
    const bool isEntry = (HIWORD(wParam) & MF_POPUP) == 0;
    const int passed = isEntry ? popup.entries.WithId(LOWORD(wParam)) : 0;
    const int entry = passed != 0 && popup.entries.IsSelectable(passed) ? passed : popup.saved;
    if (entry != popup.selected) {
        Choose(control, popup, entry);
    }
}

std::optional<PopupKey> KeyOf(WPARAM key) {
    switch (key) {
        case VK_PRIOR:
        case VK_LEFT:
        case VK_UP:
            return PopupKey::previous;
        case VK_NEXT:
        case VK_RIGHT:
        case VK_DOWN:
            return PopupKey::next;
        case VK_END:
            return PopupKey::last;
        case VK_HOME:
            return PopupKey::first;
        default:
            return std::nullopt;
    }
}

void Press(HWND control, PopupMenu& popup, PopupKey key) {
    const int entry = PopupEntryAfter(key, popup.selected, popup.entries.Count(),
                                      [&](int at) { return popup.entries.IsSelectable(at); });
    if (entry != popup.selected) {
        Choose(control, popup, entry);
    }
}

// --- Messages ---

/// Shows a change of the entries. Returns its result.
LRESULT Show(HWND control, LRESULT result) {
    if (result != CB_ERR) {
        Redraw(control);
    }
    return result;
}

/// The system's messages for lists.
LRESULT TakeList(HWND control, PopupEntries& entries, UINT message, WPARAM wParam, LPARAM lParam) {
    const int position = static_cast<int>(wParam);
    switch (message) {
        case CB_INSERTSTRING:
            return Show(control, entries.Insert(position, reinterpret_cast<const char*>(lParam)));
        case CB_DELETESTRING:
            return Show(control, entries.Delete(position));
        case CB_GETCOUNT:
            return entries.Count();
        case CB_GETLBTEXT:
            return entries.ReadText(position, reinterpret_cast<char*>(lParam));
        case CB_SETITEMDATA:
            return Show(control, entries.SetData(position, lParam));
        default:
            return TakeAsFocusable(control, message, wParam, lParam);
    }
}

LRESULT Take(HWND control, PopupMenu& popup, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            if (!Load(control, popup)) {
                SetRecord(control, std::unique_ptr<PopupMenu>());
            }
            return 0;
        case WM_PAINT:
            Paint(control, popup);
            return 0;
        case WM_SETTEXT: {
            const LRESULT result = DefWindowProcA(control, message, wParam, lParam);
            InvalidateRect(control, nullptr, FALSE);
            return result;
        }
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            OpenMenu(control, popup);
            return 0;
        case WM_MENUSELECT:
            PassEntry(control, popup, wParam, lParam);
            return 0;
        case WM_KEYDOWN:
            if (const auto key = KeyOf(wParam)) {
                Press(control, popup, *key);
                return 0;
            }
            return TakeAsFocusable(control, message, wParam, lParam);
        case controlGetValue:
            return popup.selected;
        case controlSetValue:
            popup.selected = static_cast<int>(lParam);
            ShowValue(control);
            return 0;
        default:
            return TakeList(control, popup.entries, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK PopupMenuProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlProcedure<PopupMenu, Take>(control, message, wParam, lParam);
}

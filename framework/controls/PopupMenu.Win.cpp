// tPopupMenu and tRealtimeMenu: a label and a box with the chosen entry of a menu.
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/Module.Win.h"
#include "framework/controls/ControlSupport.Win.h"
#include "framework/controls/PopupLabel.h"
#include "framework/controls/PopupSteps.h"
#include "framework/dialog/DialogState.h"
#include "framework/drawing/InterfaceLib.Win.h"

namespace {

/// A picture beside an entry, by the entry's command id.
struct EntryPicture {
    UINT id;
    /// Scaled to a check mark, as the menu shows it.
    GdiObject mark;
    /// For the box.
    GdiObject picture;
};

constexpr std::size_t maximalPictures = 32;

struct PopupMenu {
    HMENU resource = nullptr;
    HMENU entries = nullptr;
    int selected = 1;
    /// The selection when the menu opened.
    int saved = 1;
    int entriesInColumn = 0;
    bool isRealtime = false;
    bool wasChosen = false;
    bool isOpen = false;
    std::vector<EntryPicture> pictures;

    ~PopupMenu() {
        if (resource != nullptr) {
            DestroyMenu(resource);
        }
    }
};

// --- Entries ---

int Count(const PopupMenu& popup) {
    return GetMenuItemCount(popup.entries);
}

/// Enabled, and neither a separator nor a submenu.
bool IsSelectable(const PopupMenu& popup, int entry) {
    constexpr UINT unusable = MF_GRAYED | MF_DISABLED | MF_SEPARATOR | MF_POPUP;
    const UINT state = GetMenuState(popup.entries, static_cast<UINT>(entry - 1), MF_BYPOSITION);
    return state != 0xFFFFFFFF && (state & unusable) == 0;
}

UINT IdOf(const PopupMenu& popup, int entry) {
    return GetMenuItemID(popup.entries, entry - 1);
}

/// The 1-based entry with a command id; 0 if there is none.
int EntryWithId(const PopupMenu& popup, UINT id) {
    for (int entry = 1; entry <= Count(popup); ++entry) {
        if (IdOf(popup, entry) == id) {
            return entry;
        }
    }
    return 0;
}

std::string EntryText(const PopupMenu& popup, int entry) {
    char text[textBufferSize] = "";
    GetMenuStringA(popup.entries, static_cast<UINT>(entry - 1), text, static_cast<int>(sizeof text),
                   MF_BYPOSITION);
    return text;
}

HBITMAP PictureOf(const PopupMenu& popup, int entry) {
    const UINT id = IdOf(popup, entry);
    const auto found = std::find_if(popup.pictures.begin(), popup.pictures.end(),
                                    [id](const EntryPicture& picture) { return picture.id == id; });
    return found != popup.pictures.end() ? As<HBITMAP>(found->picture) : nullptr;
}

// --- Creation ---

int EntryHeight(HWND control, const PopupMenu& popup) {
    RECT rect{};
    return GetMenuItemRect(control, popup.entries, 0, &rect)
               ? static_cast<int>(rect.bottom - rect.top)
               : 0;
}

/// Whether there is a menu.
bool Load(HWND control, PopupMenu& popup) {
    popup.resource = LoadMenuA(instanceHandle, ResourceName(PictureId(control)));
    popup.entries = popup.resource != nullptr ? GetSubMenu(popup.resource, 0) : nullptr;
    if (popup.entries == nullptr) {
        return false;
    }
    char className[16];
    GetClassNameA(control, className, static_cast<int>(sizeof className));
    popup.isRealtime = className[1] == 'R';
    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    popup.entriesInColumn = PopupEntriesInColumn(static_cast<int>(desktop.bottom - desktop.top),
                                                 EntryHeight(control, popup));
    return true;
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

/// Draws the label; answers where the box begins.
int PaintLabel(HWND control, HDC context, const RECT& client) {
    char text[textBufferSize];
    GetWindowTextA(control, text, static_cast<int>(sizeof text));
    const PopupLabel label = SplitPopupLabel(text);
    // Measured as it is drawn: an ampersand marks the mnemonic.
    RECT measured{};
    DrawTextA(context, label.text.c_str(), -1, &measured, DT_SINGLELINE | DT_CALCRECT);
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    const int top = (client.bottom - measured.bottom) / 2;
    const UINT state = IsControlEnabled(control) ? DSS_NORMAL : DSS_DISABLED;
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    DrawStateA(context, nullptr, nullptr, reinterpret_cast<LPARAM>(label.text.c_str()),
               static_cast<WPARAM>(label.text.size()), 0, top, 0, 0, DST_PREFIXTEXT | state);
    return PopupBoxLeft(label, static_cast<int>(measured.right),
                        static_cast<int>(metrics.tmAveCharWidth));
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
    constexpr int textMargin = 3;
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
    if (!popup.pictures.empty()) {
        if (const HBITMAP picture = PictureOf(popup, popup.selected)) {
            PaintPicture(context, picture, box, inside);
        }
        text.left += height;
    }
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, look.text);
    DrawTextA(context, EntryText(popup, popup.selected).c_str(), -1, &text,
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
    const HDC context = GetDC(control);
    const Selection font(context, GetStockObject(DEFAULT_GUI_FONT));
    char text[textBufferSize];
    GetWindowTextA(control, text, static_cast<int>(sizeof text));
    const PopupLabel label = SplitPopupLabel(text);
    RECT measured{};
    DrawTextA(context, label.text.c_str(), -1, &measured, DT_SINGLELINE | DT_CALCRECT);
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    ReleaseDC(control, context);
    return PopupBoxLeft(label, static_cast<int>(measured.right),
                        static_cast<int>(metrics.tmAveCharWidth));
}

// --- Choosing ---

void Choose(HWND control, PopupMenu& popup, int entry) {
    popup.selected = entry;
    Redraw(control);
    TellDialog(control, WM_NOTIFY, control);
}

void DropMouseMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE) ||
           PeekMessageA(&message, nullptr, WM_NCMOUSEMOVE, WM_NCMBUTTONDBLCLK, PM_REMOVE)) {
    }
}

/// The entry that the user chose, 0 for none.
int TrackMenu(HWND control, const PopupMenu& popup) {
    POINT place{BoxLeft(control), 0};
    ClientToScreen(control, &place);
    const int id =
        TrackPopupMenu(popup.entries, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_LEFTBUTTON | TPM_RETURNCMD,
                       place.x, place.y, 0, control, nullptr);
    return id != 0 ? EntryWithId(popup, static_cast<UINT>(id)) : 0;
}

void OpenMenu(HWND control, PopupMenu& popup) {
    SetFocus(control);
    popup.isOpen = true;
    popup.saved = popup.selected;
    popup.wasChosen = false;
    CheckMenuRadioItem(popup.entries, 0, static_cast<UINT>(Count(popup) - 1),
                       static_cast<UINT>(popup.selected - 1), MF_BYPOSITION);
    Redraw(control);
    ++dialogState.dragDepth;
    const int chosen = TrackMenu(control, popup);
    --dialogState.dragDepth;
    DropMouseMessages();
    popup.isOpen = false;
    popup.wasChosen = chosen != 0;
    if (popup.wasChosen && (!popup.isRealtime || chosen != popup.selected)) {
        Choose(control, popup, chosen);
    } else if (!popup.wasChosen && popup.isRealtime && popup.selected != popup.saved) {
        Choose(control, popup, popup.saved);
    }
    Redraw(control);
}

/// The pointer, or a key, has moved on in the open menu.
void PassEntry(HWND control, PopupMenu& popup, WPARAM wParam, LPARAM menu) {
    constexpr WORD closing = 0xFFFF;
    if (!popup.isRealtime || (HIWORD(wParam) == closing && menu == 0)) {
        return;
    }
    const bool isEntry = (HIWORD(wParam) & MF_POPUP) == 0;
    const int passed = isEntry ? EntryWithId(popup, LOWORD(wParam)) : 0;
    const int entry = passed != 0 && IsSelectable(popup, passed) ? passed : popup.saved;
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
    const int entry = PopupEntryAfter(key, popup.selected, Count(popup),
                                      [&](int at) { return IsSelectable(popup, at); });
    if (entry != popup.selected) {
        Choose(control, popup, entry);
    }
}

// --- Filling ---

void LayOutColumns(const PopupMenu& popup) {
    for (int entry = 1; entry <= Count(popup); ++entry) {
        MENUITEMINFOA info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE;
        GetMenuItemInfoA(popup.entries, static_cast<UINT>(entry - 1), TRUE, &info);
        info.fType &= ~static_cast<UINT>(MFT_MENUBREAK);
        if (StartsPopupColumn(entry, popup.entriesInColumn)) {
            info.fType |= MFT_MENUBREAK;
        }
        SetMenuItemInfoA(popup.entries, static_cast<UINT>(entry - 1), TRUE, &info);
    }
}

UINT NewId(const PopupMenu& popup) {
    UINT largest = 0;
    for (int entry = 1; entry <= Count(popup); ++entry) {
        const UINT id = IdOf(popup, entry);
        if (id != 0xFFFFFFFF) {
            largest = (std::max)(largest, id);
        }
    }
    return largest + 1;
}

/// The position of the new entry, counted from 0.
LRESULT Insert(HWND control, PopupMenu& popup, int position, const char* text) {
    const int place = position < 0 || position > Count(popup) ? Count(popup) : position;
    InsertMenuA(popup.entries, static_cast<UINT>(place), MF_BYPOSITION | MF_STRING, NewId(popup),
                text);
    LayOutColumns(popup);
    Redraw(control);
    return place;
}

LRESULT Delete(HWND control, PopupMenu& popup, int position) {
    if (position < 0 || position >= Count(popup)) {
        return CB_ERR;
    }
    const UINT id = IdOf(popup, position + 1);
    std::erase_if(popup.pictures, [id](const EntryPicture& picture) { return picture.id == id; });
    DeleteMenu(popup.entries, static_cast<UINT>(position), MF_BYPOSITION);
    LayOutColumns(popup);
    Redraw(control);
    return Count(popup);
}

LRESULT ReadText(const PopupMenu& popup, int position, char* text) {
    if (position < 0 || position >= Count(popup)) {
        return CB_ERR;
    }
    const std::string read = EntryText(popup, position + 1);
    CopyText(text, read.c_str());
    return static_cast<LRESULT>(read.size());
}

GdiObject Scaled(HBITMAP picture, int width, int height) {
    const HDC screen = GetDC(nullptr);
    const SIZE size = BitmapSize(picture);
    GdiObject scaled(CreateCompatibleBitmap(screen, width, height));
    {
        const MemoryContext from(screen, picture);
        const MemoryContext to(screen, As<HBITMAP>(scaled));
        SetStretchBltMode(to.Get(), HALFTONE);
        SetBrushOrgEx(to.Get(), 0, 0, nullptr);
        StretchBlt(to.Get(), 0, 0, width, height, from.Get(), 0, 0, size.cx, size.cy, SRCCOPY);
    }
    ReleaseDC(nullptr, screen);
    return scaled;
}

bool SetPicture(PopupMenu& popup, int position, int resource) {
    GdiObject picture = LoadPicture(resource);
    const UINT id = IdOf(popup, position + 1);
    const auto before = std::find_if(popup.pictures.begin(), popup.pictures.end(),
                                     [id](const EntryPicture& other) { return other.id == id; });
    const bool isNew = before == popup.pictures.end();
    if (picture == nullptr || (isNew && popup.pictures.size() >= maximalPictures)) {
        return false;
    }
    GdiObject mark = Scaled(As<HBITMAP>(picture), GetSystemMetrics(SM_CXMENUCHECK),
                            GetSystemMetrics(SM_CYMENUCHECK));
    SetMenuItemBitmaps(popup.entries, static_cast<UINT>(position), MF_BYPOSITION, As<HBITMAP>(mark),
                       As<HBITMAP>(mark));
    // The menu has the new mark; only now may the old one go.
    EntryPicture entry{id, std::move(mark), std::move(picture)};
    if (isNew) {
        popup.pictures.push_back(std::move(entry));
    } else {
        *before = std::move(entry);
    }
    return true;
}

/// 0 and 1 disable and enable the entry; any other value is a picture's resource id.
LRESULT SetData(HWND control, PopupMenu& popup, int position, LPARAM data) {
    if (position < 0 || position >= Count(popup)) {
        return CB_ERR;
    }
    if (data == 0 || data == 1) {
        EnableMenuItem(popup.entries, static_cast<UINT>(position),
                       MF_BYPOSITION | static_cast<UINT>(data == 1 ? MF_ENABLED : MF_GRAYED));
    } else if (!SetPicture(popup, position, static_cast<int>(data))) {
        return CB_ERR;
    }
    Redraw(control);
    return 0;
}

LRESULT TakeList(HWND control, PopupMenu& popup, UINT message, WPARAM wParam, LPARAM lParam) {
    const int position = static_cast<int>(wParam);
    switch (message) {
        case CB_INSERTSTRING:
            return Insert(control, popup, position, reinterpret_cast<const char*>(lParam));
        case CB_DELETESTRING:
            return Delete(control, popup, position);
        case CB_GETCOUNT:
            return Count(popup);
        case CB_GETLBTEXT:
            return ReadText(popup, position, reinterpret_cast<char*>(lParam));
        case CB_SETITEMDATA:
            return SetData(control, popup, position, lParam);
        default:
            return DefWindowProcA(control, message, wParam, lParam);
    }
}

LRESULT Take(HWND control, PopupMenu& popup, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            if (!Load(control, popup)) {
                SetRecord(control, std::unique_ptr<PopupMenu>());
            }
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_PAINT:
            Paint(control, popup);
            return 0;
        case WM_ENABLE:
        case WM_SIZE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            InvalidateRect(control, nullptr, FALSE);
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
            return DefWindowProcA(control, message, wParam, lParam);
        case controlGetValue:
            return popup.selected;
        case controlSetValue:
            popup.selected = static_cast<int>(lParam);
            Redraw(control);
            return 0;
        default:
            return TakeList(control, popup, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK PopupMenuProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlProcedure<PopupMenu, Take>(control, message, wParam, lParam);
}

// How the window of a dialog opens, and what its messages become.
#include "framework/dialog/DialogWindow.Win.h"

#include <commctrl.h>
#include <dbt.h>
#include <shellapi.h>
#include <windowsx.h>

#include <cmath>

#include "base/Module.Win.h"
#include "base/Platform.h"
#include "framework/controls/ScrollStep.h"
#include "framework/dialog/Callback.Win.h"
#include "framework/dialog/DialogState.h"
#include "resources/Ids.h"

namespace {

/// For procedures of the system's messages, whose answer is not the result of the dialog procedure.
INT_PTR Answer(HWND window, LONG_PTR value) {
    SetWindowLongPtrA(window, DWLP_MSGRESULT, value);
    return TRUE;
}

/// Messages on which cursor and help follow the mouse. The idle timer's is among them, so nothing
/// is missed; the questions that the system asks meanwhile are left alone.
bool FollowsMouse(UINT message) {
    switch (message) {
        case WM_MOUSEMOVE:
        case WM_SETCURSOR:
        case WM_COMMAND:
        case WM_NOTIFY:
        case WM_HSCROLL:
        case WM_VSCROLL:
        case WM_TIMER:
            return true;
        default:
            return false;
    }
}

/// Where the mouse was when the message came that is being handled; for those that came otherwise,
/// where it is.
POINT MousePlace(UINT message) {
    if (message == WM_NOTIFY && !InSendMessage()) {
        const DWORD place = GetMessagePos();
        return {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    }
    POINT place{};
    GetCursorPos(&place);
    return place;
}

hostapi::Point ToClient(HWND window, POINT place) {
    ScreenToClient(window, &place);
    return {static_cast<std::int16_t>(place.y), static_cast<std::int16_t>(place.x)};
}

NorvantaDialog* DialogAt(POINT place) {
    const HWND window = WindowFromPoint(place);
    return window != nullptr ? DialogWindow::Of(GetAncestor(window, GA_ROOT)) : nullptr;
}

/// Whether a control's command means that it was used.
bool IsUse(const ItemRecord& record, int code) {
    switch (record.Letter()) {
        case itemButton:
            // Quick clicks on some buttons come as double clicks.
            return code == BN_CLICKED || code == BN_DOUBLECLICKED;
        case itemCombo:
            return code == CBN_SELCHANGE;
        case itemText:
        case itemInteger:
        case itemReal:
            return record.IsEditField() ? code == EN_CHANGE
                                        : code == STN_CLICKED || code == STN_DBLCLK;
        default:
            return false;
    }
}

bool IsInClient(LPARAM hitTest) {
    return LOWORD(hitTest) == HTCLIENT;
}

bool IsNewVolume(WPARAM event, LPARAM data) {
    const auto* const header = reinterpret_cast<const DEV_BROADCAST_HDR*>(data);
    return event == DBT_DEVICEARRIVAL && header != nullptr &&
           header->dbch_devicetype == DBT_DEVTYP_VOLUME;
}

}  // namespace

NorvantaDialog* DialogWindow::Of(HWND window) {
    NorvantaDialog* dialog = dialogState.newest;
    while (dialog != nullptr && !(dialog->windowExists && Window(*dialog) == window)) {
        dialog = dialog->next;
    }
    return dialog;
}

HWND DialogWindow::OwnerOf(const NorvantaDialog& dialog) {
    if (dialog.owner != nullptr && dialog.owner->windowExists) {
        return Window(*dialog.owner);
    }
    for (const NorvantaDialog* other = dialogState.newest; other != nullptr; other = other->next) {
        if (other != &dialog && other->windowExists && other->kind == NorvantaDialog::Kind::modal) {
            return Window(*other);
        }
    }
    const HWND root = static_cast<HWND>(dialogState.rootWindow);
    return IsWindow(root) ? root : nullptr;
}

// --- Opening ---

INT_PTR CALLBACK DialogWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        NorvantaDialog& opening = *reinterpret_cast<NorvantaDialog*>(lParam);
        return Guarded(false, [&] { return Open(window, opening); }) ? TRUE : FALSE;
    }
    NorvantaDialog* const dialog = Of(window);
    if (dialog == nullptr) {
        return FALSE;
    }
    if (message == WM_GETMINMAXINFO) {
        auto* const limits = reinterpret_cast<MINMAXINFO*>(lParam);
        limits->ptMinTrackSize = {dialog->minimumSize.h, dialog->minimumSize.v};
        return TRUE;
    }
    const bool handled = Guarded(true, [&] { return Handle(*dialog, message, wParam, lParam); });
    if (handled && message == WM_SETCURSOR) {
        return Answer(window, TRUE);
    }
    return handled ? TRUE : FALSE;
}

/// The time of Setup. It needs its window to the end: an error from before closes the dialog
/// afterwards.
class OpeningSection {
  public:
    explicit OpeningSection(NorvantaDialog& newDialog) : dialog(newDialog) {
        dialog.isOpening = true;
    }
    OpeningSection(const OpeningSection&) = delete;
    OpeningSection& operator=(const OpeningSection&) = delete;
    ~OpeningSection() { dialog.isOpening = false; }

  private:
    NorvantaDialog& dialog;
};

/// Whether the system shall choose the first focus.
bool DialogWindow::Open(HWND window, NorvantaDialog& dialog) {
    // First of all: whatever fails below, the dialog is found at the next message and closed.
    dialog.systemWindow = window;
    dialog.windowExists = true;
    dialog.port.reset();
    dialog.port = std::make_unique<DrawingPort>(window);
    dialog.wasPlaced = false;
    dialog.focus = FocusState{};
    dialog.textDepth = 0;
    dialog.isInAlert = false;
    dialog.helpId = 0;
    dialog.previousFocus = dialogState.focused;
    {
        const OpeningSection section(dialog);
        dialog.Setup();
    }
    if (!dialog.windowExists || dialog.isKeptHidden) {
        return true;
    }
    if (!dialog.wasPlaced) {
        FitToScreen(dialog);
        dialog.wasPlaced = true;
    }
    ShowWindow(window, IsZoomed(window) ? SW_SHOWMAXIMIZED : SW_SHOW);
    SetForegroundWindow(window);
    dialog.isShown = true;
    // Being shown brings messages, and one may have closed it.
    return !dialog.windowExists || dialog.GetFocusItem() == 0;
}

/// A window larger than its screen's work area is cut to it, and one that sticks out moves in.
void DialogWindow::FitToScreen(NorvantaDialog& dialog) {
    const HWND window = Window(dialog);
    if (IsZoomed(window)) {
        return;
    }
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    RECT frame{};
    GetWindowRect(window, &frame);
    const ScreenRect fitted = FittedInto(FromSystem(frame), FromSystem(info.rcWork));
    if (fitted == FromSystem(frame)) {
        return;
    }
    // A screen too small for the dialog is stronger than the dialog's least size.
    dialog.minimumSize = {
        static_cast<std::int16_t>((std::min)(fitted.Height(), int{dialog.minimumSize.v})),
        static_cast<std::int16_t>((std::min)(fitted.Width(), int{dialog.minimumSize.h}))};
    SetWindowPos(window, nullptr, fitted.left, fitted.top, fitted.Width(), fitted.Height(),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK DialogWindow::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    NorvantaDialog* const dialog = Of(window);
    if (dialog == nullptr || dialog->systemProcedure == nullptr) {
        return DefDlgProcA(window, message, wParam, lParam);
    }
    if (message == WM_NCACTIVATE) {
        // SetActive draws the caption.
        return TRUE;
    }
    if (message == WM_WINDOWPOSCHANGING && dialog->isKeptHidden) {
        reinterpret_cast<WINDOWPOS*>(lParam)->flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
    }
    return CallWindowProcA(reinterpret_cast<WNDPROC>(dialog->systemProcedure), window, message,
                           wParam, lParam);
}

// --- Every message ---

bool DialogWindow::Handle(NorvantaDialog& dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (errorCell != 0) {
        // What was thrown below a message ends the dialog, and then the ones below it.
        if (!dialog.isOpening) {
            dialog.Close(errorCell);
        }
        return false;
    }
    Refresh(dialog, message);
    return dialog.windowExists && Translate(dialog, message, wParam, lParam);
}

void DialogWindow::Refresh(NorvantaDialog& dialog, UINT message) {
    static bool isRefreshing = false;
    if (!FollowsMouse(message) || isRefreshing) {
        return;
    }
    struct Section {
        Section() { isRefreshing = true; }
        ~Section() { isRefreshing = false; }
    } const section;
    const POINT place = MousePlace(message);
    dialog.mouse = ToClient(Window(dialog), place);
    if (dialogState.dragDepth == 0) {
        RefreshCursorAndHelp(place);
    }
}

void DialogWindow::RefreshCursorAndHelp(POINT screen) {
    NorvantaDialog* const under = DialogAt(screen);
    if (under == nullptr || under->isInAlert) {
        return;
    }
    const hostapi::Point place = ToClient(Window(*under), screen);
    if (!IsUsable(*under, place)) {
        return;
    }
    const short item = under->ItemAtPoint(place);
    NorvantaDialog::ShowCursor(under->CursorAt(item));
    if (under->windowExists) {
        under->ShowHelp(under->HelpAt(item));
    }
}

/// The place is in the client area, and the dialog does not wait for another one.
bool DialogWindow::IsUsable(NorvantaDialog& dialog, hostapi::Point place) {
    RECT client{};
    GetClientRect(Window(dialog), &client);
    return IsWindowEnabled(Window(dialog)) && Contains(RectFromSystem(client), place);
}

bool DialogWindow::Translate(NorvantaDialog& dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            return TakeCommand(dialog, wParam, lParam);
        case WM_NOTIFY:
            return TakeNotification(dialog, wParam, lParam);
        case WM_HSCROLL:
        case WM_VSCROLL:
            return TakeScroll(dialog, LOWORD(wParam), static_cast<std::int16_t>(HIWORD(wParam)),
                              reinterpret_cast<HWND>(lParam));
        case messageClicked:
            TakeClick(GetDoubleClickTime());
            return true;
        case messageCancel:
            dialog.HitItem(dialog.cancellingItem);
            return true;
        case WM_CLOSE:
            dialog.HitItem(dialog.CloseBox());
            return true;
        case WM_TIMER:
            if (!dialog.isInAlert && dialogState.dragDepth == 0) {
                dialog.Idle();
            }
            return true;
        case WM_PAINT:
            dialog.PaintMessage();
            return true;
        case WM_SIZE:
            TakeSize(dialog, wParam);
            return false;
        case WM_MOVE:
            NoteClientPlace(dialog);
            return false;
        case WM_SETCURSOR:
            return IsInClient(lParam) && IsWindowEnabled(Window(dialog));
        case WM_MOUSEMOVE:
            return true;
        case WM_INITMENUPOPUP:
            dialog.UpdateMenus();
            return false;
        case WM_ACTIVATE:
            TakeActivation(dialog, LOWORD(wParam) != WA_INACTIVE);
            return false;
        case WM_ACTIVATEAPP:
            dialog.AppActivate(wParam != FALSE);
            return false;
        case WM_SYSCOLORCHANGE:
            dialog.port->SetBackground(GetSysColor(COLOR_BTNFACE));
            return false;
        case WM_DROPFILES:
            TakeDroppedFiles(dialog, reinterpret_cast<HDROP>(wParam));
            return true;
        case WM_DEVICECHANGE:
            if (IsNewVolume(wParam, lParam) && dialogState.active != nullptr) {
                dialogState.active->DiskEvent();
            }
            return false;
        default:
            return false;
    }
}

// --- Single messages ---

bool DialogWindow::TakeCommand(NorvantaDialog& dialog, WPARAM wParam, LPARAM lParam) {
    const int id = LOWORD(wParam);
    if (id == commandHelp) {
        dialog.HelpCommand();
        return true;
    }
    const short item = static_cast<short>(id);
    if (lParam == 0) {
        dialog.MenuCommand(item);
        return true;
    }
    if (!dialog.IsItem(item)) {
        return false;
    }
    ItemRecord& record = dialog.Record(item);
    const bool isOwnText = record.IsEditField() && dialog.textDepth > 0;
    if (!IsUse(record, HIWORD(wParam)) || isOwnText) {
        return false;
    }
    record.isProgrammatic = false;
    dialog.HitItem(item);
    return true;
}

bool DialogWindow::TakeNotification(NorvantaDialog& dialog, WPARAM wParam, LPARAM lParam) {
    const short item = static_cast<short>(wParam);
    if (!dialog.IsItem(item)) {
        return false;
    }
    dialogState.isDoubleClick = TakeClick(GetDoubleClickTime());
    const std::uint8_t kind = dialog.Record(item).kind;
    // Only the system's own controls put a record behind the message.
    const bool isTabChange =
        kind == itemTab && reinterpret_cast<const NMHDR*>(lParam)->code == TCN_SELCHANGE;
    if (kind != itemCustom && !isTabChange) {
        return false;
    }
    dialog.HitItem(item);
    return true;
}

namespace {

/// The thumb of a scroll bar in all its bits; the message has only the lower 16, and the last one
/// may come when the thumb is let go already.
int ThumbPlace(HWND control, int place) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS | SIF_POS;
    if (GetScrollInfo(control, SB_CTL, &info)) {
        for (const int whole : {info.nTrackPos, info.nPos}) {
            if (static_cast<std::uint16_t>(whole) == static_cast<std::uint16_t>(place)) {
                return whole;
            }
        }
    }
    return place;
}

}  // namespace

bool DialogWindow::TakeScroll(NorvantaDialog& dialog, int code, int place, HWND control) {
    const short item = static_cast<short>(GetDlgCtrlID(control));
    if (control == nullptr || !dialog.IsItem(item)) {
        return false;
    }
    ItemRecord& record = dialog.Record(item);
    if (record.kind != itemScrollBar && record.kind != itemCustom) {
        return false;
    }
    const bool wasTracking = record.isTracking;
    const bool isEnd = EndsScrolling(code);
    if (!wasTracking) {
        record.tracked = record.value;
    }
    if (wasTracking == isEnd && record.kind == itemScrollBar) {
        // A custom control counts its drags itself.
        dialogState.dragDepth += isEnd ? -1 : 1;
    }
    record.isTracking = !isEnd;
    const bool isThumb = code == scrollThumb || code == scrollThumbEnd;
    const int thumb = record.kind == itemScrollBar && isThumb ? ThumbPlace(control, place) : place;
    const int before = static_cast<int>(std::lround(record.tracked));
    const int position = ScrolledTo(record, code, before, thumb);
    if (position != before) {
        record.tracked = static_cast<float>(position);
        if (dialog.ScrollChanged(item, position) && dialog.windowExists) {
            dialog.SetValue(item, position);
        }
    }
    if (isEnd && dialog.windowExists && (wasTracking || code == scrollThumbEnd)) {
        dialog.SetValue(item, position);
        dialog.HitItem(item);
    }
    return true;
}

/// The size stays as recorded: the system tells of a move before it tells of a new size.
void DialogWindow::NoteClientPlace(NorvantaDialog& dialog) {
    if (IsIconic(Window(dialog))) {
        return;
    }
    POINT corner{};
    ClientToScreen(Window(dialog), &corner);
    hostapi::Rect& client = dialog.clientRectangle;
    client = Offset(client, corner.x - client.left, corner.y - client.top);
}

void DialogWindow::TakeSize(NorvantaDialog& dialog, WPARAM wParam) {
    if (wParam == SIZE_MINIMIZED || dialog.items.empty()) {
        return;
    }
    const hostapi::Rect before = dialog.clientRectangle;
    NoteClientRectangle(dialog);
    const int width = Width(dialog.clientRectangle) - Width(before);
    const int height = Height(dialog.clientRectangle) - Height(before);
    // Before Setup has measured the window there is nothing to follow.
    if (!IsEmpty(before) && (width != 0 || height != 0)) {
        dialog.Resize(static_cast<short>(width), static_cast<short>(height));
    }
}

void DialogWindow::TakeActivation(NorvantaDialog& dialog, bool on) {
    if (on) {
        dialogState.active = &dialog;
    } else if (dialogState.active == &dialog) {
        dialogState.active = nullptr;
    }
    dialog.SetActive(on);
}

void DialogWindow::TakeDroppedFiles(NorvantaDialog& dialog, HDROP drop) {
    constexpr UINT all = 0xFFFFFFFF;
    const UINT count = DragQueryFileA(drop, all, nullptr, 0);
    for (UINT i = 0; i < count && dialog.dropHandler != nullptr; ++i) {
        char path[MAX_PATH];
        if (DragQueryFileA(drop, i, path, MAX_PATH) > 0) {
            dialog.dropHandler(dialog.dropContext, path);
        }
    }
    DragFinish(drop);
}

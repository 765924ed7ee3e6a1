// How the window of a dialog opens, and the way of each of its messages.
#include "framework/dialog/DialogWindow.Win.h"

#include <commctrl.h>
#include <dbt.h>
#include <shellapi.h>
#include <windowsx.h>

#include "base/Callback.Win.h"
#include "base/HostServices.h"
#include "base/Module.Win.h"
#include "base/Platform.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/ProgramEnd.Win.h"
#include "framework/drawing/ScreenScale.Win.h"
#include "hostapi/Results.h"
#include "resources/Ids.h"

namespace {

constexpr char sourceName[] = "DialogWindow.Win";

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

/// Messages by which the user asks for something. What the others bring, such as painting, comes
/// again.
bool IsAsked(UINT message) {
    switch (message) {
        case WM_COMMAND:
        case WM_NOTIFY:
        case WM_HSCROLL:
        case WM_VSCROLL:
        case WM_CLOSE:
        case WM_DROPFILES:
        case messageCancel:
        case messageUsePart:
            return true;
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

HWND DialogWindow::InFront() {
    for (const NorvantaDialog* dialog = dialogState.newest; dialog != nullptr;
         dialog = dialog->next) {
        if (dialog->windowExists && dialog->isShown) {
            return Window(*dialog);
        }
    }
    return OfHost();
}

HWND DialogWindow::OfHost() {
    for (void* const window : {hostWindow, dialogState.rootWindow}) {
        if (IsWindow(static_cast<HWND>(window))) {
            return static_cast<HWND>(window);
        }
    }
    return GetActiveWindow();
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
        return Guarded(
                   false, [&] { return Open(window, opening); },
                   [&](std::int16_t id) { GiveUp(opening, id); })
                   ? TRUE
                   : FALSE;
    }
    NorvantaDialog* const dialog = Of(window);
    if (dialog == nullptr || message == WM_GETFONT) {
        // Programs that measure the window ask for its font at any time, also before it is set up.
        return FALSE;
    }
    if (message == WM_GETMINMAXINFO) {
        auto* const limits = reinterpret_cast<MINMAXINFO*>(lParam);
        limits->ptMinTrackSize = {dialog->minimumSize.h, dialog->minimumSize.v};
        return TRUE;
    }
    const bool handled = Guarded(
        true, [&] { return Handle(*dialog, message, wParam, lParam); },
        [&](std::int16_t id) {
            if (IsAsked(message)) {
                Tell(dialog, id);
            }
        });
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

/// A dialog that could not be set up closes as by Cancel.
void DialogWindow::GiveUp(NorvantaDialog& dialog, std::int16_t id) {
    dialog.isOpening = false;
    dialog.Close(cancelItem);
    Tell(&dialog, id);
}

void DialogWindow::Tell(NorvantaDialog* dialog, std::int16_t id) {
    if (id == hostapi::memFullErr) {
        Alert(dialog, alertOutOfMemory);
    } else if (id < firstSilentFault) {
        // The other negative ones, of files, mean nothing to a user.
        platformServices.reportFault(id > 0 ? id : std::int16_t{faultBadArgument}, sourceName,
                                     __LINE__);
    }
}

/// Whether the system shall choose the first focus.
bool DialogWindow::Open(HWND window, NorvantaDialog& dialog) {
    // First of all: whatever fails below, the dialog is found at the next message and closed.
    dialog.systemWindow = window;
    dialog.windowExists = true;
    dialog.port.reset();
    dialog.port = std::make_unique<DrawingPort>(window);
    dialog.wasPlaced = false;
    dialog.staysMaximized = false;
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
    if (dialog.windowExists) {
        // The system may have cut the window to the screen before anybody heard of its size.
        TakeSize(dialog, SIZE_RESTORED);
    }
    ShowWindow(window, IsZoomed(window) ? SW_SHOWMAXIMIZED : SW_SHOW);
    SetForegroundWindow(window);
    dialog.isShown = true;
    // All of it at once, which is sooner than a message for each control in its turn.
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    // Being shown brings messages, and one may have closed it.
    return !dialog.windowExists || dialog.GetFocusItem() == 0;
}

LRESULT CALLBACK DialogWindow::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCDESTROY) {
        ForgetScale(window);
    }
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
    // Had a dialog's loop taken it, this dialog would be closing.
    ProgramEnd::PostAgain();
    if (errorCell != 0) {
        // A fault ends the dialog, and then the ones below it; not before it has been told.
        if (!dialog.isOpening && !dialogState.isTellingFault) {
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

/// Not below another dialog, which works on this one: other programs ask windows to close that are
/// disabled.
void DialogWindow::HitIfInFront(NorvantaDialog& dialog, short item) {
    if (IsWindowEnabled(Window(dialog))) {
        dialog.HitItem(item);
    }
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
            HitIfInFront(dialog, dialog.cancellingItem);
            return true;
        case messageMaximize:
            ShowWindow(Window(dialog), SW_MAXIMIZE);
            return true;
        case messageUsePart:
            if (IsWindowEnabled(Window(dialog))) {
                dialog.UsePart(static_cast<short>(wParam), static_cast<int>(lParam));
            }
            return true;
        case messageMenuOpens:
            dialog.PopupOpens(static_cast<short>(wParam));
            return true;
        case messageMenuIsClosed:
            dialog.PopupIsClosed(static_cast<short>(wParam));
            return true;
        case WM_CLOSE:
            HitIfInFront(dialog, dialog.CloseBox());
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

// Where a dialog's window stands on the screen.
#include <windows.h>

#include <algorithm>

#include "framework/dialog/DialogGeometry.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"

namespace {

/// The work area of the screen that the window is on, or nearest to.
ScreenRect WorkAreaOf(HWND window) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return FromSystem(info.rcWork);
}

ScreenRect WindowRect(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return FromSystem(rect);
}

ScreenRect ClientOnScreen(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return FromSystem(rect);
}

void PlaceWindow(HWND window, const ScreenRect& rect) {
    SetWindowPos(window, nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

void NorvantaDialog::Center() {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    const HWND over = GetWindow(window, GW_OWNER);
    if (over == nullptr) {
        return;
    }
    const ScreenRect client = ClientOnScreen(window);
    const ScreenRect centered = CenteredOn(client, ClientOnScreen(over));
    const ScreenRect frame = WindowRect(window);
    const int horizontal = centered.left - client.left;
    const int vertical = centered.top - client.top;
    const ScreenRect moved{frame.left + horizontal, frame.top + vertical, frame.right + horizontal,
                           frame.bottom + vertical};
    PlaceWindow(window, PushedInto(moved, Shrunk(WorkAreaOf(over), dialogMargin)));
}

void NorvantaDialog::PlaceClient(const hostapi::Rect& newClient) {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    const ScreenRect client = ClientOnScreen(window);
    const ScreenRect wanted = ToScreenRect(newClient);
    const ScreenRect frame = WindowRect(window);
    const ScreenRect moved{
        frame.left + wanted.left - client.left, frame.top + wanted.top - client.top,
        frame.right + wanted.right - client.right, frame.bottom + wanted.bottom - client.bottom};
    if (!(moved == frame)) {
        PlaceWindow(window, moved);
    }
}

void NorvantaDialog::SetPlacement(const hostapi::Rect& placement) {
    const Placing placing = UnpackPlacement(placement);
    PlaceClient(placing.client);
    if (placing.isMaximized) {
        // The place before stays the normal one.
        ShowWindow(DialogWindow::Window(*this), SW_MAXIMIZE);
    }
}

hostapi::Rect NorvantaDialog::Placement() const {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    if ((GetWindowLongA(window, GWL_STYLE) & WS_MAXIMIZEBOX) == 0) {
        // Nothing but the place: it may lie on a screen above the main one.
        return ToRect(ClientOnScreen(window));
    }
    WINDOWPLACEMENT place{};
    place.length = sizeof place;
    if (!IsZoomed(window) || !GetWindowPlacement(window, &place)) {
        return PackPlacement({ToRect(ClientOnScreen(window)), false});
    }
    // The normal window's client area lies in it as the maximised one's does, but for the border,
    // which goes off the screen.
    RECT border{};
    AdjustWindowRectEx(&border, static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)),
                       GetMenu(window) != nullptr ? TRUE : FALSE,
                       static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE)));
    const RECT& normal = place.rcNormalPosition;
    const ScreenRect area = WorkAreaOf(window);
    const ScreenRect screen = WindowRect(GetDesktopWindow());
    const int left = area.left - screen.left;
    const int top = area.top - screen.top;
    return PackPlacement({ToRect({static_cast<int>(normal.left - border.left) + left,
                                  static_cast<int>(normal.top - border.top) + top,
                                  static_cast<int>(normal.right - border.right) + left,
                                  static_cast<int>(normal.bottom - border.bottom) + top}),
                          true});
}

// --- What is recorded of it ---

void DialogWindow::NoteClientRectangle(NorvantaDialog& dialog) {
    dialog.clientRectangle = ToRect(ClientOnScreen(Window(dialog)));
}

void DialogWindow::NoteFirstSize(NorvantaDialog& dialog) {
    NoteClientRectangle(dialog);
    const hostapi::Rect frame = ToRect(WindowRect(Window(dialog)));
    dialog.initialSize = {static_cast<std::int16_t>(Height(dialog.clientRectangle)),
                          static_cast<std::int16_t>(Width(dialog.clientRectangle))};
    dialog.minimumSize = {static_cast<std::int16_t>(Height(frame)),
                          static_cast<std::int16_t>(Width(frame))};
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

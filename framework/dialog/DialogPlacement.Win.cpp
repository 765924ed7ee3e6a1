// Where a dialog's window stands on the screen.
#include <windows.h>

#include <algorithm>

#include "base/Screens.Win.h"
#include "framework/dialog/DialogGeometry.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"

namespace {

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
    const ScreenRect frame = FrameOf(window);
    const int horizontal = centered.left - client.left;
    const int vertical = centered.top - client.top;
    const ScreenRect moved{frame.left + horizontal, frame.top + vertical, frame.right + horizontal,
                           frame.bottom + vertical};
    PlaceWindow(window, PushedInto(moved, Shrunk(ScreenOf(over).work, scale.Pixels(dialogMargin))));
}

void NorvantaDialog::PlaceClient(const hostapi::Rect& newClient) {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    const ScreenRect client = ClientOnScreen(window);
    const ScreenRect wanted = ToScreenRect(newClient);
    const ScreenRect frame = FrameOf(window);
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
        const HWND window = DialogWindow::Window(*this);
        // The place before stays the normal one; the screen that it was on may be gone.
        DialogWindow::FitToScreen(*this);
        ShowWindow(window, SW_MAXIMIZE);
        // Wine's loop of dialogs shows each as a normal window when it has nothing to do for the
        // first time; how soon that comes depends on the machine's load.
        staysMaximized = isOpening;
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
    const ScreenRect normal = FromSystem(place.rcNormalPosition);
    const ScreenRect frame = FromWorkspace(normal, ScreenAt(normal));
    return PackPlacement({ToRect({frame.left - static_cast<int>(border.left),
                                  frame.top - static_cast<int>(border.top),
                                  frame.right - static_cast<int>(border.right),
                                  frame.bottom - static_cast<int>(border.bottom)}),
                          true});
}

// --- What is recorded of it ---

void DialogWindow::NoteClientRectangle(NorvantaDialog& dialog) {
    dialog.clientRectangle = ToRect(ClientOnScreen(Window(dialog)));
}

void DialogWindow::NoteFirstSize(NorvantaDialog& dialog) {
    NoteClientRectangle(dialog);
    // Recorded as laid out, so that the items follow from there to what the screen has left.
    const SIZE layout = LayoutSize(dialog);
    hostapi::Rect& client = dialog.clientRectangle;
    client.right = (std::max)(client.right, static_cast<std::int16_t>(client.left + layout.cx));
    client.bottom = (std::max)(client.bottom, static_cast<std::int16_t>(client.top + layout.cy));
    const hostapi::Rect frame = ToRect(FrameOf(Window(dialog)));
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
    const ScreenRect frame = FrameOf(window);
    const ScreenRect fitted = FittedInto(frame, ScreenOf(window).work);
    if (fitted == frame) {
        return;
    }
    // A screen too small for the dialog is stronger than the dialog's least size.
    dialog.minimumSize = {
        static_cast<std::int16_t>((std::min)(fitted.Height(), int{dialog.minimumSize.v})),
        static_cast<std::int16_t>((std::min)(fitted.Width(), int{dialog.minimumSize.h}))};
    PlaceWindow(window, fitted);
}

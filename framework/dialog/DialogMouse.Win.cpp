// The mouse: where it is, what is under it, and the cursor that it shows.
#include <windows.h>

#include "base/Module.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"

namespace {

/// The message of the button's press has just been taken, and that of its release is not there yet.
/// Wine goes on calling a button released for up to 50 ms after its last look at the keys: a stroke
/// that went by that alone would end at its first look.
///
/// Takes no message, not even one that another thread sends: time passes with those, and the place
/// and the button of one look would no longer belong together.
bool HasJustBeenPressed() {
    constexpr DWORD lookMilliseconds = 100;
    if (GetKeyState(VK_LBUTTON) >= 0 ||
        GetTickCount() - static_cast<DWORD>(GetMessageTime()) > lookMilliseconds) {
        return false;
    }
    return (HIWORD(GetQueueStatus(QS_MOUSEBUTTON)) & QS_MOUSEBUTTON) == 0;
}

/// The window's left button, whichever side of the mouse it is on.
bool IsButtonDown() {
    const int button = GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
    return (GetAsyncKeyState(button) & 0x8000) != 0 || HasJustBeenPressed();
}

/// Boxes and frames, which lie under the items inside them.
bool IsFrame(HWND control) {
    char className[16];
    GetClassNameA(control, className, static_cast<int>(sizeof className));
    const LONG style = GetWindowLongA(control, GWL_STYLE);
    if (lstrcmpiA(className, "Button") == 0) {
        return (style & BS_TYPEMASK) == BS_GROUPBOX;
    }
    const LONG type = style & SS_TYPEMASK;
    return lstrcmpiA(className, "Static") == 0 &&
           ((type >= SS_BLACKRECT && type <= SS_WHITEFRAME) ||
            (type >= SS_ETCHEDHORZ && type <= SS_ETCHEDFRAME));
}

}  // namespace

bool NorvantaDialog::GetMouse(hostapi::Point* place) const {
    CheckWindow();
    POINT cursor{};
    GetCursorPos(&cursor);
    ScreenToClient(DialogWindow::Window(*this), &cursor);
    *place = {static_cast<std::int16_t>(cursor.y), static_cast<std::int16_t>(cursor.x)};
    return IsButtonDown();
}

bool NorvantaDialog::TrackMouse(hostapi::Point* place) {
    static hostapi::Point last{};
    const bool isDown = GetMouse(place);
    const bool hasMoved = place->h != last.h || place->v != last.v;
    last = *place;
    if (!hasMoved && dialogState.active != nullptr) {
        dialogState.active->Idle();
        // Looking at the queue tells the system that the program is alive; the pause leaves the
        // processor to others while the hand rests.
        MSG waiting;
        PeekMessageA(&waiting, nullptr, WM_NULL, WM_NULL, PM_NOREMOVE | PM_NOYIELD);
        Sleep(1);
    }
    return isDown;
}

short NorvantaDialog::ItemAtPoint(hostapi::Point place) const {
    short frame = 0;
    for (short item = 1; item <= itemCount; ++item) {
        if (!IsShown(item) || !Contains(GetBounds(item), place)) {
            continue;
        }
        if (!IsFrame(static_cast<HWND>(Record(item).control))) {
            return item;
        }
        frame = frame == 0 ? item : frame;
    }
    return frame;
}

void NorvantaDialog::ShowCursor(short cursor) {
    constexpr short firstSystemCursor = 32512;
    const bool isSystems = cursor == 0 || cursor >= firstSystemCursor;
    static short currentId = -1;
    static HCURSOR current = nullptr;
    if (cursor != currentId || current == nullptr) {
        current = LoadCursorA(isSystems ? nullptr : instanceHandle,
                              cursor == 0 ? LPCSTR{IDC_ARROW} : ResourceName(cursor));
        currentId = cursor;
    }
    // Others set cursors, too: the busy one, the system's over a frame.
    if (current != nullptr && GetCursor() != current) {
        SetCursor(current);
    }
}

#include "base/WindowPlace.Win.h"

namespace {

/// How far a dialog stays from the edges of the work area, in pixels.
constexpr int screenMargin = 2;

RECT WorkArea() {
    RECT area;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    InflateRect(&area, -screenMargin, -screenMargin);
    return area;
}

/// Moves `rect` into `area` along one side after the other: top before bottom, left before right.
void PushInto(const RECT& area, RECT& rect) {
    if (rect.top < area.top) {
        OffsetRect(&rect, 0, area.top - rect.top);
    }
    if (rect.bottom > area.bottom) {
        OffsetRect(&rect, 0, area.bottom - rect.bottom);
    }
    if (rect.left < area.left) {
        OffsetRect(&rect, area.left - rect.left, 0);
    }
    if (rect.right > area.right) {
        OffsetRect(&rect, area.right - rect.right, 0);
    }
}

}  // namespace

void PlaceOverOwner(HWND dialog) {
    const HWND owner = GetWindow(dialog, GW_OWNER);
    RECT around;
    GetWindowRect(owner != nullptr ? owner : GetDesktopWindow(), &around);
    RECT rect;
    GetWindowRect(dialog, &rect);
    OffsetRect(&rect, (around.left + around.right - rect.left - rect.right) / 2,
               (around.top + around.bottom - rect.top - rect.bottom) / 2);
    PushInto(WorkArea(), rect);
    SetWindowPos(dialog, nullptr, rect.left, rect.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

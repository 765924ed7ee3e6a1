#include "base/WindowPlace.Win.h"

#include "base/Screens.Win.h"

void PlaceOverOwner(HWND dialog) {
    const HWND owner = GetWindow(dialog, GW_OWNER);
    const Screen screen = ScreenOf(owner);
    const bool isSeen = owner != nullptr && !IsIconic(owner);
    const ScreenRect place =
        AlertPlace(FrameOf(dialog), isSeen ? FrameOf(owner) : screen.whole, screen);
    SetWindowPos(dialog, nullptr, place.left, place.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

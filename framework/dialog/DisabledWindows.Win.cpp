#include "framework/dialog/DisabledWindows.Win.h"

void DisabledWindows::Disable(HWND owner) {
    spared = owner != nullptr ? GetAncestor(owner, GA_ROOT) : nullptr;
    EnumThreadWindows(GetCurrentThreadId(), DisableOne, reinterpret_cast<LPARAM>(this));
}

BOOL CALLBACK DisabledWindows::DisableOne(HWND window, LPARAM object) {
    auto& self = *reinterpret_cast<DisabledWindows*>(object);
    if (window == self.spared || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
        return TRUE;
    }
    EnableWindow(window, FALSE);
    self.windows[self.count++] = window;
    return self.count < most ? TRUE : FALSE;
}

void DisabledWindows::Restore() {
    while (count > 0) {
        EnableWindow(windows[--count], TRUE);
    }
}

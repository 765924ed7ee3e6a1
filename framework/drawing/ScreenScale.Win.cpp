#include "framework/drawing/ScreenScale.Win.h"

#include "base/WindowContext.Win.h"
#include "framework/controls/SystemLibrary.Win.h"

namespace {

using DpiForWindow = UINT(WINAPI*)(HWND window);

/// GetDpiForWindow; null on systems before Windows 10.
DpiForWindow FindDpiForWindow() {
    const HMODULE library = LoadSystemLibrary(L"user32.dll");
    if (library == nullptr) {
        return nullptr;
    }
    const auto found = reinterpret_cast<DpiForWindow>(
        reinterpret_cast<void*>(GetProcAddress(library, "GetDpiForWindow")));
    // It stays loaded: we are linked to it.
    FreeLibrary(library);
    return found;
}

/// 0 where the system does not know.
int MonitorResolution(HWND window) {
    // Not initialised by its declaration: the guard of that would be the run-time library's.
    static bool wasSought = false;
    static DpiForWindow dpiForWindow = nullptr;
    if (!wasSought) {
        dpiForWindow = FindDpiForWindow();
        wasSought = true;
    }
    return dpiForWindow != nullptr ? static_cast<int>(dpiForWindow(window)) : 0;
}

/// 0 where the system has no context to give.
int DeviceResolution(HWND window) {
    const WindowContext context(window);
    return context.Get() != nullptr ? GetDeviceCaps(context.Get(), LOGPIXELSX) : 0;
}

int FontHeight(HWND dialog) {
    const auto font = reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0));
    LOGFONTA description{};
    GetObjectA(font, sizeof description, &description);
    return static_cast<int>(description.lfHeight);
}

}  // namespace

ScreenScale ScaleOf(HWND window) {
    const HWND dialog = GetAncestor(window, GA_ROOT);
    return {
        LayoutResolution(FontHeight(dialog), MonitorResolution(dialog), DeviceResolution(dialog))};
}

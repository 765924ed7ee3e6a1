#include "framework/drawing/ScreenScale.Win.h"

#include "base/WindowContext.Win.h"

namespace {

/// The resolution of a dialog's layout, in dots an inch.
constexpr char resolutionProperty[] = "ZandermoliteResolution";

/// The dialog whose controls are being made.
struct MeasuredDialog {
    bool isWanted = false;
    HWND window = nullptr;
    int resolution = 0;
};
MeasuredDialog measured;

/// A function that not every system has; null without it. The library is there: we are linked to
/// it.
template <typename Function>
Function FindInSystem(const char* name) {
    const HMODULE library = GetModuleHandleW(L"user32.dll");
    return library != nullptr
               ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)))
               : nullptr;
}

/// 0 where the system does not know: before Windows 10.
int MonitorResolution(HWND window) {
    const auto dpiForWindow = FindInSystem<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
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

int MeasureResolution(HWND dialog) {
    const int resolution =
        LayoutResolution(FontHeight(dialog), MonitorResolution(dialog), DeviceResolution(dialog));
    if (measured.isWanted) {
        measured = {true, dialog, resolution};
    }
    return resolution;
}

}  // namespace

ScreenScale ScaleOf(HWND window) {
    const HWND dialog = GetAncestor(window, GA_ROOT);
    if (dialog != nullptr && dialog == measured.window) {
        return {measured.resolution};
    }
    const auto kept = reinterpret_cast<INT_PTR>(GetPropA(dialog, resolutionProperty));
    return {kept != 0 ? static_cast<int>(kept) : MeasureResolution(dialog)};
}

void StartScale() {
    measured = {true, nullptr, 0};
}

ScreenScale KeepScale(HWND dialog) {
    // Not declared by the headers of the systems that we are built for.
    enum ChangeBehavior { disableAll = 1 };
    using SetChangeBehavior =
        BOOL(WINAPI*)(HWND dialog, ChangeBehavior mask, ChangeBehavior values);
    if (const auto set = FindInSystem<SetChangeBehavior>("SetDialogDpiChangeBehavior")) {
        set(dialog, disableAll, disableAll);
    }
    const ScreenScale scale = ScaleOf(dialog);
    measured = {};
    SetPropA(dialog, resolutionProperty,
             reinterpret_cast<HANDLE>(static_cast<INT_PTR>(scale.resolution)));
    return scale;
}

void ForgetScale(HWND dialog) {
    RemovePropA(dialog, resolutionProperty);
}

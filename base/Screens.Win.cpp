#include "base/Screens.Win.h"

namespace {

/// For a screen that went while it was asked for.
Screen PrimaryScreen() {
    const RECT whole{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    RECT work{};
    if (!SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0)) {
        work = whole;
    }
    return {FromSystem(whole), FromSystem(work)};
}

Screen ScreenOfMonitor(HMONITOR monitor) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (monitor == nullptr || !GetMonitorInfoA(monitor, &info)) {
        return PrimaryScreen();
    }
    return {FromSystem(info.rcMonitor), FromSystem(info.rcWork)};
}

}  // namespace

Screen ScreenOf(HWND window) {
    return window != nullptr ? ScreenOfMonitor(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST))
                             : ScreenOfMonitor(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY));
}

Screen ScreenAt(const ScreenRect& place) {
    const RECT rect = ToSystem(place);
    return ScreenOfMonitor(MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST));
}

ScreenRect FrameOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return FromSystem(rect);
}

#include "tests/support/windows/FakeScreens.Win.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/Screens.Win.h"
#include "fixtures/InputDesktop.Win.h"

namespace {

std::vector<Screen> fakes;

/// The system's own; a call by its name would lead to the exchanged one here, too.
BOOL(WINAPI* realPlacement)(HWND, WINDOWPLACEMENT*) = nullptr;

HMONITOR HandleOf(std::size_t screen) {
    return reinterpret_cast<HMONITOR>(screen + 1);
}

int Overlap(const ScreenRect& a, const ScreenRect& b) {
    const int width = std::min(a.right, b.right) - std::max(a.left, b.left);
    const int height = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    return width > 0 && height > 0 ? width * height : 0;
}

/// The distance of two ranges; 0 if they meet.
int Gap(int begin, int end, int otherBegin, int otherEnd) {
    return std::max({0, otherBegin - end, begin - otherEnd});
}

/// Near screens are better than far ones, and those that a part of the place is on the best.
int Fitness(const ScreenRect& place, const ScreenRect& screen) {
    const int overlap = Overlap(place, screen);
    return overlap > 0 ? overlap
                       : -Gap(place.left, place.right, screen.left, screen.right) -
                             Gap(place.top, place.bottom, screen.top, screen.bottom);
}

HMONITOR NearestTo(const ScreenRect& place) {
    std::size_t best = 0;
    for (std::size_t i = 1; i < fakes.size(); ++i) {
        if (Fitness(place, fakes[i].whole) > Fitness(place, fakes[best].whole)) {
            best = i;
        }
    }
    return HandleOf(best);
}

HMONITOR WINAPI MonitorOfWindow(HWND window, DWORD) {
    // The system of the desktop in memory knows one screen and maximises windows there.
    WINDOWPLACEMENT place{};
    place.length = sizeof place;
    if (IsZoomed(window) && realPlacement(window, &place)) {
        return NearestTo(FromSystem(place.rcNormalPosition));
    }
    return NearestTo(FrameOf(window));
}

HMONITOR WINAPI MonitorOfRect(LPCRECT rect, DWORD) {
    return NearestTo(FromSystem(*rect));
}

HMONITOR WINAPI MonitorOfPoint(POINT, DWORD) {
    return HandleOf(0);
}

BOOL WINAPI InfoOf(HMONITOR monitor, LPMONITORINFO info) {
    const std::size_t screen = reinterpret_cast<std::size_t>(monitor) - 1;
    if (screen >= fakes.size()) {
        return FALSE;
    }
    info->rcMonitor = ToSystem(fakes[screen].whole);
    info->rcWork = ToSystem(fakes[screen].work);
    return TRUE;
}

/// The normal place counts from the work area, which the desktop in memory does not know.
BOOL WINAPI PlacementOf(HWND window, WINDOWPLACEMENT* placement) {
    if (!realPlacement(window, placement)) {
        return FALSE;
    }
    RECT& normal = placement->rcNormalPosition;
    const std::size_t screen = reinterpret_cast<std::size_t>(NearestTo(FromSystem(normal))) - 1;
    if (screen < fakes.size()) {
        const Screen& on = fakes[screen];
        OffsetRect(&normal, on.whole.left - on.work.left, on.whole.top - on.work.top);
    }
    return TRUE;
}

}  // namespace

FakeScreens::FakeScreens(std::vector<Screen> screens) : imports(GetModuleHandleA(nullptr)) {
    fakes = std::move(screens);
    realPlacement = GetWindowPlacement;
    EXPECT_TRUE(imports.Exchange("MonitorFromWindow", reinterpret_cast<void*>(&MonitorOfWindow)));
    EXPECT_TRUE(imports.Exchange("MonitorFromRect", reinterpret_cast<void*>(&MonitorOfRect)));
    EXPECT_TRUE(imports.Exchange("MonitorFromPoint", reinterpret_cast<void*>(&MonitorOfPoint)));
    EXPECT_TRUE(imports.Exchange("GetMonitorInfoA", reinterpret_cast<void*>(&InfoOf)));
    EXPECT_TRUE(imports.Exchange("GetWindowPlacement", reinterpret_cast<void*>(&PlacementOf)));
}

FakeScreens::~FakeScreens() {
    fakes.clear();
}

namespace {

BOOL CALLBACK AddSecondary(HMONITOR monitor, HDC, LPRECT, LPARAM list) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (GetMonitorInfoA(monitor, &info) && (info.dwFlags & MONITORINFOF_PRIMARY) == 0) {
        reinterpret_cast<std::vector<Screen>*>(list)->push_back(
            {FromSystem(info.rcMonitor), FromSystem(info.rcWork)});
    }
    return TRUE;
}

}  // namespace

std::vector<Screen> SecondScreens() {
    if (!IsOnRealScreens()) {
        return {{{1024, 0, 2304, 1024}, {1024, 30, 2304, 1024}},
                {{-1280, 0, 0, 1024}, {-1230, 0, 0, 1024}},
                {{0, -1024, 1280, 0}, {0, -1024, 1280, -40}}};
    }
    std::vector<Screen> screens;
    EnumDisplayMonitors(nullptr, nullptr, AddSecondary, reinterpret_cast<LPARAM>(&screens));
    EXPECT_FALSE(screens.empty()) << "there is one screen only";
    return screens;
}

TwoScreens::TwoScreens(const Screen& second) {
    if (!IsOnRealScreens()) {
        fake.emplace(std::vector<Screen>{fakePrimaryScreen, second});
    }
}

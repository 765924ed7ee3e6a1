#include "base/ScreenGeometry.h"

#include <gtest/gtest.h>

void PrintTo(const ScreenRect& rect, std::ostream* out) {
    *out << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom;
}

namespace {

constexpr ScreenRect area{8, 8, 1016, 760};

TEST(ScreenGeometryTest, CentresOnTheOwner) {
    EXPECT_EQ(CenteredOn({0, 0, 100, 50}, {200, 100, 600, 400}), (ScreenRect{350, 225, 450, 275}));
    EXPECT_EQ(CenteredOn({350, 225, 450, 275}, {200, 100, 600, 400}),
              (ScreenRect{350, 225, 450, 275}));
}

TEST(ScreenGeometryTest, PushesIntoTheWorkArea) {
    EXPECT_EQ(Shrunk({0, 0, 1024, 768}, 8), area);
    EXPECT_EQ(PushedInto({-50, -60, 50, 40}, area), (ScreenRect{8, 8, 108, 108}));
    EXPECT_EQ(PushedInto({1000, 700, 1100, 800}, area), (ScreenRect{916, 660, 1016, 760}));
    EXPECT_EQ(PushedInto({100, 100, 200, 200}, area), (ScreenRect{100, 100, 200, 200}));
    // If it does not fit, its top left corner stays in sight.
    EXPECT_EQ(PushedInto({100, 100, 2100, 1100}, area), (ScreenRect{8, 8, 2008, 1008}));
}

TEST(ScreenGeometryTest, CutsWhatIsLargerThanTheScreen) {
    constexpr ScreenRect screen{0, 0, 1024, 768};
    EXPECT_EQ(FittedInto({-5, 100, 1200, 900}, screen), (ScreenRect{0, 0, 1024, 768}));
    EXPECT_EQ(FittedInto({900, 100, 1100, 900}, screen), (ScreenRect{824, 0, 1024, 768}));
    EXPECT_EQ(FittedInto({10, 20, 110, 220}, screen), (ScreenRect{10, 20, 110, 220}));
}

/// A screen beside a primary one of 1280 by 1024, with a window on it and what becomes of the
/// window.
struct ScreenCase {
    const char* name;
    Screen screen;
    ScreenRect window;
    /// The window, where it has to lie in the work area.
    ScreenRect fitted;
    /// An alert of 300 by 100 over the window.
    ScreenRect alert;
};

constexpr ScreenCase screenCases[] = {
    {"primary, a bar below",
     {{0, 0, 1280, 1024}, {0, 0, 1280, 984}},
     {100, 100, 900, 700},
     {100, 100, 900, 700},
     {350, 350, 650, 450}},
    {"right",
     {{1280, 0, 2560, 1024}, {1280, 0, 2560, 1024}},
     {1400, 100, 2200, 700},
     {1400, 100, 2200, 700},
     {1650, 350, 1950, 450}},
    {"right, half beyond its edge",
     {{1280, 0, 2560, 1024}, {1280, 0, 2560, 1024}},
     {2500, 950, 2900, 1250},
     {2160, 724, 2560, 1024},
     {2258, 922, 2558, 1022}},
    {"left, a bar at its left",
     {{-1280, 0, 0, 1024}, {-1220, 0, 0, 1024}},
     {-1300, -40, -1000, 160},
     {-1220, 0, -920, 200},
     {-1218, 10, -918, 110}},
    {"above and left, a bar at its top",
     {{-1600, -1200, 0, 0}, {-1600, -1160, 0, 0}},
     {-1590, -1190, -1290, -1000},
     {-1590, -1160, -1290, -970},
     {-1590, -1145, -1290, -1045}},
    {"gone: the window is where no screen is any more, and the primary one is the nearest",
     {{0, 0, 1280, 1024}, {0, 0, 1280, 984}},
     {1400, 100, 2200, 700},
     {480, 100, 1280, 700},
     {978, 350, 1278, 450}},
    {"gone, and the one that is left is smaller",
     {{0, 0, 800, 600}, {0, 0, 800, 570}},
     {1400, 100, 2300, 900},
     {0, 0, 800, 570},
     {498, 450, 798, 550}},
};

TEST(ScreenGeometryTest, WindowsAndAlertsStayOnTheirScreen) {
    for (const ScreenCase& each : screenCases) {
        EXPECT_EQ(FittedInto(each.window, each.screen.work), each.fitted) << each.name;
        EXPECT_EQ(AlertPlace({0, 0, 300, 100}, each.window, each.screen), each.alert) << each.name;
    }
}

TEST(ScreenGeometryTest, AnAlertTooLargeForItsScreenKeepsItsButtonsInSight) {
    constexpr Screen screen{{1280, 0, 1480, 80}, {1280, 0, 1480, 80}};
    EXPECT_EQ(AlertPlace({0, 0, 300, 100}, screen.whole, screen),
              (ScreenRect{1178, -22, 1478, 78}));
}

TEST(ScreenGeometryTest, PlacesThatCountFromAWorkAreaAreTurnedIntoPlacesOnTheScreens) {
    constexpr ScreenRect place{1300, 50, 1900, 450};
    // The screen's own place does not count, only what its bars take of it.
    EXPECT_EQ(FromWorkspace(place, {{1280, 0, 2560, 1024}, {1280, 0, 2560, 1024}}), place);
    EXPECT_EQ(FromWorkspace(place, {{1280, 0, 2560, 1024}, {1340, 30, 2560, 1024}}),
              (ScreenRect{1360, 80, 1960, 480}));
    EXPECT_EQ(FromWorkspace({-1200, -900, -600, -500}, {{-1280, -1024, 0, 0}, {-1280, -984, 0, 0}}),
              (ScreenRect{-1200, -860, -600, -460}));
}

}  // namespace

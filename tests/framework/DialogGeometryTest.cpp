#include "framework/dialog/DialogGeometry.h"

#include <gtest/gtest.h>

#include "framework/dialog/ItemRecord.h"

void PrintTo(const ScreenRect& rect, std::ostream* out) {
    *out << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom;
}

namespace {

constexpr ScreenRect screen{0, 0, 1024, 768};

TEST(DialogGeometryTest, CentresOnTheOwner) {
    EXPECT_EQ(CenteredOn({0, 0, 100, 50}, {200, 100, 600, 400}), (ScreenRect{350, 225, 450, 275}));
    EXPECT_EQ(CenteredOn({350, 225, 450, 275}, {200, 100, 600, 400}),
              (ScreenRect{350, 225, 450, 275}));
}

TEST(DialogGeometryTest, PushesIntoTheWorkArea) {
    const ScreenRect area = Shrunk(screen, dialogMargin);
    EXPECT_EQ(area, (ScreenRect{8, 8, 1016, 760}));
    EXPECT_EQ(PushedInto({-50, -60, 50, 40}, area), (ScreenRect{8, 8, 108, 108}));
    EXPECT_EQ(PushedInto({1000, 700, 1100, 800}, area), (ScreenRect{916, 660, 1016, 760}));
    EXPECT_EQ(PushedInto({100, 100, 200, 200}, area), (ScreenRect{100, 100, 200, 200}));
    // Where not all of it fits, the top left corner is what stays in sight.
    EXPECT_EQ(PushedInto({100, 100, 2100, 1100}, area), (ScreenRect{8, 8, 2008, 1008}));
}

TEST(DialogGeometryTest, CutsWhatIsLargerThanTheScreen) {
    EXPECT_EQ(FittedInto({-5, 100, 1200, 900}, screen), (ScreenRect{0, 0, 1024, 768}));
    EXPECT_EQ(FittedInto({900, 100, 1100, 900}, screen), (ScreenRect{824, 0, 1024, 768}));
    EXPECT_EQ(FittedInto({10, 20, 110, 220}, screen), (ScreenRect{10, 20, 110, 220}));
}

TEST(DialogGeometryTest, SixteenBitsAreEnoughForOneScreenAndCutForMore) {
    const hostapi::Rect rect = ToRect({-40000, 5, 40000, 6});
    EXPECT_EQ(rect.left, -32768);
    EXPECT_EQ(rect.right, 32767);
    EXPECT_EQ(rect.top, 5);
    EXPECT_EQ(rect.bottom, 6);
}

TEST(DialogGeometryTest, ItemsFollowTheWindow) {
    constexpr hostapi::Rect bounds{10, 20, 30, 60};
    const auto follow = [&](int rules) {
        return ToScreenRect(FollowResize(bounds, static_cast<std::uint8_t>(rules), 7, 5));
    };
    EXPECT_EQ(follow(0), (ScreenRect{20, 10, 60, 30}));
    EXPECT_EQ(follow(resizeMoveRight), (ScreenRect{27, 10, 67, 30}));
    EXPECT_EQ(follow(resizeGrowRight), (ScreenRect{20, 10, 67, 30}));
    EXPECT_EQ(follow(resizeMoveDown), (ScreenRect{20, 15, 60, 35}));
    EXPECT_EQ(follow(resizeGrowDown), (ScreenRect{20, 10, 60, 35}));
    EXPECT_EQ(follow(9), (ScreenRect{27, 10, 67, 35}));
    EXPECT_EQ(follow(10), (ScreenRect{20, 10, 67, 35}));
    EXPECT_EQ(follow(0xC0), (ScreenRect{20, 10, 60, 30})) << "the other flags are no rules";
}

TEST(DialogGeometryTest, TheSignBitOfAPlacementMaximizes) {
    const Placing plain = UnpackPlacement({100, 200, 300, 400});
    EXPECT_FALSE(plain.isMaximized);
    EXPECT_EQ(plain.client.top, 100);
    const Placing maximized =
        UnpackPlacement({static_cast<std::int16_t>(0x8000 | 100), 200, 300, 400});
    EXPECT_TRUE(maximized.isMaximized);
    EXPECT_EQ(maximized.client.top, 100);
    EXPECT_EQ(maximized.client.bottom, 300);
}

TEST(DialogGeometryTest, PlacementsComeBackAsTheyWereStored) {
    for (const bool isMaximized : {false, true}) {
        const Placing placing = UnpackPlacement(PackPlacement({{100, 200, 300, 400}, isMaximized}));
        EXPECT_EQ(placing.isMaximized, isMaximized);
        EXPECT_EQ(placing.client.top, 100);
        EXPECT_EQ(placing.client.right, 400);
    }
    // A window above the screen must not come back maximised.
    EXPECT_FALSE(UnpackPlacement(PackPlacement({{-3, 0, 300, 400}, false})).isMaximized);
}

}  // namespace

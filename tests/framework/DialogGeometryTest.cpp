#include "framework/dialog/DialogGeometry.h"

#include <gtest/gtest.h>

#include "base/Rectangles.h"
#include "framework/dialog/ItemRecord.h"

namespace {

TEST(DialogGeometryTest, APlacementGrowsWithTheResolution) {
    const hostapi::Rect place{60, 30, 640, 930};
    EXPECT_TRUE(AreEqual(Rescaled(place, 96, 96), place));
    EXPECT_TRUE(AreEqual(Rescaled(place, 96, 192), {60, 30, 1220, 1830}));
    EXPECT_TRUE(AreEqual(Rescaled(place, 192, 96), {60, 30, 350, 480}));
    EXPECT_TRUE(AreEqual(Rescaled(place, 120, 144), {60, 30, 756, 1110}));
    EXPECT_TRUE(AreEqual(Rescaled({0, 0, 100, 1}, 192, 96), {0, 0, 50, 1})) << "halves up";
}

TEST(DialogGeometryTest, AMaximisedPlacementStaysSo) {
    const hostapi::Rect place = PackPlacement({{60, 30, 640, 930}, true});
    const Placing placing = UnpackPlacement(Rescaled(place, 96, 192));
    EXPECT_TRUE(placing.isMaximized);
    EXPECT_TRUE(AreEqual(placing.client, {60, 30, 1220, 1830}));
}

TEST(DialogGeometryTest, AnySizeAndResolutionStayIn16Bits) {
    EXPECT_TRUE(AreEqual(Rescaled({0, -32768, 32767, 32767}, 1, 32767), {0, -32768, 32767, 32767}));
    EXPECT_TRUE(AreEqual(Rescaled({0, 32767, 32767, -32768}, 1, 32767), {0, 32767, 32767, -32768}));
}

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
    // If it does not fit, its top left corner stays in sight.
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
}

TEST(DialogGeometryTest, PlacementsOnAScreenAboveThePrimaryOneComeBackToo) {
    constexpr std::int16_t tops[] = {-16384, -1050, -3, -1, 0, 1, 16383};
    for (const bool isMaximized : {false, true}) {
        for (const std::int16_t top : tops) {
            const Placing placing =
                UnpackPlacement(PackPlacement({{top, 5, 300, 400}, isMaximized}));
            EXPECT_EQ(placing.isMaximized, isMaximized) << top;
            EXPECT_EQ(placing.client.top, top);
            EXPECT_EQ(placing.client.bottom, 300);
        }
    }
    // No screen is there; the bit must stay what it is.
    EXPECT_EQ(UnpackPlacement(PackPlacement({{20000, 0, 21000, 400}, false})).client.top, 16383);
    EXPECT_FALSE(UnpackPlacement(PackPlacement({{-20000, 0, 300, 400}, false})).isMaximized);
}

}  // namespace

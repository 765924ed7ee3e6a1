#include "framework/dialog/DialogGeometry.h"

#include <gtest/gtest.h>

#include "framework/dialog/ItemRecord.h"

namespace {

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

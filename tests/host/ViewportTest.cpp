#include "host/window/Viewport.h"

#include <gtest/gtest.h>

namespace host {

namespace {

Viewport MakeViewport(Size picture, Size view) {
    Viewport viewport;
    viewport.SetPicture(picture);
    viewport.SetView(view);
    return viewport;
}

}  // namespace

TEST(ViewportTest, ASmallPictureStandsInTheMiddle) {
    const Viewport viewport = MakeViewport({10, 6}, {31, 20});
    EXPECT_EQ(viewport.Origin(), (Place{10, 7}));
    EXPECT_EQ(viewport.ToPicture({10, 7}), (Place{0, 0}));
    EXPECT_EQ(viewport.ToPicture({9, 6}), (Place{-1, -1}));
    EXPECT_EQ(viewport.ToPicture({20, 13}), (Place{10, 6}));
}

TEST(ViewportTest, ScrollsALargePictureToItsEnds) {
    Viewport viewport = MakeViewport({100, 80}, {30, 20});
    EXPECT_TRUE(viewport.ScrollTo({1000, 1000}));
    EXPECT_EQ(viewport.Scroll(), (Place{70, 60}));
    EXPECT_EQ(viewport.ToPicture({29, 19}), (Place{99, 79}));
    EXPECT_FALSE(viewport.ScrollTo({70, 61}));
    EXPECT_TRUE(viewport.ScrollTo({-5, -5}));
    EXPECT_EQ(viewport.Scroll(), (Place{0, 0}));
}

TEST(ViewportTest, AViewThatGrowsKeepsTheScrollInRange) {
    Viewport viewport = MakeViewport({100, 80}, {30, 20});
    viewport.ScrollTo({70, 60});
    viewport.SetView({50, 200});
    EXPECT_EQ(viewport.Scroll(), (Place{50, 0}));
}

TEST(ViewportTest, ZoomedInEachPixelIsASquare) {
    Viewport viewport = MakeViewport({10, 10}, {1000, 1000});
    viewport.SetZoom(3, {500, 500});
    EXPECT_EQ(viewport.Scale(), 8.0);
    EXPECT_EQ(viewport.Zoomed(), (Size{80, 80}));
    const Place origin = viewport.Origin();
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(viewport.ToPicture({origin.x + 16 + i, origin.y}), (Place{2, 0}));
    }
    EXPECT_EQ(viewport.ToPicture({origin.x - 1, origin.y}), (Place{-1, 0}));
    EXPECT_EQ(viewport.ToView(Place{2, 3}), (Place{origin.x + 16, origin.y + 24}));
}

TEST(ViewportTest, ZoomedOutTheLastPartialPixelIsShown) {
    Viewport viewport = MakeViewport({17, 9}, {100, 100});
    viewport.SetZoom(-3, {50, 50});
    EXPECT_EQ(viewport.Zoomed(), (Size{3, 2}));
    const Place origin = viewport.Origin();
    EXPECT_EQ(viewport.ToPicture({origin.x + 2, origin.y + 1}), (Place{16, 8}));
}

TEST(ViewportTest, ZoomingKeepsThePointUnderTheAnchor) {
    Viewport viewport = MakeViewport({1000, 1000}, {200, 100});
    viewport.ScrollTo({300, 400});
    const Place anchor{40, 60};
    const Place pixel = viewport.ToPicture(anchor);
    viewport.SetZoom(2, anchor);
    EXPECT_EQ(viewport.ToPicture(anchor), pixel);
    viewport.SetZoom(0, anchor);
    EXPECT_EQ(viewport.ToPicture(anchor), pixel);
    EXPECT_EQ(viewport.Scroll(), (Place{300, 400}));
}

TEST(ViewportTest, ZoomStaysInItsRange) {
    Viewport viewport = MakeViewport({1000, 1000}, {200, 100});
    viewport.SetZoom(100, {0, 0});
    EXPECT_EQ(viewport.Zoom(), Viewport::largestZoom);
    viewport.SetZoom(-100, {0, 0});
    EXPECT_EQ(viewport.Zoom(), Viewport::smallestZoom);
}

TEST(ViewportTest, FitsThePictureButDoesNotEnlargeIt) {
    EXPECT_EQ(MakeViewport({200, 100}, {}).FittingZoom({200, 100}), 0);
    EXPECT_EQ(MakeViewport({200, 100}, {}).FittingZoom({199, 100}), -1);
    EXPECT_EQ(MakeViewport({200, 100}, {}).FittingZoom({1000, 24}), -3);
    EXPECT_EQ(MakeViewport({20, 10}, {}).FittingZoom({2000, 1000}), 0);
    EXPECT_EQ(MakeViewport({20000, 10000}, {}).FittingZoom({10, 10}), Viewport::smallestZoom);
}

TEST(ViewportTest, ARectangleCoversAllThatShowsIt) {
    Viewport viewport = MakeViewport({100, 100}, {400, 400});
    viewport.SetZoom(-2, {200, 200});
    const Place origin = viewport.Origin();
    const hostapi::VRect shown = viewport.ToView(hostapi::VRect{3, 5, 9, 13});
    EXPECT_TRUE(AreEqual(shown, {origin.y, origin.x + 1, origin.y + 3, origin.x + 4}));
}

}  // namespace host

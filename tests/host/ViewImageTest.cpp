#include "host/window/ViewImage.h"

#include <gtest/gtest.h>

#include <array>

namespace host {

namespace {

using Color = std::array<int, 3>;  // Red, green, blue.

Color ColorAt(const DisplayRows& rows, int x, int y) {
    const std::uint8_t* pixel = rows.bytes.data() + static_cast<std::size_t>(y) * rows.RowBytes() +
                                static_cast<std::size_t>(x) * 3;
    return {pixel[2], pixel[1], pixel[0]};
}

Color ColorAt(const Picture& picture, int x, int y) {
    const std::uint8_t* pixel = picture.Pixel(x, y);
    return {pixel[0], pixel[1], pixel[2]};
}

constexpr Color ground{0x90, 0x90, 0x90};

Picture MakePattern(int width, int height, int planes) {
    Picture picture = MakePicture(width, height, planes);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture.Pixel(x, y)[0] = static_cast<std::uint8_t>(10 * x);
            picture.Pixel(x, y)[1] = static_cast<std::uint8_t>(10 * y);
            picture.Pixel(x, y)[2] = static_cast<std::uint8_t>(x * y);
        }
    }
    return picture;
}

Viewport ViewportOf(const Picture& picture, Size view) {
    Viewport viewport;
    viewport.SetPicture({picture.width, picture.height});
    viewport.SetView(view);
    return viewport;
}

/// Black and white pixels, counted; everything else must be the ground's grey.
int CountOutline(const DisplayRows& rows) {
    int count = 0;
    for (int y = 0; y < rows.height; ++y) {
        for (int x = 0; x < rows.width; ++x) {
            const Color color = ColorAt(rows, x, y);
            if (color == Color{0, 0, 0} || color == Color{255, 255, 255}) {
                ++count;
            } else {
                EXPECT_EQ(color, ground);
            }
        }
    }
    return count;
}

DisplayRows GreyRows(int width, int height) {
    DisplayRows rows{width, height, {}};
    rows.bytes.assign(rows.RowBytes() * static_cast<std::size_t>(height), 0x90);
    return rows;
}

}  // namespace

TEST(DrawViewTest, ShowsEachPixelAndTheGroundAround) {
    const Picture picture = MakePattern(6, 4, 3);
    const Viewport viewport = ViewportOf(picture, {11, 8});
    const DisplayRows rows = DrawView(picture, viewport, {0, 0, 8, 11});
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 11; ++x) {
            const bool isPicture = Contains(picture.Bounds(), x - 2, y - 2);
            EXPECT_EQ(ColorAt(rows, x, y), isPicture ? ColorAt(picture, x - 2, y - 2) : ground);
        }
    }
}

TEST(DrawViewTest, APartIsThatPartOfTheWhole) {
    const Picture picture = MakePattern(20, 20, 4);
    Viewport viewport = ViewportOf(picture, {30, 26});
    for (int zoom : {-2, -1, 0, 1, 3}) {
        viewport.SetZoom(zoom, {15, 13});
        const DisplayRows whole = DrawView(picture, viewport, {0, 0, 26, 30});
        const DisplayRows part = DrawView(picture, viewport, {5, 3, 20, 24});
        for (int y = 5; y < 20; ++y) {
            for (int x = 3; x < 24; ++x) {
                EXPECT_EQ(ColorAt(part, x - 3, y - 5), ColorAt(whole, x, y));
            }
        }
    }
}

TEST(DrawViewTest, ZoomedInAPixelIsASquare) {
    const Picture picture = MakePattern(3, 3, 3);
    Viewport viewport = ViewportOf(picture, {12, 12});
    viewport.SetZoom(2, {0, 0});
    const DisplayRows rows = DrawView(picture, viewport, {0, 0, 12, 12});
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 12; ++x) {
            EXPECT_EQ(ColorAt(rows, x, y), ColorAt(picture, x / 4, y / 4));
        }
    }
}

TEST(DrawViewTest, ZoomedOutAPixelIsTheMeanOfItsSquare) {
    const Picture picture = MakePattern(4, 2, 3);
    Viewport viewport = ViewportOf(picture, {2, 1});
    viewport.SetZoom(-1, {0, 0});
    const DisplayRows rows = DrawView(picture, viewport, {0, 0, 1, 2});
    EXPECT_EQ(ColorAt(rows, 0, 0), (Color{5, 5, 0}));
    EXPECT_EQ(ColorAt(rows, 1, 0), (Color{25, 5, 1}));
}

TEST(DrawViewTest, ZoomedOutTheLastSquareMayBeCutOff) {
    const Picture picture = MakePicture(5, 5, 3, 77);
    Viewport viewport = ViewportOf(picture, {3, 3});
    for (int zoom : {-1, -2, -3, -4}) {
        viewport.SetZoom(zoom, {0, 0});
        const Place last = viewport.ToView(Place{4, 4});
        const DisplayRows rows = DrawView(picture, viewport, {0, 0, 3, 3});
        EXPECT_EQ(ColorAt(rows, last.x, last.y), (Color{77, 77, 77}));
    }
}

TEST(DrawViewTest, TransparencyShowsTheChequeredGround) {
    Picture picture = MakePicture(16, 16, 4, 100);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            picture.Pixel(x, y)[3] = 0;
        }
    }
    picture.Pixel(9, 0)[3] = 51;
    picture.Pixel(1, 0)[3] = 255;
    const DisplayRows rows = DrawView(picture, ViewportOf(picture, {16, 16}), {0, 0, 16, 16});
    EXPECT_EQ(ColorAt(rows, 0, 0), (Color{255, 255, 255}));
    EXPECT_EQ(ColorAt(rows, 8, 0), (Color{204, 204, 204}));
    EXPECT_EQ(ColorAt(rows, 8, 8), (Color{255, 255, 255}));
    EXPECT_EQ(ColorAt(rows, 1, 0), (Color{100, 100, 100}));
    // A fifth of the colour on the darker square.
    EXPECT_EQ(ColorAt(rows, 9, 0), (Color{183, 183, 183}));
}

TEST(DrawOutlineTest, RunsAlongTheInsideOfARectangle) {
    const Picture picture = MakePicture(20, 20, 3);
    const Viewport viewport = ViewportOf(picture, {20, 20});
    const Selection selection = SelectRectangle({3, 4, 9, 16});
    DisplayRows rows = GreyRows(20, 20);
    DrawOutline(rows, {0, 0}, viewport, selection, 0);
    EXPECT_EQ(CountOutline(rows), 2 * 12 + 2 * 4);
    EXPECT_NE(ColorAt(rows, 4, 3), ground);
    EXPECT_NE(ColorAt(rows, 15, 8), ground);
    EXPECT_EQ(ColorAt(rows, 5, 4), ground);
    EXPECT_EQ(ColorAt(rows, 3, 3), ground);
}

TEST(DrawOutlineTest, DashesWander) {
    const Picture picture = MakePicture(20, 20, 3);
    const Viewport viewport = ViewportOf(picture, {20, 20});
    const Selection selection = SelectRectangle(picture.Bounds());
    DisplayRows before = GreyRows(20, 20);
    DisplayRows after = GreyRows(20, 20);
    DrawOutline(before, {0, 0}, viewport, selection, 0);
    DrawOutline(after, {0, 0}, viewport, selection, 1);
    for (int x = 0; x + 1 < 20; ++x) {
        EXPECT_EQ(ColorAt(after, x, 0), ColorAt(before, x + 1, 0));
    }
    EXPECT_NE(before.bytes, after.bytes);
}

TEST(DrawOutlineTest, APartIsThatPartOfTheWhole) {
    const Picture picture = MakePicture(20, 20, 3);
    Viewport viewport = ViewportOf(picture, {40, 40});
    viewport.SetZoom(1, {20, 20});
    const Selection selection = SelectEllipse({2, 3, 17, 15}, 3.0);
    DisplayRows whole = GreyRows(40, 40);
    DisplayRows part = GreyRows(20, 12);
    DrawOutline(whole, {0, 0}, viewport, selection, 5);
    DrawOutline(part, {10, 15}, viewport, selection, 5);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 20; ++x) {
            EXPECT_EQ(ColorAt(part, x, y), ColorAt(whole, x + 10, y + 15));
        }
    }
}

TEST(DrawOutlineTest, ADraggedEllipseLooksLikeTheFinishedOne) {
    const Picture picture = MakePicture(50, 40, 3);
    const Viewport viewport = ViewportOf(picture, {50, 40});
    const DraggedSelection dragged{{4, 5, 37, 44}, SelectionShape::ellipse};
    DisplayRows whileDragging = GreyRows(50, 40);
    DisplayRows finished = GreyRows(50, 40);
    DrawOutline(whileDragging, {0, 0}, viewport, dragged, 2);
    DrawOutline(finished, {0, 0}, viewport, FinishDrag(dragged, 0.0), 2);
    EXPECT_EQ(whileDragging.bytes, finished.bytes);
    EXPECT_GT(CountOutline(finished), 60);
}

}  // namespace host

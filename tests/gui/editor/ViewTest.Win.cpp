// The drawing area: zoom, size marks, the tile preview.
#include <algorithm>

#include "tests/gui/PluginRun.Win.h"
#include "tests/gui/ShownView.Win.h"

namespace {

using Items = TextureItems;

class ViewTest : public PluginRunTest {};

TEST_F(ViewTest, ZoomWalksItsLadderAndStopsAtTheEnds) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        // Without the marks, which reach beyond a small texture.
        gui.Type("m");
        WaitUntil("no marks", [&] { return editor.Value(Items::sizeMarks) == 0; });
        const RECT area = editor.Bounds(Items::drawingArea);
        const int viewAcross = static_cast<int>(area.right - area.left) - 4 - 15;
        const int viewDown = static_cast<int>(area.bottom - area.top) - 4 - 15;
        const auto expectZoom = [&](double zoom) {
            const ShownView shown(editor);
            const auto tiles = [zoom](int side) { return 3 * static_cast<int>(side * zoom); };
            EXPECT_EQ(shown.Across(), std::min(tiles(width), viewAcross)) << zoom;
            EXPECT_EQ(shown.Down(), std::min(tiles(height), viewDown)) << zoom;
            // A texture that does not fit can be scrolled, and is centred.
            const auto middle = [zoom](int side, int view) {
                return std::max(static_cast<int>(side * zoom * 3) - view, 0) / 2;
            };
            EXPECT_EQ(editor.ScrollPosition(Items::horizontalScroll), middle(width, viewAcross))
                << zoom;
            EXPECT_EQ(editor.ScrollPosition(Items::verticalScroll), middle(height, viewDown))
                << zoom;
            EXPECT_EQ(editor.IsEnabled(Items::horizontalScroll), middle(width, viewAcross) > 0);
            EXPECT_EQ(editor.IsEnabled(Items::verticalScroll), middle(height, viewDown) > 0);
        };
        expectZoom(1.0);
        for (const double zoom : {1.5, 2.0, 3.0, 4.0, 4.0}) {
            editor.Choose(commandZoomIn);
            expectZoom(zoom);
        }
        for (const double zoom : {3.0, 2.0, 1.5, 1.0, 0.75, 0.5, 0.33, 0.25, 0.25}) {
            editor.Press(Items::zoomOut);
            expectZoom(zoom);
        }
        editor.Press(Items::zoomIn);
        expectZoom(0.33);
        editor.Choose(commandActualPixels);
        expectZoom(1.0);
        editor.Choose(commandZoomOut);
        expectZoom(0.75);
    });
}

TEST_F(ViewTest, ASmallTextureAtAQuarterStandsInTheMiddleOfTheGrey) {
    selection = {10, 20, 10 + 16, 20 + 16};
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("m");
        WaitUntil("no marks", [&] { return editor.Value(Items::sizeMarks) == 0; });
        for (int step = 0; step < 4; ++step) {
            editor.Press(Items::zoomOut);
        }
        const ShownView shown(editor);
        EXPECT_EQ(shown.Across(), 12);
        EXPECT_EQ(shown.Down(), 12);
        const ItemPlace first = PlaceOfPixel(editor, 0, 0, 0.25);
        const Pixel ground = Color(0x9C, 0x9C, 0x9C);
        EXPECT_EQ(shown.At(first), white);
        EXPECT_EQ(shown.At({first.x + 11, first.y + 11}), white);
        EXPECT_EQ(shown.At({first.x - 1, first.y}), ground);
        EXPECT_EQ(shown.At({first.x + 12, first.y + 11}), ground);
        EXPECT_EQ(shown.At({first.x, first.y - 1}), ground);
        EXPECT_EQ(shown.At({first.x + 11, first.y + 12}), ground);
    });
}

/// An item of the editor as it is shown, pixel by pixel.
std::vector<Pixel> Shown(const DrivenDialog& editor, int item) {
    const RECT bounds = editor.Bounds(item);
    const host::Picture picture = editor.Grab();
    std::vector<Pixel> colors;
    for (LONG y = bounds.top; y < bounds.bottom; ++y) {
        for (LONG x = bounds.left; x < bounds.right; ++x) {
            const std::uint8_t* const pixel =
                picture.Pixel(static_cast<int>(x), static_cast<int>(y));
            colors.push_back(Color(pixel[0], pixel[1], pixel[2]));
        }
    }
    return colors;
}

TEST_F(ViewTest, TheReadoutShowsTheZoom) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        const std::vector<Pixel> actual = Shown(editor, Items::zoomReadout);
        editor.Choose(commandZoomIn);
        const std::vector<Pixel> larger = Shown(editor, Items::zoomReadout);
        EXPECT_NE(larger, actual);
        editor.Choose(commandZoomIn);
        EXPECT_NE(Shown(editor, Items::zoomReadout), larger);
        editor.Choose(commandActualPixels);
        EXPECT_EQ(Shown(editor, Items::zoomReadout), actual);
    });
}

TEST_F(ViewTest, AnEmptyProgressBarHasABlackFrameAndAGreyEdge) {
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        const RECT bounds = editor.Bounds(Items::progress);
        const std::size_t across = static_cast<std::size_t>(bounds.right - bounds.left);
        const std::size_t down = static_cast<std::size_t>(bounds.bottom - bounds.top);
        const std::vector<Pixel> bar = Shown(editor, Items::progress);
        for (std::size_t y = 0; y < down; ++y) {
            for (std::size_t x = 0; x < across; ++x) {
                const bool isFrame = x == 0 || y == 0 || x == across - 1 || y == down - 1;
                const bool isEdge = x == 1 || y == 1;
                EXPECT_EQ(bar[y * across + x], isFrame  ? black
                                               : isEdge ? Color(0x7F, 0x7F, 0x7F)
                                                        : white)
                    << x << ", " << y;
            }
        }
    });
}

TEST_F(ViewTest, SizeMarksAndViewsByKeys) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("m");
        WaitUntil("no marks", [&] { return editor.Value(Items::sizeMarks) == 0; });
        gui.Type("P");
        WaitUntil("the preview", [&] { return editor.Value(Items::tab) == 2; });
        gui.Type("M");
        WaitUntil("marks", [&] { return editor.Value(Items::sizeMarks) == 1; });
        EXPECT_FALSE(IsWindowVisible(editor.Control(Items::sizeMarks)));
        EXPECT_FALSE(IsWindowVisible(editor.Control(Items::sizeMarksSymbol)));
        gui.Type("p");
        WaitUntil("the drawing", [&] { return editor.Value(Items::tab) == 1; });
        EXPECT_TRUE(IsWindowVisible(editor.Control(Items::sizeMarks)));
        EXPECT_TRUE(IsWindowVisible(editor.Control(Items::sizeMarksSymbol)));
    });
}

TEST_F(ViewTest, SizeMarksStandAtTheCornersOfTheMiddleTile) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const ItemPlace corner = PlaceOfPixel(editor, width, height);
        const auto at = [&](const ShownView& shown, int right, int down) {
            return shown.At({corner.x + right, corner.y + down});
        };
        // From 8 pixels before the corner on, 16 long; at its sides, a pixel's width.
        const auto expectMarks = [&](Pixel ground, Pixel line, Pixel side) {
            const ShownView shown(editor);
            for (const bool across : {true, false}) {
                const auto along = [&](int place, int aside) {
                    return across ? at(shown, place, aside) : at(shown, aside, place);
                };
                for (int place = -24; place <= -9; ++place) {
                    EXPECT_EQ(along(place, 0), line) << place;
                    EXPECT_EQ(along(place, -1), side) << place;
                    EXPECT_EQ(along(place, 1), side) << place;
                    EXPECT_EQ(along(place, 2), ground) << place;
                }
                EXPECT_EQ(along(-25, 0), ground);
                EXPECT_EQ(along(-8, 0), ground);
                const int other = across ? width : height;
                EXPECT_EQ(along(other + 7, 0), ground);
                EXPECT_EQ(along(other + 8, 0), line);
                EXPECT_EQ(along(other + 23, 0), line);
                EXPECT_EQ(along(other + 24, 0), ground);
            }
        };
        expectMarks(white, black, white);
        editor.Press(Items::invert);
        expectMarks(black, black, white);
        editor.Press(Items::sizeMarks);
        expectMarks(black, black, black);
        gui.Type("m");
        WaitUntil("marks", [&] { return editor.Value(Items::sizeMarks) == 1; });
        expectMarks(black, black, white);
    });
}

TEST_F(ViewTest, ThePreviewShowsTheTileFromTheCornerOnAndItsMarks) {
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {PlaceOfPixel(editor, width + 30, height + 50)});
        SwitchTab(editor);
        constexpr int frame = 2;
        const auto at = [](const ShownView& shown, int x, int y) {
            return shown.At({frame + x, frame + y});
        };
        const auto expectTiles = [&](bool marked) {
            const ShownView shown(editor);
            for (const auto& [left, top] :
                 {std::pair{0, 0}, {width, 0}, {0, height}, {width, height}}) {
                EXPECT_EQ(at(shown, left + 30, top + 50), black) << left << ", " << top;
                EXPECT_EQ(at(shown, left + 31, top + 50), white);
                EXPECT_EQ(at(shown, left + 30, top + 49), white);
            }
            for (int reach = -8; reach <= 8; ++reach) {
                EXPECT_EQ(at(shown, width + reach, height), marked ? black : white) << reach;
                EXPECT_EQ(at(shown, width, height + reach), marked ? black : white) << reach;
            }
            for (const int beyond : {-9, 9}) {
                EXPECT_EQ(at(shown, width + beyond, height), white);
                EXPECT_EQ(at(shown, width, height + beyond), white);
            }
        };
        expectTiles(true);
        gui.Type("m");
        WaitUntil("no marks", [&] { return editor.Value(Items::sizeMarks) == 0; });
        expectTiles(false);
    });
}

}  // namespace

#include "editor/ViewGeometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "base/Rectangles.h"

namespace {

constexpr double ladder[] = {0.25, 0.33, 0.5, 0.75, 1.0, 1.5, 2.0, 3.0, 4.0};

ViewAxis Axis(int tile, double zoom, int view, int scroll = 0, ViewMode mode = viewDrawing) {
    return {tile, zoom, mode, view, scroll};
}

ViewGeometry Square(int tile, double zoom, int view, ViewMode mode = viewDrawing) {
    return {Axis(tile, zoom, view, 0, mode), Axis(tile, zoom, view, 0, mode)};
}

TEST(ZoomLadder, StepsUpToFour) {
    double zoom = 0.25;
    for (const double step : ladder) {
        EXPECT_EQ(zoom, step);
        zoom = ZoomedIn(zoom);
    }
    EXPECT_EQ(zoom, 4.0);
}

TEST(ZoomLadder, StepsDownToAQuarter) {
    double zoom = 4.0;
    for (auto step = std::rbegin(ladder); step != std::rend(ladder); ++step) {
        EXPECT_EQ(zoom, *step);
        zoom = ZoomedOut(zoom);
    }
    EXPECT_EQ(zoom, 0.25);
}

TEST(ZoomLadder, LeavesOtherFactors) {
    EXPECT_EQ(ZoomedIn(1.25), 1.25);
    EXPECT_EQ(ZoomedOut(1.25), 1.25);
}

TEST(ViewGeometry, TheViewLiesInsideFrameAndScrollBars) {
    const hostapi::Rect view = ViewRect({10, 20, 500, 700});
    EXPECT_EQ(view.top, 12);
    EXPECT_EQ(view.left, 22);
    EXPECT_EQ(view.bottom, 483);
    EXPECT_EQ(view.right, 683);
}

TEST(ViewGeometry, FrameAndScrollBarsGrowWithTheScale) {
    const auto view = [](int resolution) { return ViewRect({10, 20, 500, 700}, {resolution}); };
    EXPECT_TRUE(AreEqual(view(120), {13, 23, 478, 678})) << "2.5 and 18.75";
    EXPECT_TRUE(AreEqual(view(144), {13, 23, 474, 674})) << "3 and 22.5";
    EXPECT_TRUE(AreEqual(view(192), {14, 24, 466, 666}));
}

TEST(ViewGeometry, ASmallImageIsCentred) {
    const ViewAxis axis = Axis(16, 0.25, 101);
    EXPECT_EQ(axis.Scaled(), 4);
    EXPECT_EQ(axis.Image(), 12);
    EXPECT_EQ(axis.Origin(), 44);
    EXPECT_EQ(axis.Range(), (ScrollRange{0, 37}));
}

TEST(ViewGeometry, ALargeImageScrolls) {
    const ViewAxis axis = Axis(512, 1.0, 600, 100);
    EXPECT_EQ(axis.Origin(), -100);
    EXPECT_EQ(axis.Range(), (ScrollRange{936, 536}));
}

TEST(ViewGeometry, AnImageOfTheViewsSizeIsNeitherCentredNorScrolled) {
    const ViewAxis axis = Axis(100, 1.0, 300);
    EXPECT_EQ(axis.Origin(), 0);
    EXPECT_EQ(axis.Range().maximum, 0);
}

TEST(ViewGeometry, SizesTruncateOnTheirOwn) {
    const ViewAxis axis = Axis(512, 0.33, 1000);
    EXPECT_EQ(axis.Scaled(), 168);
    EXPECT_EQ(axis.Image(), 506);  // 506.88, not 3 * 168
}

TEST(ViewGeometry, TheDrawingModeShowsNineTiles) {
    const std::vector<TilePlace> tiles = Square(10, 2.0, 100).Blocks();
    ASSERT_EQ(tiles.size(), 9u);
    EXPECT_EQ(tiles[0], (TilePlace{20, 20}));
    EXPECT_EQ(tiles[1], (TilePlace{40, 20}));
    EXPECT_EQ(tiles[3], (TilePlace{20, 40}));
    EXPECT_EQ(tiles[8], (TilePlace{60, 60}));
}

TEST(ViewGeometry, ThePreviewFillsTheView) {
    const ViewGeometry geometry = Square(80, 1.0, 250, viewTilePreview);
    const std::vector<TilePlace> tiles = geometry.Blocks();
    ASSERT_EQ(tiles.size(), 16u);  // 251 / 80 + 1 each way
    EXPECT_EQ(tiles.front(), (TilePlace{0, 0}));
    EXPECT_EQ(tiles.back(), (TilePlace{240, 240}));
    EXPECT_TRUE(geometry.Strips().empty());
}

TEST(ViewGeometry, ThePreviewPutsSmallTilesTogether) {
    const ViewGeometry geometry = Square(30, 1.0, 100, viewTilePreview);
    EXPECT_EQ(geometry.x.Block(), 3);
    EXPECT_EQ(geometry.x.BlockSize(), 90);
    // 101 / 30 + 1 repeats each way.
    EXPECT_EQ(geometry.Blocks(), (std::vector<TilePlace>{{0, 0}, {90, 0}, {0, 90}, {90, 90}}));
    EXPECT_EQ(Axis(64, 1.0, 100, 0, viewTilePreview).Block(), 1);
    EXPECT_EQ(Axis(30, 1.0, 100, 0, viewDrawing).Block(), 1);
    // A picture of one pixel does not cost a call for each pixel of the view.
    EXPECT_LE(Square(1, 1.0, 1000, viewTilePreview).Blocks().size(), 256u);
}

TEST(ViewGeometry, ThePreviewScrollsATileThatIsLargerThanTheView) {
    const ViewAxis axis = Axis(512, 4.0, 600, 1448, viewTilePreview);
    EXPECT_EQ(axis.Range().maximum, 2048 - 600);
    EXPECT_EQ(axis.Origin(), -1448);
    EXPECT_EQ(axis.Repeats(), 1);
}

TEST(ViewGeometry, APartOfTheTileIsShownByFewPixels) {
    EXPECT_EQ(Axis(100, 1.0, 200).Showing(10, 12), (ScreenSpan{9, 4}));
    EXPECT_EQ(Axis(100, 1.0, 200).Showing(0, 1), (ScreenSpan{-1, 3}));
    EXPECT_EQ(Axis(100, 1.0, 200).Showing(95, 120), (ScreenSpan{94, 27}));
    EXPECT_EQ(Axis(100, 4.0, 200).Showing(10, 12), (ScreenSpan{39, 10}));
    EXPECT_EQ(Axis(100, 1.0, 200).Showing(3, 101), (ScreenSpan{0, 100}));
    EXPECT_EQ(Axis(1, 0.25, 200).Showing(0, 1), (ScreenSpan{0, 0}));
}

/// Each pixel of the view that shows one of the texture's pixels in question is in the span of one
/// of the places; by the rule of the scaled copy.
TEST(ViewGeometry, NoPixelOfAPartIsLeftOut) {
    for (const double zoom : ladder) {
        for (const int tile : {1, 2, 7, 33, 60, 150, 512}) {
            for (const int view : {20, 150, 2000}) {
                ViewAxis axis = Axis(tile, zoom, view);
                if (axis.Scaled() < 1) {
                    EXPECT_TRUE(axis.PlacesOf(axis.Showing(0, 1)).empty());
                    continue;
                }
                axis.scroll = axis.Range().maximum / 2;
                const double ratio = static_cast<double>(tile) / axis.Scaled();
                for (int from = 0; from < tile; from += tile / 7 + 1) {
                    const int to = from + tile / 5 + 1;
                    const ScreenSpan span = axis.Showing(from, to);
                    std::vector<bool> covered(static_cast<std::size_t>(view));
                    for (const int place : axis.PlacesOf(span)) {
                        for (int i = place; i < place + span.count; ++i) {
                            if (i >= 0 && i < view) {
                                EXPECT_FALSE(covered[static_cast<std::size_t>(i)]) << "twice";
                                covered[static_cast<std::size_t>(i)] = true;
                            }
                        }
                    }
                    for (int i = 0; i < view; ++i) {
                        const int inImage = i - axis.Origin();
                        if (inImage < 0 || inImage >= 3 * axis.Scaled()) {
                            continue;
                        }
                        const int shown = static_cast<int>(inImage % axis.Scaled() * ratio);
                        const bool isMeant = (shown >= from && shown < to) || shown + tile < to;
                        EXPECT_TRUE(!isMeant || covered[static_cast<std::size_t>(i)])
                            << tile << " at " << zoom << ": " << i << " shows " << shown;
                    }
                }
            }
        }
    }
}

TEST(ViewGeometry, NothingOfATileBelowAPixelIsDrawn) {
    const ViewGeometry drawing = Square(1, 0.25, 50);
    EXPECT_TRUE(drawing.Blocks().empty());
    EXPECT_FALSE(drawing.Strips().empty());
    const ViewGeometry preview = Square(1, 0.25, 50, viewTilePreview);
    EXPECT_TRUE(preview.Blocks().empty());
    EXPECT_TRUE(preview.SizeMarks().empty());
}

/// Each pixel of the view is drawn by tiles and strips together, whatever sizes meet.
TEST(ViewGeometry, TilesAndStripsCoverTheView) {
    constexpr int view = 150;
    for (const ViewMode mode : {viewDrawing, viewTilePreview}) {
        for (const double zoom : ladder) {
            for (const int tile : {4, 16, 33, 37, 50, 149, 150, 151, 512}) {
                ViewAxis axis = Axis(tile, zoom, view, 0, mode);
                for (const int scroll : {0, axis.Range().maximum / 2, axis.Range().maximum}) {
                    axis.scroll = scroll;
                    const ViewGeometry geometry{axis, Axis(10, 1.0, 30)};
                    std::vector<int> covered(view);
                    for (const TilePlace& place : geometry.Blocks()) {
                        for (int x = place.x; x < place.x + axis.BlockSize(); ++x) {
                            if (x >= 0 && x < view) {
                                covered[static_cast<std::size_t>(x)] = 1;
                            }
                        }
                    }
                    for (const ScreenRect& strip : geometry.Strips()) {
                        if (strip.top == 0 && strip.bottom == 30) {
                            std::fill(covered.begin() + strip.left, covered.begin() + strip.right,
                                      1);
                        }
                    }
                    EXPECT_EQ(std::count(covered.begin(), covered.end(), 0), 0)
                        << "tile " << tile << " zoom " << zoom << " mode " << mode << " scroll "
                        << scroll;
                }
            }
        }
    }
}

TEST(ViewGeometry, StripsDoNotOverlapTheTiles) {
    const std::vector<ScreenRect> strips = Square(16, 0.25, 20).Strips();
    ASSERT_EQ(strips.size(), 4u);
    EXPECT_EQ(strips[0], (ScreenRect{0, 0, 4, 20}));
    EXPECT_EQ(strips[1], (ScreenRect{16, 0, 20, 20}));
    EXPECT_EQ(strips[2], (ScreenRect{4, 0, 16, 4}));
    EXPECT_EQ(strips[3], (ScreenRect{4, 16, 16, 20}));
}

TEST(ViewGeometry, PositionsGoBackToTheTexture) {
    const ViewAxis centred = Axis(100, 1.0, 400);  // from 50 on
    EXPECT_EQ(centred.ToTexture(50), 0);
    EXPECT_EQ(centred.ToTexture(349), 299);
    EXPECT_EQ(centred.ToTexture(349) % 100, 99);
    EXPECT_EQ(centred.ToTexture(0), -50);
    const ViewAxis scrolled = Axis(512, 2.0, 500, 300);
    EXPECT_EQ(scrolled.ToTexture(0), 150);
    EXPECT_EQ(scrolled.ToTexture(1), 150);
    EXPECT_EQ(scrolled.ToTexture(2), 151);
}

TEST(ViewGeometry, PositionsBeyondTheImageTruncateTowardsZero) {
    const ViewAxis axis = Axis(10, 4.0, 200);  // from 40 on
    EXPECT_EQ(axis.ToTexture(39), 0);
    EXPECT_EQ(axis.ToTexture(36), -1);
    EXPECT_EQ(axis.ToTexture(199), 39);
}

TEST(ViewGeometry, CropMarksPointAtTheMiddleTile) {
    const std::vector<MarkLine> marks = Square(100, 1.0, 400).SizeMarks();
    ASSERT_EQ(marks.size(), 24u);
    // The middle tile runs from 150 to 250; the gap is 8, the length 16.
    EXPECT_EQ(marks[0], (MarkLine{126, 150, 141, 150, false}));
    EXPECT_EQ(marks[1], (MarkLine{126, 149, 141, 149, true}));
    EXPECT_EQ(marks[2], (MarkLine{126, 151, 141, 151, true}));
    EXPECT_EQ(marks[3], (MarkLine{258, 150, 273, 150, false}));
    EXPECT_EQ(marks[6], (MarkLine{126, 250, 141, 250, false}));
    EXPECT_EQ(marks[12], (MarkLine{150, 126, 150, 141, false}));
    EXPECT_EQ(marks[13], (MarkLine{149, 126, 149, 141, true}));
    EXPECT_EQ(marks[15], (MarkLine{150, 258, 150, 273, false}));
    EXPECT_EQ(marks[23], (MarkLine{251, 258, 251, 273, true}));
}

TEST(ViewGeometry, CropMarksGrowWithTheZoom) {
    const MarkLine mark = Square(100, 0.33, 400).SizeMarks().front();
    EXPECT_EQ(mark.toX - mark.fromX + 1, 5);  // trunc(0.33 * 16)
    const int corner = 150 + 33 + 1;          // (400 - 99) / 2, then the tile
    EXPECT_EQ(mark.toX + 1, corner - 1 - 2);
}

TEST(ViewGeometry, SizeMarksGrowWithTheScale) {
    const std::vector<MarkLine> marks = Square(100, 1.0, 400).SizeMarks({192});
    ASSERT_EQ(marks.size(), 24u);
    // 32 long and ending 16 before the corner at 150; of lines of two pixels each.
    EXPECT_EQ(marks[0], (MarkLine{102, 150, 133, 150, false}));
    EXPECT_EQ(marks[1], (MarkLine{102, 148, 133, 148, true}));
    EXPECT_EQ(marks[2], (MarkLine{102, 152, 133, 152, true}));
    EXPECT_EQ(marks[3], (MarkLine{266, 150, 297, 150, false}));

    const std::vector<MarkLine> crosses = Square(60, 1.0, 100, viewTilePreview).SizeMarks({192});
    EXPECT_EQ(crosses.front(), (MarkLine{-16, -2, 16, -2, true}));
    EXPECT_EQ(crosses.back().white, false);
}

TEST(ViewGeometry, CrossesStandAtTheCornersOfThePreview) {
    const std::vector<MarkLine> marks = Square(60, 1.0, 100, viewTilePreview).SizeMarks();
    // 100 / 60 + 2 corners each way, three lines along each of the two arms.
    ASSERT_EQ(marks.size(), 9u * 6u);
    EXPECT_TRUE(marks.front().white);
    EXPECT_FALSE(marks.back().white);
    const auto has = [&marks](const MarkLine& mark) {
        return std::find(marks.begin(), marks.end(), mark) != marks.end();
    };
    EXPECT_TRUE(has({52, 60, 68, 60, false}));
    EXPECT_TRUE(has({60, 52, 60, 68, false}));
    EXPECT_TRUE(has({52, 59, 68, 59, true}));
    EXPECT_TRUE(has({61, 52, 61, 68, true}));
    EXPECT_TRUE(has({-8, 0, 8, 0, false}));
}

TEST(ViewGeometry, CrossesThatTouchAreOneLine) {
    const std::vector<MarkLine> marks = Square(1, 1.0, 1000, viewTilePreview).SizeMarks();
    EXPECT_EQ(marks.size(), 1002u * 6u);
}

TEST(ViewGeometry, ScrollBarsStandInTheMiddle) {
    EXPECT_EQ(CentredScroll(0, 937), 468);
    EXPECT_EQ(CentredScroll(0, 938), 469);
    EXPECT_EQ(CentredScroll(10, 30), 10) << "half of the range, from its beginning";
    EXPECT_EQ(CentredScroll(0, 0), 0);
}

TEST(ProgressBar, FillsFromTheLeft) {
    EXPECT_EQ(ProgressEnd(10, 110, 0), 10);
    EXPECT_EQ(ProgressEnd(10, 110, 50), 60);
    EXPECT_EQ(ProgressEnd(10, 110, 100), 110);
    EXPECT_EQ(ProgressEnd(0, 33, 50), 16);
}

TEST(ProgressBar, StaysInsideTheBar) {
    EXPECT_EQ(ProgressEnd(10, 110, 140), 110);
    EXPECT_EQ(ProgressEnd(10, 110, -3), 10);
    EXPECT_EQ(ProgressEnd(10, 5, 50), 10);
}

}  // namespace

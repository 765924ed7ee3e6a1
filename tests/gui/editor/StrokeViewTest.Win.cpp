// The view while a stroke grows. Each look at the mouse draws only what the stroke has touched;
// what is on the screen in the end is what a paint of the whole view shows.
#include <algorithm>

#include "editor/ViewGeometry.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

using Items = TextureItems;

struct StrokeTool {
    char key;
    int tool;
};
constexpr StrokeTool brush{'b', 2};
constexpr StrokeTool eraser{'e', 3};
constexpr StrokeTool pencil{'n', 4};
constexpr StrokeTool stamp{'s', 6};

class StrokeViewTest : public DialogRunTest {
  protected:
    StrokeViewTest() {
        stored.foreground = {0xFF00, 0x2000, 0x1000};
        stored.background = {0x1000, 0x8000, 0xF000};
    }

    /// The view's pixels, row by row.
    static std::vector<Pixel> Shown(const DrivenDialog& editor) {
        const RECT item = editor.Bounds(Items::drawingArea);
        const hostapi::Rect view =
            ViewRect({static_cast<short>(item.top), static_cast<short>(item.left),
                      static_cast<short>(item.bottom), static_cast<short>(item.right)});
        const host::Picture window = editor.Grab();
        std::vector<Pixel> pixels;
        for (int y = view.top; y < view.bottom; ++y) {
            for (int x = view.left; x < view.right; ++x) {
                const std::uint8_t* const pixel = window.Pixel(x, y);
                pixels.push_back(Color(pixel[0], pixel[1], pixel[2]));
            }
        }
        return pixels;
    }

    static void ShowMarks(const GuiDriver& gui, const DrivenDialog& editor, bool on) {
        if ((editor.Value(Items::sizeMarks) != 0) != on) {
            gui.Type("m");
            WaitUntil("the marks", [&] { return (editor.Value(Items::sizeMarks) != 0) == on; });
        }
        editor.WaitUntilPainted();
        editor.Settle();
    }

    /// From `start` on by steps of some pixels of the screen. Returns what the view shows before
    /// the button goes up, and how often the host draws for the last of the steps.
    struct Drawn {
        std::vector<Pixel> shown;
        int displaysAtEnd;
    };
    Drawn DrawAt(const GuiDriver& gui, const DrivenDialog& editor, const StrokeTool& tool,
                 ItemPlace start) {
        ShowMarks(gui, editor, true);
        ChooseTool(gui, editor, tool.key, tool.tool);
        if (tool.tool == stamp.tool) {
            TakeStampSource(gui, editor, {start.x - 30, start.y + 12});
        }
        editor.WaitUntilPainted();
        editor.Settle();
        int drawnBefore = Displays();
        const auto waitForDraw = [&] {
            WaitUntil("the stroke to be drawn", [&] { return Displays() > drawnBefore; });
            editor.Settle();
        };
        editor.Point(Items::drawingArea, start);
        gui.PressMouse();
        WaitUntil("the stroke to begin", [&] { return HasCapture(editor.Window()); });
        if (tool.tool != stamp.tool) {
            waitForDraw();
        }
        editor.Settle();
        constexpr ItemPlace steps[] = {{6, 3}, {20, -15}, {9, -30}, {-25, -4}, {-8, 12}};
        int displaysAtEnd = 0;
        for (const ItemPlace& step : steps) {
            drawnBefore = Displays();
            editor.Point(Items::drawingArea, {start.x + step.x, start.y + step.y});
            waitForDraw();
            displaysAtEnd = Displays() - drawnBefore;
        }
        const std::vector<Pixel> shown = Shown(editor);
        gui.ReleaseMouse();
        if (tool.tool == stamp.tool) {
            editor.Point(Items::drawingArea, {start.x, start.y + 8});
        }
        WaitUntil("the stroke to end", [&] { return !HasCapture(editor.Window()); });
        return {shown, displaysAtEnd};
    }

    /// In a texture of the selection's size.
    void ExpectTheWholeView(const StrokeTool& tool, double zoom, int button, int presses,
                            hostapi::Point start) {
        RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
            for (int press = 0; press < presses; ++press) {
                editor.Press(button);
            }
            const std::vector<Pixel> before = Shown(editor);
            const std::vector<Pixel> drawn =
                DrawAt(gui, editor, tool, PlaceOfPixel(editor, start.h, start.v, zoom)).shown;
            ShowMarks(gui, editor, false);
            const std::vector<Pixel> painted = Shown(editor);
            EXPECT_NE(painted, before);
            if (tool.tool == stamp.tool) {
                // The cross of the source has no more pixels, and is where the source is.
                EXPECT_LE(Differences(drawn, painted), 2 * 11);
            } else {
                EXPECT_EQ(Differences(drawn, painted), 0) << tool.key << " at " << zoom;
            }
        });
    }

    static int Differences(const std::vector<Pixel>& a, const std::vector<Pixel>& b) {
        EXPECT_EQ(a.size(), b.size());
        int count = 0;
        for (std::size_t i = 0; i < (std::min)(a.size(), b.size()); ++i) {
            count += a[i] != b[i] ? 1 : 0;
        }
        return count;
    }
};

hostapi::Point PointAt(int x, int y) {
    return {static_cast<short>(y), static_cast<short>(x)};
}

TEST_F(StrokeViewTest, InTheTileItIsTheWholeViews) {
    ExpectTheWholeView(brush, 1.0, Items::zoomIn, 0, PointAt(width + 60, height + 50));
}

TEST_F(StrokeViewTest, OverTheSeamItIsTheWholeViews) {
    ExpectTheWholeView(brush, 1.0, Items::zoomIn, 0, PointAt(2 * width, 2 * height));
    ExpectTheWholeView(eraser, 1.5, Items::zoomIn, 1, PointAt(width + 4, height - 3));
    ExpectTheWholeView(pencil, 0.75, Items::zoomOut, 1, PointAt(2 * width, height + 10));
}

TEST_F(StrokeViewTest, AtTheEndsOfTheLadderItIsTheWholeViews) {
    ExpectTheWholeView(brush, 4.0, Items::zoomIn, 5,
                       PointAt(width + width / 2, height + height / 2));
    ExpectTheWholeView(brush, 0.33, Items::zoomOut, 3, PointAt(width + 60, height + 50));
    ExpectTheWholeView(eraser, 0.25, Items::zoomOut, 4, PointAt(width, height + 50));
}

TEST_F(StrokeViewTest, ASmallTextureShowsItInNineRepeatsAndNotBesideThem) {
    selection = {10, 20, 10 + 40, 20 + 60};
    ExpectTheWholeView(brush, 1.0, Items::zoomIn, 0, PointAt(60, 40));
    ExpectTheWholeView(eraser, 0.33, Items::zoomOut, 3, PointAt(2, 1));
    ExpectTheWholeView(pencil, 1.5, Items::zoomIn, 1, PointAt(-20, 3 * 40 + 5));
}

TEST_F(StrokeViewTest, TheStampsIsTheWholeViewsButForItsCross) {
    ExpectTheWholeView(stamp, 1.0, Items::zoomIn, 0, PointAt(2 * width, 2 * height));
    ExpectTheWholeView(stamp, 1.5, Items::zoomIn, 1, PointAt(width + 60, height + 50));
}

// At four times its size the middle of the texture is in the view once.
TEST_F(StrokeViewTest, TheHostDrawsTheRepeatsThatShowIt) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int press = 0; press < 5; ++press) {
            editor.Press(Items::zoomIn);
        }
        const ItemPlace middle = PlaceOfPixel(editor, width + width / 2, height + height / 2, 4.0);
        EXPECT_EQ(DrawAt(gui, editor, pencil, middle).displaysAtEnd, 1);
    });
}

TEST_F(StrokeViewTest, APaintThatIsToComeIsOfTheWholeView) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        ChooseTool(gui, editor, pencil.key, pencil.tool);
        ShowMarks(gui, editor, false);
        const ItemPlace start = PlaceOfPixel(editor, width + 10, height + 10);
        editor.Point(Items::drawingArea, start);
        int drawnBefore = Displays();
        gui.PressMouse();
        WaitUntil("the stroke to be drawn", [&] { return Displays() > drawnBefore; });
        editor.Settle();
        const auto displaysOfStep = [&](ItemPlace place) {
            drawnBefore = Displays();
            editor.Point(Items::drawingArea, place);
            WaitUntil("the stroke to be drawn", [&] { return Displays() > drawnBefore; });
            editor.Settle();
            return Displays() - drawnBefore;
        };
        EXPECT_LT(displaysOfStep({start.x + 1, start.y}), 9);
        const RECT item = editor.Bounds(Items::drawingArea);
        const RECT pixel{item.right - 30, item.bottom - 30, item.right - 29, item.bottom - 29};
        InvalidateRect(editor.Window(), &pixel, FALSE);
        EXPECT_EQ(displaysOfStep({start.x + 2, start.y}), 9);
        gui.ReleaseMouse();
        WaitUntil("the stroke to end", [&] { return !HasCapture(editor.Window()); });
        editor.Settle();
    });
}

}  // namespace

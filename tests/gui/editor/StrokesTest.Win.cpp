// Strokes of all tools at some steps of the zoom, begun in the tile, on a repeat of it and beside
// all repeats: they paint what the operations of a recipe paint.
#include "tests/gui/DialogRun.Win.h"
#include "tests/gui/RecipeRun.Win.h"
#include "tests/gui/ShownView.Win.h"

namespace {

using Items = TextureItems;
/// In the tools' coordinates: (0, 0) is the top left pixel of the first of three by three tiles.
using TexturePath = std::vector<hostapi::Point>;

struct Zoom {
    double factor;
    /// The button that leads there from 1.0, and how often it is pressed.
    int button;
    int presses;
};

hostapi::Point At(int x, int y) {
    return {static_cast<short>(y), static_cast<short>(x)};
}

std::string PathValue(const TexturePath& path) {
    std::string value;
    for (const hostapi::Point& point : path) {
        value += (value.empty() ? "" : ";") + RecipeValue(point);
    }
    return value;
}

class StrokesTest : public DialogRunTest, public testing::WithParamInterface<Zoom> {
  protected:
    StrokesTest() : StrokesTest(hostapi::VRect{10, 20, 10 + height, 20 + width}) {}
    explicit StrokesTest(const hostapi::VRect& newSelection) {
        selection = newSelection;
        stored.foreground = {0xFF00, 0x2000, 0x1000};
        stored.background = {0x1000, 0x8000, 0xF000};
        recipe = std::make_unique<RecipeRun>([&] { return Noise(); });
        recipe->Run("colors foreground=" + RecipeValue(stored.foreground) +
                    " background=" + RecipeValue(stored.background));
    }

    // Each tool, as a line of the recipe that is run at once and as a step of the user for later.
    // Coordinates are even, so that they are whole pixels on the screen at each zoom.

    void Paint(const std::string& operation, char key, int tool, const TexturePath& path) {
        // A press paints its place before the mouse moves.
        TexturePath painted = path;
        painted.insert(painted.begin(), path.front());
        Add(operation + " path=" + PathValue(painted),
            [=, this](const GuiDriver& gui, const DrivenDialog& editor) {
                ChooseTool(gui, editor, key, tool);
                Stroke(editor, PlacesOf(editor, path));
            });
    }
    void Fill(hostapi::Point at) {
        Add("fill at=" + RecipeValue(at),
            [=, this](const GuiDriver& gui, const DrivenDialog& editor) {
                ChooseTool(gui, editor, 'k', 7);
                Stroke(editor, PlacesOf(editor, {at}));
            });
    }
    /// `end` is where the drag ends, `to` where the ramp does.
    void Gradient(hostapi::Point from, hostapi::Point end, hostapi::Point to) {
        Add("gradient from=" + RecipeValue(from) + " to=" + RecipeValue(to),
            [=, this](const GuiDriver& gui, const DrivenDialog& editor) {
                ChooseTool(gui, editor, 'g', 5);
                editor.WaitUntilPainted();
                editor.Drag(Items::drawingArea, PlacesOf(editor, {from, end}),
                            [&] { editor.Settle(); });
                editor.Settle();
            });
    }
    /// The offset is that of the source from the first place that the mouse moves to.
    void Stamp(hostapi::Point source, const TexturePath& path) {
        const hostapi::Point offset = At(source.h - path.at(1).h, source.v - path.at(1).v);
        Add("stamp offset=" + RecipeValue(offset) + " path=" + PathValue(path),
            [=, this](const GuiDriver& gui, const DrivenDialog& editor) {
                ChooseTool(gui, editor, 's', 6);
                TakeStampSource(gui, editor, PlacesOf(editor, {source}).front());
                DragStamp(gui, editor, PlacesOf(editor, path));
            });
    }
    void TakeColor(hostapi::Point at) {
        const Pixel pixel = recipe->Texture().GetPixelWrapped(at.h, at.v) & 0x00FFFFFF;
        const auto component = [&](int shift) {
            return static_cast<std::uint16_t>((pixel >> shift & 0xFF) << 8);
        };
        const RGBColor16 color{component(0), component(8), component(16)};
        Add("colors foreground=" + RecipeValue(color),
            [=, this](const GuiDriver& gui, const DrivenDialog& editor) {
                ChooseTool(gui, editor, 'i', 8);
                editor.WaitUntilPainted();
                editor.Drag(Items::drawingArea, PlacesOf(editor, {at}), [&] {
                    WaitUntil("the well", [&] { return ForegroundWell(editor) == pixel; });
                });
                editor.Settle();
            });
    }
    /// By pixels of the screen, which are pixels of the texture here at each zoom.
    void Move(hostapi::Point from, int dx, int dy) {
        Add("move dx=" + std::to_string(dx) + " dy=" + std::to_string(dy),
            [=, this](const GuiDriver& gui, const DrivenDialog& editor) {
                ChooseTool(gui, editor, 'v', 1);
                editor.WaitUntilPainted();
                const ItemPlace place = PlacesOf(editor, {from}).front();
                editor.Point(Items::drawingArea, place);
                gui.PressMouse();
                WaitUntil("the move to begin", [&] { return HasCapture(editor.Window()); });
                editor.Settle();
                const int drawnBefore = Displays();
                editor.Point(Items::drawingArea, {place.x + dx, place.y + dy});
                WaitUntil("the texture to move", [&] { return Displays() > drawnBefore; });
                editor.Settle();
                gui.ReleaseMouse();
                WaitUntil("the move to end", [&] { return !HasCapture(editor.Window()); });
                editor.Settle();
            });
    }

    /// One use of each of the eight tools, all begun around `start`.
    void UseAllTools(hostapi::Point start, bool flatGradient) {
        const auto from = [&](int x, int y) { return At(start.h + x, start.v + y); };
        const int across = flatGradient ? 12 : 4;
        const int down = flatGradient ? 4 : 12;
        Gradient(from(2, 2), from(2 + across, 2 + down),
                 flatGradient ? from(2 + across, 2) : from(2, 2 + down));
        Paint("brush", 'b', 2, {from(0, 0), from(20, 10), from(6, 24)});
        TakeColor(from(-6, 18));
        Fill(from(0, 0));
        Paint("eraser", 'e', 3, {from(4, 20), from(-14, 8)});
        Stamp(from(-20, -16), {from(2, 4), from(10, 8), from(24, -8)});
        Paint("pencil", 'n', 4, {from(-10, 0), from(24, 14), from(20, -20)});
        Move(from(6, 6), -11, 9);
    }

    /// Works all steps in the editor and compares.
    void ExpectTheRecipesPixels() {
        const std::vector<Pixel> expected = recipe->Colors();
        // The core's one host is the plug-in's from here on.
        recipe.reset();
        RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
            for (int press = 0; press < GetParam().presses; ++press) {
                editor.Press(GetParam().button);
            }
            for (const auto& step : steps) {
                step(gui, editor);
            }
        });
        EXPECT_EQ(ColorsOf(*Applied()), expected);
        ExpectFilledWithApplied();
    }

  private:
    void Add(const std::string& line, const EditorUser& step) {
        recipe->Run(line);
        steps.push_back(step);
    }
    std::vector<ItemPlace> PlacesOf(const DrivenDialog& editor, const TexturePath& path) const {
        std::vector<ItemPlace> places;
        for (const hostapi::Point& point : path) {
            places.push_back(PlaceOfPixel(editor, point.h, point.v, GetParam().factor));
        }
        return places;
    }
    static Pixel ForegroundWell(const DrivenDialog& editor) {
        const RECT wells = editor.Bounds(Items::colorWells);
        const host::Picture shown = editor.Grab();
        const std::uint8_t* const pixel =
            shown.Pixel(static_cast<int>(wells.left) + 15, static_cast<int>(wells.top) + 12);
        return Color(pixel[0], pixel[1], pixel[2]);
    }

    std::unique_ptr<RecipeRun> recipe;
    std::vector<EditorUser> steps;
};

TEST_P(StrokesTest, InTheTilePaintWhatTheRecipePaints) {
    UseAllTools(At(width + 60, height + 50), true);
    ExpectTheRecipesPixels();
}

TEST_P(StrokesTest, OverTheSeamAndOnARepeatPaintWhatTheRecipePaints) {
    UseAllTools(At(2 * width + 2, 2 * height + 8), false);
    ExpectTheRecipesPixels();
}

std::string NameOfZoom(const testing::TestParamInfo<Zoom>& zoom) {
    return "Percent" + std::to_string(static_cast<int>(zoom.param.factor * 100));
}

constexpr Zoom zooms[] = {
    {0.5, Items::zoomOut, 2}, {1.0, Items::zoomIn, 0}, {1.5, Items::zoomIn, 1}};
INSTANTIATE_TEST_SUITE_P(Zooms, StrokesTest, testing::ValuesIn(zooms), NameOfZoom);

// The tile is so small that the view has a ground beside its repeats at each zoom.
class StrokesBesideTest : public StrokesTest {
  protected:
    static constexpr short smallWidth = 60;
    static constexpr short smallHeight = 40;

    StrokesBesideTest() : StrokesTest({10, 20, 10 + smallHeight, 20 + smallWidth}) {}
};

TEST_P(StrokesBesideTest, BesideAllRepeatsPaintWhatTheRecipePaints) {
    UseAllTools(At(20, -30), true);
    UseAllTools(At(2 * smallWidth, 3 * smallHeight + 30), false);
    ExpectTheRecipesPixels();
}

INSTANTIATE_TEST_SUITE_P(Zooms, StrokesBesideTest, testing::ValuesIn(zooms), NameOfZoom);

}  // namespace

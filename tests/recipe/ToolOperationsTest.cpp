#include "recipe/operations/ToolOperations.h"

#include <gtest/gtest.h>

#include <string>

#include "paint/Stroke.h"
#include "tests/recipe/SessionRun.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"

using namespace recipe;

namespace {

constexpr RGBColor16 red{0xFF00, 0x1000, 0x2000};
constexpr RGBColor16 blue{0x1000, 0x2000, 0xFF00};

/// A texture of 60 by 50 with strokes on it, and the two colours above.
const std::string start =
    "new width=60 height=50\nclock seconds=1\nlines\n"
    "colors foreground=0xFF00,0x1000,0x2000 background=0x1000,0x2000,0xFF00\n";

constexpr hostapi::Point At(std::int16_t x, std::int16_t y) {
    return {.v = y, .h = x};
}

class ToolOperationsTest : public testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(session.Core().Memory().FoundFaults().Lines(), std::vector<std::string>{});
    }

    /// The texture after `start` and one more line.
    std::vector<Pixel> After(const std::string& line) {
        RunText(session, start + line);
        return ColorsOf(session.Texture());
    }

    /// The pixels of the start texture after `operation` has run in the core, without a recipe.
    template <class Operation>
    std::vector<Pixel> Expected(Operation operation) {
        RunText(session, start);
        session.Texture().SetColors(&red, &blue);
        operation(session.Texture());
        return ColorsOf(session.Texture());
    }

    Session session{FilePlaces("", "")};
};

/// The message for a line that is wrong; empty if it is right.
std::string Rejection(const std::string& line) {
    try {
        ParseRecipe("new\n" + line, OperationTable());
        return {};
    } catch (const RecipeError& error) {
        EXPECT_EQ(error.line, 2);
        return error.what();
    }
}

TEST_F(ToolOperationsTest, BrushPaintsOneStroke) {
    EXPECT_EQ(After("brush size=17 path=3,4;30,20;-5,60"), Expected([](PaintClass& pic) {
                  pic.brushSize = 17;
                  BrushStroke stroke(pic);
                  stroke.Paint(At(3, 4), At(30, 20));
                  stroke.Paint(At(30, 20), At(-5, 60));
              }));
}

TEST_F(ToolOperationsTest, BrushIsElevenPixelsAndAPointIsADab) {
    EXPECT_EQ(After("brush path=59,49"), Expected([](PaintClass& pic) {
                  BrushStroke stroke(pic);
                  stroke.Paint(At(59, 49), At(59, 49));
              }));
}

TEST_F(ToolOperationsTest, EraserPaintsTheBackground) {
    EXPECT_EQ(After("eraser path=3,4;30,20"), Expected([](PaintClass& pic) {
                  EraserStroke stroke(pic);
                  stroke.Paint(At(3, 4), At(30, 20));
              }));
    EXPECT_EQ(session.Texture().GetPixel(10, 8) & 0xFFFFFF, Color(0x10, 0x20, 0xFF));
}

TEST_F(ToolOperationsTest, PencilDrawsALine) {
    EXPECT_EQ(After("pencil path=3,4;30,20;0,0"), Expected([](PaintClass& pic) {
                  PencilStroke stroke(pic);
                  stroke.Paint(At(3, 4), At(30, 20));
                  stroke.Paint(At(30, 20), At(0, 0));
              }));
}

TEST_F(ToolOperationsTest, StampCopiesFromItsOffset) {
    EXPECT_EQ(After("stamp size=9 offset=-20,7 path=30,4;50,20"), Expected([](PaintClass& pic) {
                  pic.stampSize = 9;
                  pic.stampOffsetH = -20;
                  pic.stampOffsetV = 7;
                  StampStroke stroke(pic);
                  stroke.Paint(At(30, 4), At(50, 20));
              }));
    EXPECT_EQ(After("stamp offset=0,7 path=30,4;50,20"), Expected([](PaintClass& pic) {
                  pic.stampSize = 16;
                  pic.stampOffsetH = 0;
                  pic.stampOffsetV = 7;
                  StampStroke stroke(pic);
                  stroke.Paint(At(30, 4), At(50, 20));
              }));
}

TEST_F(ToolOperationsTest, FillTakesToleranceAndContour) {
    EXPECT_EQ(After("fill at=200,-3"),
              Expected([](PaintClass& pic) { pic.FloodFill(At(200, -3)); }));
    EXPECT_EQ(After("fill at=20,3 tolerance=60 antiAlias=0"), Expected([](PaintClass& pic) {
                  pic.fillTolerance = 60;
                  pic.fillAntiAlias = 0;
                  pic.FloodFill(At(20, 3));
              }));
}

TEST_F(ToolOperationsTest, SettingsOfOneOperationAreNotThoseOfTheNext) {
    const std::vector<Pixel> expected = After("fill at=20,3");
    EXPECT_EQ(After("fill at=1,1 tolerance=0 antiAlias=0\nundo\nfill at=20,3"), expected);
}

TEST_F(ToolOperationsTest, GradientGoesDownOrAcross) {
    EXPECT_EQ(After("gradient from=3,-4 to=3,20"),
              Expected([](PaintClass& pic) { pic.Gradient(At(3, -4), At(3, 20)); }));
    EXPECT_EQ(After("gradient from=70,9 to=13,9"),
              Expected([](PaintClass& pic) { pic.Gradient(At(70, 9), At(13, 9)); }));
}

TEST_F(ToolOperationsTest, UndoTakesAWholeStrokeBack) {
    const std::vector<Pixel> before = After("");
    for (const char* line :
         {"brush path=3,4;30,20;9,60", "eraser path=3,4;30,20;9,60", "pencil path=3,4;30,20;9,60",
          "stamp offset=5,5 path=3,4;30,20;9,60", "fill at=3,3", "gradient from=3,4 to=3,20"}) {
        EXPECT_NE(After(line), before) << line;
        RunText(session, "undo");
        EXPECT_EQ(ColorsOf(session.Texture()), before) << line;
    }
}

TEST_F(ToolOperationsTest, ValuesOutOfRangeAreRejected) {
    EXPECT_EQ(Rejection("brush size=1 path=0,0"), "'size' must be 2 to 20, not '1'");
    EXPECT_EQ(Rejection("brush size=21 path=0,0"), "'size' must be 2 to 20, not '21'");
    EXPECT_EQ(Rejection("brush"), "'brush' needs the key 'path'");
    EXPECT_EQ(Rejection("eraser path=0,0 size=14"), "'eraser' has no key 'size'");
    EXPECT_EQ(Rejection("pencil path=0"), "'path' must be points x,y separated by ;, not '0'");
    EXPECT_EQ(Rejection("stamp size=0 offset=1,1 path=0,0;1,1"), "'size' must be 1 to 20, not '0'");
    EXPECT_EQ(Rejection("stamp offset=1,1 path=0,0"), "'path' must be 2 points or more, not '0,0'");
    EXPECT_EQ(Rejection("stamp path=0,0;1,1"), "'stamp' needs the key 'offset'");
    EXPECT_EQ(Rejection("fill at=0,0 tolerance=101"), "'tolerance' must be 0 to 100, not '101'");
    EXPECT_EQ(Rejection("fill at=0,0 antiAlias=2"), "'antiAlias' must be 0 to 1, not '2'");
    EXPECT_EQ(Rejection("gradient from=0,0"), "'gradient' needs the key 'to'");
}

TEST_F(ToolOperationsTest, AStampNeedsASource) {
    EXPECT_EQ(Rejection("stamp offset=0,0 path=0,0;1,1"),
              "'offset' must not be 0,0, which means that there is no source");
    EXPECT_EQ(Rejection("stamp offset=0,1 path=0,0;1,1"), "");
    EXPECT_EQ(Rejection("stamp offset=1,0 path=0,0;1,1"), "");
}

TEST_F(ToolOperationsTest, AGradientIsLevelOrUpright) {
    EXPECT_EQ(Rejection("gradient from=0,0 to=1,1"),
              "'from' and 'to' must lie in one row or in one column");
    EXPECT_EQ(Rejection("gradient from=0,1 to=1,1"), "");
    EXPECT_EQ(Rejection("gradient from=1,0 to=1,1"), "");
    EXPECT_EQ(Rejection("gradient from=1,1 to=1,1"), "");
}

TEST_F(ToolOperationsTest, TellThatMemoryIsShort) {
    for (const char* line :
         {"brush path=3,4", "eraser path=3,4", "stamp offset=5,5 path=3,4;30,20"}) {
        const std::vector<Pixel> before = After("");
        session.Core().Memory().FailAllocation(1);
        EXPECT_EQ(Failure(session, line), "1: not enough memory") << line;
        session.Core().Memory().FailAllocation(0);
        EXPECT_EQ(ColorsOf(session.Texture()), before) << line;
    }
    const std::vector<Pixel> before = After("");
    const FailingHandles handles(1);
    EXPECT_EQ(Failure(session, "fill at=3,3"), "1: not enough memory");
    EXPECT_EQ(ColorsOf(session.Texture()), before);
}

}  // namespace

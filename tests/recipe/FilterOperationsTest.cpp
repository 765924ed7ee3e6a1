#include "recipe/operations/FilterOperations.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "host/picture/Picture.h"
#include "paint/EffectRun.h"
#include "paint/Resize.h"
#include "paint/math/Random.h"
#include "tests/recipe/SessionRun.h"
#include "tests/recipe/TemporaryFolder.h"
#include "tests/support/Pictures.h"

using namespace recipe;

namespace {

class FilterOperationsTest : public testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(session.Core().Memory().FoundFaults().Lines(), std::vector<std::string>{});
    }

    void Run(const std::string& text) { RunText(session, text); }
    std::string FailureOf(const std::string& text) { return Failure(session, text); }
    PaintClass& Texture() { return session.Texture(); }

    /// A texture of noise.
    void Begin(short width = 23, short height = 17) {
        Run("new width=" + std::to_string(width) + " height=" + std::to_string(height) +
            "\nclock seconds=5");
        FillWithNoise(Texture());
    }

    /// The line does to a texture what `run` does, and one undo leads back.
    void ExpectLike(const std::string& line, const std::function<void(PaintClass&)>& run) {
        SCOPED_TRACE(line);
        Begin();
        const std::vector<Pixel> before = ColorsOf(Texture());
        PaintClass expected(Texture().grX, Texture().grY);
        FillWithNoise(expected);
        run(expected);
        Run(line);
        EXPECT_EQ(ColorsOf(Texture()), ColorsOf(expected));
        Run("undo");
        EXPECT_EQ(ColorsOf(Texture()), before);
    }

    /// With the next allocation failing, the line fails and the texture stays.
    void ExpectToNeedMemory(const std::string& line) {
        SCOPED_TRACE(line);
        Begin();
        const std::vector<Pixel> before = ColorsOf(Texture());
        session.Core().Memory().FailAllocation(1);
        EXPECT_EQ(FailureOf(line), "1: not enough memory");
        session.Core().Memory().FailAllocation(0);
        EXPECT_EQ(ColorsOf(Texture()), before);
    }

    TemporaryFolder folder;
    Session session{FilePlaces("", "")};
};

}  // namespace

TEST_F(FilterOperationsTest, BlurIsPlainOrAMotionBlur) {
    ExpectLike("blur", [](PaintClass& pic) { RunBlur(pic, {}); });
    ExpectLike("blur amount=100 direction=5",
               [](PaintClass& pic) { RunBlur(pic, {.amount = 100}); });
    ExpectLike("blur amount=99 motion=1",
               [](PaintClass& pic) { RunBlur(pic, {.amount = 99, .motion = 1}); });
    ExpectLike("blur amount=40 motion=1 direction=6",
               [](PaintClass& pic) { RunBlur(pic, {.amount = 40, .motion = 1, .direction = 6}); });
}

TEST_F(FilterOperationsTest, SharpenTakesItsPasses) {
    ExpectLike("sharpen", [](PaintClass& pic) { pic.Sharpen(); });
    ExpectLike("sharpen passes=5", [](PaintClass& pic) { RunSharpen(pic, {.passes = 5}); });
}

TEST_F(FilterOperationsTest, NoiseFollowsTheClock) {
    ExpectLike("noise", [](PaintClass& pic) { RunNoise(pic, {}); });
    ExpectLike("noise amount=7 mode=0",
               [](PaintClass& pic) { RunNoise(pic, {.amount = 7, .mode = noiseGrey}); });
    ExpectLike("noise amount=100 mode=2",
               [](PaintClass& pic) { RunNoise(pic, {.amount = 100, .mode = noiseColorful}); });
}

TEST_F(FilterOperationsTest, ColorAdjustmentsTakeTheStoredValues) {
    ExpectLike("saturation", [](PaintClass& pic) { pic.Saturation(60); });
    ExpectLike("saturation saturation=0", [](PaintClass& pic) { pic.Saturation(0); });
    ExpectLike("brightnessContrast", [](PaintClass&) {});
    ExpectLike("brightnessContrast brightness=80 contrast=20",
               [](PaintClass& pic) { pic.BrightnessContrast(20, 80); });
    ExpectLike("addColor", [](PaintClass& pic) { pic.AddColor({0x7FFF, 0x7FFF, 0x7FFF}, 10); });
    ExpectLike("addColor opacity=90 color=0xFF00,0,0x8000", [](PaintClass& pic) {
        pic.AddColor({0xFF00, 0, 0x8000}, 90);
    });
    ExpectLike("invert", [](PaintClass& pic) { pic.Invert(); });
}

TEST_F(FilterOperationsTest, MosaicTakesAnySideWhateverTheTile) {
    ExpectLike("mosaic", [](PaintClass&) {});
    ExpectLike("mosaic horizontal=9 vertical=3", [](PaintClass& pic) { pic.Mosaic(9, 3); });
}

TEST_F(FilterOperationsTest, AddBumpFlipClearAndMove) {
    ExpectLike("addBump", [](PaintClass& pic) { pic.AddBump(); });
    ExpectLike("flip", [](PaintClass& pic) { pic.Flip(0); });
    ExpectLike("flip mode=1", [](PaintClass& pic) { pic.Flip(1); });
    ExpectLike("flip mode=2", [](PaintClass& pic) { pic.Flip(2); });
    ExpectLike("clear", [](PaintClass& pic) { pic.FillWhite(); });
    ExpectLike("move", [](PaintClass&) {});
    ExpectLike("move dx=5 dy=-3", [](PaintClass& pic) { RunMove(pic, 5, -3); });
}

TEST_F(FilterOperationsTest, MoveGoesToTheRightAndDown) {
    Begin(23, 17);
    const Pixel corner = Texture().GetPixel(0, 0);
    Run("move dx=4 dy=2");
    EXPECT_EQ(Texture().GetPixel(4, 2), corner);
    // 32767 is 15 more than whole turns of 23, and 8 more than those of 17.
    Run("move dx=32767 dy=-32768");
    EXPECT_EQ(Texture().GetPixel((4 + 15) % 23, (2 + 17 - 9) % 17), corner);
}

TEST_F(FilterOperationsTest, CombineTakesAFileOfTheSameSize) {
    PaintClass other(23, 17);
    FillWithNoise(other, 2);
    other.SetAllAlpha(255);
    SaveTexture(other, "other.png");
    SaveTexture(other, "other.tmp");
    for (const char* file : {"other.png", "other.tmp"}) {
        const auto line = std::string("combine file=") + file;
        ExpectLike(line, [&](PaintClass& pic) { RunCombine(pic, other, 50, 1); });
        ExpectLike(line + " mode=2 amount=100",
                   [&](PaintClass& pic) { RunCombine(pic, other, 100, 2); });
        ExpectLike(line + " mode=3 amount=0",
                   [&](PaintClass& pic) { RunCombine(pic, other, 0, 3); });
    }
}

TEST_F(FilterOperationsTest, CombineTellsWhatIsWrongWithTheFile) {
    host::SavePicture(host::MakePicture(17, 23, 3), "turned.png");
    host::SavePicture(host::MakePicture(513, 1, 3), "large.png");
    Begin();
    EXPECT_EQ(FailureOf("combine file=turned.png"),
              "1: only textures of the same size can be combined, and 'turned.png' is 17 by 23 "
              "pixels, not 23 by 17");
    EXPECT_TRUE(FailureOf("combine file=large.png").starts_with("1: 'large.png' cannot be opened"));
    EXPECT_EQ(FailureOf("combine file=none.png"), "1: there is no file 'none.png'");
}

TEST_F(FilterOperationsTest, TileRepeatsTheTexture) {
    Begin(23, 17);
    Texture().brushSize = 5;
    PaintClass expected(69, 34);
    CopyTiled(Texture(), expected);
    Run("tile horizontal=3");
    EXPECT_EQ(PixelsOf(Texture()), PixelsOf(expected));
    EXPECT_EQ(Texture().foreColor, &session.foreground);
    EXPECT_EQ(Texture().brushSize, 11) << "a new texture starts with the standard tools";
    Run("undo");
    EXPECT_EQ(PixelsOf(Texture()), PixelsOf(expected)) << "it cannot be undone";
}

TEST_F(FilterOperationsTest, TileOfOneIsANewTextureAllTheSame) {
    Begin(23, 17);
    const std::vector<Pixel> before = PixelsOf(Texture());
    Run("invert\ntile horizontal=1 vertical=1\nundo\ninvert");
    EXPECT_EQ(PixelsOf(Texture()), before);
}

TEST_F(FilterOperationsTest, TileMakesTexturesLargerThanAnyThatIsOpened) {
    Run("new width=512 height=20\ntile horizontal=12 vertical=1");
    EXPECT_EQ(Texture().grX, 6144);
    Run("invert\nresize height=10");
    EXPECT_EQ(Texture().grX, 6144) << "a key left out keeps the side";
    EXPECT_EQ(Texture().grY, 10);
    // 73728 pixels are more than a raster can be wide.
    EXPECT_EQ(FailureOf("tile horizontal=12"), "1: not enough memory");
    EXPECT_EQ(Texture().grX, 6144);
}

TEST_F(FilterOperationsTest, ResizeStretchesTheTexture) {
    Begin(23, 17);
    PaintClass expected(40, 5);
    CopyResampled(Texture(), expected);
    Run("resize width=40 height=5");
    EXPECT_EQ(PixelsOf(Texture()), PixelsOf(expected));
    Run("undo");
    EXPECT_EQ(PixelsOf(Texture()), PixelsOf(expected)) << "the snapshot is of the new texture";
}

TEST_F(FilterOperationsTest, ResizeToTheSameSizeTakesNoSnapshot) {
    Begin(23, 17);
    const std::vector<Pixel> before = PixelsOf(Texture());
    for (const char* line : {"resize", "resize width=23", "resize width=23 height=17"}) {
        Run(std::string("invert\n") + line + "\nundo");
        EXPECT_EQ(PixelsOf(Texture()), before);
    }
}

TEST_F(FilterOperationsTest, ShortageOfMemoryIsTold) {
    for (const char* line : {"blur", "blur motion=1", "sharpen", "saturation", "brightnessContrast",
                             "addColor", "tile", "resize width=9", "move dx=1"}) {
        ExpectToNeedMemory(line);
    }
}

namespace {

struct BadLine {
    const char* line;
    const char* message;
};

class BadFilterLineTest : public testing::TestWithParam<BadLine> {};

}  // namespace

TEST_P(BadFilterLineTest, IsRefusedBeforeAnythingRuns) {
    try {
        ParseRecipe(std::string("new\n") + GetParam().line, OperationTable());
        FAIL() << "it was taken";
    } catch (const RecipeError& error) {
        EXPECT_EQ(error.line, 2);
        EXPECT_EQ(std::string(error.what()), GetParam().message);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, BadFilterLineTest,
    testing::Values(
        BadLine{"blur amount=0", "'amount' must be 1 to 100, not '0'"},
        BadLine{"blur amount=101", "'amount' must be 1 to 100, not '101'"},
        BadLine{"blur motion=2", "'motion' must be 0 (off) or 1 (on), not '2'"},
        BadLine{"blur direction=8",
                "'direction' must be 0 (up), 1 (upRight), 2 (right), 3 (downRight), 4 (down), 5 "
                "(downLeft), 6 (left) or 7 (upLeft), not '8'"},
        BadLine{"sharpen passes=0", "'passes' must be 1 to 5, not '0'"},
        BadLine{"sharpen passes=6", "'passes' must be 1 to 5, not '6'"},
        BadLine{"noise amount=0", "'amount' must be 1 to 100, not '0'"},
        BadLine{"noise mode=3", "'mode' must be 0 (grey), 1 (colored) or 2 (colorful), not '3'"},
        BadLine{"saturation saturation=101", "'saturation' must be 0 to 100, not '101'"},
        BadLine{"brightnessContrast contrast=-1", "'contrast' must be 0 to 100, not '-1'"},
        BadLine{"addColor opacity=0", "'opacity' must be 1 to 100, not '0'"},
        BadLine{"addColor color=1,2",
                "'color' must be a colour, red,green,blue with 0 to 65535 each, not '1,2'"},
        BadLine{"mosaic horizontal=2",
                "'horizontal' must be 1 (none), 3, 4, 5, 6, 7, 8 or 9, not '2'"},
        BadLine{"mosaic vertical=10",
                "'vertical' must be 1 (none), 3, 4, 5, 6, 7, 8 or 9, not '10'"},
        BadLine{"invert mode=1", "'invert' has no key 'mode'"},
        BadLine{"repeat file=a.png columns=65", "'columns' must be 1 to 64, not '65'"},
        BadLine{"repeat file=a.png rows=0", "'rows' must be 1 to 64, not '0'"},
        BadLine{"flip mode=3", "'mode' must be 0 (vertical), 1 (horizontal) or 2 (both), not '3'"},
        BadLine{"combine", "'combine' needs the key 'file'"},
        BadLine{"combine file=a.png mode=0", "'mode' must be 1 to 3, not '0'"},
        BadLine{"combine file=a.png amount=101", "'amount' must be 0 to 100, not '101'"},
        BadLine{"tile vertical=13", "'vertical' must be 1 to 12, not '13'"},
        BadLine{"resize width=513", "'width' must be 1 to 512, not '513'"},
        BadLine{"move dx=32768", "'dx' must be -32768 to 32767, not '32768'"}));

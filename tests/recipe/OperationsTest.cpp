#include "recipe/operations/Operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <variant>

#include "host/picture/Picture.h"
#include "paint/EffectRun.h"
#include "paint/math/Random.h"
#include "recipe/tool/Session.h"
#include "tests/recipe/SessionRun.h"
#include "tests/recipe/TemporaryFolder.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

using namespace recipe;

namespace {

class OperationsTest : public testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(session.Core().Memory().FoundFaults().Lines(), std::vector<std::string>{});
    }

    void Run(const std::string& text) { RunText(session, text); }
    std::string FailureOf(const std::string& text) { return Failure(session, text); }
    PaintClass& Texture() { return session.Texture(); }

    TemporaryFolder folder;
    Session session{FilePlaces("recipes", "")};
};

constexpr Pixel white = Color(255, 255, 255);
constexpr Pixel whiteAndOpaque = 0xFFFFFFFF;

std::vector<Pixel> Flat(Pixel pixel, std::size_t count) {
    return std::vector<Pixel>(count, pixel);
}

/// Each byte of a picture tells its place.
host::Picture Gradient(int width, int height, int planes) {
    host::Picture picture = host::MakePicture(width, height, planes);
    std::size_t i = 0;
    for (std::uint8_t& byte : picture.pixels) {
        byte = static_cast<std::uint8_t>(i++ * 7);
    }
    return picture;
}

Pixel ColorAt(const host::Picture& picture, int x, int y) {
    const std::uint8_t* pixel = picture.Pixel(x, y);
    return Color(pixel[0], pixel[1], pixel[2]);
}

/// The file of the last-texture format with this size and then these bytes.
std::string TmpFile(int width, int height, const std::string& pixels) {
    const auto low = [](int value) { return static_cast<char>(value & 0xFF); };
    const auto high = [](int value) { return static_cast<char>(value >> 8 & 0xFF); };
    return std::string{low(width), high(width), low(height), high(height)} + pixels;
}

std::string NumberedBytes(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) {
        bytes += static_cast<char>(i * 3 + 1);
    }
    return bytes;
}

/// Returns the result of Lines with the record at the clock that is set.
std::vector<Pixel> ExpectedLines(short width, short height, const LinesParams& params) {
    PaintClass expected(width, height);
    RunLines(expected, params);
    return ColorsOf(expected);
}

}  // namespace

TEST(OperationTable, HasDefaultsInsideTheirRanges) {
    for (const OperationDefinition& operation : OperationTable()) {
        for (const KeyDefinition& key : operation.keys) {
            const auto* range = std::get_if<recipe::Whole>(&key.type);
            const auto* standard = std::get_if<Value>(&key.whenMissing);
            if (range != nullptr && standard != nullptr) {
                EXPECT_GE(std::get<std::int64_t>(*standard), range->lowest) << key.name;
                EXPECT_LE(std::get<std::int64_t>(*standard), range->highest) << key.name;
            }
        }
    }
}

TEST_F(OperationsTest, NewIsWhite) {
    Run("new");
    EXPECT_EQ(Texture().grX, 128);
    EXPECT_EQ(Texture().grY, 128);
    EXPECT_EQ(PixelsOf(Texture()), Flat(whiteAndOpaque, 128 * 128));
}

TEST_F(OperationsTest, NewTakesEverySize) {
    Run("new width=512");
    EXPECT_EQ(Texture().grX, 512);
    EXPECT_EQ(Texture().grY, 128);
    Run("new width=1 height=512");
    EXPECT_EQ(Texture().grX, 1);
    EXPECT_EQ(Texture().grY, 512);
}

TEST_F(OperationsTest, UndoAfterNewIsWhite) {
    Run("new width=3 height=2\nundo");
    EXPECT_EQ(PixelsOf(Texture()), Flat(whiteAndOpaque, 6));
}

TEST_F(OperationsTest, OpenReadsPng) {
    const host::Picture picture = Gradient(5, 4, 3);
    host::SavePicture(picture, "five.png");
    Run("open file=five.png");
    ASSERT_EQ(Texture().grX, 5);
    ASSERT_EQ(Texture().grY, 4);
    for (short y = 0; y < 4; ++y) {
        for (short x = 0; x < 5; ++x) {
            EXPECT_EQ(Texture().GetPixel(x, y), ColorAt(picture, x, y) | 0xFF000000);
        }
    }
    Run("open file=five.png\nundo");
    EXPECT_EQ(PixelsOf(Texture()), Flat(whiteAndOpaque, 20));
}

TEST_F(OperationsTest, OpenLaysTransparencyOverWhite) {
    host::Picture picture = host::MakePicture(3, 1, 4);
    picture.pixels = {10, 20, 30, 255, 10, 20, 30, 0, 0, 100, 255, 128};
    host::SavePicture(picture, "layer.png");
    Run("open file=layer.png");
    // The last: c * 128 / 255 + 255 * 127 / 255, rounded.
    EXPECT_EQ(ColorsOf(Texture()),
              (std::vector<Pixel>{Color(10, 20, 30), white, Color(127, 177, 255)}));
}

TEST_F(OperationsTest, OpenRefusesPicturesThatAreNoTexture) {
    host::SavePicture(host::MakePicture(513, 1, 3), "wide.png");
    host::SavePicture(host::MakePicture(1, 600, 3), "high.png");
    WriteFile("damaged.png", "no picture at all");
    EXPECT_EQ(FailureOf("open file=wide.png"),
              "1: 'wide.png' cannot be opened as a texture: it is 513 by 1 pixels, and a texture "
              "has 1 to 512 on either side");
    EXPECT_EQ(FailureOf("new\nopen file=high.png"),
              "2: 'high.png' cannot be opened as a texture: it is 1 by 600 pixels, and a texture "
              "has 1 to 512 on either side");
    EXPECT_EQ(FailureOf("open file=damaged.png"), "1: damaged.png: not a PNG, JPEG or BMP picture");
    EXPECT_EQ(FailureOf("open file=none.png"), "1: there is no file 'none.png'");
}

TEST_F(OperationsTest, OpenReadsTmpByteForByte) {
    const std::string pixels = NumberedBytes(3 * 2 * 4);
    WriteFile("three.tmp", TmpFile(3, 2, pixels));
    Run("open file=three.tmp");
    ASSERT_EQ(Texture().grX, 3);
    ASSERT_EQ(Texture().grY, 2);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(Texture().Base()), 24), pixels);
    Run("open file=three.tmp\nundo");
    EXPECT_EQ(PixelsOf(Texture()), Flat(whiteAndOpaque, 6));
}

TEST_F(OperationsTest, OpenIgnoresWhatFollowsATmpTexture) {
    WriteFile("long.tmp", TmpFile(1, 1, "abcd and more"));
    Run("open file=long.tmp");
    EXPECT_EQ(Texture().GetPixel(0, 0), 0x64636261u);
}

struct BadTmp {
    std::string bytes;
    std::string reason;
};

class BadTmpTest : public OperationsTest, public testing::WithParamInterface<BadTmp> {};

TEST_P(BadTmpTest, IsRefusedAndTheTextureStays) {
    WriteFile("bad.tmp", GetParam().bytes);
    EXPECT_EQ(FailureOf("new width=2 height=1\nopen file=bad.tmp"),
              "2: 'bad.tmp' cannot be opened as a texture: it is " + GetParam().reason);
    EXPECT_EQ(PixelsOf(Texture()), Flat(whiteAndOpaque, 2));
}

INSTANTIATE_TEST_SUITE_P(
    All, BadTmpTest,
    testing::Values(
        BadTmp{"", "too short"}, BadTmp{"\1\1\1", "too short"},
        BadTmp{TmpFile(3, 2, ""), "shorter than 3 by 2 pixels need"},
        BadTmp{TmpFile(3, 2, NumberedBytes(23)), "shorter than 3 by 2 pixels need"},
        BadTmp{TmpFile(512, 512, NumberedBytes(9)), "shorter than 512 by 512 pixels need"},
        BadTmp{TmpFile(0, 5, ""), "0 by 5 pixels, and a texture has 1 to 512 on either side"},
        BadTmp{TmpFile(5, 0, ""), "5 by 0 pixels, and a texture has 1 to 512 on either side"},
        BadTmp{TmpFile(-3, -2, NumberedBytes(24)),
               "-3 by -2 pixels, and a texture has 1 to 512 on either side"},
        BadTmp{TmpFile(513, 1, NumberedBytes(513 * 4)),
               "513 by 1 pixels, and a texture has 1 to 512 on either side"},
        BadTmp{TmpFile(32767, 32767, ""),
               "32767 by 32767 pixels, and a texture has 1 to 512 on either side"}));

TEST_F(OperationsTest, ClockIsWhatLinesReads) {
    Run("new width=40 height=40\nclock seconds=0xFFFFFFFF\nlines");
    const auto first = ColorsOf(Texture());
    Run("lines");
    EXPECT_EQ(ColorsOf(Texture()), first);
    Run("clock seconds=3\nlines");
    EXPECT_NE(ColorsOf(Texture()), first);
    SetSeed(7);
    SeedRandom();
    EXPECT_EQ(Seed(), 3u);
}

TEST(Operations, WithoutClockLinesReadsTheSystems) {
    const PlatformOverride platform;
    platformServices.clockSeconds = [] { return std::uint32_t{99}; };
    Session session(FilePlaces("", ""));
    RunText(session, "new width=40 height=40\nlines");
    const auto real = ColorsOf(session.Texture());
    RunText(session, "clock seconds=99\nlines");
    EXPECT_EQ(ColorsOf(session.Texture()), real);
}

TEST_F(OperationsTest, SeedIsTheGeneratorsState) {
    Run("new\nseed value=4294967295");
    EXPECT_EQ(Seed(), 0xFFFFFFFFu);
    Run("seed value=0");
    EXPECT_EQ(Seed(), 0u);
}

TEST_F(OperationsTest, ColorsStayWhereTheyAreLeftOut) {
    EXPECT_EQ(session.foreground, black16);
    EXPECT_EQ(session.background, white16);
    Run("new\ncolors foreground=1,2,0xFFFF");
    EXPECT_EQ(session.foreground, (RGBColor16{1, 2, 0xFFFF}));
    EXPECT_EQ(session.background, white16);
    Run("colors background=4,5,6\ncolors");
    EXPECT_EQ(session.foreground, (RGBColor16{1, 2, 0xFFFF}));
    EXPECT_EQ(session.background, (RGBColor16{4, 5, 6}));
    Run("new");
    EXPECT_EQ(*Texture().backColor, (RGBColor16{4, 5, 6}));
}

TEST_F(OperationsTest, LinesTakesTheDefaultsOfItsRecord) {
    Run("new width=60 height=50\nclock seconds=1\nlines");
    EXPECT_EQ(ColorsOf(Texture()), ExpectedLines(60, 50, {}));
}

TEST_F(OperationsTest, LinesTakesEveryKey) {
    Run("new width=60 height=50\nclock seconds=1\n"
        "lines precision=3 appearance=10 colorMode=14 angle=-170 color=0x1000,0x8000,0xF000");
    EXPECT_EQ(ColorsOf(Texture()), ExpectedLines(60, 50,
                                                 {.precision = 3,
                                                  .appearance = linesInk,
                                                  .colorMode = linesAverage,
                                                  .angle = -170,
                                                  .color = {0x1000, 0x8000, 0xF000}}));
}

TEST_F(OperationsTest, LinesKnowsFourColorModes) {
    std::vector<std::vector<Pixel>> seen;
    for (int mode = 11; mode <= 14; ++mode) {
        Run("new width=60 height=50\nclock seconds=1\nlines colorMode=" + std::to_string(mode));
        for (const auto& other : seen) {
            EXPECT_NE(ColorsOf(Texture()), other) << mode;
        }
        seen.push_back(ColorsOf(Texture()));
    }
}

TEST_F(OperationsTest, ClearIsWhiteWhateverTheBackground) {
    Run("new width=40 height=40\ncolors background=0,0,0\nlines\nclear");
    EXPECT_EQ(ColorsOf(Texture()), Flat(white, 1600));
}

TEST_F(OperationsTest, UndoIsItsOwnRedo) {
    Run("new width=40 height=40\nclock seconds=1\nlines");
    const auto lines = ColorsOf(Texture());
    Run("clear\nundo");
    EXPECT_EQ(ColorsOf(Texture()), lines);
    Run("undo");
    EXPECT_EQ(ColorsOf(Texture()), Flat(white, 1600));
}

TEST_F(OperationsTest, UndoIsOneStepDeep) {
    Run("new width=40 height=40\nclock seconds=1\nlines");
    const auto first = ColorsOf(Texture());
    Run("clock seconds=2\nlines\nundo");
    EXPECT_EQ(ColorsOf(Texture()), first);
    Run("undo\nundo");
    EXPECT_EQ(ColorsOf(Texture()), first);
}

TEST_F(OperationsTest, SaveWritesPngWithoutTheWorkChannel) {
    Run("new width=60 height=50\nlines\nsave file=a.png");
    const host::Picture picture = host::LoadPicture("a.png");
    ASSERT_EQ(picture.planes, 3);
    ASSERT_EQ(picture.width, 60);
    ASSERT_EQ(picture.height, 50);
    for (short y = 0; y < 50; ++y) {
        for (short x = 0; x < 60; ++x) {
            ASSERT_EQ(ColorAt(picture, x, y), Texture().GetPixel(x, y) & 0xFFFFFF);
        }
    }
    EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"a.png"});
}

TEST_F(OperationsTest, SaveWritesTmpByteForByte) {
    const std::string bytes = TmpFile(7, 5, NumberedBytes(7 * 5 * 4));
    WriteFile("in.tmp", bytes);
    Run("open file=in.tmp\nsave file=\"the copy.TMP\"");
    EXPECT_EQ(ReadFile("the copy.TMP"), bytes);
}

TEST_F(OperationsTest, RepeatWritesTheTextureColumnsByRows) {
    host::SavePicture(Gradient(5, 3, 3), "tile.png");
    Run("open file=tile.png\nrepeat columns=4 rows=2 file=sheet.png");
    const host::Picture sheet = host::LoadPicture("sheet.png");
    ASSERT_EQ(sheet.width, 20);
    ASSERT_EQ(sheet.height, 6);
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 20; ++x) {
            ASSERT_EQ(ColorAt(sheet, x, y),
                      Texture().GetPixel(static_cast<short>(x % 5), static_cast<short>(y % 3)) &
                          0xFFFFFF);
        }
    }
}

TEST_F(OperationsTest, RepeatIsThreeByThreeAndAtMostSixtyFour) {
    Run("new width=512 height=1\nrepeat file=three.png\nrepeat columns=64 rows=64 file=most.png");
    const host::Picture three = host::LoadPicture("three.png");
    EXPECT_EQ(three.width, 3 * 512);
    EXPECT_EQ(three.height, 3);
    // Wider than a picture of the host may be, so only the header is looked at.
    EXPECT_EQ(ReadFile("most.png").substr(16, 8), std::string("\0\0\x80\0\0\0\0\x40", 8));
}

class ApplyTest : public OperationsTest, public testing::WithParamInterface<int> {
  protected:
    ApplyTest() {
        host::SavePicture(Gradient(50, 30, GetParam()), "image.png");
        // Read back for its resolution, which a file holds per metre.
        image = host::LoadPicture("image.png");
        Run("new width=16 height=12\nclock seconds=1\nlines precision=0 color=0,0,0");
        FillWithNoise(Texture());
    }

    /// The image with the texture across a part of it, which keeps its transparency.
    host::Picture Expected(int left, int top, int right, int bottom) {
        host::Picture expected = image;
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                const unsigned char* pixel = Texture().PixelAddressWrapped(
                    static_cast<short>(x - left), static_cast<short>(y - top));
                std::copy_n(pixel, 3, expected.Pixel(x, y));
            }
        }
        return expected;
    }

    host::Picture image;
};

TEST_P(ApplyTest, FillsTheWholeImage) {
    Run("apply image=image.png file=out.png");
    EXPECT_EQ(host::LoadPicture("out.png"), Expected(0, 0, 50, 30));
    EXPECT_EQ(host::LoadPicture("image.png"), image);
}

TEST_P(ApplyTest, FillsASelection) {
    Run("apply image=image.png selection=7,3,48,29 file=out.png");
    EXPECT_EQ(host::LoadPicture("out.png"), Expected(7, 3, 48, 29));
    Run("apply image=image.png selection=49,29,50,30 file=corner.png");
    EXPECT_EQ(host::LoadPicture("corner.png"), Expected(49, 29, 50, 30));
}

TEST_P(ApplyTest, RefusesSelectionsThatDoNotFit) {
    for (const char* empty : {"5,5,5,9", "5,5,9,5", "9,5,5,9", "5,9,9,5", "0,0,0,0"}) {
        EXPECT_EQ(FailureOf(std::string("apply image=image.png file=out.png selection=") + empty),
                  "1: the selection is empty")
            << empty;
    }
    for (const char* outside : {"-1,0,5,5", "0,-1,5,5", "0,0,51,30", "0,0,50,31", "60,60,70,70"}) {
        EXPECT_EQ(FailureOf(std::string("apply image=image.png file=out.png selection=") + outside),
                  "1: the selection reaches beyond the picture")
            << outside;
    }
    EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"image.png"});
}

TEST_P(ApplyTest, LeavesTheSessionGoingOn) {
    Run("apply image=image.png file=out.png\nlines\nsave file=after.png\nnew width=5\nlines");
    EXPECT_EQ(Texture().grX, 5);
}

INSTANTIATE_TEST_SUITE_P(Planes, ApplyTest, testing::Values(3, 4));

TEST_F(OperationsTest, ApplyTellsWhatIsWrongWithTheImage) {
    WriteFile("damaged.jpg", "\xFF\xD8 nothing else");
    EXPECT_EQ(FailureOf("new\napply image=none.png file=o.png"), "2: there is no file 'none.png'");
    EXPECT_NE(FailureOf("new\napply image=damaged.jpg file=o.png").find("2: damaged.jpg: "),
              std::string::npos);
    EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"damaged.jpg"});
}

TEST_F(OperationsTest, OutputThatCannotBeWrittenIsNamed) {
    EXPECT_TRUE(FailureOf("new\nsave file=none/a.png")
                    .starts_with("2: '" + host::Utf8Name(std::filesystem::path("none/a.png")) +
                                 "' cannot be written: "));
    EXPECT_TRUE(FailureOf("new\nsave file=none/a.tmp").starts_with("2: 'none"));
    EXPECT_TRUE(FailureOf("new\nrepeat file=none/a.png").starts_with("2: 'none"));
    host::SavePicture(host::MakePicture(2, 2, 3), "i.png");
    EXPECT_NE(FailureOf("new\napply image=i.png file=none/a.png"), "");
}

TEST(Operations, TellThatMemoryIsShort) {
    host::MemorySettings memory;
    memory.budget = 1 << 20;
    Session session(FilePlaces("", ""), nullptr, memory);
    EXPECT_EQ(Failure(session, "new width=64 height=64\nnew width=512 height=512"),
              "2: not enough memory");
    EXPECT_EQ(session.Texture().grX, 64);
}

namespace {

const char* const allocatingRecipe =
    "new width=40 height=40\nclock seconds=1\nlines\nundo\nopen file=in.tmp\nlines\n"
    "save file=out.tmp";

/// Fails one allocation of the recipe, counted from 1; 0 none. Returns how many it asked for.
int RunWithFailure(int nth, std::string& failure) {
    Session session(FilePlaces("", ""));
    session.Core().Memory().FailAllocation(nth);
    failure = Failure(session, allocatingRecipe);
    EXPECT_TRUE(session.Core().Memory().FoundFaults().IsEmpty());
    return session.Core().Memory().Allocations();
}

}  // namespace

TEST(Operations, FailCleanlyAtEveryAllocation) {
    const TemporaryFolder folder;
    WriteFile("in.tmp", TmpFile(30, 30, NumberedBytes(3600)));
    std::string failure;
    const int allocations = RunWithFailure(0, failure);
    ASSERT_EQ(failure, "");
    const std::string whole = ReadFile("out.tmp");
    int failures = 0;
    for (int nth = 1; nth <= allocations; ++nth) {
        std::filesystem::remove("out.tmp");
        RunWithFailure(nth, failure);
        if (failure.empty()) {
            // The undo store went to the disk.
            EXPECT_EQ(ReadFile("out.tmp"), whole) << nth;
        } else {
            ++failures;
            EXPECT_TRUE(failure.ends_with(": not enough memory")) << nth << ": " << failure;
            EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"in.tmp"});
        }
    }
    // The pixels and the probe of two rasters, and of the clone in two runs of Lines.
    EXPECT_EQ(failures, 8);
}

#include "recipe/operations/RecordOperations.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "paint/EffectRun.h"
#include "paint/math/Random.h"
#include "tests/recipe/SessionRun.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"

using namespace recipe;

namespace {

class RecordOperationsTest : public testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(session.Core().Memory().FoundFaults().Lines(), std::vector<std::string>{});
    }

    void Run(const std::string& text) { RunText(session, text); }
    std::string FailureOf(const std::string& text) { return Failure(session, text); }
    PaintClass& Texture() { return session.Texture(); }

    /// The line makes of a texture of noise what the run step makes of the same one, and
    /// one undo leads back.
    template <typename Effect>
    void ExpectSame(const std::string& line, Effect effect) {
        Run("new width=60 height=50\nclock seconds=1\nseed value=5");
        PaintClass expected(60, 50);
        FillWithNoise(Texture());
        FillWithNoise(expected);
        const std::vector<Pixel> before = ColorsOf(expected);
        effect(expected);
        SetSeed(5);
        Run(line);
        EXPECT_EQ(ColorsOf(Texture()), ColorsOf(expected)) << line;
        EXPECT_NE(ColorsOf(Texture()), before) << line;
        Run("undo");
        EXPECT_EQ(ColorsOf(Texture()), before) << line;
    }

    Session session{FilePlaces("recipes", "")};
};

TEST_F(RecordOperationsTest, ShapesTakesItsDefaultsAndEveryKey) {
    ExpectSame("shapes", [](PaintClass& pic) { RunShapes(pic, {}); });
    ShapesParams params;
    params.kind = shapeSquare;
    params.bevel = 1;
    params.material = 2;
    params.transparency = 3;
    params.contrast = 4;
    params.angle = -5;
    params.sizeX = 0.625;
    params.sizeY = 1.0;
    params.repeatX = 3;
    params.repeatY = 1;
    params.shiftX = 8;
    params.shiftY = 9;
    params.shiftSize = 10;
    params.stacking = shapesStacked;
    params.halfShift = 0;
    params.color = {1, 0x2000, 0xF000};
    ExpectSame(
        "shapes kind=1 bevel=1 material=2 transparency=3 contrast=4 angle=-5 sizeX=0.625 sizeY=1 "
        "repeatX=3 repeatY=1 shiftX=8 shiftY=9 shiftSize=10 stacking=44 halfShift=0 "
        "color=1,0x2000,0xF000",
        [&](PaintClass& pic) { RunShapes(pic, params); });
}

TEST_F(RecordOperationsTest, DropsTakesItsDefaultsAndEveryKey) {
    ExpectSame("drops", [](PaintClass& pic) { RunDrops(pic, {}); });
    ExpectSame(
        "drops count=1 size=90 variation=3 reflection=4 emphasizeLight=0 coveredBlur=25 "
        "coveredTone=29",
        [](PaintClass& pic) {
            RunDrops(pic, {.count = 1,
                           .size = 90,
                           .variation = 3,
                           .reflection = 4,
                           .emphasizeLight = 0,
                           .coveredBlur = 25,
                           .coveredTone = coveredDarker});
        });
}

TEST_F(RecordOperationsTest, DividersTakesItsDefaultsEveryKeyAndTheColors) {
    ExpectSame("dividers", [](PaintClass& pic) {
        DividersParams params;
        params.foreground = black16;
        params.background = white16;
        RunDividers(pic, params);
    });
    const RGBColor16 foreground{0x1000, 0x2000, 0x3000};
    const RGBColor16 background{0x4000, 0x5000, 0x6000};
    ExpectSame(
        "colors foreground=0x1000,0x2000,0x3000 background=0x4000,0x5000,0x6000\n"
        "dividers lines=90 direction=20 randomColors=0 antiAliased=0 transparent=0 lineWidth=4 "
        "widthVariation=60 minimalGap=7",
        [&](PaintClass& pic) {
            DividersParams params;
            params.lines = 90;
            params.direction = 20;
            params.randomColors = 0;
            params.antiAliased = 0;
            params.transparent = 0;
            params.lineWidth = 4;
            params.widthVariation = 60;
            params.minimalGap = 7;
            params.foreground = foreground;
            params.background = background;
            RunDividers(pic, params);
        });
}

TEST_F(RecordOperationsTest, DividersTellOfAStartOnTheFarEdge) {
    // The first seconds whose third draw falls on the width.
    std::uint32_t clock = 0;
    const auto startsOnTheEdge = [&clock] {
        SetSeed(clock);
        Rand();
        Rand();
        return RandomRange(0, 50) == 50;
    };
    while (!startsOnTheEdge()) {
        ++clock;
    }
    EXPECT_EQ(FailureOf("new width=50 height=50\nclock seconds=" + std::to_string(clock) +
                        "\ndividers randomColors=0"),
              "3: assertion failed: PicClass / Zeile 333 !((x < grX) && (x >= 0) && (y < grY) && "
              "(y >= 0))");
}

TEST_F(RecordOperationsTest, WavesTakesItsDefaultsAndEveryKey) {
    ExpectSame("waves", [](PaintClass& pic) { RunWaves(pic, {}); });
    ExpectSame("waves formX=7 heightX=20 countX=3 formY=5 heightY=40 countY=5 interpolate=0",
               [](PaintClass& pic) {
                   SetSeed(5);
                   RunWaves(pic, {.formX = waveRandom,
                                  .heightX = 20,
                                  .countX = 3,
                                  .formY = waveSquare,
                                  .heightY = 40,
                                  .countY = 5,
                                  .interpolate = 0});
               });
}

TEST_F(RecordOperationsTest, TwirlsTakesItsDefaultsAndEveryKey) {
    ExpectSame("twirls", [](PaintClass& pic) { RunTwirls(pic, {}); });
    ExpectSame("twirls quantity=100 size=80 intensity=3", [](PaintClass& pic) {
        RunTwirls(pic, {.quantity = 100, .size = 80, .intensity = 3});
    });
}

TEST_F(RecordOperationsTest, SkewTakesItsDefaultsAndEveryKey) {
    ExpectSame("skew", [](PaintClass& pic) { RunSkew(pic, {}); });
    ExpectSame("skew direction=3", [](PaintClass& pic) { RunSkew(pic, {.direction = 3}); });
    ExpectSame("skew direction=2 nearest=1",
               [](PaintClass& pic) { RunSkew(pic, {.direction = 2}, true); });
}

TEST_F(RecordOperationsTest, RefuseWhatTheirRecordsDoNotHave) {
    for (const char* line :
         {"shapes kind=0",         "shapes kind=4",         "shapes bevel=101",
          "shapes sizeX=1.01",     "shapes sizeY=-0.1",     "shapes repeatX=0",
          "shapes repeatY=33",     "shapes stacking=2",     "shapes angle=181",
          "shapes halfShift=2",    "drops count=101",       "drops coveredBlur=22",
          "drops coveredTone=30",  "dividers lines=0",      "dividers lineWidth=21",
          "dividers minimalGap=0", "dividers direction=-1", "waves formX=2",
          "waves formY=6",         "waves heightX=0",       "waves countY=21",
          "waves interpolate=2",   "twirls quantity=0",     "twirls size=101",
          "twirls intensity=0",    "skew direction=4",      "skew nearest=2"}) {
        EXPECT_THROW(Run(line), RecipeError) << line;
    }
}

TEST_F(RecordOperationsTest, AWordIsAsGoodAsItsNumber) {
    for (const CatalogRow& row : Catalog()) {
        for (const Field& field : row.fields) {
            for (const FieldWord& choice : field.words) {
                const std::string key = std::string(row.name) + " " + field.name + "=";
                std::vector<std::string> spellings = {std::to_string(choice.value)};
                if (*choice.word != 0) {
                    spellings.push_back(choice.word);
                }
                for (const std::string& spelling : spellings) {
                    const Operation operation =
                        ParseRecipe("new\n" + key + spelling, OperationTable()).at(1);
                    EXPECT_EQ(operation.arguments.Get<std::int64_t>(field.name), choice.value)
                        << key << spelling;
                }
            }
        }
    }
}

TEST_F(RecordOperationsTest, EveryKeyHasItsFieldsDefaultAndRange) {
    for (const CatalogRow& row : Catalog()) {
        const AnyRecord record(row);
        const Operation operation =
            ParseRecipe(std::string("new\n") + row.name, OperationTable())[1];
        for (const Field& field : row.fields) {
            SCOPED_TRACE(std::string(row.name) + " " + field.name);
            if (field.type == FieldType::color) {
                const auto& color = operation.arguments.Get<hostapi::RGBColor>(field.name);
                EXPECT_EQ((RGBColor16{color.red, color.green, color.blue}),
                          ReadColor(field, record.Data()));
                continue;
            }
            const bool isReal = field.type == FieldType::real;
            const double value =
                isReal ? operation.arguments.Get<double>(field.name)
                       : static_cast<double>(operation.arguments.Get<std::int64_t>(field.name));
            EXPECT_EQ(value, ReadNumber(field, record.Data()));
            for (const double beyond : {field.low - 1, field.high + 1}) {
                const std::string line = std::string("new\n") + row.name + " " + field.name + "=" +
                                         std::to_string(static_cast<int>(beyond));
                EXPECT_THROW(ParseRecipe(line, OperationTable()), RecipeError) << line;
            }
        }
    }
}

TEST_F(RecordOperationsTest, SayThatMemoryIsShort) {
    for (const char* line : {"drops coveredBlur=24", "waves", "twirls", "skew"}) {
        Run("new width=40 height=40");
        FillWithNoise(Texture());
        const std::vector<Pixel> before = ColorsOf(Texture());
        session.Core().Memory().FailAllocation(1);
        EXPECT_EQ(FailureOf(line), "1: not enough memory") << line;
        EXPECT_EQ(ColorsOf(Texture()), before) << line;
    }
    Run("new width=40 height=40");
    for (const char* line : {"shapes", "waves"}) {
        const FailingHandles tables(1);
        EXPECT_EQ(FailureOf(line), "1: not enough memory") << line;
    }
}

}  // namespace

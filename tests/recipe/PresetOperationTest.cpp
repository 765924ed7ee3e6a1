#include "recipe/operations/PresetOperation.h"

#include <gtest/gtest.h>

#include "paint/EffectRun.h"
#include "paint/math/Random.h"
#include "tests/recipe/PresetFixture.h"
#include "tests/recipe/SessionRun.h"
#include "tests/recipe/TemporaryFolder.h"
#include "tests/support/Pictures.h"

using namespace recipe;

namespace {

class PresetOperationTest : public testing::Test {
  protected:
    PresetOperationTest() {
        AddPreset(preferences, presetLines, "One", LinesParams{.precision = 1});
        AddPreset(preferences, presetDrops, "One", DropsParams{.count = 1});
        AddPreset(preferences, presetDividers, "One", DividersParams{.lines = 40});
        AddPreset(preferences, presetWaves, "One", WavesParams{.countX = 1});
        AddPreset(preferences, presetTwirls, "One", TwirlsParams{.quantity = 1});
        AddPreset(preferences, presetSkew, "One", SkewParams{.direction = 1});
        AddPreset(preferences, presetShapes, "One", ShapesParams{.repeatX = 1});
        preferences.lines.precision = 9;
        preferences.drops.count = 9;
        preferences.dividers.lines = 90;
        preferences.waves.countX = 9;
        preferences.twirls.quantity = 9;
        preferences.skew.direction = 3;
        preferences.shapes.repeatX = 9;
        Write();
    }

    void Write() const { WriteFile("a.prf", BytesOfPreferences(preferences)); }
    std::string FailureOf(const std::string& line) {
        RunText(session, "new");
        return Failure(session, line);
    }

    /// Both lines make the same of a texture of noise, and not nothing.
    void ExpectSame(const std::string& line, const std::string& expectedLine) {
        const std::vector<Pixel> expected = ResultOf(expectedLine);
        EXPECT_EQ(ResultOf(line), expected) << line;
        EXPECT_NE(ColorsOf(session.Texture()), before) << line;
        RunText(session, "undo");
        EXPECT_EQ(ColorsOf(session.Texture()), before) << line;
    }

    TemporaryFolder folder;
    Preferences preferences;
    Session session{FilePlaces("", "")};

  private:
    std::vector<Pixel> ResultOf(const std::string& line) {
        RunText(session,
                "new width=60 height=50\nclock seconds=1\n"
                "colors foreground=0xFF00,0,0 background=0,0,0xFF00");
        FillWithNoise(session.Texture());
        before = ColorsOf(session.Texture());
        SetSeed(5);
        RunText(session, line);
        return ColorsOf(session.Texture());
    }

    std::vector<Pixel> before;
};

TEST_F(PresetOperationTest, RunsEveryEffectWithAPreset) {
    ExpectSame("preset file=a.prf effect=lines name=One", "lines precision=1");
    ExpectSame("preset file=a.prf effect=shapes name=One", "shapes repeatX=1");
    ExpectSame("preset file=a.prf effect=drops name=One", "drops count=1");
    ExpectSame("preset file=a.prf effect=dividers name=One", "dividers lines=40");
    ExpectSame("preset file=a.prf effect=waves name=One", "waves countX=1");
    ExpectSame("preset file=a.prf effect=twirls name=One", "twirls quantity=1");
    ExpectSame("preset file=a.prf effect=skew name=One", "skew direction=1");
}

TEST_F(PresetOperationTest, RunsEveryEffectAsItWasUsedLast) {
    ExpectSame("preset file=a.prf effect=lines name=\"Last Used\"", "lines precision=9");
    ExpectSame("preset file=a.prf effect=shapes name=\"last used\"", "shapes repeatX=9");
    ExpectSame("preset file=a.prf effect=drops name=\"Last Used\"", "drops count=9");
    ExpectSame("preset file=a.prf effect=dividers name=\"Last Used\"", "dividers lines=90");
    ExpectSame("preset file=a.prf effect=waves name=\"Last Used\"", "waves countX=9");
    ExpectSame("preset file=a.prf effect=twirls name=\"Last Used\"", "twirls quantity=9");
    ExpectSame("preset file=a.prf effect=skew name=\"Last Used\"", "skew direction=3");
}

TEST_F(PresetOperationTest, TheFirstOfAnEffectsNamesCountsWhateverItsCase) {
    AddPreset(preferences, presetSkew, "Two", SkewParams{.direction = 2});
    AddPreset(preferences, presetSkew, "TWO", SkewParams{.direction = 3});
    AddPreset(preferences, presetSkew, "Gr\xFC\xDF", SkewParams{.direction = 3});
    Write();
    ExpectSame("preset file=a.prf effect=skew name=two", "skew direction=2");
    ExpectSame("preset file=a.prf effect=skew name=\"Gr\u00FC\u00DF\"", "skew direction=3");
}

TEST_F(PresetOperationTest, WhatIsNotThereIsSaid) {
    EXPECT_EQ(FailureOf("preset file=none.prf effect=skew name=One"),
              "1: there is no file 'none.prf'");
    EXPECT_EQ(FailureOf("preset file=a.prf effect=skew name=Two"),
              "1: there is no preset 'Two' for skew in 'a.prf'");
    WriteFile("a.prf", "");
    EXPECT_EQ(FailureOf("preset file=a.prf effect=skew name=One"),
              "1: 'a.prf' ends before all of a preference file was read");
    WriteFile("a.prf", std::string(400, 'x'));
    EXPECT_EQ(FailureOf("preset file=a.prf effect=skew name=One"),
              "1: 'a.prf' is no preference file");
    EXPECT_EQ(ReadFile("a.prf"), std::string(400, 'x')) << "it is only read";
}

TEST_F(PresetOperationTest, TheEffectMustBeOne) {
    const auto refusal = [](const std::string& line) {
        try {
            ParseRecipe("new\n" + line, OperationTable());
            return std::string();
        } catch (const RecipeError& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(refusal("preset file=a.prf effect=blur name=One"),
              "'effect' must be lines, shapes, drops, dividers, waves, twirls or skew, not 'blur'");
    EXPECT_EQ(refusal("preset file=a.prf effect=skew"), "'preset' needs the key 'name'");
}

}  // namespace

#include "recipe/presets/PresetListing.h"

#include <gtest/gtest.h>

#include "recipe/language/RecipeParser.h"
#include "recipe/operations/Operations.h"
#include "recipe/presets/PreferenceReading.h"
#include "tests/recipe/PresetFixture.h"
#include "tests/recipe/TemporaryFolder.h"

using namespace recipe;

namespace {

class PresetListingTest : public testing::Test {
  protected:
    PresetListingTest() { dialogPlaces = {}; }
    ~PresetListingTest() override { dialogPlaces = {}; }

    Preferences preferences;
};

TEST_F(PresetListingTest, ShowsAllThatAFileHolds) {
    preferences.launchFlag = 0;
    preferences.editorPlace = {.top = -1, .left = 20, .bottom = 300, .right = 400};
    dialogPlaces[placedBrush] = {.top = 1, .left = 2, .bottom = 3, .right = 4};
    AddPreset(preferences, presetSkew, "Gr\xFC\xDF\n", SkewParams{.direction = 3});
    AddPreset(preferences, presetSkew, "two words", SkewParams{.direction = -4});
    EXPECT_EQ(
        ListingOf(preferences),
        "# New dialog at launch: no\n"
        "colors foreground=0x0000,0x0000,0x0000 background=0xFFFF,0xFFFF,0xFFFF\n"
        "lines precision=50 appearance=9 colorMode=11 angle=45 color=0x7FFF,0x7FFF,0x7FFF"
        "  # Last Used\n"
        "shapes kind=2 bevel=50 material=25 transparency=25 contrast=25 angle=60 sizeX=0.67 "
        "sizeY=0.67 repeatX=2 repeatY=2 shiftX=0 shiftY=0 shiftSize=0 stacking=0 halfShift=1 "
        "color=0x7FFF,0x7FFF,0x7FFF  # Last Used\n"
        "drops count=50 size=50 variation=50 reflection=25 emphasizeLight=1 coveredBlur=23 "
        "coveredTone=27  # Last Used\n"
        "dividers lines=50 direction=50 randomColors=1 antiAliased=1 transparent=1 lineWidth=1 "
        "widthVariation=3 minimalGap=2  # Last Used\n"
        "waves formX=3 heightX=50 countX=2 formY=3 heightY=50 countY=2 interpolate=1"
        "  # Last Used\n"
        "twirls quantity=50 size=50 intensity=50  # Last Used\n"
        "skew direction=0  # Last Used\n"
        "skew direction=3  # Gr\u00FC\u00DF?\n"
        "skew direction=-4  # two words\n"
        "blur amount=20 motion=0 direction=1\n"
        "sharpen passes=1\n"
        "noise amount=50 mode=1\n"
        "saturation saturation=60\n"
        "brightnessContrast brightness=50 contrast=50\n"
        "mosaic horizontal=1 vertical=1\n"
        "addColor opacity=10 color=0x7FFF,0x7FFF,0x7FFF\n"
        "# TextureDialog at 20,-1,400,300\n"
        "# BrushDialog at 2,1,4,3\n");
}

TEST_F(PresetListingTest, IsARecipeOnceThereIsATexture) {
    EXPECT_EQ(ParseRecipe("new\n" + ListingOf(preferences), OperationTable()).size(), 16u);
}

TEST_F(PresetListingTest, ReadsTheFileItself) {
    const TemporaryFolder folder;
    preferences.twirls.size = 77;
    AddPreset(preferences, presetTwirls, "mine", TwirlsParams{1, 2, 3});
    WriteFile("a.prf", BytesOfPreferences(preferences) + "left over");
    Preferences read;
    ReadPreferenceFile("a.prf", read);
    EXPECT_EQ(ListingOf(read), ListingOf(preferences));
    EXPECT_THROW(ReadPreferenceFile("none.prf", read), std::runtime_error);
}

TEST(PresetNameTest, WhatIsNoUtf8IsWestern) {
    EXPECT_EQ(PresetNameText("plain"), "plain");
    EXPECT_EQ(PresetNameText("\u00FC"), "\u00FC");
    EXPECT_EQ(PresetNameText("\x80 \x9F \xA0 \xFF"), "\u20AC \u0178 \u00A0 \u00FF");
    EXPECT_EQ(PresetNameText("\x81"), "\u0081");
}

}  // namespace

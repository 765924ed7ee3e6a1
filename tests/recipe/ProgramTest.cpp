#include "tests/recipe/ProgramTest.h"

#include <algorithm>

#include "host/picture/Picture.h"
#include "recipe/presets/PresetListing.h"
#include "recipe/tool/System.h"
#include "tests/recipe/PresetFixture.h"

namespace fs = std::filesystem;

namespace {

// Before any test has changed the current folder: under Wine an absolute path of the build machine
// still lacks its drive.
const fs::path tool = fs::absolute(RECIPE_TOOL);
const fs::path sourceFolder = fs::absolute(SOURCE_FOLDER);

std::string WithoutCarriageReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

}  // namespace

ProgramResult ProgramTest::Run(const std::vector<std::string>& arguments,
                               const std::string& input) {
    testing::internal::CaptureStdout();
    const recipe::ChildResult child = recipe::RunProgram(tool, arguments, input);
    const std::string output = testing::internal::GetCapturedStdout();
    return {child.status, WithoutCarriageReturns(output), WithoutCarriageReturns(child.errors)};
}

std::filesystem::path SourceFolder() {
    return sourceFolder;
}

namespace {

constexpr char smallRecipe[] = "new width=9 height=8\nclock seconds=1\nsave file=small.png\n";

/// A recipe that takes its clock and file name from the command line.
constexpr char openRecipe[] =
    "new width=${size} height=${size}\nclock seconds=${clock}\nlines\nsave file=${name}\n";

}  // namespace

TEST_F(ProgramTest, RunsARecipe) {
    WriteFile("a.recipe", smallRecipe);
    EXPECT_EQ(Run({"a.recipe"}), quietSuccess);
    EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"a.recipe", "small.png"}));
    const host::Picture picture = host::LoadPicture("small.png");
    EXPECT_EQ(picture.width, 9);
    EXPECT_EQ(picture.height, 8);
}

TEST_F(ProgramTest, RunsAnEmptyRecipe) {
    WriteFile("a.recipe", "# nothing yet\n");
    EXPECT_EQ(Run({"a.recipe"}), quietSuccess);
}

TEST_F(ProgramTest, ReadsStandardInput) {
    EXPECT_EQ(Run({"-"}, smallRecipe), quietSuccess);
    EXPECT_TRUE(fs::exists("small.png"));
    EXPECT_EQ(Run({"-"}, "new\nfrob\n"), (ProgramResult{2, "", "-:2: unknown operation 'frob'\n"}));
}

TEST_F(ProgramTest, ChecksTheWholeRecipeBeforeItsFirstOperation) {
    WriteFile("a.recipe", std::string(smallRecipe) + "save file=b.png\nlines angle=181\n");
    EXPECT_EQ(Run({"a.recipe"}),
              (ProgramResult{2, "", "a.recipe:5: 'angle' must be -180 to 180, not '181'\n"}));
    EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"a.recipe"});
}

TEST_F(ProgramTest, ChecksAllRecipesBeforeTheFirstRuns) {
    WriteFile("a.recipe", smallRecipe);
    WriteFile("b.recipe", "new\nsave file=b.bmp\n");
    WriteFile("c.recipe", "undo\n");
    EXPECT_EQ(
        Run({"a.recipe", "b.recipe", "c.recipe", "none.recipe"}),
        (ProgramResult{
            2, "",
            "b.recipe:2: 'file' must be a .png, .jpg, .jpeg, .jfif or .tmp file, not 'b.bmp'\n"
            "c.recipe:1: 'undo' stands before the first 'new' or 'open'\n"
            "none.recipe:1: the recipe cannot be opened\n"}));
    EXPECT_FALSE(fs::exists("small.png"));
}

TEST_F(ProgramTest, EndsAtAFailure) {
    WriteFile("a.recipe", "new width=4\nsave file=first.png\nopen file=none.png\nsave file=l.png");
    EXPECT_EQ(Run({"a.recipe"}),
              (ProgramResult{1, "", "a.recipe:3: there is no file 'none.png'\n"}));
    EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"a.recipe", "first.png"}));
}

TEST_F(ProgramTest, TakesRecipesItCannotReadForWrongOnes) {
    EXPECT_EQ(Run({"none.recipe"}),
              (ProgramResult{2, "", "none.recipe:1: the recipe cannot be opened\n"}));
    fs::create_directory("folder");
    const ProgramResult result = Run({"folder"});
    EXPECT_EQ(result.status, 2);
    // Some systems open a folder and refuse to read it.
    EXPECT_TRUE(result.errors.starts_with("folder:1: the recipe cannot be ")) << result.errors;
}

TEST_F(ProgramTest, RefusesARecipeOfUnlikelyLength) {
    EXPECT_EQ(Run({"-"}, std::string(17 << 20, '#')),
              (ProgramResult{2, "", "-:1: the recipe is longer than 16 MB\n"}));
}

TEST_F(ProgramTest, FindsInputsBesideTheRecipe) {
    fs::create_directory("recipes");
    host::SavePicture(host::MakePicture(6, 5, 3), "recipes/tile.png");
    WriteFile("recipes/a.recipe", "open file=tile.png\nsave file=copy.png");
    EXPECT_EQ(Run({"recipes/a.recipe"}), quietSuccess);
    EXPECT_EQ(host::LoadPicture("copy.png").width, 6);
    // A recipe from standard input has no folder.
    EXPECT_EQ(Run({"-"}, "open file=tile.png"),
              (ProgramResult{1, "", "-:1: there is no file 'tile.png'\n"}));
}

TEST_F(ProgramTest, WritesToTheOutputFolder) {
    WriteFile("a.recipe", smallRecipe);
    EXPECT_EQ(Run({"a.recipe", "--out-dir", "made for/it"}), quietSuccess);
    EXPECT_TRUE(fs::exists("made for/it/small.png"));
    EXPECT_FALSE(fs::exists("small.png"));
}

TEST_F(ProgramTest, PutsValuesInPlaceOfNames) {
    WriteFile("a.recipe", openRecipe);
    EXPECT_EQ(Run({"--set", "size=0x10", "--set=clock=5", "a.recipe", "--set", "name=a =b.png"}),
              quietSuccess);
    EXPECT_EQ(host::LoadPicture("a =b.png").width, 16);
    EXPECT_EQ(Run({"a.recipe", "--set", "size=16", "--set", "name=x.png"}),
              (ProgramResult{2, "", "a.recipe:2: nothing is set for '${clock}'\n"}));
    EXPECT_EQ(Run({"a.recipe", "--set", "size=0"}).errors,
              "a.recipe:1: 'width' must be 1 to 512, not '0'\n");
}

TEST_F(ProgramTest, TakesNamesInAnyScript) {
    const std::string name =
        "Gr\xC3\xBC\xC3\x9F"
        "e \xE6\x9C\xA8";
    WriteFile(host::PathFromUtf8(name + ".recipe"), "new\nsave file=\"" + name + ".tmp\"");
    EXPECT_EQ(Run({name + ".recipe", "--out-dir", name}), quietSuccess);
    EXPECT_TRUE(fs::exists(host::PathFromUtf8(name) / host::PathFromUtf8(name + ".tmp")));
    EXPECT_EQ(Run({"none " + name}),
              (ProgramResult{2, "", "none " + name + ":1: the recipe cannot be opened\n"}));
}

TEST_F(ProgramTest, RunsSeveralRecipesAsEachAlone) {
    std::vector<std::string> recipes;
    for (int i = 0; i < 7; ++i) {
        const std::string number = std::to_string(i);
        recipes.push_back("r" + number + ".recipe");
        WriteFile(recipes.back(), "new width=64 height=4" + number + "\nclock seconds=" + number +
                                      "\nlines precision=" + number + "\nsave file=" + number +
                                      ".tmp\n");
        EXPECT_EQ(Run({recipes.back(), "--out-dir", "alone"}), quietSuccess);
    }
    for (const char* jobs : {"1", "2", "16"}) {
        std::vector<std::string> arguments = recipes;
        arguments.insert(arguments.end(), {"--jobs", jobs, "--out-dir", "together"});
        EXPECT_EQ(Run(arguments), quietSuccess);
        for (int i = 0; i < 7; ++i) {
            const std::string file = std::to_string(i) + ".tmp";
            EXPECT_EQ(ReadFile("together/" + file), ReadFile("alone/" + file)) << i;
        }
        fs::remove_all("together");
    }
}

TEST_F(ProgramTest, HandsAllSettingsOnToSeveralRecipes) {
    // Characters that are hard to hand over: quotes, backslashes, blanks, an equals sign.
    const std::string text = "a \"b\\\" c\\\\ d=e\\";
    WriteFile("-dashed.recipe", "new width=${size}\nopen file=\"${text}x.png\"");
    EXPECT_EQ(Run({"--set", "size=4", "--set", "text=" + text, "--out-dir=o ut", "--jobs=2", "--",
                   "-", "-dashed.recipe"},
                  "new width=${size}\nsave file=in.png"),
              (ProgramResult{1, "",
                             "-dashed.recipe:2: there is no file '" +
                                 host::Utf8Name(host::PathFromUtf8(text + "x.png")) + "'\n"}));
    EXPECT_EQ(host::LoadPicture("o ut/in.png").width, 4);
}

TEST_F(ProgramTest, GoesOnWithTheOthersAfterAFailure) {
    WriteFile("bad.recipe", "new\nopen file=none.png\n");
    WriteFile("good.recipe", smallRecipe);
    EXPECT_EQ(Run({"bad.recipe", "good.recipe"}),
              (ProgramResult{1, "", "bad.recipe:2: there is no file 'none.png'\n"}));
    EXPECT_TRUE(fs::exists("small.png"));
}

TEST_F(ProgramTest, HelpsAndTellsItsVersion) {
    const ProgramResult help = Run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    for (const char* option :
         {"RECIPE", "--out-dir", "--set", "--jobs", "--quiet", "--list-presets", "--version"}) {
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    }
    EXPECT_EQ(Run({"--version"}), (ProgramResult{0, "zandermolite-recipe " VERSION_TEXT "\n", ""}));
}

TEST_F(ProgramTest, ListsWhatAPreferenceFileHolds) {
    Preferences preferences;
    AddPreset(preferences, presetSkew, "mine", SkewParams{2});
    WriteFile("a.prf", BytesOfPreferences(preferences));
    const ProgramResult result = Run({"--list-presets", "a.prf"});
    EXPECT_EQ(result, (ProgramResult{0, recipe::ListingOf(preferences), ""}));
    EXPECT_NE(result.output.find("\nskew direction=2  # mine\n"), std::string::npos);
    WriteFile("b.prf", "VELK");
    EXPECT_EQ(Run({"--list-presets", "b.prf"}),
              (ProgramResult{1, "",
                             "zandermolite-recipe: 'b.prf' ends before all of a preference file "
                             "was read\n"}));
    EXPECT_EQ(Run({"--list-presets", "none.prf"}),
              (ProgramResult{1, "", "zandermolite-recipe: 'none.prf' cannot be opened\n"}));
}

struct BadCommandLine {
    std::vector<std::string> arguments;
    std::string error;
};

class BadCommandLineTest : public ProgramTest,
                           public testing::WithParamInterface<BadCommandLine> {};

TEST_P(BadCommandLineTest, IsOneLineAndStatusTwo) {
    WriteFile("a.recipe", smallRecipe);
    EXPECT_EQ(Run(GetParam().arguments),
              (ProgramResult{2, "", "zandermolite-recipe: " + GetParam().error + "\n"}));
    EXPECT_FALSE(fs::exists("small.png"));
}

INSTANTIATE_TEST_SUITE_P(
    All, BadCommandLineTest,
    testing::Values(
        BadCommandLine{{}, "RECIPE is required"},
        BadCommandLine{{"a.recipe", "--frob"}, "The following argument was not expected: --frob"},
        BadCommandLine{{"a.recipe", "--set", "x"}, "--set: 'x' is not of the form name=value"},
        BadCommandLine{{"a.recipe", "--set", "=x"}, "--set: '=x' is not of the form name=value"},
        BadCommandLine{{"a.recipe", "--set", "1a=x"},
                       "--set: '1a=x' is not of the form name=value"},
        BadCommandLine{{"a.recipe", "--set", "x=1", "--set", "x=2"}, "--set: 'x' is set twice"},
        BadCommandLine{{"a.recipe", "--jobs", "0"}, "--jobs: Value 0 not in range 1 to 256"},
        BadCommandLine{{"a.recipe", "--jobs", "two"}, "--jobs: Value two not in range 1 to 256"},
        BadCommandLine{{"a.recipe", "--out-dir"}, "--out-dir: 1 required DIR missing"},
        BadCommandLine{{"--list-presets"}, "--list-presets: 1 required FILE missing"},
        BadCommandLine{{"--list-presets", "a.prf", "a.recipe"}, "RECIPE excludes --list-presets"},
        BadCommandLine{{"-", "-"}, "RECIPE: standard input can be read once only"}));

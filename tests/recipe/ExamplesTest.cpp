// The recipes that come with the tool, and those that the builds are compared by.
#include <algorithm>

#include "host/picture/Picture.h"
#include "tests/recipe/ProgramTest.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::string> RecipesIn(const fs::path& sourceFolder) {
    std::vector<std::string> recipes;
    for (const auto& entry : fs::directory_iterator(SourceFolder() / sourceFolder)) {
        if (entry.path().extension() == ".recipe") {
            recipes.push_back(host::Utf8Name(entry.path()));
        }
    }
    std::ranges::sort(recipes);
    return recipes;
}

class ExamplesTest : public ProgramTest {
  protected:
    /// Everything that any of the recipes asks for is set.
    void ExpectFilesFrom(const fs::path& sourceFolder, std::size_t fewestRecipes) {
        const std::vector<std::string> recipes = RecipesIn(sourceFolder);
        EXPECT_GE(recipes.size(), fewestRecipes);
        host::SavePicture(host::MakePicture(120, 90, 3), "picture.png");
        for (const std::string& recipe : recipes) {
            fs::remove_all("out");
            EXPECT_EQ(Run({recipe, "--out-dir", "out", "--set", "picture=picture.png", "--set",
                           "clock=5"}),
                      quietSuccess)
                << recipe;
            EXPECT_FALSE(fs::is_empty("out")) << recipe;
        }
    }
};

}  // namespace

TEST_F(ExamplesTest, ExamplesRun) {
    ExpectFilesFrom("recipe/examples", 6);
}

TEST_F(ExamplesTest, CrossRecipesRun) {
    ExpectFilesFrom("tests/recipe/cross", 12);
}

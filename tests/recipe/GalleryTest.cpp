// The recipes of the gallery give its pictures, to the bit; those of the help give its pairs.
#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>

#include "host/picture/Picture.h"
#include "paint/Catalog.h"
#include "tests/recipe/ProgramTest.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> RecipesIn(const char* folder) {
    std::vector<fs::path> recipes;
    for (const auto& entry : fs::directory_iterator(SourceFolder() / folder)) {
        if (entry.path().extension() == ".recipe") {
            recipes.push_back(entry.path());
        }
    }
    std::ranges::sort(recipes);
    return recipes;
}

int CountDifferentPixels(const host::Picture& a, const host::Picture& b) {
    int count = 0;
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            count += std::equal(a.Pixel(x, y), a.Pixel(x, y) + a.planes, b.Pixel(x, y)) ? 0 : 1;
        }
    }
    return count;
}

/// Puts a recipe's new picture beside the gallery's, for a person to judge.
void ExpectPicture(const fs::path& made, const fs::path& golden) {
    ASSERT_TRUE(fs::exists(made)) << made;
    fs::path kept = golden;
    kept.replace_extension(".new.png");
    const bool isKnown = fs::exists(golden);
    EXPECT_TRUE(isKnown) << "no " << golden << "; the picture is in " << kept;
    bool isSame = false;
    if (isKnown) {
        const host::Picture now = host::LoadPicture(made);
        const host::Picture then = host::LoadPicture(golden);
        const bool hasSize =
            now.width == then.width && now.height == then.height && now.planes == then.planes;
        EXPECT_TRUE(hasSize) << "another size; the picture is in " << kept;
        const int different = hasSize ? CountDifferentPixels(now, then) : 1;
        EXPECT_EQ(different, 0) << "pixels differ; the picture is in " << kept;
        isSame = different == 0;
    }
    if (!isSame) {
        fs::copy_file(made, kept, fs::copy_options::overwrite_existing);
    }
}

class GalleryTest : public ProgramTest {};

TEST_F(GalleryTest, RecipesGiveTheGallerysPictures) {
    const std::vector<fs::path> recipes = RecipesIn("docs/gallery");
    EXPECT_GE(recipes.size(), 12u);
    for (const fs::path& recipe : recipes) {
        SCOPED_TRACE(host::Utf8Name(recipe.filename()));
        EXPECT_EQ(Run({host::Utf8Name(recipe)}), quietSuccess);
        fs::path picture = recipe;
        picture.replace_extension(".png");
        ExpectPicture(picture.filename(), picture);
    }
}

/// The names of the operations that lines of the text begin with.
std::set<std::string> OperationsIn(const std::string& text) {
    std::set<std::string> names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto isLetter = [](unsigned char c) { return std::isalpha(c) != 0; };
        names.emplace(line.begin(), std::ranges::find_if_not(line, isLetter));
    }
    return names;
}

TEST_F(GalleryTest, ShowsEveryOperationThatChangesPixels) {
    std::set<std::string> shown;
    for (const fs::path& recipe : RecipesIn("docs/gallery")) {
        shown.merge(OperationsIn(ReadFile(recipe)));
    }
    for (const CatalogRow& row : Catalog()) {
        EXPECT_TRUE(shown.contains(row.name)) << row.name;
    }
    for (const char* operation : {"invert", "addBump", "combine", "tile", "resize", "brush",
                                  "pencil", "stamp", "fill", "gradient", "eraser", "move"}) {
        EXPECT_TRUE(shown.contains(operation)) << operation;
    }
}

// The pictures in the pages are smaller and coarser, so that these are not compared with them.
TEST_F(GalleryTest, RecipesOfTheHelpGiveTwoPicturesThatDiffer) {
    const std::vector<fs::path> recipes = RecipesIn("docs/help-recipes");
    EXPECT_GE(recipes.size(), 26u);
    for (const fs::path& recipe : recipes) {
        const std::string name = host::Utf8Name(recipe.stem());
        SCOPED_TRACE(name);
        ASSERT_EQ(Run({host::Utf8Name(recipe)}), quietSuccess);
        const host::Picture then = host::LoadPicture(name + "-before.png");
        const host::Picture now = host::LoadPicture(name + "-after.png");
        EXPECT_FALSE(then.width == now.width && then.pixels == now.pixels);
    }
}

}  // namespace

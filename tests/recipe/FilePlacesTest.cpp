#include "recipe/formats/FilePlaces.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "host/picture/Picture.h"
#include "tests/recipe/TemporaryFolder.h"

using namespace recipe;
namespace fs = std::filesystem;

namespace {

class FilePlacesTest : public testing::Test {
  protected:
    FilePlacesTest() { fs::create_directory("recipes"); }

    TemporaryFolder folder;
    const FilePlaces places{"recipes", "made/out"};
};

/// The message that FindInput throws; empty if it finds the file.
std::string Complaint(const FilePlaces& places, const std::string& name) {
    try {
        places.FindInput(name);
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

}  // namespace

TEST_F(FilePlacesTest, InputInTheCurrentFolderComesFirst) {
    WriteFile("recipes/a.png", "beside");
    EXPECT_EQ(ReadFile(places.FindInput("a.png")), "beside");
    WriteFile("a.png", "current");
    EXPECT_EQ(ReadFile(places.FindInput("a.png")), "current");
}

TEST_F(FilePlacesTest, InputMayBeAbsolute) {
    WriteFile("recipes/a.png", "beside");
    const std::string name = host::Utf8Name(folder.Path() / "recipes" / "a.png");
    EXPECT_EQ(ReadFile(places.FindInput(name)), "beside");
}

TEST_F(FilePlacesTest, MissingInputIsNamed) {
    EXPECT_EQ(Complaint(places, "none.png"), "there is no file 'none.png'");
    const std::string absolute = host::Utf8Name(folder.Path() / "none.png");
    EXPECT_EQ(Complaint(places, absolute), "there is no file '" + absolute + "'");
}

TEST_F(FilePlacesTest, OutputGoesToItsFolderWhichIsMade) {
    const fs::path output = places.Output("x.png");
    EXPECT_EQ(output, fs::path("made/out") / "x.png");
    EXPECT_TRUE(fs::is_directory("made/out"));
}

TEST_F(FilePlacesTest, OutputWithoutAFolderIsInTheCurrentOne) {
    const FilePlaces here("recipes", "");
    EXPECT_EQ(here.Output("x.png"), fs::path("x.png"));
}

TEST_F(FilePlacesTest, AbsoluteOutputStaysWhereItIs) {
    const fs::path absolute = folder.Path() / "x.png";
    EXPECT_EQ(places.Output(host::Utf8Name(absolute)), absolute);
    EXPECT_FALSE(fs::exists("made"));
}

TEST_F(FilePlacesTest, OutputFolderThatCannotBeMadeIsNamed) {
    WriteFile("made", "a file in the way");
    try {
        places.Output("x.png");
        FAIL();
    } catch (const std::runtime_error& error) {
        const std::string name = host::Utf8Name(fs::path("made/out"));
        EXPECT_TRUE(
            std::string(error.what()).starts_with("the folder '" + name + "' cannot be made: "))
            << error.what();
    }
}

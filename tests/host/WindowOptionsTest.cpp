#include "host/window/WindowOptions.h"

#include <gtest/gtest.h>

namespace host {

TEST(WindowOptionsTest, NothingIsEnough) {
    const ParsedWindowOptions parsed = ParseWindowOptions({});
    EXPECT_EQ(parsed.text, "");
    EXPECT_TRUE(parsed.options.common.image.empty());
    EXPECT_TRUE(parsed.options.statusFile.empty());
}

TEST(WindowOptionsTest, ThePictureStandsAloneOrBehindItsOption) {
    EXPECT_EQ(ParseWindowOptions({"a.png"}).options.common.image, "a.png");
    EXPECT_EQ(ParseWindowOptions({"/folder/a.png"}).options.common.image, "/folder/a.png");
    EXPECT_EQ(ParseWindowOptions({"--image", "/folder/a.png"}).options.common.image,
              "/folder/a.png");
    EXPECT_THROW(ParseWindowOptions({"--image", "a.png", "b.png"}), CommandLineError);
    EXPECT_THROW(ParseWindowOptions({"a.png", "b.png"}), CommandLineError);
}

TEST(WindowOptionsTest, TakesTheCommonOptions) {
    const WindowOptions options =
        ParseWindowOptions({"--filter", "a.8bf", "--filter", "b.8bf", "--selection", "1,2,3,4",
                            "--ellipse", "2.5", "--trait", "free-library", "--status-file",
                            "said.txt", "picture.png"})
            .options;
    EXPECT_EQ(options.common.filters, (std::vector<std::filesystem::path>{"a.8bf", "b.8bf"}));
    ASSERT_TRUE(options.common.selection);
    EXPECT_TRUE(AreEqual(*options.common.selection, {2, 1, 4, 3}));
    EXPECT_EQ(options.common.ellipseFeather, 2.5);
    EXPECT_TRUE(options.common.settings.traits.Has(Trait::freeLibrary));
    EXPECT_EQ(options.statusFile, "said.txt");
    EXPECT_EQ(options.common.image, "picture.png");
}

TEST(WindowOptionsTest, ExplainsItself) {
    EXPECT_NE(ParseWindowOptions({"--help"}).text.find("PICTURE"), std::string::npos);
    EXPECT_NE(ParseWindowOptions({"--version"}).text.find("zandermolite-host "), std::string::npos);
}

TEST(WindowOptionsTest, RefusesWhatItDoesNotKnow) {
    EXPECT_THROW(ParseWindowOptions({"--times", "3"}), CommandLineError);
    EXPECT_THROW(ParseWindowOptions({"--selection", "1,2,3"}), CommandLineError);
}

}  // namespace host

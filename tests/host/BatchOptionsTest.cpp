#include "host/command/BatchOptions.h"

#include <gtest/gtest.h>

#include "base/Rectangles.h"

namespace host {

namespace {

using Words = std::vector<std::string>;

BatchOptions Parse(Words words) {
    words.insert(words.begin(), {"--image", "in.png", "--filter", "f.8bf"});
    const ParsedCommandLine parsed = ParseBatchOptions(words);
    EXPECT_EQ(parsed.text, "");
    return parsed.options;
}

std::string ErrorOf(const Words& words) {
    try {
        ParseBatchOptions(words);
    } catch (const CommandLineError& error) {
        return error.what();
    }
    return "no error";
}

std::string ErrorWith(Words words) {
    words.insert(words.begin(), {"--image", "in.png", "--filter", "f.8bf"});
    return ErrorOf(words);
}

}  // namespace

TEST(BatchOptionsTest, PressesAreInTheirOrder) {
    EXPECT_EQ(Parse({"--press", "New:1", "--press", "Tiles: all:35"}).presses,
              (std::vector<DialogPress>{{"New", 1}, {"Tiles: all", 35}}));
    for (const char* wrong : {"New", "New:", "New:x", "New:0", "New:1x", "New:-3"}) {
        EXPECT_EQ(ErrorWith({"--press", wrong}),
                  "--press: '" + std::string(wrong) + "' is not TITLE:ITEM");
    }
}

TEST(BatchOptionsTest, DefaultsArePlain) {
    const BatchOptions options = Parse({});
    EXPECT_EQ(options.common.image, "in.png");
    EXPECT_EQ(options.common.filters, std::vector<std::filesystem::path>{"f.8bf"});
    EXPECT_FALSE(options.common.selection);
    EXPECT_EQ(options.times, 1);
    EXPECT_FALSE(options.repeat || options.about || options.json || options.selector);
    EXPECT_TRUE(options.out.empty());
    EXPECT_EQ(options.common.settings.memoryBudget, std::int64_t{256} << 20);
}

TEST(BatchOptionsTest, ReadsEverything) {
    const BatchOptions options = Parse({"--out",
                                        "o.png",
                                        "--selection",
                                        "-5,6,7,8",
                                        "--ellipse",
                                        "2.5",
                                        "--times",
                                        "3",
                                        "--repeat",
                                        "--json",
                                        "--name",
                                        "Blur",
                                        "--memory",
                                        "100000000000",
                                        "--abort-after",
                                        "0",
                                        "--fail-advance",
                                        "3=-36",
                                        "--fail-advance",
                                        "4=17",
                                        "--fail-allocation",
                                        "9",
                                        "--layer",
                                        "protected",
                                        "--foreground",
                                        "1,2,255",
                                        "--background",
                                        "0,0,0",
                                        "--continue-limit",
                                        "7",
                                        "--claim-rect",
                                        "1,2,0,-4",
                                        "--claim-planes",
                                        "-1"});
    const HostSettings& settings = options.common.settings;
    EXPECT_EQ(options.out, "o.png");
    EXPECT_TRUE(AreEqual(*options.common.selection, {6, -5, 8, 7}));
    EXPECT_EQ(options.common.ellipseFeather, 2.5);
    EXPECT_EQ(options.times, 3);
    EXPECT_TRUE(options.repeat && options.json);
    EXPECT_EQ(options.filterName, "Blur");
    EXPECT_EQ(settings.memoryBudget, 100000000000);
    EXPECT_EQ(settings.abortAfterRow, 0);
    EXPECT_EQ(settings.failAdvance, (std::map<int, std::int16_t>{{3, -36}, {4, 17}}));
    EXPECT_EQ(settings.failAllocation, 9);
    EXPECT_EQ(settings.layer, LayerKind::protectedTransparency);
    EXPECT_EQ(settings.foreground.blue, 0xFF00);
    EXPECT_EQ(settings.foreground.green, 0x0200);
    EXPECT_EQ(settings.background.red, 0);
    EXPECT_EQ(settings.continueLimit, 7);
    EXPECT_EQ(settings.claimedFilterRect->right, 0);
    EXPECT_EQ(settings.claimedFilterRect->bottom, -4);
    EXPECT_EQ(settings.claimedPlanes, -1);
}

TEST(BatchOptionsTest, KnowsEveryTraitAndService) {
    Words words;
    for (Trait trait : AllTraits()) {
        words.insert(words.end(), {"--trait", TraitName(trait)});
    }
    for (std::size_t i = 0; i < serviceCount; ++i) {
        words.insert(words.end(), {"--without", ServiceName(static_cast<Service>(i))});
    }
    const HostSettings settings = Parse(words).common.settings;
    for (Trait trait : AllTraits()) {
        EXPECT_TRUE(settings.traits.Has(trait));
    }
    for (std::size_t i = 0; i < serviceCount; ++i) {
        EXPECT_TRUE(settings.without[static_cast<Service>(i)]);
    }
    const HostSettings one = Parse({"--trait", "fpu-27f"}).common.settings;
    EXPECT_TRUE(one.traits.Has(Trait::fpu27f));
    EXPECT_FALSE(one.traits.Has(Trait::fpu37f));
}

TEST(BatchOptionsTest, NamesMayBeAnyUtf8) {
    const BatchOptions options = Parse({"--out", "\xC3\xA9t\xC3\xA9.png"});
    EXPECT_EQ(Utf8Name(options.out), "\xC3\xA9t\xC3\xA9.png");
}

TEST(BatchOptionsTest, HelpAndVersionArePrinted) {
    const std::string help = ParseBatchOptions({"--help"}).text;
    for (const char* word : {"--selection", "--trait", "misalign-stack", "--without",
                             "bufferProcs.spaceProc", "Exit status"}) {
        EXPECT_NE(help.find(word), std::string::npos) << word;
    }
    const std::string version = ParseBatchOptions({"--version"}).text;
    EXPECT_EQ(version.find("zandermolite-run "), 0U);
    EXPECT_EQ(version.back(), '\n');
}

TEST(BatchOptionsTest, SomeTasksNeedLess) {
    EXPECT_EQ(ErrorOf({"--list", "folder"}), "no error");
    EXPECT_EQ(ErrorOf({"--filter", "f.8bf", "--about"}), "no error");
    EXPECT_EQ(ErrorOf({"--filter", "f.8bf", "--selector", "-1"}), "no error");
    EXPECT_EQ(ErrorOf({"--filter", "f.8bf"}), "--image is missing");
    EXPECT_EQ(ErrorOf({"--image", "in.png"}), "--filter is missing");
    EXPECT_EQ(ErrorOf({}), "--filter is missing");
}

TEST(BatchOptionsTest, RefusesInOneLine) {
    const std::string selection = "--selection %: expected LEFT,TOP,RIGHT,BOTTOM in pixels";
    for (const char* text :
         {"1,2,3", "1,2,3,4,5", "1,2,3,", "a,b,c,d", "1,2,3,40000", " 1,2,3,4", "1,2,,4", ","}) {
        std::string expected = selection;
        expected.replace(expected.find('%'), 1, text);
        EXPECT_EQ(ErrorWith({"--selection", text}), expected);
    }
    EXPECT_EQ(ErrorWith({"--selection", "4,0,4,9"}),
              "--selection 4,0,4,9: expected a rectangle that isn't empty");
    EXPECT_EQ(ErrorWith({"--foreground", "0,0,256"}),
              "--foreground 0,0,256: expected RED,GREEN,BLUE from 0 to 255");
    EXPECT_EQ(ErrorWith({"--trait", "none"}),
              "--trait none: expected one of the traits that --help lists");
    EXPECT_EQ(ErrorWith({"--without", "none"}),
              "--without none: expected one of the services that --help lists");
    for (const char* text : {"3", "3=", "=3", "3=0", "-1=5", "3=70000", "a=b"}) {
        EXPECT_EQ(ErrorWith({"--fail-advance", text}),
                  std::string("--fail-advance ") + text +
                      ": expected ROW=CODE, a row from 0 and a 16-bit code other than 0");
    }
    for (const Words& words : {Words{"--times", "0"},
                               {"--times", "many"},
                               {"--memory", "-1"},
                               {"--nonsense"},
                               {"--mask", "m.png", "--ellipse", "3"},
                               {"--about", "--selector", "3"},
                               {"--selector", "40000"},
                               {"--ellipse", "-2"},
                               {"--layer", "none"},
                               {"stray"},
                               {"--filter", "another.8bf"},
                               {"--image", "another.png"},
                               {"--out"}}) {
        const std::string error = ErrorWith(words);
        EXPECT_NE(error, "no error") << words.front();
        EXPECT_EQ(error.find('\n'), std::string::npos) << words.front();
    }
}

TEST(CommonOptionsTest, TheSelectionIsWhatTheOptionsSay) {
    const Picture picture = MakePicture(20, 10, 3);
    EXPECT_EQ(SelectionFrom(Parse({}).common, picture), SelectNothing(picture));
    EXPECT_EQ(SelectionFrom(Parse({"--selection", "1,2,3,4"}).common, picture),
              SelectRectangle({2, 1, 4, 3}));
    EXPECT_EQ(SelectionFrom(Parse({"--ellipse", "4"}).common, picture),
              SelectEllipse({0, 0, 10, 20}, 4));
    EXPECT_EQ(SelectionFrom(Parse({"--selection", "2,2,8,8", "--ellipse", "0"}).common, picture),
              SelectEllipse({2, 2, 8, 8}, 0));
    EXPECT_THROW(SelectionFrom(Parse({"--mask", "missing.png"}).common, picture), PictureError);
    EXPECT_THROW(SelectionFrom(Parse({"--mask", "tests/host/data/grey.png"}).common, picture),
                 SelectionError);
    const CommonOptions fitting =
        Parse({"--mask", "tests/host/data/grey.png", "--selection", "3,4,12,9"}).common;
    const Selection masked = SelectionFrom(fitting, picture);
    EXPECT_EQ(masked.Coverage(3, 4), 0);
    EXPECT_EQ(masked.Coverage(3, 8), 255);
}

}  // namespace host

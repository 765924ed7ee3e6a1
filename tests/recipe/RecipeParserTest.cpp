#include "recipe/language/RecipeParser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "recipe/operations/Operations.h"

using namespace recipe;

namespace {

void RunNothing(Session&, const Arguments&) {}

const std::vector<OperationDefinition>& Table() {
    static const std::vector<OperationDefinition> table = {
        {"begin", TextureUse::begins, {}, RunNothing},
        {"load", TextureUse::begins, {{"file", FileName{}}}, RunNothing},
        {"paint",
         TextureUse::changes,
         {{"number", Whole{-10, 10}, Defaults(3)},
          {"text", Text{}, LeftOut{}},
          {"color", ColorTriple{}, LeftOut{}}},
         RunNothing},
        {"write", TextureUse::keeps, {{"file", FileName{}}, {"number", Whole{0, 5}}}, RunNothing},
    };
    return table;
}

std::vector<Operation> Parse(const std::string& text, const Replacements& replacements = {}) {
    return ParseRecipe(text, Table(), replacements);
}

/// "LINE: message", or empty if the recipe is right.
std::string Error(const std::string& text, const Replacements& replacements = {}) {
    try {
        Parse(text, replacements);
        return {};
    } catch (const RecipeError& error) {
        return std::to_string(error.line) + ": " + error.what();
    }
}

/// The value of `text` in a line with this after "text=".
std::string TextOf(const std::string& value, const Replacements& replacements = {}) {
    return Parse("begin\npaint text=" + value, replacements)[1].arguments.Get<std::string>("text");
}

}  // namespace

TEST(ParseRecipe, KeepsOrderAndLines) {
    const auto operations = Parse("begin\n\n  # a comment\n\tpaint number=-10\npaint # again");
    ASSERT_EQ(operations.size(), 3u);
    EXPECT_EQ(operations[0].definition->name, "begin");
    EXPECT_EQ(operations[0].line, 1);
    EXPECT_EQ(operations[1].definition->name, "paint");
    EXPECT_EQ(operations[1].line, 4);
    EXPECT_EQ(operations[1].arguments.Number<int>("number"), -10);
    EXPECT_EQ(operations[2].line, 5);
}

TEST(ParseRecipe, MayBeEmpty) {
    for (const char* text : {"", "\n", "\n\n\n", "# nothing", " \t ", "\xEF\xBB\xBF", "\r\n"}) {
        EXPECT_TRUE(Parse(text).empty()) << text;
    }
}

TEST(ParseRecipe, TakesAnyLineEndAndAByteOrderMark) {
    EXPECT_EQ(Parse("\xEF\xBB\xBF"
                    "begin\r\npaint number=1\r\n")
                  .size(),
              2u);
    EXPECT_EQ(Parse("begin").size(), 1u);
    EXPECT_EQ(Parse("begin\npaint text=a\r\n")[1].arguments.Get<std::string>("text"), "a");
    EXPECT_EQ(Error("begin\rpaint"), "1: a control character");
}

TEST(ParseRecipe, TakesPairsInAnyOrder) {
    const auto operations = Parse("begin\nwrite  number=4\t file=x.png");
    EXPECT_EQ(operations[1].arguments.Number<int>("number"), 4);
    EXPECT_EQ(operations[1].arguments.Get<std::string>("file"), "x.png");
}

TEST(ParseRecipe, FillsDefaultsIn) {
    const auto operations = Parse("begin\npaint");
    EXPECT_EQ(operations[1].arguments.Number<int>("number"), 3);
    EXPECT_FALSE(operations[1].arguments.Has("text"));
    EXPECT_FALSE(operations[1].arguments.Has("color"));
}

TEST(ParseRecipe, EndsPlainValuesAtBlanksAndComments) {
    EXPECT_EQ(TextOf("a\\b=c "), "a\\b=c");
    EXPECT_EQ(TextOf("a#b"), "a");
    EXPECT_EQ(TextOf("a\tnumber=1"), "a");
    EXPECT_EQ(TextOf("\xC3\xA4"), "\xC3\xA4");
}

TEST(ParseRecipe, TakesQuotedValuesWhole) {
    EXPECT_EQ(TextOf("\"a b\""), "a b");
    EXPECT_EQ(TextOf("\"a#b=c\""), "a#b=c");
    EXPECT_EQ(TextOf("\"say \\\"no\\\"\""), "say \"no\"");
    EXPECT_EQ(TextOf("\"C:\\\\tiles\\\\\""), "C:\\tiles\\");
    EXPECT_EQ(TextOf("\"a\"#comment"), "a");
    EXPECT_EQ(TextOf("\"a\" number=2"), "a");
    EXPECT_EQ(TextOf("\"\tb\""), "\tb");
}

struct BadRecipe {
    std::string text;
    std::string error;
};

class ParseRecipeRefuses : public testing::TestWithParam<BadRecipe> {};

TEST_P(ParseRecipeRefuses, WithLineAndReason) {
    EXPECT_EQ(Error(GetParam().text), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    All, ParseRecipeRefuses,
    testing::Values(
        BadRecipe{"begin\nfrob", "2: unknown operation 'frob'"},
        BadRecipe{"begin\nPaint", "2: unknown operation 'Paint'"},
        BadRecipe{"begin\nnumber=3", "2: unknown operation 'number=3'"},
        BadRecipe{"begin\n\"paint\"", "2: unknown operation '\"paint\"'"},
        BadRecipe{"begin\npaint size=3", "2: 'paint' has no key 'size'"},
        BadRecipe{"begin\npaint Number=3", "2: 'paint' has no key 'Number'"},
        BadRecipe{"begin\nbegin number=3", "2: 'begin' has no key 'number'"},
        BadRecipe{"begin\npaint number=3 number=3", "2: 'number' is given twice"},
        BadRecipe{"begin\nwrite number=3", "2: 'write' needs the key 'file'"},
        BadRecipe{"begin\nwrite file=x", "2: 'write' needs the key 'number'"},
        BadRecipe{"load", "1: 'load' needs the key 'file'"},
        BadRecipe{"begin\npaint number=ten", "2: 'number' must be a whole number, not 'ten'"},
        BadRecipe{"begin\npaint number=11", "2: 'number' must be -10 to 10, not '11'"},
        BadRecipe{"begin\npaint number", "2: 'number' is not of the form key=value"},
        BadRecipe{"begin\npaint number =3", "2: 'number' is not of the form key=value"},
        BadRecipe{"begin\npaint number= 3", "2: 'number' has no value"},
        BadRecipe{"begin\npaint number=", "2: 'number' has no value"},
        BadRecipe{"begin\npaint number=#3", "2: 'number' has no value"},
        BadRecipe{"begin\npaint =3", "2: no key stands before '='"},
        BadRecipe{"begin\npaint text=\"\"", "2: 'text' must not be empty"},
        BadRecipe{"begin\npaint text=\"a", "2: the value of 'text' has no closing quote"},
        BadRecipe{"begin\npaint text=\"a\\\"", "2: the value of 'text' has no closing quote"},
        BadRecipe{"begin\npaint text=\"a\"b", "2: a blank is missing behind the value of 'text'"},
        BadRecipe{"begin\npaint text=\"a\\n\"",
                  "2: inside quotes \\ may stand before \" and \\ only: write \\\\ for \\"},
        BadRecipe{"begin\npaint text=\"a\\",
                  "2: inside quotes \\ may stand before \" and \\ only: write \\\\ for \\"},
        BadRecipe{"begin\npaint text=a\"b\"",
                  "2: the value of 'text' has a quote inside: put all of it in quotes, and \\ "
                  "before that one"},
        BadRecipe{"paint\nbegin", "1: 'paint' stands before the first 'begin' or 'load'"},
        BadRecipe{"# c\n\npaint", "3: 'paint' stands before the first 'begin' or 'load'"},
        BadRecipe{std::string("begin\n\0", 7), "2: a control character"},
        BadRecipe{"begin\n# \x1B[0m", "2: a control character"},
        BadRecipe{"begin\x7F", "1: a control character"},
        BadRecipe{"begin\n\n# \xC3(", "3: the text is not UTF-8"},
        // The first line at fault counts.
        BadRecipe{"begin\npaint number=99\nfrob", "2: 'number' must be -10 to 10, not '99'"}));

TEST(ParseRecipe, CutsLongTextInMessages) {
    EXPECT_EQ(Error("begin\n" + std::string(100000, 'x')),
              "2: unknown operation '" + std::string(60, 'x') + "...'");
}

TEST(Replacement, StandsForItsValueAnywhere) {
    const Replacements set = {{"op", "paint"}, {"key", "number"}, {"n", "7"}, {"_2", "-"}};
    const auto operations = Parse("begin\n${op} ${key}=${n}\n${op} number=${_2}${n}", set);
    EXPECT_EQ(operations[1].arguments.Number<int>("number"), 7);
    EXPECT_EQ(operations[2].arguments.Number<int>("number"), -7);
}

TEST(Replacement, IsTakenAsItIs) {
    const Replacements set = {{"v", "a \"b\" # \\ ${w}"}, {"w", "never"}, {"empty", ""}};
    EXPECT_EQ(TextOf("${v}", set), "a \"b\" # \\ ${w}");
    EXPECT_EQ(TextOf("\"<${v}>\"", set), "<a \"b\" # \\ ${w}>");
    EXPECT_EQ(TextOf("x${empty}y", set), "xy");
    EXPECT_EQ(Error("begin\npaint text=${empty}", set), "2: 'text' must not be empty");
}

TEST(Replacement, IsLookedForInWhatIsReadOnly) {
    EXPECT_EQ(Error("begin # ${unknown}"), "");
    EXPECT_EQ(TextOf("$x"), "$x");
    EXPECT_EQ(TextOf("a$"), "a$");
}

TEST(Replacement, HasToBeSetAndWellFormed) {
    const Replacements set = {{"n", "7"}};
    EXPECT_EQ(Error("begin\n\npaint text=${m}", set), "3: nothing is set for '${m}'");
    EXPECT_EQ(Error("begin\n${N}", set), "2: nothing is set for '${N}'");
    EXPECT_EQ(Error("begin\npaint number=${n", set),
              "2: '${n' does not begin with a name in ${ and }");
    EXPECT_EQ(Error("begin\npaint number=${}", set),
              "2: '${}' does not begin with a name in ${ and }");
    EXPECT_EQ(Error("begin\npaint text=\"${n n}\"", set),
              "2: '${n n}' does not begin with a name in ${ and }");
    EXPECT_EQ(Error("begin\npaint number=8${n}", set), "2: 'number' must be -10 to 10, not '87'");
}

TEST(IsReplacementName, IsAnIdentifier) {
    for (const char* name : {"a", "Z", "_", "a1", "out_dir", "__9"}) {
        EXPECT_TRUE(IsReplacementName(name)) << name;
    }
    for (const char* name : {"", "1a", "a-b", "a b", "a.b", "\xC3\xA4"}) {
        EXPECT_FALSE(IsReplacementName(name)) << name;
    }
}

/// Expects operations, or an error with the number of an existing line.
void ExpectAnswer(const std::string& text) {
    const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
    try {
        for (const Operation& operation : ParseRecipe(text, OperationTable(), {{"n", "7"}})) {
            ASSERT_GE(operation.line, 1);
            ASSERT_LE(operation.line, lines);
        }
    } catch (const RecipeError& error) {
        ASSERT_GE(error.line, 1);
        ASSERT_LE(error.line, lines);
        ASSERT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        ASSERT_NE(std::string(error.what()), "");
    }
}

TEST(ParseRecipe, AnswersToAnyBytes) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 200, '\0');
        for (char& c : text) {
            c = static_cast<char>(random());
        }
        ExpectAnswer(text);
    }
}

TEST(ParseRecipe, AnswersToMutilatedRecipes) {
    const std::string recipe =
        "new width=64 height=${n}\nclock seconds=0x5\ncolors foreground=1,2,3\n"
        "lines angle=-45 color=0,0xFFFF,3 # comment\nsave file=\"a \\\"b\\\\.png\"\n"
        "apply image=i.png selection=1,2,3,4 file=o.png\n";
    const std::string pieces = "\"\\#=,;${}-x0 \t\n\r\xC3\xFF";
    std::mt19937 random(2);
    for (int round = 0; round < 20000; ++round) {
        std::string text = recipe;
        for (auto changes = random() % 4 + 1; changes > 0; --changes) {
            const std::size_t at = random() % text.size();
            const char piece = pieces[random() % pieces.size()];
            switch (random() % 3) {
                case 0:
                    text[at] = piece;
                    break;
                case 1:
                    text.insert(at, 1, piece);
                    break;
                default:
                    text.erase(at, random() % 8);
            }
        }
        ExpectAnswer(text);
    }
}

#include "paint/records/EffectParams.h"
#include "recipe/language/ValueParser.h"

#include <gtest/gtest.h>

#include <string>

using namespace recipe;

namespace {

/// The message that refuses the text; empty if it is taken.
std::string Refusal(const KeyType& type, std::string_view text) {
    try {
        ParseValue(type, text);
        return {};
    } catch (const ValueError& error) {
        return error.what();
    }
}

std::int64_t Integer(const KeyType& type, std::string_view text) {
    return std::get<std::int64_t>(ParseValue(type, text));
}

std::vector<hostapi::Point> Points(std::string_view text) {
    return std::get<std::vector<hostapi::Point>>(ParseValue(Path{1}, text));
}

constexpr std::int64_t highest64 = INT64_MAX;

}  // namespace

TEST(WholeValue, IsDecimalOrHexadecimal) {
    const Whole any{-highest64, highest64};
    EXPECT_EQ(Integer(any, "0"), 0);
    EXPECT_EQ(Integer(any, "-0"), 0);
    EXPECT_EQ(Integer(any, "007"), 7);
    EXPECT_EQ(Integer(any, "-128"), -128);
    EXPECT_EQ(Integer(any, "0x7FFF"), 0x7FFF);
    EXPECT_EQ(Integer(any, "0Xab"), 0xAB);
    EXPECT_EQ(Integer(any, "-0x10"), -16);
    EXPECT_EQ(Integer(any, "9223372036854775807"), highest64);
}

TEST(WholeValue, RefusesAllElse) {
    const Whole any{-highest64, highest64};
    for (const char* text : {"", "-", "+5", "--5", "5-", "abc", "0x", "0xG", "x10", "1.5", "1e3",
                             " 5", "5 ", "5,", "0x-5", "-0x", "\xC2\xB2"}) {
        EXPECT_EQ(Refusal(any, text), "must be a whole number, not '" + std::string(text) + "'");
    }
}

TEST(WholeValue, KeepsToItsRange) {
    const Whole range{-180, 180};
    EXPECT_EQ(Integer(range, "-180"), -180);
    EXPECT_EQ(Integer(range, "180"), 180);
    EXPECT_EQ(Refusal(range, "-181"), "must be -180 to 180, not '-181'");
    EXPECT_EQ(Refusal(range, "0xB5"), "must be -180 to 180, not '0xB5'");
}

TEST(WholeValue, BeyondSixtyFourBitsIsOutOfRange) {
    const Whole range{0, 0xFFFFFFFF};
    EXPECT_EQ(Integer(range, "4294967295"), 0xFFFFFFFF);
    for (const char* text :
         {"4294967296", "9223372036854775808", "18446744073709551616", "0xFFFFFFFFFFFFFFFFF",
          "-99999999999999999999", "99999999999999999999999999999999"}) {
        EXPECT_EQ(Refusal(range, text), "must be 0 to 4294967295, not '" + std::string(text) + "'");
    }
}

TEST(ChoiceValue, IsOneOfTheNumbers) {
    const Choice choices{stackingWords};
    EXPECT_EQ(Integer(choices, "44"), 44);
    EXPECT_EQ(Integer(choices, "0x2C"), 44);
    EXPECT_EQ(Refusal(choices, "2"), "must be 0 (blended), 1 or 44 (stacked), not '2'");
    EXPECT_EQ(Refusal(choices, "-1"), "must be 0 (blended), 1 or 44 (stacked), not '-1'");
    EXPECT_EQ(Refusal(choices, "one"), "must be 0 (blended), 1 or 44 (stacked), not 'one'");
}

TEST(ChoiceValue, IsOneOfTheWords) {
    const Choice choices{stackingWords};
    EXPECT_EQ(Integer(choices, "blended"), 0);
    EXPECT_EQ(Integer(choices, "stacked"), 44);
    for (const char* text : {"", "Stacked", "stacked ", "stack", "44 stacked"}) {
        EXPECT_EQ(Refusal(choices, text),
                  "must be 0 (blended), 1 or 44 (stacked), not '" + std::string(text) + "'");
    }
}

TEST(WordValue, IsOneOfTheWords) {
    const Word words{{"lines", "skew"}};
    EXPECT_EQ(std::get<std::string>(ParseValue(words, "skew")), "skew");
    for (const char* text : {"", "Skew", "skew ", "ske"}) {
        EXPECT_EQ(Refusal(words, text), "must be lines or skew, not '" + std::string(text) + "'");
    }
}

TEST(RealValue, IsANumberWithAPoint) {
    const Real range{-1000.0, 1000.0};
    const auto real = [&](std::string_view text) {
        return std::get<double>(ParseValue(range, text));
    };
    EXPECT_EQ(real("0.5"), 0.5);
    EXPECT_EQ(real("-.25"), -0.25);
    EXPECT_EQ(real("3"), 3.0);
    EXPECT_EQ(real("1e2"), 100.0);
    EXPECT_EQ(real("0x10"), 16.0);
}

TEST(RealValue, RefusesWhatIsNoNumberOrOutside) {
    const Real share{0.0, 1.0};
    for (const char* text : {"", ".", "-", "abc", "nan", "inf", "-inf", "infinity", "0,5", "1.5.2",
                             "1e", "0x1p3", "1e999", "+1"}) {
        EXPECT_EQ(Refusal(share, text), "must be a number, not '" + std::string(text) + "'");
    }
    EXPECT_EQ(Refusal(share, "1.0000001"), "must be 0 to 1, not '1.0000001'");
    EXPECT_EQ(Refusal(share, "-0.1"), "must be 0 to 1, not '-0.1'");
}

TEST(ColorValue, IsThreeComponentsOfSixteenBits) {
    const auto color = std::get<hostapi::RGBColor>(ParseValue(ColorTriple{}, "0,0x7FFF,65535"));
    EXPECT_EQ(color.red, 0);
    EXPECT_EQ(color.green, 0x7FFF);
    EXPECT_EQ(color.blue, 0xFFFF);
    for (const char* text : {"", "1", "1,2", "1,2,3,4", "1,2,", ",2,3", "1,,3", "1,2,3,", "-1,2,3",
                             "1,2,65536", "1, 2,3", "red,green,blue", "#FFFFFF"}) {
        EXPECT_EQ(Refusal(ColorTriple{}, text),
                  "must be a colour, red,green,blue with 0 to 65535 each, not '" +
                      std::string(text) + "'");
    }
}

TEST(CoordinatesValue, AreHorizontalThenVertical) {
    const auto point = std::get<hostapi::Point>(ParseValue(Coordinates{}, "-32768,32767"));
    EXPECT_EQ(point.h, -32768);
    EXPECT_EQ(point.v, 32767);
    for (const char* text : {"", "1", "1,2,3", "1;2", "32768,0", "0,-32769", "a,b"}) {
        EXPECT_EQ(
            Refusal(Coordinates{}, text),
            "must be a point, x,y with -32768 to 32767 each, not '" + std::string(text) + "'");
    }
}

TEST(RectangleValue, IsLeftTopRightBottom) {
    const auto rect = std::get<hostapi::Rect>(ParseValue(Rectangle{}, "-1,2,0x30,4"));
    EXPECT_EQ(rect.left, -1);
    EXPECT_EQ(rect.top, 2);
    EXPECT_EQ(rect.right, 0x30);
    EXPECT_EQ(rect.bottom, 4);
    for (const char* text : {"", "1,2,3", "1,2,3,4,5", "1,2,3,40000", "1,2;3,4"}) {
        EXPECT_EQ(Refusal(Rectangle{}, text),
                  "must be a rectangle, left,top,right,bottom with -32768 to 32767 each, not '" +
                      std::string(text) + "'");
    }
}

TEST(PathValue, IsPointsInOrder) {
    const auto points = Points("1,2;-3,4;0x5,6");
    ASSERT_EQ(points.size(), 3u);
    EXPECT_EQ(points[1].h, -3);
    EXPECT_EQ(points[1].v, 4);
    EXPECT_EQ(points[2].h, 5);
    EXPECT_EQ(points[2].v, 6);
    EXPECT_EQ(Points("7,8").size(), 1u);
    for (const char* text : {"", ";", "1,2;", ";1,2", "1,2;;3,4", "1,2,3", "1;2"}) {
        EXPECT_EQ(Refusal(Path{1}, text),
                  "must be points x,y separated by ;, not '" + std::string(text) + "'");
    }
}

TEST(PathValue, HasItsFewestPoints) {
    EXPECT_EQ(Refusal(Path{2}, "1,2;3,4"), "");
    EXPECT_EQ(Refusal(Path{2}, "1,2"), "must be 2 points or more, not '1,2'");
}

TEST(FileNameValue, HasOneOfTheExtensions) {
    const FileName textures{{".png", ".tmp"}};
    const auto name = [&](std::string_view text) {
        return std::get<std::string>(ParseValue(textures, text));
    };
    EXPECT_EQ(name("a.png"), "a.png");
    EXPECT_EQ(name("C:\\My Folder\\A.TMP"), "C:\\My Folder\\A.TMP");
    EXPECT_EQ(name("../x.y/a.b.Png"), "../x.y/a.b.Png");
    for (const char* text : {"a.jpg", "a", "a.png/b", "a.png\\b", ".png", "png", "a.pngx", "a."}) {
        EXPECT_EQ(Refusal(textures, text),
                  "must be a .png or .tmp file, not '" + std::string(text) + "'");
    }
    EXPECT_EQ(Refusal(textures, ""), "must not be empty");
}

TEST(FileNameValue, WithoutExtensionsIsAnyName) {
    EXPECT_EQ(Refusal(FileName{}, "photograph"), "");
    EXPECT_EQ(Refusal(FileName{}, ""), "must not be empty");
}

TEST(TextValue, IsAnythingButEmpty) {
    EXPECT_EQ(std::get<std::string>(ParseValue(Text{}, "Last Used")), "Last Used");
    EXPECT_EQ(Refusal(Text{}, ""), "must not be empty");
}

TEST(LowerCaseExtension, LooksAtTheFilesNameOnly) {
    EXPECT_EQ(LowerCaseExtension("a/B.PNG"), ".png");
    EXPECT_EQ(LowerCaseExtension("a.png/b"), "");
    EXPECT_EQ(LowerCaseExtension("a/.png"), "");
    EXPECT_EQ(LowerCaseExtension(""), "");
}

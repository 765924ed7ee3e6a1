#include "framework/dialog/DialogResource.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// An extended dialog template, put together word by word.
class TemplateBytes {
  public:
    TemplateBytes(int controls, bool hasFont) {
        Word(1).Word(0xFFFF).Long(0).Long(0).Long(hasFont ? 0x40 : 0).Word(controls);
        Word(0).Word(0).Word(559).Word(312).Word(0).Word(0).Text("A dialog");
        if (hasFont) {
            Word(8).Word(400).Word(0x0100).Text("MS Shell Dlg");
        }
    }

    TemplateBytes& Word(int word) {
        bytes.push_back(static_cast<std::uint8_t>(word));
        bytes.push_back(static_cast<std::uint8_t>(word >> 8));
        return *this;
    }
    TemplateBytes& Long(int number) { return Word(number).Word(number >> 16); }
    TemplateBytes& Text(const std::string& text) {
        for (const char character : text) {
            Word(character);
        }
        return Word(0);
    }
    /// Up to the class; a title and the size of further data follow.
    TemplateBytes& Control(int id) {
        while (bytes.size() % 4 != 0) {
            bytes.push_back(0xEE);
        }
        return Long(0).Long(0).Long(0x5000000E).Long(0).Long(0).Long(id);
    }
    TemplateBytes& ClassNumber() { return Word(0xFFFF).Word(0x0082); }
    TemplateBytes& Picture(int id) { return Word(0xFFFF).Word(id).Word(0); }

    std::vector<std::uint8_t> bytes;
};

std::vector<std::pair<int, int>> Pictures(const std::vector<std::uint8_t>& bytes) {
    std::vector<std::pair<int, int>> pairs;
    for (const TemplatePicture& picture : PicturesOfTemplate(bytes.data(), bytes.size())) {
        pairs.emplace_back(picture.control, picture.picture);
    }
    return pairs;
}

std::vector<std::uint8_t> Mixed(bool hasFont) {
    TemplateBytes made(5, hasFont);
    made.Control(1).ClassNumber().Text("OK").Word(0);
    made.Control(28).ClassNumber().Picture(16006);
    // Data for its creation, of an odd size, after a class with a name.
    made.Control(3).Text("tLinearSlider").Text("").Word(3);
    made.bytes.insert(made.bytes.end(), {1, 2, 3});
    made.Control(34).ClassNumber().Picture(16007);
    made.Control(0x10005).ClassNumber().Text("odd").Word(0);
    return made.bytes;
}

using Pairs = std::vector<std::pair<int, int>>;

TEST(DialogResourceTest, ControlsWithANumberForATextAreFound) {
    EXPECT_EQ(Pictures(Mixed(true)), (Pairs{{28, 16006}, {34, 16007}}));
    EXPECT_EQ(Pictures(Mixed(false)), (Pairs{{28, 16006}, {34, 16007}}));
}

TEST(DialogResourceTest, NothingAfterTheEndIsRead) {
    const std::vector<std::uint8_t> whole = Mixed(true);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        // A block of that size alone, so that the sanitizers see what is read.
        const std::vector<std::uint8_t> cut(whole.begin(),
                                            whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_LE(Pictures(cut).size(), 2u) << size;
    }
    EXPECT_TRUE(PicturesOfTemplate(nullptr, 0).empty());
}

TEST(DialogResourceTest, AnotherKindOfTemplateSaysNothing) {
    std::vector<std::uint8_t> bytes = Mixed(true);
    bytes[2] = 0;
    EXPECT_TRUE(Pictures(bytes).empty());
    EXPECT_EQ(SizeOfTemplate(bytes.data(), bytes.size()).width, 0);
}

TEST(DialogResourceTest, ACountBeyondTheControlsEnds) {
    TemplateBytes made(60000, true);
    made.Control(7).ClassNumber().Picture(16011);
    EXPECT_EQ(Pictures(made.bytes), (Pairs{{7, 16011}}));
}

TEST(DialogResourceTest, TheClientAreaHasItsSize) {
    const std::vector<std::uint8_t> bytes = Mixed(true);
    EXPECT_EQ(SizeOfTemplate(bytes.data(), bytes.size()).width, 559);
    EXPECT_EQ(SizeOfTemplate(bytes.data(), bytes.size()).height, 312);
    EXPECT_EQ(SizeOfTemplate(bytes.data(), 24).height, 0) << "cut off";
    EXPECT_EQ(SizeOfTemplate(nullptr, 0).width, 0);
}

}  // namespace

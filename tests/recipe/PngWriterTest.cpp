#include "recipe/formats/PngWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "host/picture/Picture.h"
#include "tests/recipe/TemporaryFolder.h"

using namespace recipe;

namespace {

std::vector<std::uint8_t> NoisyRow(int width, int y) {
    std::vector<std::uint8_t> row;
    std::uint32_t state = static_cast<std::uint32_t>(y) + 1;
    for (int i = 0; i < width * 3; ++i) {
        state = state * 1664525 + 1013904223;
        row.push_back(static_cast<std::uint8_t>(state >> 24));
    }
    return row;
}

void WriteNoise(const std::filesystem::path& target, int width, int height) {
    OutputFile file(target);
    PngWriter png(file, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
    for (int y = 0; y < height; ++y) {
        png.WriteRow(NoisyRow(width, y));
    }
    png.Finish();
    file.Commit();
}

struct Size {
    int width;
    int height;
};

class PngWriterReadBack : public testing::TestWithParam<Size> {};

}  // namespace

TEST_P(PngWriterReadBack, IsTheSamePicture) {
    const auto [width, height] = GetParam();
    const TemporaryFolder folder;
    WriteNoise(folder.Path() / "noise.png", width, height);
    const host::Picture picture = host::LoadPicture(folder.Path() / "noise.png");
    ASSERT_EQ(picture.width, width);
    ASSERT_EQ(picture.height, height);
    ASSERT_EQ(picture.planes, 3);
    for (int y = 0; y < height; ++y) {
        const std::vector<std::uint8_t> row(picture.Row(y), picture.Row(y) + picture.RowBytes());
        ASSERT_EQ(row, NoisyRow(width, y)) << "row " << y;
    }
}

// From less than one chunk of compressed data to many.
INSTANTIATE_TEST_SUITE_P(Sizes, PngWriterReadBack,
                         testing::Values(Size{1, 1}, Size{1, 500}, Size{500, 1}, Size{7, 5},
                                         Size{147, 148}, Size{512, 512}));

TEST(PngWriter, WritesTheHeaderOfTheFormat) {
    const TemporaryFolder folder;
    WriteNoise(folder.Path() / "a.png", 258, 3);
    const std::string bytes = ReadFile(folder.Path() / "a.png");
    const std::string header("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\1\2\0\0\0\3\10\2\0\0\0", 29);
    EXPECT_EQ(bytes.substr(0, header.size()), header);
    const std::string end("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
    EXPECT_TRUE(bytes.ends_with(end));
}

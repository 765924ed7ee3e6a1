#include "host/picture/PngFile.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "host/picture/Picture.h"

using namespace host;

namespace {

using Bytes = std::vector<std::uint8_t>;

std::vector<std::uint8_t> NoisyRow(std::uint32_t width, std::uint32_t y) {
    std::vector<std::uint8_t> row;
    std::uint32_t state = y + 1;
    for (std::uint32_t i = 0; i < width * 3; ++i) {
        state = state * 1664525 + 1013904223;
        row.push_back(static_cast<std::uint8_t>(state >> 24));
    }
    return row;
}

Bytes Noise(const PngWriter::Format& format, const Resolution* resolution = nullptr) {
    Bytes bytes;
    PngWriter png(format, resolution, [&](std::span<const std::uint8_t> part) {
        bytes.insert(bytes.end(), part.begin(), part.end());
    });
    for (std::uint32_t y = 0; y < format.height; ++y) {
        png.WriteRow(NoisyRow(format.width, y));
    }
    png.Finish();
    return bytes;
}

void ExpectReadBack(const PngWriter::Format& format) {
    const Picture picture = DecodePicture(Noise(format), "noise");
    ASSERT_EQ(picture.width, static_cast<int>(format.width));
    ASSERT_EQ(picture.height, static_cast<int>(format.height));
    ASSERT_EQ(picture.planes, 3);
    for (int y = 0; y < picture.height; ++y) {
        const Bytes row(picture.Row(y), picture.Row(y) + picture.RowBytes());
        ASSERT_EQ(row, NoisyRow(format.width, static_cast<std::uint32_t>(y))) << "row " << y;
    }
}

struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

class PngReadBack : public testing::TestWithParam<Size> {};

}  // namespace

TEST_P(PngReadBack, IsTheSamePicture) {
    const auto [width, height] = GetParam();
    ExpectReadBack({.width = width, .height = height});
    ExpectReadBack({.width = width, .height = height, .filtersRows = true});
}

// From less than one chunk of compressed data to many.
INSTANTIATE_TEST_SUITE_P(Sizes, PngReadBack,
                         testing::Values(Size{1, 1}, Size{1, 500}, Size{500, 1}, Size{7, 5},
                                         Size{147, 148}, Size{512, 512}));

TEST(PngFile, WritesTheHeaderOfTheFormat) {
    const Bytes bytes = Noise({.width = 258, .height = 3});
    const std::string text(bytes.begin(), bytes.end());
    const std::string header("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\1\2\0\0\0\3\10\2\0\0\0", 29);
    EXPECT_EQ(text.substr(0, header.size()), header);
    const std::string end("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
    EXPECT_TRUE(text.ends_with(end));
    EXPECT_EQ(text.find("pHYs"), std::string::npos);
}

TEST(PngFile, FiltersCompressSlopesBetterAndAreOffOtherwise) {
    auto sizeOf = [](bool filtersRows) {
        std::size_t size = 0;
        PngWriter png({.width = 256, .height = 64, .filtersRows = filtersRows}, nullptr,
                      [&](std::span<const std::uint8_t> part) { size += part.size(); });
        for (int y = 0; y < 64; ++y) {
            Bytes row;
            for (int x = 0; x < 256; ++x) {
                row.insert(row.end(), 3, static_cast<std::uint8_t>(x * x / 16 + y * y));
            }
            png.WriteRow(row);
        }
        png.Finish();
        return size;
    };
    EXPECT_LT(sizeOf(true) * 2, sizeOf(false));
}

TEST(PngFile, TheResolutionComesBack) {
    const Resolution resolution{300, 150};
    const Resolution read = ReadPngResolution(Noise({.width = 2, .height = 1}, &resolution));
    EXPECT_NEAR(read.horizontal, 300, 0.02);
    EXPECT_NEAR(read.vertical, 150, 0.02);
    EXPECT_EQ(ReadPngResolution(Noise({.width = 2, .height = 1})).horizontal, 0);
}

TEST(PngFile, ADamagedFileHasNoResolution) {
    const Resolution resolution{300, 150};
    const Bytes whole = Noise({.width = 2, .height = 1}, &resolution);
    for (const std::size_t size : {0u, 4u, 8u, 20u, 33u, 50u}) {
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(ReadPngResolution(part).horizontal, 0) << size;
    }
}

TEST(PngFile, WhatTheSinkThrowsComesOut) {
    struct DiskFull : std::runtime_error {
        using std::runtime_error::runtime_error;
    };
    int calls = 0;
    auto write = [&](int callsThatWork) {
        calls = 0;
        PngWriter png({.width = 64, .height = 64}, nullptr, [&](std::span<const std::uint8_t>) {
            if (++calls > callsThatWork) {
                throw DiskFull("full");
            }
        });
        for (std::uint32_t y = 0; y < 64; ++y) {
            png.WriteRow(NoisyRow(64, y));
        }
        png.Finish();
    };
    write(1000);
    const int all = calls;
    for (int working = 0; working < all; ++working) {
        EXPECT_THROW(write(working), DiskFull) << working;
    }
}

TEST(PngFile, RefusesWhatPngCannotHold) {
    EXPECT_THROW(Noise({.width = 0, .height = 1}), PictureError);
    EXPECT_THROW(Noise({.width = 0x80000000, .height = 0}), PictureError);
}

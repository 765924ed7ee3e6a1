#include "host/picture/Picture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>

#include "tests/host/Noise.h"

namespace host {

namespace {

namespace fs = std::filesystem;

const fs::path data = "tests/host/data";

std::vector<std::uint8_t> FileBytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> AllFiles() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(data)) {
        files.push_back(entry.path());
    }
    return files;
}

std::string ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const PictureError& error) {
        return error.what();
    }
    return "no error";
}

/// A folder that is gone after the test.
class PictureFileTest : public testing::Test {
  protected:
    PictureFileTest() : folder(fs::path(testing::TempDir()) / "picture-file-test") {
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    ~PictureFileTest() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    std::size_t FilesInFolder() const {
        const fs::directory_iterator all(folder);
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    const fs::path folder;
};

struct Expectation {
    const char* file;
    int width;
    int height;
    int planes;
    double horizontal;
    double vertical;
};

}  // namespace

TEST(PictureTest, AMadePictureIsWhole) {
    const Picture picture = MakePicture(3, 2, 4, 9);
    EXPECT_EQ(picture.pixels, std::vector<std::uint8_t>(24, 9));
    EXPECT_EQ(picture.RowBytes(), 12U);
    EXPECT_EQ(picture.Pixel(2, 1), picture.pixels.data() + 20);
    EXPECT_EQ(picture.horizontalResolution, 72.0);
}

TEST(PictureTest, SidesAndPlanesHaveLimits) {
    EXPECT_THROW(MakePicture(0, 1, 3), PictureError);
    EXPECT_THROW(MakePicture(1, -1, 3), PictureError);
    EXPECT_THROW(MakePicture(30001, 1, 3), PictureError);
    EXPECT_THROW(MakePicture(1, 1, 2), PictureError);
    EXPECT_EQ(MakePicture(30000, 1, 3).width, 30000);
}

TEST(PictureTest, ReadsEveryKindOfFile) {
    const Expectation expectations[] = {{"rgb-300.png", 12, 7, 3, 300, 300},
                                        {"grey.png", 9, 5, 3, 72, 72},
                                        {"grey-alpha.png", 4, 3, 4, 72, 72},
                                        {"rgba.png", 6, 4, 4, 72, 72},
                                        {"deep.png", 5, 3, 3, 72, 72},
                                        {"palette.png", 8, 8, 3, 72, 72},
                                        {"density-150x100.jpg", 16, 11, 3, 150, 100},
                                        {"centimetres.jpg", 16, 11, 3, 254, 254},
                                        {"grey.jpg", 16, 11, 3, 72, 72},
                                        {"progressive.jpg", 33, 20, 3, 72, 72},
                                        {"cmyk.jpg", 16, 11, 3, 72, 72},
                                        {"rgb-144.bmp", 7, 5, 3, 144, 144}};
    EXPECT_EQ(AllFiles().size(), std::size(expectations));
    for (const Expectation& expected : expectations) {
        SCOPED_TRACE(expected.file);
        const Picture picture = LoadPicture(data / expected.file);
        EXPECT_EQ(picture.width, expected.width);
        EXPECT_EQ(picture.height, expected.height);
        EXPECT_EQ(picture.planes, expected.planes);
        EXPECT_NEAR(picture.horizontalResolution, expected.horizontal, 0.02);
        EXPECT_NEAR(picture.verticalResolution, expected.vertical, 0.02);
        EXPECT_EQ(picture.pixels.size(),
                  picture.RowBytes() * static_cast<std::size_t>(picture.height));
    }
}

TEST(PictureTest, ReadsThePixelsAsTheyAre) {
    // From pure red at the top to pure blue at the bottom.
    for (const char* file : {"rgb-300.png", "rgb-144.bmp"}) {
        const Picture picture = LoadPicture(data / file);
        const std::uint8_t* first = picture.Pixel(0, 0);
        const std::uint8_t* last = picture.Pixel(picture.width - 1, picture.height - 1);
        EXPECT_EQ(std::vector<int>(first, first + 3), (std::vector<int>{255, 0, 0})) << file;
        EXPECT_EQ(std::vector<int>(last, last + 3), (std::vector<int>{0, 0, 255})) << file;
    }
    const Picture transparent = LoadPicture(data / "rgba.png");
    const std::uint8_t* pixel = transparent.Pixel(0, 0);
    EXPECT_EQ(std::vector<int>(pixel, pixel + 3), (std::vector<int>{200, 100, 50}));
    EXPECT_NEAR(pixel[3], 128, 1);
    EXPECT_EQ(transparent.Pixel(1, 1)[3], 255);
    const Picture grey = LoadPicture(data / "grey-alpha.png");
    pixel = grey.Pixel(1, 2);
    EXPECT_EQ(std::vector<int>(pixel, pixel + 4), (std::vector<int>{60, 60, 60, 64}));
    EXPECT_EQ(grey.Pixel(0, 0)[3], 255);
}

TEST(PictureTest, PngKeepsPixelsAndResolution) {
    for (int planes : {3, 4}) {
        Picture picture = Noise(17, 5, planes);
        picture.horizontalResolution = 300;
        picture.verticalResolution = 96.5;
        const Picture read = DecodePicture(EncodePng(picture), "encoded");
        EXPECT_EQ(read.pixels, picture.pixels);
        EXPECT_EQ(read.planes, planes);
        EXPECT_NEAR(read.horizontalResolution, 300, 0.02);
        EXPECT_NEAR(read.verticalResolution, 96.5, 0.02);
    }
}

TEST(PictureTest, RefusesPixelsThatDontFitTheSize) {
    Picture picture = MakePicture(4, 4, 3);
    picture.pixels.pop_back();
    EXPECT_THROW(EncodePng(picture), PictureError);
    EXPECT_THROW(EncodePng(Picture{}), PictureError);
}

TEST(PictureTest, ErrorsNameTheFileInOneLine) {
    EXPECT_EQ(ErrorOf([] { LoadPicture("no/such.png"); }), "no/such.png: cannot be opened");
    EXPECT_EQ(ErrorOf([] { LoadPicture("tests/host"); }), "tests/host: is a folder");
    EXPECT_EQ(ErrorOf([] { DecodePicture({}, "empty"); }), "empty: not a PNG, JPEG or BMP picture");
    EXPECT_EQ(ErrorOf([] { DecodePicture(FileBytes("tests/host/PictureTest.cpp"), "text"); }),
              "text: not a PNG, JPEG or BMP picture");
}

TEST(PictureTest, RefusesSidesBeyondTheInterface) {
    std::vector<std::uint8_t> bytes = FileBytes(data / "rgb-300.png");
    // The width is the first number of the header: 40000.
    bytes[18] = 0x9C;
    bytes[19] = 0x40;
    EXPECT_EQ(ErrorOf([&] { DecodePicture(bytes, "wide"); }),
              "wide: 40000 by 7 pixels; each side must have 1 to 30000");
}

TEST(PictureTest, AFileThatBreaksOffIsDamaged) {
    for (const fs::path& file : AllFiles()) {
        SCOPED_TRACE(file);
        const std::vector<std::uint8_t> whole = FileBytes(file);
        const std::vector<std::uint8_t> half(
            whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() * 3 / 4));
        EXPECT_THROW(DecodePicture(half, "half"), PictureError);
    }
}

TEST(PictureTest, NoDamageDoesMoreThanAnError) {
    std::mt19937 random(1);
    int errors = 0, pictures = 0;
    for (const fs::path& file : AllFiles()) {
        const std::vector<std::uint8_t> whole = FileBytes(file);
        for (int round = 0; round < 150; ++round) {
            std::vector<std::uint8_t> damaged = whole;
            for (int change = 0; change < 4; ++change) {
                damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
            }
            if (round % 3 == 0) {
                damaged.resize(random() % damaged.size());
            }
            try {
                const Picture picture = DecodePicture(damaged, "damaged");
                EXPECT_EQ(picture.pixels.size(),
                          picture.RowBytes() * static_cast<std::size_t>(picture.height));
                ++pictures;
            } catch (const PictureError&) {
                ++errors;
            }
        }
    }
    EXPECT_GT(errors, 0);
    EXPECT_GT(pictures, 0);
}

TEST(PictureTest, ResolutionsThatMakeNoSenseAreIgnored) {
    std::vector<std::uint8_t> bytes = FileBytes(data / "density-150x100.jpg");
    bytes[14] = bytes[15] = 0;  // Nothing per inch.
    EXPECT_EQ(DecodePicture(bytes, "zero").horizontalResolution, 72.0);
    EXPECT_EQ(DecodePicture(bytes, "zero").verticalResolution, 72.0);
    bytes = FileBytes(data / "density-150x100.jpg");
    bytes[13] = 0;  // Only the pixels' proportions.
    EXPECT_EQ(DecodePicture(bytes, "proportions").horizontalResolution, 72.0);
}

TEST_F(PictureFileTest, SavesUnderAnyName) {
    const fs::path file = folder / PathFromUtf8("\xC3\xBC\xE4\xB8\xAD.png");
    const Picture picture = Noise(4, 4, 3);
    SavePicture(picture, file);
    EXPECT_EQ(LoadPicture(file).pixels, picture.pixels);
    EXPECT_EQ(FilesInFolder(), 1U);
    EXPECT_EQ(PathFromUtf8(Utf8Name(file)), file);
}

TEST_F(PictureFileTest, ReplacesAFile) {
    const fs::path file = folder / "a.png";
    SavePicture(Noise(40, 40, 4), file);
    const Picture picture = Noise(2, 2, 3);
    SavePicture(picture, file);
    EXPECT_EQ(LoadPicture(file).pixels, picture.pixels);
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(PictureFileTest, TouchesNoOtherFile) {
    const fs::path file = folder / "a.png";
    std::ofstream(folder / "a.png.partial0") << "somebody's";
    SavePicture(Noise(2, 2, 3), file);
    EXPECT_EQ(FilesInFolder(), 2U);
    EXPECT_EQ(FileBytes(folder / "a.png.partial0").size(), 10U);
}

TEST_F(PictureFileTest, LeavesNothingBehindWhereItCannotWrite) {
    const Picture picture = Noise(2, 2, 3);
    const fs::path missing = folder / "missing" / "a.png";
    EXPECT_EQ(ErrorOf([&] { SavePicture(picture, missing); }),
              Utf8Name(missing) + ": cannot be written");
    fs::create_directory(folder / "taken");
    std::ofstream(folder / "taken" / "something") << "x";
    EXPECT_THROW(SavePicture(picture, folder / "taken"), PictureError);
    EXPECT_EQ(FilesInFolder(), 1U);
}

}  // namespace host

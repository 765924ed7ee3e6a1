// Files of every kind that other programs write, and damaged ones.
#include "files/JPEGDecoder.h"

#include <cstdlib>
#include <fstream>
#include <string_view>

#include "files/TextureFile.h"
#include "host/picture/Picture.h"
#include "plain/PlainJpeg.h"
#include "tests/files/ImageTest.h"
#include "tests/support/MemoryFile.h"

using namespace std::string_view_literals;

namespace {

/// A line of tests/files/jpeg/pictures.txt.
struct Expected {
    std::string name;
    int width;
    int height;
    /// The FNV-1a sum of the pixels' red, green and blue.
    std::uint32_t sum;
};

std::vector<Expected> ExpectedPictures() {
    std::vector<Expected> pictures;
    std::ifstream lines("tests/files/jpeg/pictures.txt");
    Expected picture;
    while (lines >> picture.name >> std::dec >> picture.width >> picture.height >> std::hex >>
           picture.sum) {
        pictures.push_back(picture);
    }
    return pictures;
}

bool IsRefusedForItsSize(const Expected& picture) {
    return picture.width > 512 || picture.height > 512;
}

std::string ColorBytes(const PicClass& picture) {
    std::string bytes;
    for (std::int32_t i = 0; i < picture.RowBytes() * picture.grY; ++i) {
        if (i % bytesPerPixel != 3) {
            bytes += static_cast<char>(picture.Base()[i]);
        }
    }
    return bytes;
}

std::uint32_t SumOf(const std::string& bytes) {
    std::uint32_t sum = 2166136261u;
    for (const char byte : bytes) {
        sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619u;
    }
    return sum;
}

/// The picture that the library alone reads from a stream; nothing if it fails or the picture is no
/// texture.
std::optional<PlainPicture> PlainTexture(const std::string& jpeg) {
    std::optional<PlainPicture> picture = DecodeJpegPlainly(jpeg, 512);
    if (!picture || (picture->components != 1 && picture->components != 3)) {
        return std::nullopt;
    }
    if (picture->components == 1) {
        std::string colors;
        for (const char grey : picture->bytes) {
            colors.append(3, grey);
        }
        picture->bytes = colors;
        picture->components = 3;
    }
    return picture;
}

class JPEGDecoderTest : public ImageTest {
  protected:
    JPEGDecoderTest() { file.SetPath("a.jpg"); }

    std::unique_ptr<PaintClass> Load(const std::string& bytes) {
        MemoryFile::Contents() = bytes;
        auto picture = ReadTextureImage(file);
        EXPECT_EQ(MemoryFile::OpenCount(), 0);
        return picture;
    }
    /// The bytes give the same texture, or none, as the library alone makes of them.
    void ExpectPlainTexture(const std::string& bytes) {
        const auto plain = PlainTexture(bytes);
        const auto picture = Load(bytes);
        ASSERT_EQ(picture != nullptr, plain.has_value());
        if (picture) {
            EXPECT_EQ(picture->grX, plain->width);
            EXPECT_EQ(picture->grY, plain->height);
            EXPECT_EQ(ColorBytes(*picture), plain->bytes);
        }
    }

    const MemoryFile disk;
};

TEST_F(JPEGDecoderTest, ReadsWhatOthersWriteAsOthersReadIt) {
    const std::vector<Expected> pictures = ExpectedPictures();
    ASSERT_GE(pictures.size(), 40u);
    for (const Expected& expected : pictures) {
        SCOPED_TRACE(expected.name);
        const auto picture = Load(Fixture(expected.name));
        ASSERT_EQ(picture == nullptr, IsRefusedForItsSize(expected));
        if (picture) {
            EXPECT_EQ(picture->grX, expected.width);
            EXPECT_EQ(picture->grY, expected.height);
            EXPECT_EQ(SumOf(ColorBytes(*picture)), expected.sum);
            for (std::int32_t i = 3; i < picture->RowBytes() * picture->grY; i += bytesPerPixel) {
                ASSERT_EQ(picture->Base()[i], 255) << i;
            }
        }
    }
}

TEST_F(JPEGDecoderTest, ReadsThemAlmostAsAnUnrelatedDecoderDoes) {
    int compared = 0;
    for (const Expected& expected : ExpectedPictures()) {
        SCOPED_TRACE(expected.name);
        const std::string bytes = Fixture(expected.name);
        // The other library has no arithmetic decoder, and interpolates the colours of pictures
        // narrower than its blocks in another way.
        if (IsRefusedForItsSize(expected) || expected.width < 3 ||
            expected.name.find("arithmetic") != std::string::npos) {
            continue;
        }
        const host::Picture other =
            host::DecodePicture(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), "fixture");
        const std::string colors = ColorBytes(*Load(bytes));
        ASSERT_EQ(other.pixels.size(), colors.size());
        double difference = 0.0;
        for (std::size_t i = 0; i < colors.size(); ++i) {
            difference += std::abs(static_cast<unsigned char>(colors[i]) - other.pixels[i]);
        }
        EXPECT_LT(difference / static_cast<double>(colors.size()), 2.5);
        ++compared;
    }
    EXPECT_GE(compared, 36);
}

TEST_F(JPEGDecoderTest, FourComponentsAndLargeSidesAreRefused) {
    for (const char* const name :
         {"cmyk.jpg", "cmyk-progressive.jpg", "size-513x10.jpg", "size-10x513.jpg"}) {
        EXPECT_EQ(Load(Fixture(name)), nullptr) << name;
    }
    // 40000 does not fit in 16 bits with a sign.
    EXPECT_EQ(Load(Fixture("size-40000x1.jpg")), nullptr);
    ImageInfo info;
    EXPECT_EQ(file.ReadImageInfo(&info), 0);
    EXPECT_EQ(info.Width(), 40000 - 65536);
    EXPECT_TRUE(Log().faults.empty());
}

// Where a file's picture begins.

TEST_F(JPEGDecoderTest, APrefixNeedsAJFIFMark) {
    const std::string prefixed = Fixture("prefix-1000.jpg");
    const auto picture = Load(prefixed);
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(ColorBytes(*picture), DecodeJpegPlainly(prefixed.substr(1000))->bytes);
    EXPECT_EQ(Load(Fixture("prefix-1000-bare.jpg")), nullptr);
    ImageInfo info;
    EXPECT_EQ(file.ReadImageInfo(&info), 17401);
}

TEST_F(JPEGDecoderTest, PrefixesEndBelow16384Bytes) {
    const std::string jpeg = Fixture("baseline.jpg");
    for (const std::size_t length : {1u, 9u, 4095u, 4096u, 16383u}) {
        EXPECT_NE(Load(std::string(length, 'p') + jpeg), nullptr) << length;
    }
    EXPECT_EQ(Load(std::string(16384, 'p') + jpeg), nullptr);
}

TEST_F(JPEGDecoderTest, WhatOnlyLooksLikeAPictureInAPrefixIsPassedOver) {
    const std::string jpeg = Fixture("baseline.jpg");
    for (const std::string_view decoy :
         {"x\xFF\xD8\xFF\xE1\0\x10JFIF"sv, "x\xFF\xD8\xFF\xE0\0\x10JFIX"sv, "x\xFF\xD8\xFF"sv,
          "x\xFF\xD8\xFE\xE0\0\x10JFIF"sv, "x\xFF\xD9\xFF\xE0\0\x10JFIF"sv}) {
        EXPECT_NE(Load(std::string(decoy) + jpeg), nullptr);
    }
    // At the very start three bytes are enough, whatever follows.
    EXPECT_EQ(Load("\xFF\xD8\xFFno picture" + jpeg), nullptr);
    EXPECT_NE(Load(Fixture("exif-alone.jpg")), nullptr);
    EXPECT_NE(Load(Fixture("bare.jpg")), nullptr);
}

TEST_F(JPEGDecoderTest, TheMarkMayStandAtTheEndOfTheFile) {
    const std::string start = Fixture("baseline.jpg");
    for (std::size_t length = 0; length < 12; ++length) {
        EXPECT_EQ(Load("p" + start.substr(0, length)), nullptr) << length;
        EXPECT_EQ(Load(start.substr(0, length)), nullptr) << length;
    }
}

// Damage.

TEST_F(JPEGDecoderTest, WhatIsNoPictureIsStatus17401) {
    for (const std::string& bytes :
         {std::string(), std::string(1, '\xFF'), std::string("no picture"),
          std::string(20000, '\0'), std::string(20000, '\xFF')}) {
        EXPECT_EQ(Load(bytes), nullptr);
        ImageInfo info;
        EXPECT_EQ(file.ReadImageInfo(&info), 17401);
    }
}

TEST_F(JPEGDecoderTest, TruncatedFilesAreReadAsFarAsTheyGo) {
    for (const char* const name : {"size-17x33.jpg", "progressive.jpg", "grey.jpg"}) {
        const std::string whole = Fixture(name);
        int loaded = 0;
        for (std::size_t length = 0; length < whole.size(); ++length) {
            SCOPED_TRACE(std::string(name) + " of length " + std::to_string(length));
            const std::string bytes = whole.substr(0, length);
            ExpectPlainTexture(bytes);
            loaded += DecodeJpegPlainly(bytes) ? 1 : 0;
        }
        EXPECT_GT(loaded, 50) << name;
    }
}

TEST_F(JPEGDecoderTest, WarningsAreKeptFromTheUser) {
    const std::string whole = Fixture("size-17x33.jpg");
    testing::internal::CaptureStderr();
    EXPECT_NE(Load(whole.substr(0, whole.size() - 100)), nullptr);
    EXPECT_EQ(Load("no picture"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

/// The library's own variable, which would have it keep pictures in files.
class MemoryVariable {
  public:
    explicit MemoryVariable(const char* value) { Set(value); }
    MemoryVariable(const MemoryVariable&) = delete;
    MemoryVariable& operator=(const MemoryVariable&) = delete;
    ~MemoryVariable() { Set(""); }

  private:
    static void Set(const char* value) {
#ifdef _WIN32
        _putenv_s("JPEGMEM", value);
#else
        setenv("JPEGMEM", value, 1);
#endif
    }
};

TEST_F(JPEGDecoderTest, TheEnvironmentLimitsNoMemory) {
    const MemoryVariable variable("1");
    ExpectPlainTexture(Fixture("baseline.jpg"));
    EXPECT_NE(Load(Fixture("size-512x512-progressive.jpg")), nullptr);
}

TEST_F(JPEGDecoderTest, MissingRowsAreGrey) {
    const std::string whole = Fixture("size-512x512.jpg");
    const auto complete = Load(whole);
    const auto picture = Load(whole.substr(0, whole.size() / 2));
    ASSERT_NE(complete, nullptr);
    ASSERT_NE(picture, nullptr);
    constexpr Pixel grey = 0xFF808080;
    const auto isGrey = [&](short y) {
        for (short x = 0; x < 512; ++x) {
            if (picture->GetPixel(x, y) != grey) {
                return false;
            }
        }
        return true;
    };
    short rows = 0;
    while (rows < 512 && !isGrey(rows)) {
        ++rows;
    }
    EXPECT_GT(rows, 128);
    EXPECT_LT(rows, 384);
    for (short y = rows; y < 512; ++y) {
        EXPECT_TRUE(isGrey(y)) << y;
    }
    // The rows of blocks before the torn one are whole; the last line of chroma looks below it.
    constexpr short blockRows = 16;
    for (short y = 0; y < rows - 2 * blockRows; ++y) {
        for (short x = 0; x < 512; ++x) {
            ASSERT_EQ(picture->GetPixel(x, y), complete->GetPixel(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(JPEGDecoderTest, AnyByteMayBeDamaged) {
    for (const char* const name : {"arithmetic.jpg", "grey-progressive.jpg", "optimized.jpg"}) {
        const std::string whole = Fixture(name);
        // The first three bytes are the program's own to judge.
        for (std::size_t at = 3; at < whole.size(); ++at) {
            for (const int change : {0x01, 0x10, 0x80, 0xFF}) {
                SCOPED_TRACE(std::string(name) + " at " + std::to_string(at) + " by " +
                             std::to_string(change));
                std::string damaged = whole;
                damaged[at] = static_cast<char>(damaged[at] ^ change);
                ExpectPlainTexture(damaged);
            }
        }
    }
}

/// A progressive stream whose last pass comes `times` times.
std::string WithRepeatedPass(const std::string& jpeg, int times) {
    const std::size_t pass = jpeg.rfind("\xFF\xDA");
    const std::size_t end = jpeg.rfind("\xFF\xD9");
    std::string repeated = jpeg.substr(0, end);
    for (int i = 1; i < times; ++i) {
        repeated.append(jpeg, pass, end - pass);
    }
    return repeated + jpeg.substr(end);
}

TEST_F(JPEGDecoderTest, EndlessPassesAreRefused) {
    const std::string jpeg = Fixture("grey-progressive.jpg");
    EXPECT_NE(Load(WithRepeatedPass(jpeg, 900)), nullptr);
    EXPECT_EQ(Load(WithRepeatedPass(jpeg, 1100)), nullptr);
}

}  // namespace

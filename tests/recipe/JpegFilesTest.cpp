// Textures of recipes in JPEG files.
#include <gtest/gtest.h>

#include "host/picture/Picture.h"
#include "plain/PlainJpeg.h"
#include "tests/recipe/SessionRun.h"
#include "tests/recipe/TemporaryFolder.h"
#include "tests/support/Pictures.h"

using namespace recipe;

namespace {

/// The texture's colours side by side and one above the other.
PlainPicture Repeated(const PicClass& texture, int columns, int rows) {
    PlainPicture picture{texture.grX * columns, texture.grY * rows, 3, {}};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const unsigned char* const pixel = texture.PixelAddress(
                static_cast<short>(x % texture.grX), static_cast<short>(y % texture.grY));
            picture.bytes.append(reinterpret_cast<const char*>(pixel), 3);
        }
    }
    return picture;
}

class JpegFilesTest : public testing::Test {
  protected:
    std::string Fixture(const std::string& name) const { return ReadFile(fixtures / name); }
    void Run(const std::string& text) { RunText(session, text); }
    std::string FailureOf(const std::string& text) { return Failure(session, text); }
    PaintClass& Texture() { return session.Texture(); }

    // Before the folder, which becomes the current one.
    const std::filesystem::path fixtures = std::filesystem::absolute("tests/files/jpeg");
    TemporaryFolder folder;
    Session session{FilePlaces("recipes", "")};
};

TEST_F(JpegFilesTest, OpensThemUnderAllTheirExtensions) {
    const std::string jpeg = Fixture("baseline.jpg");
    for (const std::string name : {"a.jpg", "a.JPG", "a.jpeg", "a.JfiF"}) {
        WriteFile(name, jpeg);
        Run("open file=" + name);
        EXPECT_EQ(Repeated(Texture(), 1, 1), DecodeJpegPlainly(jpeg)) << name;
        EXPECT_EQ(Texture().GetAlpha(36, 20), 255);
    }
}

TEST_F(JpegFilesTest, UndoBehindOpenIsWhite) {
    WriteFile("a.jpg", Fixture("baseline.jpg"));
    Run("open file=a.jpg\nundo");
    EXPECT_EQ(PixelsOf(Texture()), std::vector<Pixel>(37 * 21, 0xFFFFFFFF));
}

TEST_F(JpegFilesTest, GreyBecomesColors) {
    WriteFile("a.jpg", Fixture("grey.jpg"));
    Run("open file=a.jpg");
    const std::string greys = DecodeJpegPlainly(Fixture("grey.jpg"))->bytes;
    for (short x = 0; x < 37; ++x) {
        const auto grey = static_cast<unsigned char>(greys[static_cast<std::size_t>(x)]);
        EXPECT_EQ(Texture().GetPixel(x, 0), Color(grey, grey, grey) | 0xFF000000);
    }
}

TEST_F(JpegFilesTest, SaysWhatIsWrongWithOne) {
    const std::string jpeg = Fixture("baseline.jpg");
    const std::string failure = "2: 'a.jpg' cannot be opened as a texture: it ";
    const auto failureOf = [&](const std::string& bytes) {
        WriteFile("a.jpg", bytes);
        return FailureOf("new width=3 height=2\nopen file=a.jpg");
    };
    EXPECT_EQ(failureOf("no picture"), failure + "is no JPEG picture in grey or RGB");
    EXPECT_EQ(failureOf(""), failure + "is no JPEG picture in grey or RGB");
    EXPECT_EQ(failureOf(Fixture("cmyk.jpg")), failure + "is no JPEG picture in grey or RGB");
    EXPECT_EQ(failureOf(Fixture("size-513x10.jpg")),
              failure + "is 513 by 10 pixels, and a texture has 1 to 512 on either side");
    EXPECT_EQ(failureOf(Fixture("size-40000x1.jpg")),
              failure + "is 40000 by 1 pixels, and a texture has 1 to 512 on either side");
    // Missing code tables are noticed only when the pixels are read.
    std::string damaged = jpeg;
    damaged[damaged.find("\xFF\xDA") + 6] = '\x33';
    EXPECT_EQ(failureOf(damaged), failure + "is damaged, or there is not enough memory");
    std::filesystem::create_directory("b.jpg");
    EXPECT_EQ(FailureOf("open file=b.jpg"),
              "1: 'b.jpg' cannot be opened as a texture: it cannot be read");
    // The texture is still the old one.
    EXPECT_EQ(Texture().grX, 3);
}

TEST_F(JpegFilesTest, SavesAsTheEditorDoes) {
    Run("new width=33 height=18\nclock seconds=1\nlines colorMode=11");
    for (const std::string name : {"a.jpg", "a.jpeg", "a.JFIF"}) {
        Run("save file=" + name);
        EXPECT_EQ(ReadFile(name), EncodeJpegPlainly(Repeated(Texture(), 1, 1), 100));
    }
    EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"a.JFIF", "a.jpeg", "a.jpg"}));
}

TEST_F(JpegFilesTest, ASavedOneOpensWithNearlyItsColors) {
    Run("new width=40 height=30\ncolors foreground=0xFF00,0,0x8000 background=0,0xC000,0x1000\n"
        "gradient from=0,0 to=39,0");
    const std::string before = Repeated(Texture(), 1, 1).bytes;
    Run("save file=a.jpg\nopen file=a.jpg");
    const std::string after = Repeated(Texture(), 1, 1).bytes;
    ASSERT_EQ(before.size(), after.size());
    double difference = 0.0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        difference +=
            std::abs(static_cast<unsigned char>(before[i]) - static_cast<unsigned char>(after[i]));
    }
    EXPECT_LT(difference / static_cast<double>(before.size()), 3.0);
}

TEST_F(JpegFilesTest, RepeatsIntoOne) {
    Run("new width=19 height=7\nclock seconds=1\nlines\nrepeat columns=5 rows=2 file=a.jpg");
    EXPECT_EQ(ReadFile("a.jpg"), EncodeJpegPlainly(Repeated(Texture(), 5, 2), 100));
}

TEST_F(JpegFilesTest, RepeatsFurtherThanATextureCouldBe) {
    Run("new width=512 height=1\nrepeat columns=64 rows=1 file=a.jpg");
    const auto picture = DecodeJpegPlainly(ReadFile("a.jpg"));
    ASSERT_TRUE(picture.has_value());
    EXPECT_EQ(picture->width, 512 * 64);
    EXPECT_EQ(picture->height, 1);
}

TEST_F(JpegFilesTest, CombinesWithOne) {
    WriteFile("a.jpg", Fixture("baseline.jpg"));
    Run("new width=37 height=21\ncombine file=a.jpg mode=1 amount=100");
    EXPECT_EQ(Repeated(Texture(), 1, 1), DecodeJpegPlainly(Fixture("baseline.jpg")));
    WriteFile("b.jpg", Fixture("cmyk.jpg"));
    EXPECT_EQ(FailureOf("combine file=b.jpg"),
              "1: 'b.jpg' cannot be opened as a texture: it is no JPEG picture in grey or RGB");
    EXPECT_EQ(Repeated(Texture(), 1, 1), DecodeJpegPlainly(Fixture("baseline.jpg")));
}

TEST_F(JpegFilesTest, AnUnrelatedDecoderReadsThem) {
    Run("new width=24 height=24\nclock seconds=1\nlines colorMode=12\nsave file=a.jpg");
    const host::Picture other = host::LoadPicture("a.jpg");
    Run("open file=a.jpg");
    const std::string own = Repeated(Texture(), 1, 1).bytes;
    ASSERT_EQ(other.pixels.size(), own.size());
    for (std::size_t i = 0; i < own.size(); ++i) {
        EXPECT_NEAR(other.pixels[i], static_cast<unsigned char>(own[i]), 3) << i;
    }
}

TEST_F(JpegFilesTest, AFolderThatIsNotThereIsAWrongUse) {
    EXPECT_TRUE(FailureOf("new\nsave file=none/a.jpg").starts_with("2: 'none"));
}

TEST_F(JpegFilesTest, TakesNamesInTheCodePage) {
    WriteFile(host::PathFromUtf8("Gr\xC3\xBCn.jpg"), Fixture("baseline.jpg"));
    Run("open file=Gr\xC3\xBCn.jpg\nsave file=Gr\xC3\xBCner.jpg");
    EXPECT_TRUE(std::filesystem::exists(host::PathFromUtf8("Gr\xC3\xBCner.jpg")));
}

TEST_F(JpegFilesTest, TakesNamesInAnyScript) {
    const std::string name = "\xE6\x9C\xA8.jpg";
    WriteFile(host::PathFromUtf8(name), Fixture("baseline.jpg"));
    Run("open file=" + name + "\nsave file=" + name);
    EXPECT_EQ(ReadFile(host::PathFromUtf8(name)),
              EncodeJpegPlainly(Repeated(Texture(), 1, 1), 100));
}

}  // namespace

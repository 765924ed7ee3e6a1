#include "shell/transfer/LastTexture.h"

#include <string>

#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/ScratchFolder.h"

namespace {

/// Two 16-bit numbers, low byte first.
std::string Header(int width, int height) {
    std::string bytes;
    for (const int number : {width, height}) {
        bytes += static_cast<char>(number & 0xFF);
        bytes += static_cast<char>(number >> 8 & 0xFF);
    }
    return bytes;
}

class LastTextureTest : public CoreTest {
  protected:
    LastTextureTest() { Log().temporaryPath = folder.Path().string(); }

    std::filesystem::path File() const { return folder.Path() / "Zandermolite.tmp"; }

    std::unique_ptr<PaintClass> LoadFrom(const std::string& bytes) const {
        WriteBytes(File(), bytes);
        return LoadLastTexture();
    }

    ScratchFolder folder;
};

TEST_F(LastTextureTest, TheFileIsSizeThenPixels) {
    PaintClass pic(3, 2);
    const std::string pixels = "rgbaRGBA01234567*+-/\xFF\xFE\x80\x7F";
    std::memcpy(pic.Base(), pixels.data(), pixels.size());
    ASSERT_TRUE(SaveLastTexture(&pic));
    const std::string header("\x03\x00\x02\x00", 4);
    EXPECT_EQ(BytesOf(File()), header + pixels);
}

TEST_F(LastTextureTest, ASizeTakesBothItsBytes) {
    const PaintClass pic(512, 258);
    ASSERT_TRUE(SaveLastTexture(&pic));
    const std::string bytes = BytesOf(File());
    EXPECT_EQ(bytes.size(), 4u + 512u * 258u * 4u);
    EXPECT_EQ(bytes.substr(0, 4), std::string("\x00\x02\x02\x01", 4));
}

TEST_F(LastTextureTest, ComesBackWithItsAlphaBytes) {
    struct Size {
        short width;
        short height;
    };
    constexpr Size sizes[] = {{1, 1}, {1, 9}, {9, 1}, {33, 17}, {512, 512}, {513, 600}};
    for (const Size& size : sizes) {
        PaintClass pic(size.width, size.height);
        FillWithNoise(pic);
        ASSERT_TRUE(SaveLastTexture(&pic));
        const auto loaded = LoadLastTexture();
        ASSERT_NE(loaded, nullptr);
        EXPECT_EQ(loaded->grX, size.width);
        EXPECT_EQ(loaded->grY, size.height);
        EXPECT_EQ(PixelsOf(*loaded), PixelsOf(pic));
    }
}

TEST_F(LastTextureTest, EachSaveReplacesTheFile) {
    const PaintClass large(20, 20);
    const PaintClass small(2, 2);
    ASSERT_TRUE(SaveLastTexture(&large));
    ASSERT_TRUE(SaveLastTexture(&small));
    EXPECT_EQ(BytesOf(File()).size(), 4u + 16u);
}

TEST_F(LastTextureTest, ANullPictureFailsAnAssertion) {
    EXPECT_EQ(AssertionOf([] { SaveLastTexture(nullptr); }),
              "Zandermolite / Zeile 175 !(pic != NULL)");
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(LastTextureTest, NothingToLoadWithoutAFile) {
    EXPECT_EQ(LoadLastTexture(), nullptr);
    EXPECT_EQ(memory.Allocations(), 0);
}

TEST_F(LastTextureTest, AFileThatIsTooShortGivesNull) {
    const std::string whole = Header(3, 2) + std::string(24, 'x');
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(LoadFrom(whole.substr(0, size)), nullptr) << size << " bytes";
        EXPECT_EQ(memory.LiveBuffers(), 0u) << "the raster is deleted again";
    }
    EXPECT_NE(LoadFrom(whole), nullptr);
}

TEST_F(LastTextureTest, WhatFollowsThePixelsIsIgnored) {
    const auto pic = LoadFrom(Header(1, 1) + "rgbaANDMORE");
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(pic->Base()), 4), "rgba");
}

TEST_F(LastTextureTest, SizesThatCannotBeGiveNull) {
    const std::string pixels(1000, 'x');
    EXPECT_EQ(LoadFrom(Header(0, 0) + pixels), nullptr);
    EXPECT_EQ(LoadFrom(Header(0, 5) + pixels), nullptr);
    EXPECT_EQ(LoadFrom(Header(5, 0) + pixels), nullptr);
    EXPECT_EQ(LoadFrom(Header(-1, 5) + pixels), nullptr);
    EXPECT_EQ(LoadFrom(Header(5, -1) + pixels), nullptr);
    EXPECT_EQ(LoadFrom(Header(-32768, -32768) + pixels), nullptr);
    EXPECT_EQ(LoadFrom(Header(32767, 32767) + pixels), nullptr);
    EXPECT_EQ(LoadFrom(Header(32767, 9000) + pixels), nullptr);
    EXPECT_EQ(memory.LiveBuffers(), 0u);
}

TEST_F(LastTextureTest, ASizeIsNotHeldToTheEditorsLimit) {
    const auto pic = LoadFrom(Header(513, 1) + std::string(513 * 4, 'x'));
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(pic->grX, 513);
}

TEST_F(LastTextureTest, NoMemoryGivesNull) {
    const std::string whole = Header(3, 2) + std::string(24, 'x');
    // The pixels, and the question for one more block; the undo store between them has a file.
    for (const int nth : {1, 3}) {
        memory.FailAllocation(nth);
        EXPECT_EQ(LoadFrom(whole), nullptr);
        EXPECT_EQ(memory.LiveBuffers(), 0u);
    }
}

TEST_F(LastTextureTest, AMissingFolderIsAFailure) {
    Log().temporaryPath = (folder.Path() / "none").string();
    const PaintClass pic(3, 2);
    EXPECT_FALSE(SaveLastTexture(&pic));
    EXPECT_EQ(LoadLastTexture(), nullptr);
}

TEST_F(LastTextureTest, AFolderInTheFilesPlaceIsAFailure) {
    std::filesystem::create_directory(File());
    const PaintClass pic(3, 2);
    EXPECT_FALSE(SaveLastTexture(&pic));
    EXPECT_EQ(LoadLastTexture(), nullptr);
}

TEST_F(LastTextureTest, ASeparatorAtThePathsEndDoesNoHarm) {
    Log().temporaryPath += platformServices.pathSeparator;
    const PaintClass pic(3, 2);
    EXPECT_TRUE(SaveLastTexture(&pic));
    EXPECT_TRUE(std::filesystem::exists(File()));
    EXPECT_NE(LoadLastTexture(), nullptr);
}

#ifdef __linux__
TEST_F(LastTextureTest, AFullDiskIsAFailure) {
    std::filesystem::create_symlink("/dev/full", File());
    const PaintClass pic(512, 512);
    EXPECT_FALSE(SaveLastTexture(&pic));
}
#endif

TEST_F(LastTextureTest, AShortWriteIsAFailureAndCannotBeLoaded) {
    const PaintClass pic(64, 64);
    // A stream that takes no bytes stands for a disk that takes no more.
    const FilePointer readOnly([this] {
        WriteBytes(File(), "");
        return std::fopen(File().string().c_str(), "rb");
    }());
    ASSERT_NE(readOnly, nullptr);
    EXPECT_FALSE(WriteTexture(readOnly.get(), pic));
    EXPECT_EQ(LoadLastTexture(), nullptr);
}

TEST_F(LastTextureTest, AnyOpenFileServes) {
    PaintClass pic(5, 4);
    FillWithNoise(pic);
    const FilePointer file(std::fopen(File().string().c_str(), "w+b"));
    ASSERT_NE(file, nullptr);
    ASSERT_TRUE(WriteTexture(file.get(), pic));
    ASSERT_EQ(std::fseek(file.get(), 0, SEEK_SET), 0);
    const auto loaded = ReadTexture(file.get());
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(PixelsOf(*loaded), PixelsOf(pic));
}

// Folders whose path is as long as the text; the system hands over whatever stands here.
std::string longPath;
int claimedLength = 0;

class LongPathTest : public LastTextureTest {
  protected:
    LongPathTest() {
        platformServices.temporaryPath = [](char* buffer, int size) {
            const std::size_t room = static_cast<std::size_t>(size) - 1;
            longPath.copy(buffer, room);
            buffer[std::min(longPath.size(), room)] = '\0';
            return claimedLength;
        };
    }

    /// The scratch folder's path with the given length, by steps that lead nowhere.
    void UsePathOf(std::size_t length) {
        longPath = folder.Path().string();
        if ((length - longPath.size()) % 2 != 0) {
            longPath += platformServices.pathSeparator;
        }
        while (longPath.size() < length) {
            longPath += platformServices.pathSeparator;
            longPath += '.';
        }
        claimedLength = static_cast<int>(longPath.size());
    }
};

TEST_F(LongPathTest, ALengthThatIsNoneIsAFailure) {
    const PaintClass pic(3, 2);
    longPath = folder.Path().string();
    claimedLength = static_cast<int>(longPath.size());
    ASSERT_TRUE(SaveLastTexture(&pic));
    // The name of a texture, so that who uses what stands in the buffer finds one.
    longPath = File().string();
    for (const int length : {0, -1, 1024, 1025, 100000}) {
        claimedLength = length;
        EXPECT_FALSE(SaveLastTexture(&pic)) << length;
        EXPECT_EQ(LoadLastTexture(), nullptr) << length;
    }
}

TEST_F(LongPathTest, AFolderOf1024CharactersIsTooLong) {
    const PaintClass pic(3, 2);
    UsePathOf(1024);
    ASSERT_EQ(claimedLength, 1024);
    EXPECT_FALSE(SaveLastTexture(&pic));
    EXPECT_EQ(LoadLastTexture(), nullptr);
}

TEST_F(LongPathTest, AFolderOf1023CharactersIsNot) {
    const PaintClass pic(3, 2);
    UsePathOf(1023);
    ASSERT_EQ(claimedLength, 1023);
    const bool saved = SaveLastTexture(&pic);
    // Windows itself may refuse a path of this length.
    EXPECT_EQ(saved, std::filesystem::exists(File()));
    EXPECT_EQ(saved, LoadLastTexture() != nullptr);
#ifndef _WIN32
    EXPECT_TRUE(saved);
#endif
}

}  // namespace

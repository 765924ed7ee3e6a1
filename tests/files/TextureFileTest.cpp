#include "files/TextureFile.h"

#include <cstdlib>
#include <cstring>

#include "files/FileDialog.h"
#include "host/picture/Picture.h"
#include "plain/PlainJpeg.h"
#include "tests/files/ImageTest.h"
#include "tests/support/Pictures.h"

namespace {

/// The file dialog that comes next.
struct {
    /// The path that the user chooses; without it the user leaves.
    std::string choice;
    std::string folder;
    std::string proposal;
    std::string filter;
    int shown;
    bool suspended;
} nextDialog;

bool RunNextDialog(FileDialog& asked) {
    ++nextDialog.shown;
    EXPECT_TRUE(nextDialog.suspended);
    nextDialog.folder = asked.folder;
    nextDialog.proposal = asked.path;
    nextDialog.filter = asked.filter.c_str();
    if (nextDialog.choice.empty()) {
        return false;
    }
    std::strcpy(asked.path, nextDialog.choice.c_str());
    if (asked.mode == FileDialogMode::save) {
        EnforceExtension(asked.path, asked.types.front());
    }
    return true;
}

struct Editor final : TextureFileOwner {
    void* Window() const override { return nullptr; }
    void SuspendDialogs() override { nextDialog.suspended = true; }
    void ResumeDialogs() override { nextDialog.suspended = false; }
};

class TextureFileTest : public ImageTest {
  protected:
    TextureFileTest() {
        nextDialog = {};
        platformServices.runFileDialog = RunNextDialog;
        editor.textureName = "before.jpg";
        FillWithNoise(*picture);
        pixels = PixelsOf(*picture);
    }

    /// Neither picture nor name have changed.
    void ExpectUntouched() {
        EXPECT_EQ(picture.get(), original);
        EXPECT_EQ(picture->grX, 20);
        EXPECT_EQ(picture->grY, 10);
        EXPECT_EQ(PixelsOf(*picture), pixels);
        EXPECT_EQ(editor.textureName, "before.jpg");
        EXPECT_FALSE(nextDialog.suspended);
    }
    bool LoadNamed(const std::string& name) {
        file.SetPath(NameOf(name));
        return LoadTexture(picture, editor, file);
    }

    Editor editor;
    std::unique_ptr<PaintClass> picture = std::make_unique<PaintClass>(short{20}, short{10});
    const PaintClass* const original = picture.get();
    std::vector<Pixel> pixels;
};

TEST_F(TextureFileTest, OpeningReplacesThePictureAndTakesItsName) {
    Put(Fixture("baseline.jpg"), "Stone.jpg");
    nextDialog.choice = NameOf("Stone.jpg");
    EXPECT_TRUE(OpenTextureFile(picture, editor));
    EXPECT_EQ(nextDialog.filter, "*.JPG");
    EXPECT_EQ(editor.textureName, "Stone.jpg");
    EXPECT_EQ(picture->grX, 37);
    EXPECT_EQ(picture->grY, 21);
    // The undo buffer begins white.
    picture->SwapUndo();
    EXPECT_EQ(picture->GetPixel(36, 20) & 0xFFFFFF, 0xFFFFFFu);
}

TEST_F(TextureFileTest, LeavingTheOpenDialogIsNoFailure) {
    EXPECT_TRUE(OpenTextureFile(picture, editor));
    EXPECT_EQ(nextDialog.shown, 1);
    ExpectUntouched();
}

TEST_F(TextureFileTest, AFailedLoadLeavesPictureAndName) {
    nextDialog.choice = NameOf("missing.jpg");
    EXPECT_FALSE(OpenTextureFile(picture, editor));
    ExpectUntouched();
    for (const char* const name : {"cmyk.jpg", "size-513x10.jpg", "size-10x513.jpg",
                                   "size-40000x1.jpg", "prefix-1000-bare.jpg"}) {
        Put(Fixture(name), "bad.jpg");
        EXPECT_FALSE(LoadNamed("bad.jpg")) << name;
        ExpectUntouched();
    }
    Put("", "empty.jpg");
    EXPECT_FALSE(LoadNamed("empty.jpg"));
    ExpectUntouched();
    Put(Fixture("baseline.jpg"), "baseline.png");
    EXPECT_FALSE(LoadNamed("baseline.png"));
    ExpectUntouched();
    Put(Fixture("grey.jpg"), "grey.jpg");
    record.colorServices = nullptr;
    EXPECT_FALSE(LoadNamed("grey.jpg"));
    ExpectUntouched();
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(TextureFileTest, TheLargestTextureLoads) {
    Put(Fixture("size-512x512.jpg"));
    EXPECT_TRUE(LoadNamed("a.jpg"));
    EXPECT_EQ(picture->grX, 512);
    EXPECT_EQ(picture->grY, 512);
}

TEST_F(TextureFileTest, WithoutMemoryForThePictureTheOldOneStays) {
    Put(Fixture("size-512x512.jpg"));
    static hostapi::BufferProcs full;
    full = *record.bufferProcs;
    full.spaceProc = []() -> std::int32_t { return 512 * 512 * 4 + 65536; };
    record.bufferProcs = &full;
    EXPECT_FALSE(LoadNamed("a.jpg"));
    ExpectUntouched();
}

TEST_F(TextureFileTest, SavingWritesTheColorsAtTheBestQuality) {
    nextDialog.choice = NameOf("Grass.jpg");
    EXPECT_TRUE(SaveTexture(picture.get(), editor));
    EXPECT_EQ(nextDialog.proposal, "before.jpg");
    EXPECT_EQ(nextDialog.filter, "*.JPG");
    EXPECT_EQ(editor.textureName, "Grass.jpg");
    PlainPicture plain{20, 10, 3, {}};
    for (const Pixel pixel : PixelsOf(*picture)) {
        plain.bytes.append({static_cast<char>(pixel), static_cast<char>(pixel >> 8),
                            static_cast<char>(pixel >> 16)});
    }
    EXPECT_EQ(BytesIn("Grass.jpg"), EncodeJpegPlainly(plain, 100));
}

TEST_F(TextureFileTest, ASavedTextureLoadsAgainWithoutAJFIFMark) {
    for (short y = 0; y < picture->grY; ++y) {
        for (short x = 0; x < picture->grX; ++x) {
            picture->SetRGB(x, y, static_cast<unsigned char>(x * 9), 90,
                            static_cast<unsigned char>(y * 12));
        }
    }
    const std::vector<Pixel> before = ColorsOf(*picture);
    nextDialog.choice = NameOf("ramp.jpg");
    ASSERT_TRUE(SaveTexture(picture.get(), editor));
    EXPECT_EQ(BytesIn("ramp.jpg").find("JFIF"), std::string::npos);
    ASSERT_TRUE(LoadNamed("ramp.jpg"));
    const std::vector<Pixel> after = ColorsOf(*picture);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        for (const int shift : {0, 8, 16}) {
            // Colours are halved in both directions by default.
            EXPECT_NEAR(static_cast<int>(before[i] >> shift & 255),
                        static_cast<int>(after[i] >> shift & 255), 9);
        }
    }
}

TEST_F(TextureFileTest, AnUnrelatedDecoderReadsWhatIsSaved) {
    for (const short side : {short{1}, short{8}, short{37}, short{512}}) {
        picture = std::make_unique<PaintClass>(side, side);
        for (short y = 0; y < side; ++y) {
            for (short x = 0; x < side; ++x) {
                picture->SetRGB(x, y, static_cast<unsigned char>(x * 255 / side), 90,
                                static_cast<unsigned char>(y * 255 / side));
            }
        }
        nextDialog.choice = NameOf("ramp.jpg");
        ASSERT_TRUE(SaveTexture(picture.get(), editor));
        const std::string bytes = BytesIn("ramp.jpg");
        const host::Picture other =
            host::DecodePicture(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), "ramp.jpg");
        ASSERT_EQ(other.width, side);
        ASSERT_EQ(other.height, side);
        ASSERT_EQ(other.planes, 3);
        const std::vector<Pixel> colors = ColorsOf(*picture);
        double difference = 0.0;
        for (std::size_t i = 0; i < other.pixels.size(); ++i) {
            const auto saved = static_cast<int>(colors[i / 3] >> (i % 3 * 8) & 255);
            difference += std::abs(saved - other.pixels[i]);
        }
        EXPECT_LT(difference / static_cast<double>(other.pixels.size()), 4.0) << side;
    }
}

TEST_F(TextureFileTest, TheNameGetsTheExtension) {
    nextDialog.choice = NameOf("tile");
    EXPECT_TRUE(SaveTexture(picture.get(), editor));
    EXPECT_EQ(editor.textureName, "tile.JPG");
    EXPECT_FALSE(BytesIn("tile.JPG").empty());
}

TEST_F(TextureFileTest, ATextureWithoutANameIsOfferedAsUntitled) {
    editor.textureName.clear();
    EXPECT_TRUE(SaveTexture(picture.get(), editor));
    EXPECT_EQ(nextDialog.proposal, "Untitled");
}

TEST_F(TextureFileTest, LeavingTheSaveDialogIsNoFailure) {
    EXPECT_TRUE(SaveTexture(picture.get(), editor));
    EXPECT_EQ(nextDialog.shown, 1);
    ExpectUntouched();
}

TEST_F(TextureFileTest, NoPictureIsAFailureWithoutADialog) {
    EXPECT_FALSE(SaveTexture(nullptr, editor));
    EXPECT_EQ(nextDialog.shown, 0);
}

TEST_F(TextureFileTest, AFailedSaveLeavesTheName) {
    nextDialog.choice = NameOf("no such folder/a.jpg");
    EXPECT_FALSE(SaveTexture(picture.get(), editor));
    ExpectUntouched();
    // A file that somebody else has open keeps its bytes.
    Put("somebody's", "taken.jpg");
    File other;
    other.SetPath(file.path);
    ASSERT_EQ(other.Open(), 0);
    nextDialog.choice = file.path;
    EXPECT_FALSE(SaveTexture(picture.get(), editor));
    other.Close();
    EXPECT_EQ(BytesIn("taken.jpg"), "somebody's");
    ExpectUntouched();
}

TEST_F(TextureFileTest, AFileThatGoesBetweenHeaderAndPixelsIsAFailedLoad) {
    Put(Fixture("baseline.jpg"));
    static std::string path;
    path = NameOf("a.jpg");
    static const auto closeFile = fileSystem.close;
    fileSystem.close = [](void* handle) {
        const bool isClosed = closeFile(handle);
        EXPECT_TRUE(std::filesystem::remove(path)) << "removed once, behind the header";
        return isClosed;
    };
    EXPECT_FALSE(LoadNamed("a.jpg"));
    EXPECT_EQ(GetLastFileError(), 19006);
    EXPECT_FALSE(std::filesystem::exists(path));
    ExpectUntouched();
}

TEST_F(TextureFileTest, AFileThatIsReplacedBetweenHeaderAndPixelsIsAFailedLoad) {
    Put(Fixture("baseline.jpg"));
    static int opened;
    static std::string larger;
    opened = 0;
    larger = NameOf("larger.jpg");
    WriteBytes(larger, Fixture("medium.jpg"));
    static const auto openFile = fileSystem.open;
    fileSystem.open = [](const char* path, FileAccess access, FileDisposition disposition) {
        return openFile(++opened == 1 ? path : larger.c_str(), access, disposition);
    };
    EXPECT_FALSE(LoadNamed("a.jpg"));
    EXPECT_EQ(opened, 2);
    ExpectUntouched();
}

}  // namespace

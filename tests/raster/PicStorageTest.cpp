#include "raster/PicStorage.h"

#include <cstdlib>
#include <filesystem>

#include "raster/PicClass.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

namespace {

constexpr short width = 37;
constexpr short height = 23;
constexpr std::int32_t size = width * height * 4;

class PicStorageTest : public CoreTest {
  protected:
    /// A storage in memory, or in the file if the host has no block for it.
    std::unique_ptr<PicStorage> NewStorage(bool inFile) {
        if (inFile) {
            memory.FailAllocation(1);
        }
        auto storage = std::make_unique<PicStorage>(&pic);
        EXPECT_EQ(storage->InFile(), inFile);
        return storage;
    }
    PicClass pic{width, height, false};
};

class PicStoragePlaceTest : public PicStorageTest, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(MemoryAndFile, PicStoragePlaceTest, testing::Bool(),
                         [](const auto& place) { return place.param ? "File" : "Memory"; });

TEST_P(PicStoragePlaceTest, StoresAtConstructionAndRestores) {
    FillWithNoise(pic, 1);
    const std::vector<Pixel> before = PixelsOf(pic);
    const auto storage = NewStorage(GetParam());
    FillWithNoise(pic, 2);
    storage->Restore(&pic);
    EXPECT_EQ(PixelsOf(pic), before);
    FillWithNoise(pic, 3);
    storage->Restore(&pic);
    EXPECT_EQ(PixelsOf(pic), before);
}

TEST_P(PicStoragePlaceTest, SwapsBothSidesAndBack) {
    FillWithNoise(pic, 1);
    const std::vector<Pixel> first = PixelsOf(pic);
    const auto storage = NewStorage(GetParam());
    FillWithNoise(pic, 2);
    const std::vector<Pixel> second = PixelsOf(pic);
    storage->Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), first);
    storage->Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), second);
    storage->Swap(&pic);
    storage->Restore(&pic);
    EXPECT_EQ(PixelsOf(pic), second);
}

TEST_P(PicStoragePlaceTest, StoresAgain) {
    const auto storage = NewStorage(GetParam());
    FillWithNoise(pic, 4);
    EXPECT_TRUE(storage->Store(&pic));
    const std::vector<Pixel> stored = PixelsOf(pic);
    FillWithNoise(pic, 5);
    storage->Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), stored);
}

TEST_P(PicStoragePlaceTest, AnotherSizeFailsAnAssertion) {
    const auto storage = NewStorage(GetParam());
    PicClass other(width, height + 1, false);
    const std::string text = " !((grX == pic->grX) && (grY == pic->grY))";
    EXPECT_EQ(AssertionOf([&] { storage->Store(&other); }), "PicClass.Win / Zeile 450" + text);
    EXPECT_EQ(AssertionOf([&] { storage->Swap(&other); }), "PicClass.Win / Zeile 483" + text);
    EXPECT_EQ(AssertionOf([&] { storage->Restore(&other); }), "PicClass.Win / Zeile 546" + text);
    PicClass wider(width + 1, height, false);
    EXPECT_EQ(AssertionOf([&] { storage->Store(&wider); }), "PicClass.Win / Zeile 450" + text);
}

/// Puts another source of files in place of the system's for as long as it lives.
class FileSource {
  public:
    explicit FileSource(FilePointer (*source)()) : saved(PicStorage::openFile) {
        PicStorage::openFile = source;
    }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;
    ~FileSource() { PicStorage::openFile = saved; }

  private:
    FilePointer (*saved)();
};

TEST_F(PicStorageTest, WithoutMemoryAndFileUndoIsSilentlyUnavailable) {
    const FileSource noFiles([] { return FilePointer(); });
    memory.FailAllocation(1);
    PicStorage storage(&pic);
    EXPECT_FALSE(storage.InFile());
    FillWithNoise(pic, 1);
    const std::vector<Pixel> before = PixelsOf(pic);
    EXPECT_FALSE(storage.Store(&pic));
    storage.Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), before);
    storage.Restore(&pic);
    EXPECT_EQ(PixelsOf(pic), before);
    EXPECT_TRUE(Log().faults.empty());
}

std::string undoFileName;
std::FILE* undoFile = nullptr;

FilePointer OpenNamedFile() {
    undoFileName = testing::TempDir() + "/undo-file-" + std::to_string(std::rand());
    undoFile = std::fopen(undoFileName.c_str(), "w+b");
    return FilePointer(undoFile);
}

FilePointer OpenFileThatTakesNothing() {
    FilePointer writable = OpenNamedFile();
    writable.reset();
    undoFile = std::fopen(undoFileName.c_str(), "rb");
    return FilePointer(undoFile);
}

TEST_F(PicStorageTest, AFullDiskAtConstructionLeavesNoUndo) {
    const FileSource fullDisk(OpenFileThatTakesNothing);
    memory.FailAllocation(1);
    {
        PicStorage storage(&pic);
        EXPECT_FALSE(storage.InFile());
        EXPECT_FALSE(storage.Store(&pic));
    }
    std::filesystem::remove(undoFileName);
}

TEST_F(PicStorageTest, AStoreThatTheDiskRefusesLeavesPictureAndFile) {
    const FileSource named(OpenNamedFile);
    FillWithNoise(pic, 1);
    const std::vector<Pixel> stored = PixelsOf(pic);
    {
        const auto storage = NewStorage(true);
        // From here on the stream refuses to be written to.
        ASSERT_NE(std::freopen(undoFileName.c_str(), "rb", undoFile), nullptr);
        FillWithNoise(pic, 2);
        const std::vector<Pixel> present = PixelsOf(pic);
        EXPECT_FALSE(storage->Store(&pic));
        storage->Swap(&pic);
        EXPECT_EQ(PixelsOf(pic), present);
        storage->Restore(&pic);
        EXPECT_EQ(PixelsOf(pic), stored);
    }
    std::filesystem::remove(undoFileName);
}

TEST_F(PicStorageTest, AFileCutShortLeavesTheRestOfThePicture) {
    const FileSource named(OpenNamedFile);
    FillWithNoise(pic, 1);
    const std::vector<Pixel> stored = PixelsOf(pic);
    {
        const auto storage = NewStorage(true);
        ASSERT_NE(std::freopen(undoFileName.c_str(), "w+b", undoFile), nullptr);
        const std::size_t half = width * (height / 2);
        ASSERT_EQ(std::fwrite(stored.data(), 4, half, undoFile), half);
        FillWithNoise(pic, 2);
        std::vector<Pixel> expected = PixelsOf(pic);
        std::copy_n(stored.begin(), half, expected.begin());
        storage->Swap(&pic);
        EXPECT_EQ(PixelsOf(pic), expected);
    }
    std::filesystem::remove(undoFileName);
}

TEST_F(PicStorageTest, SwapTicksTheCursorForTheFileOnly) {
    struct Editor final : ProgressTarget {
        void DrawProgress(short) override {}
    } editor;
    Log().ticks = 100000;
    BusyTick();
    const int before = Log().waitCursors;
    CursorClass::target = &editor;
    const auto inMemory = NewStorage(false);
    Log().ticks += 1000;
    inMemory->Swap(&pic);
    EXPECT_EQ(Log().waitCursors, before);
    const auto inFile = NewStorage(true);
    inFile->Swap(&pic);
    EXPECT_EQ(Log().waitCursors, before + 1);
    EXPECT_EQ(Log().arrowCursors, 1);
    CursorClass::target = nullptr;
}

TEST_F(PicStorageTest, TakesOneBlockOfTheRastersSize) {
    const std::int64_t before = memory.FreeBytes();
    const auto storage = NewStorage(false);
    EXPECT_EQ(before - memory.FreeBytes(), size);
}

}  // namespace

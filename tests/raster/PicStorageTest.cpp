#include "raster/PicStorage.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include "base/Progress.h"
#include "raster/PicClass.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSource.h"
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

TEST_F(PicStorageTest, APartialStoreIsSwappedAsItStands) {
    const FileSource named(OpenNamedFile);
    FillWithNoise(pic, 1);
    std::vector<Pixel> saved = PixelsOf(pic);
    {
        const auto storage = NewStorage(true);
        FillWithNoise(pic, 2);
        const std::vector<Pixel> begun = PixelsOf(pic);
        const std::size_t part = width * 4 + 15;
        ASSERT_EQ(std::fseek(undoFile, 0, SEEK_SET), 0);
        ASSERT_EQ(std::fwrite(begun.data(), 4, part, undoFile), part);
        std::copy_n(begun.begin(), part, saved.begin());
        FillWithNoise(pic, 3);
        const std::vector<Pixel> present = PixelsOf(pic);
        storage->Swap(&pic);
        EXPECT_EQ(PixelsOf(pic), saved);
        storage->Swap(&pic);
        EXPECT_EQ(PixelsOf(pic), present);
    }
    std::filesystem::remove(undoFileName);
}

#ifdef __linux__

/// A file of which the disk takes no more than `room` bytes.
struct Disk {
    std::vector<char> bytes;
    std::size_t place = 0;
    std::size_t room = std::numeric_limits<std::size_t>::max();
};

ssize_t ReadDisk(void* cookie, char* buffer, std::size_t count) {
    Disk& disk = *static_cast<Disk*>(cookie);
    const std::size_t given =
        std::min(count, disk.bytes.size() - std::min(disk.place, disk.bytes.size()));
    std::copy_n(disk.bytes.data() + disk.place, given, buffer);
    disk.place += given;
    return static_cast<ssize_t>(given);
}

ssize_t WriteDisk(void* cookie, const char* buffer, std::size_t count) {
    Disk& disk = *static_cast<Disk*>(cookie);
    const std::size_t taken = std::min(count, disk.room - std::min(disk.place, disk.room));
    if (taken == 0) {
        errno = ENOSPC;
        return 0;
    }
    disk.bytes.resize(std::max(disk.bytes.size(), disk.place + taken));
    std::copy_n(buffer, taken, disk.bytes.data() + disk.place);
    disk.place += taken;
    return static_cast<ssize_t>(taken);
}

int SeekDisk(void* cookie, off64_t* offset, int whence) {
    Disk& disk = *static_cast<Disk*>(cookie);
    const std::size_t from = whence == SEEK_CUR   ? disk.place
                             : whence == SEEK_END ? disk.bytes.size()
                                                  : 0;
    disk.place = from + static_cast<std::size_t>(*offset);
    *offset = static_cast<off64_t>(disk.place);
    return 0;
}

/// The storage lies on a disk whose room the test decides.
class PicStorageDiskTest : public PicStorageTest {
  protected:
    PicStorageDiskTest() : source(OpenOnDisk) { disk = {}; }

    static FilePointer OpenOnDisk() {
        return FilePointer(fopencookie(&disk, "w+b", {ReadDisk, WriteDisk, SeekDisk, nullptr}));
    }

    /// The first `count` pixels of `head`, then those of `rest`.
    static std::vector<Pixel> Joined(const std::vector<Pixel>& head, std::size_t count,
                                     std::vector<Pixel> rest) {
        std::copy_n(head.begin(), count, rest.begin());
        return rest;
    }

    static inline Disk disk;

  private:
    const FileSource source;
};

TEST_F(PicStorageDiskTest, TheSpaceIsTakenAtConstruction) {
    const auto storage = NewStorage(true);
    EXPECT_EQ(disk.bytes.size(), static_cast<std::size_t>(size));
}

TEST_F(PicStorageDiskTest, OneByteTooFewAtConstructionLeavesNoUndo) {
    disk.room = size - 1;
    memory.FailAllocation(1);
    PicStorage storage(&pic);
    EXPECT_FALSE(storage.InFile());
    EXPECT_FALSE(storage.Store(&pic));
}

TEST_F(PicStorageDiskTest, AStoreThatTheDiskBreaksOffIsPartial) {
    FillWithNoise(pic, 1);
    const std::vector<Pixel> first = PixelsOf(pic);
    const auto storage = NewStorage(true);
    FillWithNoise(pic, 2);
    const std::vector<Pixel> second = PixelsOf(pic);
    const std::size_t part = width * 4 + 15;
    disk.room = part * 4;
    EXPECT_FALSE(storage->Store(&pic));
    disk.room = size;
    storage->Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), Joined(second, part, first));
    storage->Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), second);
}

TEST_F(PicStorageDiskTest, RowsThatTheDiskDoesNotTakeStayOnBothSides) {
    FillWithNoise(pic, 1);
    const std::vector<Pixel> first = PixelsOf(pic);
    const auto storage = NewStorage(true);
    FillWithNoise(pic, 2);
    const std::vector<Pixel> second = PixelsOf(pic);
    const std::size_t part = width * 10;
    disk.room = part * 4;
    storage->Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), Joined(first, part, second));
    disk.room = size;
    storage->Restore(&pic);
    EXPECT_EQ(PixelsOf(pic), Joined(second, part, first));
}

#endif

TEST_F(PicStorageTest, ABlockThatCannotBeLockedIsReplacedByTheFile) {
    hostapi::BufferProcs procs = *memory.Buffers();
    procs.lockProc = [](hostapi::BufferID, hostapi::Boolean8) -> void* { return nullptr; };
    record.bufferProcs = &procs;
    const auto storage = std::make_unique<PicStorage>(&pic);
    record.bufferProcs = memory.Buffers();
    EXPECT_TRUE(storage->InFile());
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

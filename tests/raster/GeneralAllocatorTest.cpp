// The raster and the lists when the general allocator has no memory. Wherever they can do
// without, they ask it by the form of `new` that returns null.
#include <cstring>
#include <new>

#include "files/PreferenceFormat.h"
#include "raster/PicClass.h"
#include "raster/SimpleLink.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/PreferenceBytes.h"

namespace {

/// 1 fails the next request that may answer null; 0 none.
int failRequest = 0;

bool FailsNow() {
    return failRequest > 0 && --failRequest == 0;
}

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return FailsNow() ? nullptr : ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return FailsNow() ? nullptr : ::operator new[](size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace {

class GeneralAllocatorTest : public CoreTest {
  protected:
    ~GeneralAllocatorTest() override { EXPECT_EQ(failRequest, 0) << "the request never came"; }
};

TEST_F(GeneralAllocatorTest, WithoutTheMapOrTheUndoObjectThereIsNoRaster) {
    for (int nth = 1; nth <= 2; ++nth) {
        failRequest = nth;
        const PicClass none(5, 3, true);
        EXPECT_EQ(none.pixelMap, nullptr);
        EXPECT_EQ(none.undo, nullptr);
        EXPECT_EQ(memory.LiveBuffers(), 0u);
    }
    const PicClass pic(5, 3, true);
    EXPECT_NE(pic.pixelMap, nullptr);
}

TEST_F(GeneralAllocatorTest, WithoutTheObjectOrItsMapThereIsNoClone) {
    PicClass pic(5, 3, false);
    for (int nth = 1; nth <= 2; ++nth) {
        failRequest = nth;
        EXPECT_EQ(pic.GetClone(), nullptr);
        EXPECT_EQ(pic.clone, nullptr);
        EXPECT_EQ(memory.LiveBuffers(), 1u);
    }
    EXPECT_NE(pic.GetClone(), nullptr);
}

TEST_F(GeneralAllocatorTest, WithoutARowsBufferTheFileIsSwappedPixelByPixel) {
    PicClass pic(37, 23, false);
    FillWithNoise(pic, 1);
    const std::vector<Pixel> first = PixelsOf(pic);
    memory.FailAllocation(1);
    PicStorage storage(&pic);
    ASSERT_TRUE(storage.InFile());
    FillWithNoise(pic, 2);
    const std::vector<Pixel> second = PixelsOf(pic);
    failRequest = 1;
    storage.Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), first);
    failRequest = 1;
    storage.Swap(&pic);
    EXPECT_EQ(PixelsOf(pic), second);
}

TEST_F(GeneralAllocatorTest, AnEntryWithoutMemoryIsLostAndTheListGoesOn) {
    SimpleLink list;
    list.Append(::operator new(1), "first");
    failRequest = 1;
    list.Append(::operator new(1), "lost");
    list.Append(::operator new(1), "second");
    char name[nameCapacity];
    EXPECT_TRUE(list.NameAt(2, name));
    EXPECT_STREQ(name, "second");
    EXPECT_FALSE(list.NameAt(3, name));
}

TEST_F(GeneralAllocatorTest, APresetWithoutMemoryEndsTheLoading) {
    std::string bytes = FirstPreferenceFile();
    bytes.replace(listsOffset + 2 * presetSkew, 2,
                  WordBytes(3) + NameBytes("one") + FromHex("01000000") + NameBytes("two") +
                      FromHex("02000000"));
    Preferences preferences;
    std::size_t at = 0;
    const auto read = [&](void* buffer, std::int32_t count) {
        std::memcpy(buffer, bytes.data() + at, static_cast<std::size_t>(count));
        at += static_cast<std::size_t>(count);
    };
    failRequest = 3;  // the record of the second, after record and node of the first
    EXPECT_EQ(FaultOf([&] { ReadPreferences(read, preferences); }), -108);
    char name[nameCapacity];
    EXPECT_TRUE(preferences.presets[presetSkew].NameAt(1, name));
    EXPECT_FALSE(preferences.presets[presetSkew].NameAt(2, name));
}

}  // namespace

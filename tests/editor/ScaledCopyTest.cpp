#include "editor/ScaledCopy.h"

#include <cstring>
#include <vector>

#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

namespace {

using Bytes = std::vector<unsigned char>;

/// The rule itself, a pixel at a time.
Bytes PlainScaling(const PicClass& pic, int width, int height) {
    Bytes bytes;
    for (int j = 0; j < height; ++j) {
        for (int i = 0; i < width; ++i) {
            const double ratioX = static_cast<double>(pic.grX) / width;
            const double ratioY = static_cast<double>(pic.grY) / height;
            const unsigned char* pixel =
                pic.PixelAddress(static_cast<short>(i * ratioX), static_cast<short>(j * ratioY));
            bytes.insert(bytes.end(), pixel, pixel + 3);
        }
    }
    return bytes;
}

Bytes BytesOf(const ScaledCopy& copy) {
    const hostapi::PSPixelMap& map = copy.Map();
    const auto* base = static_cast<const unsigned char*>(map.baseAddr);
    return Bytes(base, base + map.rowBytes * map.bounds.bottom);
}

class ScaledCopyTest : public CoreTest {};

TEST_F(ScaledCopyTest, EqualsThePlainLoop) {
    for (const short width : std::initializer_list<short>{1, 3, 16, 61}) {
        PicClass pic(width, 29, false);
        FillWithNoise(pic);
        for (const double zoom : {0.25, 0.33, 0.5, 0.75, 1.5, 2.0, 3.0, 4.0}) {
            const int scaledWidth = static_cast<int>(width * zoom);
            const int scaledHeight = static_cast<int>(29 * zoom);
            if (scaledWidth < 1) {
                continue;
            }
            ScaledCopy copy;
            ASSERT_TRUE(copy.Make(pic, {scaledWidth, scaledHeight}));
            EXPECT_EQ(BytesOf(copy), PlainScaling(pic, scaledWidth, scaledHeight))
                << width << " at " << zoom;
        }
    }
}

TEST_F(ScaledCopyTest, RepeatsTheTile) {
    PicClass pic(5, 3, false);
    FillWithNoise(pic);
    ScaledCopy one;
    ASSERT_TRUE(one.Make(pic, {7, 4}));
    ScaledCopy many;
    ASSERT_TRUE(many.Make(pic, {7, 4, 3, 2}));
    EXPECT_EQ(many.Map().bounds.right, 21);
    EXPECT_EQ(many.Map().bounds.bottom, 8);
    const Bytes tile = BytesOf(one);
    const Bytes block = BytesOf(many);
    for (std::size_t row = 0; row < 8; ++row) {
        for (std::size_t i = 0; i < 63; ++i) {
            ASSERT_EQ(block[row * 63 + i], tile[row % 4 * 21 + i % 21]) << row << ", " << i;
        }
    }
}

TEST_F(ScaledCopyTest, DescribesItselfToTheHost) {
    PicClass pic(10, 6, false);
    ScaledCopy copy;
    ASSERT_TRUE(copy.Make(pic, {20, 12}));
    const hostapi::PSPixelMap& map = copy.Map();
    EXPECT_EQ(map.version, 1);
    EXPECT_EQ(map.bounds.top, 0);
    EXPECT_EQ(map.bounds.left, 0);
    EXPECT_EQ(map.bounds.bottom, 12);
    EXPECT_EQ(map.bounds.right, 20);
    EXPECT_EQ(map.imageMode, 3);
    EXPECT_EQ(map.rowBytes, 60);
    EXPECT_EQ(map.colBytes, 3);
    EXPECT_EQ(map.planeBytes, 1);
    EXPECT_EQ(map.mat, nullptr);
    EXPECT_EQ(map.masks, nullptr);
}

TEST_F(ScaledCopyTest, IsKeptUntilItIsDiscarded) {
    PicClass pic(8, 8, false);
    ScaledCopy copy;
    ASSERT_TRUE(copy.Make(pic, {16, 16}));
    const Bytes before = BytesOf(copy);
    FillWithNoise(pic);
    ASSERT_TRUE(copy.Make(pic, {16, 16}));
    EXPECT_EQ(BytesOf(copy), before);
    copy.Discard();
    ASSERT_TRUE(copy.Make(pic, {16, 16}));
    EXPECT_EQ(BytesOf(copy), PlainScaling(pic, 16, 16));
}

TEST_F(ScaledCopyTest, ASmallerCopyGivesTheLargerBlockBack) {
    PicClass pic(64, 64, false);
    ScaledCopy copy;
    ASSERT_TRUE(copy.Make(pic, {256, 256}));
    const std::int32_t large = HostBuffer::TotalBytes();
    ASSERT_TRUE(copy.Make(pic, {32, 32}));
    EXPECT_EQ(HostBuffer::TotalBytes(), large - (256 * 256 - 32 * 32) * 3);
    EXPECT_EQ(BytesOf(copy), PlainScaling(pic, 32, 32));
}

TEST_F(ScaledCopyTest, APartGoesOnInTheRepeats) {
    PicClass pic(5, 3, false);
    FillWithNoise(pic);
    for (const ScaledCopy::Size size : {ScaledCopy::Size{5, 3}, {7, 4}, {3, 2}}) {
        ScaledCopy repeats;
        ASSERT_TRUE(repeats.Make(pic, {size.width, size.height, 3, 3}));
        const Bytes all = BytesOf(repeats);
        ScaledCopy copy;
        const hostapi::VRect parts[] = {{0, 0, size.height, size.width},
                                        {-1, -1, 1, 2},
                                        {-size.height, -1, 0, 0},
                                        {1, 2, size.height + 1, 4},
                                        {0, 1, 1, size.width + 1}};
        for (const hostapi::VRect& part : parts) {
            ASSERT_TRUE(copy.MakePart(pic, size, part));
            const int width = part.right - part.left;
            const int height = part.bottom - part.top;
            EXPECT_EQ(copy.Map().bounds.right, width);
            EXPECT_EQ(copy.Map().bounds.bottom, height);
            Bytes expected;
            for (int y = 0; y < height; ++y) {
                const auto start =
                    all.begin() +
                    ((part.top + size.height + y) * size.width * 3 + part.left + size.width) * 3;
                expected.insert(expected.end(), start, start + width * 3);
            }
            EXPECT_EQ(BytesOf(copy), expected) << part.left << ", " << part.top;
        }
    }
}

TEST_F(ScaledCopyTest, APartIsMadeAnewAndKeepsItsBlock) {
    PicClass pic(8, 8, false);
    ScaledCopy copy;
    ASSERT_TRUE(copy.MakePart(pic, {16, 16}, {0, 0, 16, 16}));
    const std::int32_t held = HostBuffer::TotalBytes();
    FillWithNoise(pic);
    ASSERT_TRUE(copy.MakePart(pic, {16, 16}, {0, 0, 2, 16}));
    EXPECT_EQ(HostBuffer::TotalBytes(), held);
    const Bytes plain = PlainScaling(pic, 16, 16);
    EXPECT_EQ(BytesOf(copy), Bytes(plain.begin(), plain.begin() + 2 * 16 * 3));
}

host::MemorySettings SmallMemory() {
    host::MemorySettings settings;
    settings.budget = 300000;
    return settings;
}

class TightScaledCopyTest : public CoreTest {
  protected:
    TightScaledCopyTest() : CoreTest(SmallMemory()) {}
};

TEST_F(TightScaledCopyTest, WithoutMemoryThereIsNone) {
    PicClass pic(100, 100, false);
    ASSERT_NE(pic.pixelMap, nullptr);
    ScaledCopy copy;
    EXPECT_FALSE(copy.Make(pic, {400, 400}));
    EXPECT_EQ(copy.Map().baseAddr, nullptr);
    EXPECT_TRUE(copy.Make(pic, {50, 50}));
    EXPECT_EQ(BytesOf(copy), PlainScaling(pic, 50, 50));
}

TEST_F(TightScaledCopyTest, WithoutMemoryThereIsNoPart) {
    PicClass pic(100, 100, false);
    ScaledCopy copy;
    EXPECT_FALSE(copy.MakePart(pic, {400, 400}, {0, 0, 400, 400}));
    EXPECT_EQ(copy.Map().baseAddr, nullptr);
    EXPECT_TRUE(copy.MakePart(pic, {400, 400}, {0, 0, 40, 40}));
}

TEST_F(TightScaledCopyTest, ASizeBeyondAllMemoryIsNoCopy) {
    PicClass pic(10, 10, false);
    ScaledCopy copy;
    EXPECT_FALSE(copy.Make(pic, {100000, 100000}));
}

}  // namespace

#include "host/record/DisplayPixels.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#endif

#include <vector>

#include "hostapi/Results.h"

namespace host {

namespace {

// Every pixel another colour: red its column, green its row.
struct TestMap {
    TestMap(int width, int height, int colBytes)
        : pixels(static_cast<std::size_t>(width * height * colBytes)) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                std::uint8_t* pixel = &pixels[static_cast<std::size_t>((y * width + x) * colBytes)];
                pixel[0] = static_cast<std::uint8_t>(x);
                pixel[1] = static_cast<std::uint8_t>(y);
                pixel[2] = 200;
            }
        }
        map.version = 1;
        map.bounds = {0, 0, height, width};
        map.imageMode = hostapi::imageModeRGB;
        map.rowBytes = width * colBytes;
        map.colBytes = colBytes;
        map.planeBytes = 1;
        map.baseAddr = pixels.data();
    }

    std::vector<std::uint8_t> pixels;
    hostapi::PSPixelMap map{};
};

}  // namespace

TEST(DisplayPixelsTest, RefusesWhatItCannotDraw) {
    TestMap test(4, 4, 3);
    const hostapi::VRect rect{0, 0, 4, 4};
    int context = 0;
    EXPECT_EQ(DisplayPixels(nullptr, &rect, 0, 0, &context, false), hostapi::filterBadParameters);
    EXPECT_EQ(DisplayPixels(&test.map, nullptr, 0, 0, &context, false),
              hostapi::filterBadParameters);
    EXPECT_EQ(DisplayPixels(&test.map, &rect, 0, 0, nullptr, false), hostapi::filterBadParameters);
    test.map.imageMode = hostapi::imageModeCMYK;
    EXPECT_EQ(DisplayPixels(&test.map, &rect, 0, 0, &context, false), hostapi::filterBadParameters);
    test.map.imageMode = hostapi::imageModeRGB;
    test.map.baseAddr = nullptr;
    EXPECT_EQ(DisplayPixels(&test.map, &rect, 0, 0, &context, false), hostapi::filterBadParameters);
}

TEST(DisplayPixelsTest, NothingToDrawIsFine) {
    TestMap test(4, 4, 3);
    int context = 0;
    for (hostapi::VRect rect : {hostapi::VRect{0, 0, 0, 4}, {4, 0, 9, 4}, {3, 3, 1, 1}}) {
        EXPECT_EQ(DisplayPixels(&test.map, &rect, 0, 0, &context, false), hostapi::noErr);
    }
}

TEST(DisplayPixelsTest, RowsArePaddedToFourBytes) {
    EXPECT_EQ((DisplayRows{1, 1, {}}).RowBytes(), 4U);
    EXPECT_EQ((DisplayRows{4, 1, {}}).RowBytes(), 12U);
    EXPECT_EQ((DisplayRows{5, 1, {}}).RowBytes(), 16U);
}

#ifdef _WIN32
namespace {

/// A device context in memory, all white.
class MemoryContext {
  public:
    MemoryContext(int newWidth, int newHeight)
        : width(newWidth), context(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = newWidth;
        info.bmiHeader.biHeight = -newHeight;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* memory = nullptr;
        bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
        SelectObject(context, bitmap);
        bits = static_cast<std::uint8_t*>(memory);
        std::fill(bits, bits + newWidth * newHeight * 4, std::uint8_t{255});
    }
    ~MemoryContext() {
        DeleteDC(context);
        DeleteObject(bitmap);
    }
    MemoryContext(const MemoryContext&) = delete;
    MemoryContext& operator=(const MemoryContext&) = delete;

    /// Red, green, blue as one number; -1 where nothing was drawn.
    int At(int x, int y) const {
        GdiFlush();
        const std::uint8_t* pixel = bits + (y * width + x) * 4;
        const int color = pixel[2] << 16 | pixel[1] << 8 | pixel[0];
        return color == 0xFFFFFF ? -1 : color;
    }
    HDC Get() const { return context; }

  private:
    int width;
    HDC context;
    HBITMAP bitmap;
    std::uint8_t* bits;
};

int ColorAt(int x, int y) {
    return x << 16 | y << 8 | 200;
}

}  // namespace

TEST(DisplayPixelsTest, DrawsThePartAtThePlace) {
    for (int colBytes : {3, 4}) {
        TestMap test(10, 8, colBytes);
        MemoryContext screen(20, 20);
        const hostapi::VRect rect{2, 3, 7, 8};
        ASSERT_EQ(DisplayPixels(&test.map, &rect, 5, 6, screen.Get(), false), hostapi::noErr);
        for (int y = 0; y < 20; ++y) {
            for (int x = 0; x < 20; ++x) {
                const bool isInside = x >= 6 && x < 11 && y >= 5 && y < 10;
                EXPECT_EQ(screen.At(x, y), isInside ? ColorAt(x - 6 + 3, y - 5 + 2) : -1);
            }
        }
    }
}

TEST(DisplayPixelsTest, WhatLiesOutsideTheBoundsIsNotDrawn) {
    TestMap test(10, 8, 3);
    MemoryContext screen(20, 20);
    const hostapi::VRect rect{-2, -3, 2, 2};
    ASSERT_EQ(DisplayPixels(&test.map, &rect, 0, 0, screen.Get(), false), hostapi::noErr);
    EXPECT_EQ(screen.At(2, 2), -1);
    EXPECT_EQ(screen.At(3, 1), -1);
    EXPECT_EQ(screen.At(3, 2), ColorAt(0, 0));
    EXPECT_EQ(screen.At(4, 3), ColorAt(1, 1));
    EXPECT_EQ(screen.At(5, 3), -1);
}

TEST(DisplayPixelsTest, BoundsNeedNotBeginAtZero) {
    TestMap test(10, 8, 3);
    test.map.bounds = {100, 50, 108, 60};
    MemoryContext screen(20, 20);
    const hostapi::VRect rect{101, 52, 103, 54};
    ASSERT_EQ(DisplayPixels(&test.map, &rect, 0, 0, screen.Get(), false), hostapi::noErr);
    EXPECT_EQ(screen.At(0, 0), ColorAt(2, 1));
}

TEST(DisplayPixelsTest, MayIgnoreTheOrigin) {
    TestMap test(10, 8, 3);
    MemoryContext screen(20, 20);
    const hostapi::VRect rect{2, 3, 7, 8};
    ASSERT_EQ(DisplayPixels(&test.map, &rect, 5, 6, screen.Get(), true), hostapi::noErr);
    EXPECT_EQ(screen.At(6, 5), ColorAt(0, 0));
    EXPECT_EQ(screen.At(10, 9), ColorAt(4, 4));
    EXPECT_EQ(screen.At(11, 9), -1);
}

TEST(DisplayPixelsTest, HonoursTheClipRegion) {
    TestMap test(10, 8, 3);
    MemoryContext screen(20, 20);
    HRGN region = CreateRectRgn(2, 1, 4, 3);
    SelectClipRgn(screen.Get(), region);
    DeleteObject(region);
    const hostapi::VRect rect{0, 0, 8, 10};
    ASSERT_EQ(DisplayPixels(&test.map, &rect, 0, 0, screen.Get(), false), hostapi::noErr);
    EXPECT_EQ(screen.At(2, 1), ColorAt(2, 1));
    EXPECT_EQ(screen.At(3, 2), ColorAt(3, 2));
    EXPECT_EQ(screen.At(1, 1), -1);
    EXPECT_EQ(screen.At(4, 2), -1);
    EXPECT_EQ(screen.At(2, 3), -1);
}

TEST(DisplayPixelsTest, DrawsGreyMaps) {
    std::vector<std::uint8_t> grey = {10, 20};
    hostapi::PSPixelMap map{};
    map.bounds = {0, 0, 1, 2};
    map.imageMode = hostapi::imageModeGrey;
    map.rowBytes = 2;
    map.colBytes = 1;
    map.baseAddr = grey.data();
    MemoryContext screen(4, 4);
    ASSERT_EQ(DisplayPixels(&map, &map.bounds, 0, 0, screen.Get(), false), hostapi::noErr);
    EXPECT_EQ(screen.At(1, 0), 0x141414);
}
#endif

}  // namespace host

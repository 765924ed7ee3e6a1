#include "host/record/DisplayPixels.h"

#include <windows.h>

#include <cstring>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "paint/PaintClass.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

namespace {

constexpr int windowWidth = 40;
constexpr int windowHeight = 30;
constexpr COLORREF ground = RGB(10, 20, 30);

// The host's requests to draw.
struct DisplayCall {
    int calls = 0;
    hostapi::PSPixelMap map{};
    hostapi::VRect rect{};
    std::int32_t row = 0;
    std::int32_t column = 0;
    void* context = nullptr;
    std::int16_t answer = 0;
};
DisplayCall display;

std::int16_t HOST_CALL Display(const hostapi::PSPixelMap* map, const hostapi::VRect* rect,
                               std::int32_t row, std::int32_t column, void* context) {
    ++display.calls;
    display.map = *map;
    display.rect = *rect;
    display.row = row;
    display.column = column;
    display.context = context;
    if (display.answer != 0) {
        return display.answer;
    }
    return host::DisplayPixels(map, rect, row, column, context, false);
}

class DisplayPixelsTest : public CoreTest {
  protected:
    DisplayPixelsTest()
        : window(CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 20, 20, windowWidth,
                                 windowHeight, nullptr, nullptr, nullptr, nullptr)) {
        display = {};
        record.displayPixels = Display;
        FillWithNoise(pic);
        const HDC context = GetDC(window);
        const HBRUSH brush = CreateSolidBrush(ground);
        const RECT all{0, 0, windowWidth, windowHeight};
        FillRect(context, &all, brush);
        DeleteObject(brush);
        ReleaseDC(window, context);
    }
    ~DisplayPixelsTest() override {
        DestroyWindow(window);
        errorCell = 0;
    }

    std::int16_t Draw(const hostapi::VRect& rect, std::int32_t row, std::int32_t column,
                      HRGN region = nullptr) {
        const ViewTarget target{window, region};
        return DisplayPixels(pic.pixelMap.get(), &rect, row, column, &target);
    }

    /// The window shows the raster's rectangle at (`column`, `row`), inside `clip` only.
    void ExpectDrawn(const hostapi::VRect& rect, int row, int column, const RECT& clip) {
        const HDC context = GetDC(window);
        for (int y = 0; y < windowHeight; ++y) {
            for (int x = 0; x < windowWidth; ++x) {
                const int sourceX = x - column + rect.left;
                const int sourceY = y - row + rect.top;
                const bool drawn = sourceX >= rect.left && sourceX < rect.right &&
                                   sourceY >= rect.top && sourceY < rect.bottom && x >= clip.left &&
                                   x < clip.right && y >= clip.top && y < clip.bottom;
                // A colour of GDI has red in the low byte, as a pixel has.
                const COLORREF expected =
                    drawn ? pic.GetPixel(static_cast<short>(sourceX), static_cast<short>(sourceY)) &
                                0xFFFFFF
                          : ground;
                ASSERT_EQ(GetPixel(context, x, y), expected) << x << ", " << y;
            }
        }
        ReleaseDC(window, context);
    }

    static constexpr RECT everything{0, 0, windowWidth, windowHeight};
    HWND window;
    PaintClass pic{16, 12};
};

TEST_F(DisplayPixelsTest, DrawsTheWholeRasterWithItsLastRowAndColumn) {
    constexpr hostapi::VRect whole{0, 0, 12, 16};
    EXPECT_EQ(Draw(whole, 5, 7), 0);
    EXPECT_EQ(display.calls, 1);
    ExpectDrawn(whole, 5, 7, everything);
}

TEST_F(DisplayPixelsTest, HandsTheHostARaisedCopyOfTheMap) {
    const hostapi::PSPixelMap before = *pic.pixelMap;
    Draw({2, 3, 12, 16}, 5, 7);
    EXPECT_EQ(display.map.bounds.right, 16);
    EXPECT_EQ(display.map.bounds.bottom, 12);
    EXPECT_EQ(display.map.baseAddr, pic.Base());
    EXPECT_EQ(display.rect.top, 2);
    EXPECT_EQ(display.rect.left, 3);
    EXPECT_EQ(display.row, 5);
    EXPECT_EQ(display.column, 7);
    EXPECT_NE(display.context, nullptr);
    EXPECT_EQ(std::memcmp(&before, pic.pixelMap.get(), sizeof before), 0);
    Draw({2, 3, 5, 6}, 5, 7);
    EXPECT_EQ(display.map.bounds.right, 15);
    EXPECT_EQ(display.map.bounds.bottom, 11);
}

TEST_F(DisplayPixelsTest, DrawsAPart) {
    constexpr hostapi::VRect part{3, 2, 9, 11};
    EXPECT_EQ(Draw(part, 4, 6), 0);
    ExpectDrawn(part, 4, 6, everything);
}

TEST_F(DisplayPixelsTest, KeepsToTheClippingRegion) {
    constexpr RECT clip{9, 6, 15, 11};
    const HRGN region = CreateRectRgnIndirect(&clip);
    constexpr hostapi::VRect whole{0, 0, 12, 16};
    EXPECT_EQ(Draw(whole, 5, 7, region), 0);
    DeleteObject(region);
    ExpectDrawn(whole, 5, 7, clip);
}

TEST_F(DisplayPixelsTest, TheHostsResultIsTheAnswer) {
    display.answer = -30100;
    EXPECT_EQ(Draw({0, 0, 12, 16}, 0, 0), -30100);
}

TEST_F(DisplayPixelsTest, AMissingServiceIsAnAnswer) {
    record.displayPixels = nullptr;
    EXPECT_EQ(Draw({0, 0, 12, 16}, 0, 0), 17500);
    filterRecord = nullptr;
    EXPECT_EQ(Draw({0, 0, 12, 16}, 0, 0), 17500);
    filterRecord = &record;
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(DisplayPixelsTest, ATargetWithoutAWindowIsAFault) {
    const HWND gone = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                      nullptr, nullptr);
    DestroyWindow(gone);
    for (const HWND noWindow : {gone, static_cast<HWND>(nullptr)}) {
        Log().faults.clear();
        const ViewTarget target{noWindow, nullptr};
        constexpr hostapi::VRect rect{0, 0, 12, 16};
        EXPECT_EQ(FaultOf([&] { DisplayPixels(pic.pixelMap.get(), &rect, 0, 0, &target); }), 20008);
        ASSERT_EQ(Log().faults.size(), 1u);
        EXPECT_EQ(Log().faults[0].file, "PhotoshopUtilities.Win");
    }
    EXPECT_EQ(display.calls, 0);
}

}  // namespace

// Pictures, icons and cursors are there, of the size and with the hot spot that the program takes
// for granted.
#include <gtest/gtest.h>
#include <windows.h>

#include <memory>

#include "tests/resources/OpenedDialog.Win.h"

namespace {

constexpr COLORREF white = RGB(255, 255, 255);

class LoadedBitmap {
  public:
    explicit LoadedBitmap(int id)
        : bitmap(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0,
                            LR_CREATEDIBSECTION)),
          context(CreateCompatibleDC(nullptr)),
          old(SelectObject(context, bitmap)) {}
    LoadedBitmap(const LoadedBitmap&) = delete;
    LoadedBitmap& operator=(const LoadedBitmap&) = delete;
    ~LoadedBitmap() {
        SelectObject(context, old);
        DeleteDC(context);
        DeleteObject(bitmap);
    }

    bool IsLoaded() const { return bitmap != nullptr; }
    SIZE Size() const {
        BITMAP data{};
        GetObjectA(bitmap, sizeof data, &data);
        return {data.bmWidth, data.bmHeight};
    }
    COLORREF At(int x, int y) const { return GetPixel(context, x, y); }
    /// How many pixels of the part are not white.
    int Drawn(const RECT& part) const {
        int count = 0;
        for (int y = part.top; y < part.bottom; ++y) {
            for (int x = part.left; x < part.right; ++x) {
                count += At(x, y) != white ? 1 : 0;
            }
        }
        return count;
    }

  private:
    HANDLE bitmap;
    HDC context;
    HGDIOBJ old;
};

/// A drawing's scale in percent, and what it adds to the ids of bitmaps.
struct Scale {
    int percent;
    int idStep;
};
constexpr Scale scales[] = {{100, 0}, {150, 10000}, {200, 20000}};

int Scaled(int pixels, const Scale& scale) {
    return (pixels * scale.percent + 50) / 100;
}

void ExpectSize(int id, int width, int height) {
    const LoadedBitmap bitmap(id);
    ASSERT_TRUE(bitmap.IsLoaded()) << id;
    EXPECT_EQ(bitmap.Size().cx, width) << id;
    EXPECT_EQ(bitmap.Size().cy, height) << id;
}

TEST(ResourcePictures, PalettesHaveACellForEachTool) {
    for (const Scale& scale : scales) {
        const int cellWidth = Scaled(25, scale);
        const int cellHeight = Scaled(21, scale);
        const int width = Scaled(24, scale);
        const int height = Scaled(20, scale);
        for (const auto& [id, rows] : {std::pair(16004, 1), std::pair(16015, 4)}) {
            ExpectSize(id + scale.idStep, 2 * cellWidth, rows * cellHeight);
            const LoadedBitmap palette(id + scale.idStep);
            for (int cell = 0; cell < 2 * rows; ++cell) {
                const int left = cell % 2 * cellWidth;
                const int top = cell / 2 * cellHeight;
                EXPECT_GT(palette.Drawn({left, top, left + width, top + height}),
                          50 * scale.percent / 100)
                    << id << " " << cell;
                // White, which lets the button through, all round: also where a neighbour's line
                // is.
                EXPECT_EQ(palette.At(left, top), white);
                EXPECT_EQ(palette.At(left + width - 1, top), white);
                EXPECT_NE(palette.At(left + width, top), white);
                EXPECT_NE(palette.At(left, top + height), white);
            }
        }
    }
}

TEST(ResourcePictures, EveryButtonWithAPictureHasIt) {
    int count = 0;
    for (const Control& control : Opened(16001).Controls()) {
        if (control.className != L"tBitmapButton") {
            continue;
        }
        ++count;
        const bool isAlone = control.text.empty();
        for (const Scale& scale : scales) {
            const int id = control.id + scale.idStep;
            ExpectSize(id, Scaled(isAlone ? 21 : 16, scale), Scaled(isAlone ? 15 : 16, scale));
            const LoadedBitmap bitmap(id);
            const SIZE size = bitmap.Size();
            EXPECT_GT(bitmap.Drawn({0, 0, size.cx, size.cy}), 40) << id;
            EXPECT_EQ(bitmap.At(0, size.cy - 1), white) << id;
        }
    }
    EXPECT_EQ(count, 26);
}

/// They need no scaling at 96 dots an inch.
TEST(ResourcePictures, PicturesToClickOnAreAsLargeAsTheirItems) {
    const struct {
        int dialog;
        int item;
        int picture;
    } places[] = {{16600, 28, 16006}, {16600, 34, 16007}, {16600, 62, 16006}, {16600, 63, 16007},
                  {16600, 48, 16013}, {16600, 49, 16014}, {16650, 8, 16009},  {16650, 9, 16010},
                  {16650, 10, 16011}, {16650, 11, 16012}};
    for (const auto& place : places) {
        const Control control = Opened(place.dialog).Item(place.item);
        ExpectSize(place.picture, control.bounds.right - control.bounds.left,
                   control.bounds.bottom - control.bounds.top);
        const SIZE plain = LoadedBitmap(place.picture).Size();
        for (const Scale& scale : scales) {
            ExpectSize(place.picture + scale.idStep, Scaled(static_cast<int>(plain.cx), scale),
                       Scaled(static_cast<int>(plain.cy), scale));
        }
        // The control has loaded that picture.
        const auto loaded =
            reinterpret_cast<HBITMAP>(SendMessageA(control.window, STM_GETIMAGE, IMAGE_BITMAP, 0));
        BITMAP data{};
        ASSERT_NE(GetObjectA(loaded, sizeof data, &data), 0) << place.item;
        EXPECT_EQ(data.bmWidth, LoadedBitmap(place.picture).Size().cx);
    }
}

/// Twice its radius, which is half the smaller side.
TEST(ResourcePictures, DialIsAsLargeAsItIsDrawn) {
    for (const auto& [dialog, item] : {std::pair(16350, 11), std::pair(16600, 58)}) {
        const RECT bounds = Opened(dialog).Item(item).bounds;
        const int side = 2 * (std::min(bounds.right - bounds.left, bounds.bottom - bounds.top) / 2);
        for (const Scale& scale : scales) {
            ExpectSize(16008 + scale.idStep, Scaled(side, scale), Scaled(side, scale));
        }
    }
}

struct IconShape {
    SIZE size{};
    POINT hotSpot{};
    bool isIcon = false;
};

IconShape ShapeOf(HANDLE icon) {
    ICONINFO info{};
    if (!GetIconInfo(static_cast<HICON>(icon), &info)) {
        return {};
    }
    BITMAP data{};
    GetObjectA(info.hbmColor != nullptr ? info.hbmColor : info.hbmMask, sizeof data, &data);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return {{data.bmWidth, data.bmHeight},
            {static_cast<LONG>(info.xHotspot), static_cast<LONG>(info.yHotspot)},
            info.fIcon != FALSE};
}

TEST(ResourcePictures, CursorsHaveTheirHotSpots) {
    const struct {
        int id;
        POINT hotSpot;
    } cursors[] = {{16001, {16, 16}}, {16002, {7, 25}},  {16003, {9, 22}},  {16004, {6, 26}},
                   {16005, {12, 12}}, {16006, {16, 21}}, {16007, {6, 24}},  {16008, {7, 26}},
                   {16009, {16, 17}}, {16010, {12, 12}}, {16011, {16, 17}}, {16012, {15, 15}},
                   {16013, {16, 16}}, {16014, {12, 12}}};
    for (const auto& expected : cursors) {
        for (const Scale& scale : scales) {
            const int side = Scaled(32, scale);
            const HANDLE cursor =
                LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(expected.id), IMAGE_CURSOR,
                           side, side, 0);
            ASSERT_NE(cursor, nullptr) << expected.id;
            const IconShape shape = ShapeOf(cursor);
            EXPECT_FALSE(shape.isIcon);
            EXPECT_EQ(shape.hotSpot.x, expected.hotSpot.x * scale.percent / 100) << expected.id;
            EXPECT_EQ(shape.hotSpot.y, expected.hotSpot.y * scale.percent / 100) << expected.id;
            EXPECT_EQ(shape.size.cx, side) << expected.id;
            DestroyCursor(static_cast<HCURSOR>(cursor));
        }
    }
}

/// The widths of the pictures in an icon, in their order.
std::vector<int> SidesOfIcon(int id) {
    constexpr std::size_t headSize = 6;
    constexpr std::size_t entrySize = 14;
    const HMODULE module = GetModuleHandleA(nullptr);
    const HRSRC found =
        FindResourceA(module, MAKEINTRESOURCEA(id), reinterpret_cast<LPCSTR>(RT_GROUP_ICON));
    const auto* const bytes =
        static_cast<const std::uint8_t*>(LockResource(LoadResource(module, found)));
    std::vector<int> sides;
    for (std::size_t i = 0; i < bytes[4]; ++i) {
        sides.push_back(bytes[headSize + i * entrySize]);
    }
    return sides;
}

TEST(ResourcePictures, IconsHaveTheirSizes) {
    const struct {
        int id;
        int side;
    } icons[] = {{16011, 13}, {16024, 32}, {16025, 13}, {16026, 9}, {16027, 9},
                 {16032, 11}, {16033, 11}, {16254, 32}, {16255, 32}};
    for (const auto& expected : icons) {
        const HANDLE icon = LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(expected.id),
                                       IMAGE_ICON, 0, 0, 0);
        ASSERT_NE(icon, nullptr) << expected.id;
        EXPECT_EQ(ShapeOf(icon).size.cx, expected.side) << expected.id;
        EXPECT_EQ(ShapeOf(icon).size.cy, expected.side) << expected.id;
        DestroyIcon(static_cast<HICON>(icon));
        EXPECT_EQ(SidesOfIcon(expected.id),
                  (std::vector<int>{expected.side, Scaled(expected.side, scales[1]),
                                    Scaled(expected.side, scales[2])}))
            << expected.id;
    }
    for (int side : {16, 32, 48}) {
        const HANDLE icon = LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(16028),
                                       IMAGE_ICON, side, side, 0);
        EXPECT_EQ(ShapeOf(icon).size.cx, side);
        DestroyIcon(static_cast<HICON>(icon));
    }
}

}  // namespace

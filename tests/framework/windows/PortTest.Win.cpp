// Drawing through a dialog's port, looked at pixel by pixel.
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"

#include <algorithm>

#include "framework/dialog/SmallPSDialog.h"
#include "hostapi/FilterRecord.h"

namespace {

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF blue = RGB(0, 0, 255);
constexpr COLORREF white = RGB(255, 255, 255);

/// A bare window with a port.
class PortTest : public DialogTest {
  protected:
    PortTest()
        : window(CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 60, 40, nullptr,
                                 nullptr, nullptr, nullptr)),
          port(window) {
        port.SetBackground(white);
        port.FillRect({0, 0, 40, 60});
        port.SetForeground(red);
    }
    ~PortTest() override { DestroyWindow(window); }

    COLORREF At(int x, int y) const {
        const HDC context = GetDC(window);
        const COLORREF color = GetPixel(context, x, y);
        ReleaseDC(window, context);
        return color;
    }

    int CountNot(COLORREF color) const {
        int count = 0;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 60; ++x) {
                count += At(x, y) != color ? 1 : 0;
            }
        }
        return count;
    }

    HWND window;
    DrawingPort port;
};

TEST_F(PortTest, ALineHasBothEnds) {
    port.DrawLine({5, 10}, {5, 20});
    EXPECT_EQ(At(10, 5), red);
    EXPECT_EQ(At(20, 5), red);
    EXPECT_EQ(CountNot(white), 11);
    port.DrawLine({8, 3}, {8, 3});
    EXPECT_EQ(CountNot(white), 12);
}

TEST_F(PortTest, InExclusiveOrTheEndIsLeftOutAndTwiceIsNothing) {
    port.SetForeground(0);
    port.SetPenMode(PenMode::exclusiveOr);
    port.DrawLine({5, 10}, {5, 20});
    EXPECT_EQ(CountNot(white), 10);
    EXPECT_EQ(At(20, 5), white);
    port.DrawLine({5, 10}, {5, 20});
    EXPECT_EQ(CountNot(white), 0);
    port.PaintRect({1, 1, 5, 5});
    EXPECT_EQ(CountNot(white), 16);
    port.PaintRect({1, 1, 5, 5});
    port.FrameRect({2, 2, 12, 22});
    EXPECT_EQ(CountNot(white), 2 * 20 + 2 * 8);
    port.FrameRect({2, 2, 12, 22});
    EXPECT_EQ(CountNot(white), 0);
    port.ResetPen();
    port.DrawLine({5, 10}, {5, 20});
    EXPECT_EQ(CountNot(white), 11);
}

TEST_F(PortTest, RectanglesAreFilledPaintedAndFramed) {
    port.PaintRect({10, 10, 20, 30});
    EXPECT_EQ(CountNot(white), 200);
    EXPECT_EQ(At(10, 10), red);
    EXPECT_EQ(At(29, 19), red);
    EXPECT_EQ(At(30, 19), white);
    port.FillRect({10, 10, 20, 30});
    EXPECT_EQ(CountNot(white), 0);
    port.SetPenWidth(3);
    port.FrameRect({10, 10, 20, 30});
    EXPECT_EQ(CountNot(white), 200 - 14 * 4);
    EXPECT_EQ(At(12, 12), red);
    EXPECT_EQ(At(13, 13), white);
    port.FrameRect({30, 30, 31, 31});
    EXPECT_EQ(At(30, 30), red);
    port.FrameRect({35, 35, 35, 50});
    EXPECT_EQ(CountNot(white), 200 - 14 * 4 + 1);
}

TEST_F(PortTest, DrawingIsClipped) {
    const Region region(hostapi::Rect{0, 0, 10, 10});
    Region before;
    port.CopyClip(before);
    port.SetClip(region);
    port.PaintRect({5, 5, 20, 20});
    EXPECT_EQ(CountNot(white), 25);
    const Region extra(hostapi::Rect{0, 0, 40, 6});
    port.SetExtraClip(&extra);
    port.SetForeground(blue);
    port.PaintRect({5, 5, 20, 20});
    EXPECT_EQ(At(5, 5), blue);
    EXPECT_EQ(At(5, 9), blue);
    EXPECT_EQ(At(6, 5), red);
    port.SetExtraClip(nullptr);
    port.SetClip(before);
    port.PaintRect({5, 5, 20, 20});
    EXPECT_EQ(CountNot(white), 225);
    port.SetClipRect({0, 0, 1, 1});
    port.PaintRect({0, 0, 40, 60});
    EXPECT_EQ(CountNot(white), 226);
}

TEST_F(PortTest, TheHostDrawsIntoTheClipRegion) {
    EXPECT_EQ(port.Target().window, window);
    RECT box{};
    GetRgnBox(static_cast<HRGN>(port.Target().clipRegion), &box);
    EXPECT_EQ(box.right, 30000);
    EXPECT_EQ(box.bottom, 30000);
}

TEST_F(PortTest, SystemColorsHaveNumbers) {
    port.SetSystemColor(systemHighlight);
    EXPECT_EQ(port.Foreground(), GetSysColor(COLOR_HIGHLIGHT));
    port.SetSystemColor(5);
    EXPECT_EQ(port.Foreground(), GetSysColor(COLOR_ACTIVECAPTION));
    port.SetSystemColor(8);
    EXPECT_EQ(port.Foreground(), GetSysColor(COLOR_ACTIVECAPTION));
    port.SetSystemColor(7);
    EXPECT_EQ(port.Foreground(), GetSysColor(COLOR_WINDOW));
    port.SetSystemColor(systemButtonText);
    EXPECT_EQ(port.Foreground(), GetSysColor(COLOR_BTNTEXT));
    port.SetSystemColor(systemGrayText);
    EXPECT_EQ(port.Foreground(), GetSysColor(COLOR_GRAYTEXT));
    port.SetSystemColor(systemHighlightText);
    EXPECT_EQ(port.Foreground(), GetSysColor(COLOR_HIGHLIGHTTEXT));
    port.SetSystemColor(systemFixedGray);
    EXPECT_EQ(port.Foreground(), RGB(0x7F, 0x7F, 0x7F));
    EXPECT_EQ(FaultOf([&] { port.SetSystemColor(9); }), 20008);
    EXPECT_EQ(FaultOf([&] { port.SetSystemColor(0); }), 20008);
}

TEST_F(PortTest, PicturesAndIconsAreFoundByNumber) {
    EXPECT_EQ(port.DrawPicture(603, {0, 0, 20, 20}), 0);
    EXPECT_GT(CountNot(white), 100);
    port.FillRect({0, 0, 40, 60});
    EXPECT_EQ(port.DrawIcon(601, {10, 20}), 0);
    EXPECT_GT(CountNot(white), 20);
    EXPECT_EQ(port.IconSize(601).h, 9);
    EXPECT_EQ(port.IconSize(601).v, 9);
    port.FillRect({0, 0, 40, 60});
    EXPECT_EQ(port.DrawPicture(9999, {0, 0, 20, 20}), 20001);
    EXPECT_EQ(port.DrawIcon(9999, {0, 0}), 20001);
    EXPECT_EQ(port.IconSize(9999).h, 0);
    EXPECT_EQ(CountNot(white), 0);
}

TEST_F(PortTest, TheLastPictureGivesWayToAnother) {
    port.DrawPicture(603, {0, 0, 20, 20});
    const COLORREF first = At(10, 10);
    port.DrawPicture(600, {0, 0, 20, 20});
    EXPECT_NE(At(10, 10), first);
    port.DrawPicture(603, {0, 0, 20, 20});
    EXPECT_EQ(At(10, 10), first);
}

TEST_F(PortTest, AnEdgeIsOnePixelWideAndHasTwoLooks) {
    port.DrawEdge({5, 5, 15, 25}, 0);
    const COLORREF sunken = At(5, 5);
    EXPECT_NE(sunken, white);
    EXPECT_EQ(At(6, 6), white);
    port.DrawEdge({5, 5, 15, 25}, -1);
    EXPECT_EQ(At(5, 5), sunken);
    port.DrawEdge({5, 5, 15, 25}, 1);
    EXPECT_NE(At(5, 5), sunken);
    EXPECT_EQ(At(6, 6), white);
}

TEST_F(PortTest, TextIsAligned) {
    const auto corner = [&](unsigned flags) {
        port.SetForeground(0);
        port.DrawText("I", {0, 0, 40, 60}, flags);
        // The leftmost column and the topmost row with a pixel.
        POINT nearest{60, 40};
        for (LONG y = 0; y < 40; ++y) {
            for (LONG x = 0; x < 60; ++x) {
                if (At(x, y) != white) {
                    nearest = {std::min(nearest.x, x), std::min(nearest.y, y)};
                }
            }
        }
        return nearest;
    };
    const POINT plain = corner(0);
    EXPECT_LT(plain.x, 4);
    EXPECT_LT(plain.y, 6);
    EXPECT_GT(corner(textRight).x, 50);
    EXPECT_NEAR(corner(textCentered).x, 29, 3);
    EXPECT_NEAR(corner(textMiddle).y, 15, 4);
    EXPECT_GT(corner(textBottom).y, 25);
    EXPECT_GT(corner(textMiddle | textRight).x, 50);
}

TEST_F(PortTest, TextWrapsUnlessItMayNot) {
    port.SetForeground(0);
    const auto hasSecondLine = [&] {
        for (int y = 16; y < 40; ++y) {
            for (int x = 0; x < 60; ++x) {
                if (At(x, y) != white) {
                    return true;
                }
            }
        }
        return false;
    };
    port.DrawText("wrapped text", {0, 0, 40, 60}, 0);
    EXPECT_TRUE(hasSecondLine());
    port.DrawText("wrapped text", {0, 0, 40, 60}, textNoWrap);
    EXPECT_FALSE(hasSecondLine());
}

TEST_F(PortTest, ATextHigherThanItsPlaceStaysInIt) {
    port.SetForeground(0);
    for (const unsigned flag : {textMiddle, textBottom}) {
        port.DrawText("I\nI\nI\nI", {20, 10, 26, 50}, flag);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 60; ++x) {
                const bool isInside = y >= 20 && y < 26 && x >= 10 && x < 50;
                ASSERT_TRUE(isInside || At(x, y) == white) << x << "," << y;
            }
        }
    }
}

TEST_F(DialogTest, MenuEntriesAreCheckedAndRenamed) {
    constexpr UINT own = 17777;
    TestDialog dialog(530);
    dialog.atIdle = [&] {
        const HMENU menu = GetMenu(static_cast<HWND>(dialog.Window()));
        DrawingPort& port = dialog.Port();
        const auto has = [&](UINT flag) {
            return (GetMenuState(menu, own, MF_BYCOMMAND) & flag) != 0;
        };
        port.CheckMenuItem(own, true);
        EXPECT_TRUE(has(MF_CHECKED));
        port.CheckMenuItem(own, false);
        EXPECT_FALSE(has(MF_CHECKED));
        port.EnableMenuItem(own, false);
        EXPECT_TRUE(has(MF_GRAYED));
        port.EnableMenuItem(own, true);
        EXPECT_FALSE(has(MF_GRAYED));
        port.RenameMenuItem(own, "Another");
        char text[32] = "";
        GetMenuStringA(menu, own, text, sizeof text, MF_BYCOMMAND);
        EXPECT_STREQ(text, "Another");
        port.RenameMenuItem(4711, "none");
        dialog.Close(1);
    };
    EXPECT_EQ(dialog.Run(), 1);
}

TEST_F(PortTest, StringsAreLoadedByBaseAndIndex) {
    char text[textBufferSize] = "before";
    EXPECT_EQ(LoadIndexedString(text, 500, 4), 0);
    EXPECT_STREQ(text, "Help on item 4.");
    EXPECT_EQ(LoadIndexedString(text, 500, 5), 20001);
    EXPECT_STREQ(text, "");
}

TEST_F(PortTest, InvalidRectanglesArePaintedAgainWithoutErasing) {
    ValidateRect(window, nullptr);
    port.InvalidateRect({3, 4, 10, 20});
    RECT update{};
    EXPECT_TRUE(GetUpdateRect(window, &update, FALSE));
    EXPECT_EQ(update.left, 4);
    EXPECT_EQ(update.top, 3);
    EXPECT_EQ(update.right, 20);
    EXPECT_EQ(update.bottom, 10);
    EXPECT_EQ(At(5, 5), white) << "what stands there stays";
}

class ColorDialog : public SmallPSDialog {
  public:
    ColorDialog() : SmallPSDialog(allItems) {}

    void Idle() override {
        if (!wasDrawn) {
            DrawColorBox({100, 100, 110, 120}, MakeColor24(200, 100, 50));
            MoveTo(10, 3);
            LineTo(15, 3);
            LineTo(15, 6);
            const HWND handle = static_cast<HWND>(Window());
            const HDC context = GetDC(handle);
            colors = {GetPixel(context, 100, 100), GetPixel(context, 101, 101),
                      GetPixel(context, 102, 102), GetPixel(context, 119, 109),
                      GetPixel(context, 15, 6)};
            ReleaseDC(handle, context);
            wasDrawn = true;
            SetPlacement(60, 70);
            placed = ClientRectangle();
            SetPlacement(-40, 70);
            placedAbove = ClientRectangle();
        }
        Close(9);
    }

    bool wasDrawn = false;
    std::vector<COLORREF> colors;
    hostapi::Rect placed{};
    hostapi::Rect placedAbove{};
};

TEST_F(DialogTest, AColorBoxHasAFrameAndAShade) {
    ColorDialog dialog;
    EXPECT_EQ(dialog.Run(), 9);
    EXPECT_EQ(dialog.colors,
              (std::vector<COLORREF>{RGB(0, 0, 0), RGB(140, 140, 140), RGB(200, 100, 50),
                                     RGB(0, 0, 0), RGB(0, 0, 0)}));
    EXPECT_EQ(dialog.placed.top, 60);
    EXPECT_EQ(dialog.placed.left, 70);
    EXPECT_EQ(dialog.placedAbove.top, -40) << "on a screen above the first";
    EXPECT_EQ(Height(dialog.placedAbove), Height(dialog.placed));
    EXPECT_EQ(dialog.Record(), &record);
}

TEST_F(DialogTest, ADialogOfTheHostNeedsItsRecord) {
    EXPECT_EQ(FaultOf([] {
                  filterRecord = nullptr;
                  ColorDialog dialog;
              }),
              2);
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].file, "SmallPSDialog / Zeile 23 !(f != NULL)");
}

}  // namespace

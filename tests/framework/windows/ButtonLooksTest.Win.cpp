// The pixels of the padlock, the button with a picture and the palette.
#include <string>

#include "tests/framework/windows/ColorBounds.Win.h"
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

/// The colour of both padlocks' bodies and of the first tool.
constexpr COLORREF black = RGB(0, 0, 0);

class ButtonLooksTest : public ControlsTest {
  protected:
    host::Picture Locked(Script& script, int state) const {
        Send(script, padLock, controlSetValue, 0, state);
        return script.Shot(padLock);
    }
    host::Picture Button(Script& script, bool isPressed) const {
        Send(script, bitmapButton, BM_SETSTATE, isPressed ? TRUE : FALSE, 0);
        return script.Shot(bitmapButton);
    }
    host::Picture Palette(Script& script, int chosen) const {
        Send(script, palette, controlSetValue, 0, chosen);
        return script.Shot(palette);
    }
};

TEST_F(ButtonLooksTest, AButtonHasTheFontThatItIsGiven) {
    Run([&](Script& script) {
        const auto fontOf = [&](short item) {
            return SendMessageA(script.Item(item), WM_GETFONT, 0, 0);
        };
        EXPECT_NE(fontOf(bitmapButton), 0);
        EXPECT_EQ(fontOf(bitmapButton), fontOf(check));
        const host::Picture before = script.Shot(bitmapButton);
        SendMessageA(script.Item(bitmapButton), WM_SETFONT,
                     reinterpret_cast<WPARAM>(GetStockObject(SYSTEM_FIXED_FONT)), TRUE);
        EXPECT_EQ(fontOf(bitmapButton),
                  reinterpret_cast<LRESULT>(GetStockObject(SYSTEM_FIXED_FONT)));
        EXPECT_FALSE(before == script.Shot(bitmapButton));
    });
}

TEST_F(ButtonLooksTest, AClosedPadlockHasASunkenEdge) {
    Run([&](Script& script) {
        const auto edges = [](const host::Picture& shot) {
            const int middle = shot.height / 2;
            return std::pair{ColorAt(shot, 0, middle), ColorAt(shot, shot.width - 1, middle)};
        };
        EXPECT_EQ(edges(Locked(script, 0)),
                  std::pair(GetSysColor(COLOR_3DLIGHT), GetSysColor(COLOR_3DDKSHADOW)));
        EXPECT_EQ(edges(Locked(script, 1)),
                  std::pair(GetSysColor(COLOR_BTNSHADOW), GetSysColor(COLOR_BTNHIGHLIGHT)));
    });
}

TEST_F(ButtonLooksTest, ThePadlocksPictureStandsInTheMiddle) {
    Run([&](Script& script) {
        const host::Picture shot = Locked(script, 1);
        // The body takes 8 of 12 columns, from the third one on, and ends in the 13th of 14 rows.
        const RECT body = BoundsOf(shot, black, 2);
        EXPECT_EQ(body.left, (shot.width - 12) / 2 + 2);
        EXPECT_EQ(body.right, (shot.width - 12) / 2 + 10);
        EXPECT_EQ(body.bottom, (shot.height - 14) / 2 + 13);
    });
}

TEST_F(ButtonLooksTest, ThePictureOfAPressedButtonMovesByOnePixel) {
    Run([&](Script& script) {
        const host::Picture shown = Button(script, false);
        const RECT around{3, 3, 22, shown.height - 3};
        const COLORREF color = ColorAt(shown, 3 + 8, shown.height / 2);
        EXPECT_NE(color, GetSysColor(COLOR_BTNFACE));
        const RECT up = BoundsOf(shown, color, around);
        const RECT down = BoundsOf(Button(script, true), color, around);
        EXPECT_EQ(down.left, up.left + 1);
        EXPECT_EQ(down.top, up.top + 1);
        EXPECT_EQ(down.right, up.right + 1);
        EXPECT_EQ(down.bottom, up.bottom + 1);
        // 3 pixels in, and the disc on it begins in the third column.
        EXPECT_EQ(up.left, 3 + 2);
    });
}

TEST_F(ButtonLooksTest, TheFocusFrameIsAroundTheTextAlone) {
    Run([&](Script& script) {
        const host::Picture before = script.Shot(bitmapButton);
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL,
                     reinterpret_cast<WPARAM>(script.Item(bitmapButton)), TRUE);
        const host::Picture focused = script.Shot(bitmapButton);
        RECT frame{};
        for (int y = 0; y < focused.height; ++y) {
            for (int x = 0; x < focused.width; ++x) {
                if (ColorAt(before, x, y) != ColorAt(focused, x, y)) {
                    const RECT pixel{x, y, x + 1, y + 1};
                    UnionRect(&frame, &frame, &pixel);
                }
            }
        }
        // 2 pixels after the picture, which is 16 wide and 3 in. Each second pixel is drawn.
        EXPECT_NEAR(static_cast<double>(frame.left), 3 + 16 + 2, 1);
        EXPECT_NEAR(static_cast<double>(frame.right), focused.width - 3, 1);
        EXPECT_NEAR(static_cast<double>(frame.top), 2, 1);
        EXPECT_NEAR(static_cast<double>(frame.bottom), focused.height - 2, 1);
    });
}

TEST_F(ButtonLooksTest, ATextThatDoesNotFitTheButtonEndsInDots) {
    Run([&](Script& script) {
        SetWindowTextA(script.Item(bitmapButton), std::string(50, 'M').c_str());
        const host::Picture shot = script.Shot(bitmapButton);
        RECT end =
            BoundsOf(shot, GetSysColor(COLOR_BTNTEXT), RECT{24, 4, shot.width, shot.height - 4});
        end.left = end.right - 6;
        EXPECT_GT(BoundsOf(shot, GetSysColor(COLOR_BTNTEXT), end).top, shot.height / 2)
            << "all low";
    });
}

TEST_F(ButtonLooksTest, TheImageOfTheChosenToolMovesByOnePixelOnALightGround) {
    Run([&](Script& script) {
        const host::Picture none = Palette(script, 0);
        const host::Picture chosen = Palette(script, 1);
        const RECT cell{3, 3, none.width / 2 - 3, none.height / 2 - 3};
        const RECT up = BoundsOf(none, black, cell);
        const RECT down = BoundsOf(chosen, black, cell);
        EXPECT_EQ(down.left, up.left + 1);
        EXPECT_EQ(down.top, up.top + 1);
        EXPECT_EQ(down.right, up.right + 1);
        EXPECT_EQ(ColorAt(none, 2, 2), GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(ColorAt(chosen, 2, 2), GetSysColor(COLOR_BTNHIGHLIGHT));
        EXPECT_NE(ColorAt(chosen, 1, 1), GetSysColor(COLOR_BTNHIGHLIGHT));
    });
}

}  // namespace

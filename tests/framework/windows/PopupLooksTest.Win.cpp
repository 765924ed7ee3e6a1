// The pixels of a popup: its box, the text and the picture in it, and where its menu opens.
#include <string>

#include "fixtures/InputDesktop.Win.h"
#include "tests/framework/windows/ColorBounds.Win.h"
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

constexpr COLORREF inkColor = RGB(0, 0, 0);
constexpr COLORREF boxColor = RGB(255, 255, 255);
/// The colour of the picture 603.
constexpr COLORREF orangeColor = RGB(255, 165, 0);

/// Columns of a popup; right ones are exclusive.
struct PopupBox {
    int left;
    int right;
    int height;

    /// Inside the sunken edge.
    int InsideLeft() const { return left + 2; }
    int InsideRight() const { return right - 2; }
    int ArrowLeft() const { return InsideRight() - height * 2 / 3; }
};

/// The box of a popup that is enabled: a black frame stands in its edge, higher than the label.
PopupBox BoxIn(const host::Picture& shot) {
    constexpr int frame = 2;
    const RECT line = BoundsOf(shot, inkColor, RECT{0, frame, shot.width, frame + 1});
    return {static_cast<int>(line.left) - frame, static_cast<int>(line.right) + frame, shot.height};
}

/// The pixels of a colour between the box's frame and its arrow.
RECT Inside(const host::Picture& shot, const PopupBox& box, COLORREF color) {
    return BoundsOf(shot, color, RECT{box.InsideLeft() + 1, 3, box.ArrowLeft(), shot.height - 3});
}

class PopupLooksTest : public ControlsTest {
  protected:
    /// The popup with this entry.
    host::Picture Shown(Script& script, int entry) const {
        Send(script, popup, controlSetValue, 0, entry);
        return script.Shot(popup);
    }
};

TEST_F(PopupLooksTest, TheArrowIsTwoThirdsOfTheHeightWide) {
    Run([&](Script& script) {
        const host::Picture shot = Shown(script, 1);
        const PopupBox box = BoxIn(shot);
        EXPECT_GT(box.left, 20) << "after the label";
        EXPECT_EQ(box.right, shot.width);
        for (int y = 4; y < shot.height - 4; ++y) {
            EXPECT_EQ(ColorAt(shot, box.ArrowLeft() - 1, y), boxColor) << y;
            EXPECT_EQ(ColorAt(shot, box.ArrowLeft() + 2, y), GetSysColor(COLOR_BTNFACE)) << y;
        }
    });
}

TEST_F(PopupLooksTest, ATextThatDoesNotFitEndsInDots) {
    Run([&](Script& script) {
        Send(script, popup, CB_INSERTSTRING, 0,
             reinterpret_cast<LPARAM>(std::string(50, 'M').c_str()));
        const host::Picture shot = Shown(script, 1);
        RECT end = Inside(shot, BoxIn(shot), inkColor);
        EXPECT_LE(end.right, BoxIn(shot).ArrowLeft());
        end.left = end.right - 6;
        const RECT dots = BoundsOf(shot, inkColor, end);
        EXPECT_GT(dots.top, shot.height / 2) << "all low";
    });
}

TEST_F(PopupLooksTest, AnAmpersandStandsForItself) {
    Run([&](Script& script) {
        Send(script, popup, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("A&B"));
        Send(script, popup, CB_INSERTSTRING, 1, reinterpret_cast<LPARAM>("AB"));
        const host::Picture with = Shown(script, 1);
        const PopupBox box = BoxIn(with);
        EXPECT_GT(Inside(with, box, inkColor).right,
                  Inside(Shown(script, 2), box, inkColor).right + 3);
    });
}

TEST_F(PopupLooksTest, WithPicturesTheTextsMoveAsideByTheBoxesHeight) {
    Run([&](Script& script) {
        const host::Picture before = Shown(script, 2);
        const PopupBox box = BoxIn(before);
        EXPECT_EQ(Send(script, popup, CB_SETITEMDATA, 0, 603), 0);
        // Also those that have no picture themselves.
        EXPECT_EQ(Inside(Shown(script, 2), box, inkColor).left,
                  Inside(before, box, inkColor).left + box.height);
        // Its colour takes the columns from 2 to 14 of the picture's 16; their edges are mixed.
        const RECT orange = Inside(Shown(script, 1), box, orangeColor);
        const int side = box.height - 2;
        EXPECT_NEAR(static_cast<double>(orange.left), box.left + 1 + side * 2 / 16.0, 2);
        EXPECT_NEAR(static_cast<double>(orange.right), box.left + 1 + side * 14 / 16.0, 1.5);
    });
}

TEST_F(PopupLooksTest, ADisabledPopupIsGrey) {
    Run([&](Script& script) {
        const PopupBox box = BoxIn(Shown(script, 1));
        EnableWindow(script.Item(popup), FALSE);
        const host::Picture shot = script.Shot(popup);
        EXPECT_EQ(Inside(shot, box, inkColor).right, 0);
        EXPECT_NE(Inside(shot, box, GetSysColor(COLOR_GRAYTEXT)).right, 0);
        EXPECT_EQ(ColorAt(shot, box.ArrowLeft() - 2, 3), GetSysColor(COLOR_BTNFACE));
    });
}

TEST_F(PopupLooksTest, TheMenuOpensAtTheBoxAndTakesTheFocus) {
    Run([&](Script& script) {
        const PopupBox box = BoxIn(Shown(script, 1));
        EXPECT_NE(script.Focus(), popup);
        RECT control{};
        GetWindowRect(script.Item(popup), &control);
        script.Click({control.right - 8, (control.top + control.bottom) / 2});
        script.WaitUntil("an open menu", [&] { return script.IsInMenu(); });
        RECT entry{};
        EXPECT_TRUE(GetMenuItemRect(nullptr, script.OpenMenu(), 0, &entry));
        constexpr double menuFrame = 4;
        EXPECT_NEAR(static_cast<double>(entry.left), static_cast<double>(control.left + box.left),
                    menuFrame);
        EXPECT_NEAR(static_cast<double>(entry.top), static_cast<double>(control.top), menuFrame);
        SendChords({{VK_ESCAPE}});
        script.WaitUntil("a closed menu", [&] { return !script.IsInMenu(); });
        script.Settle();
        EXPECT_EQ(script.Focus(), popup);
    });
}

}  // namespace

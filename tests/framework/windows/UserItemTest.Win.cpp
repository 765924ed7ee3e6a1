// Items that the dialog draws and tracks itself.
#include <atomic>

#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

class UserItemTest : public ControlsTest {};

TEST_F(UserItemTest, AUserItemIsDrawnByTheDialog) {
    dialog.atDraw = [&](short item) {
        if (item == userItem) {
            dialog.Port().SetForeground(MakeColor24(10, 200, 30));
            dialog.Port().PaintRect(dialog.GetBounds(item));
        }
    };
    Run([&](Script& script) {
        const host::Picture shot = script.Shot(userItem);
        EXPECT_EQ(ColorAt(shot, shot.width / 2, shot.height / 2), RGB(10, 200, 30));
        EXPECT_EQ(ColorAt(shot, 0, 0), RGB(10, 200, 30));
    });
}

TEST_F(UserItemTest, AUserItemIsDrawnAnewWhenItIsDisabled) {
    std::atomic<int> draws = 0;
    dialog.atDraw = [&](short item) { draws += item == userItem ? 1 : 0; };
    Run([&](Script& script) {
        script.Settle();
        const int before = draws;
        EnableWindow(script.Item(userItem), FALSE);
        script.WaitUntil("a paint", [&] { return draws > before; });
    });
}

TEST_F(UserItemTest, ADragInAUserItemFollowsTheMouseAndRestsBetween) {
    std::vector<POINT> places;
    std::atomic<int> idlesInDrag = 0;
    std::atomic<bool> isDragging = false;
    std::atomic<int> seen = 0;
    hostapi::Point press{};
    dialog.atIdle = [&] { idlesInDrag += isDragging ? 1 : 0; };
    dialog.atHit = [&](short item) {
        if (item == userItem) {
            press = dialog.Mouse();
            isDragging = true;
            hostapi::Point place;
            while (dialog.TrackMouse(&place)) {
                if (places.empty() || places.back().x != place.h) {
                    places.push_back({place.h, place.v});
                    ++seen;
                }
            }
            isDragging = false;
        }
        return item <= 2 ? item : short{0};
    };
    Run([&](Script& script) {
        script.Press(script.Inside(userItem, 5, 6));
        script.WaitUntil("the drag", [&] { return isDragging && seen == 1; });
        script.WaitUntil("idle work meanwhile", [&] { return idlesInDrag > 0; });
        for (int i = 1; i <= 5; ++i) {
            MoveMouse(script.Inside(userItem, 5 + 10 * i, 6));
            script.WaitUntil("the next place", [&] { return seen == i + 1; });
        }
        ReleaseMouse();
        script.WaitUntil("the end", [&] { return !isDragging; });
        script.Settle();
        EXPECT_EQ(dialogState.dragDepth, 0);
        script.WaitUntil("no capture", [&] {
            GUITHREADINFO info{};
            info.cbSize = sizeof info;
            GetGUIThreadInfo(GetWindowThreadProcessId(script.Dialog(), nullptr), &info);
            return info.hwndCapture == nullptr;
        });
    });
    ASSERT_EQ(places.size(), 6u);
    EXPECT_EQ(places[0].x, press.h);
    EXPECT_EQ(places[0].y, press.v);
    EXPECT_EQ(places[5].x - places[0].x, 50);
    EXPECT_EQ(Hits(userItem), 1);
}

TEST_F(UserItemTest, ASecondPressInAUserItemIsADoubleClick) {
    Run([&](Script& script) {
        script.Click(script.Middle(userItem));
        script.WaitFor("hit 20");
        script.Click(script.Middle(userItem));
        script.WaitFor("hit 20 twice");
        LetTimePass();
        script.Click(script.Middle(userItem));
        script.WaitFor("hit 20", 2);
    });
}

TEST_F(UserItemTest, AnAlertInAPressFreesTheUserItem) {
    int depth = -1;
    dialog.atHit = [&](short item) {
        if (item == userItem) {
            Alert(&dialog, 18013);
            depth = dialogState.dragDepth;
        }
        return item <= 2 ? item : short{0};
    };
    Run([&](Script& script) {
        script.Press(script.Middle(userItem));
        EXPECT_EQ(script.EndAlert(1), "Please enter a valid integer.");
        ReleaseMouse();
        script.WaitUntil("the depth", [&] { return depth >= 0; });
    });
    EXPECT_EQ(depth, 0);
}

}  // namespace

// The padlock, the button with a picture, tabs, and what all custom controls share: looks, and
// what they do without their resources.
#include "tests/framework/windows/ControlsTest.Win.h"
#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"

namespace {

// --- The padlock ---

TEST_F(ControlsTest, AClickFlipsThePadlock) {
    Run([&](Script& script) {
        const host::Picture open = script.Shot(padLock);
        script.Click(script.Middle(padLock));
        script.WaitFor("hit 15");
        EXPECT_EQ(Value(padLock), 1);
        EXPECT_FALSE(open == script.Shot(padLock));
        LetTimePass();
        script.Click(script.Middle(padLock));
        script.WaitFor("hit 15", 2);
        EXPECT_EQ(Value(padLock), 0);
        EXPECT_TRUE(open == script.Shot(padLock));
        EXPECT_EQ(Send(script, padLock, controlGetMinimum, 0, 0), 0);
        EXPECT_EQ(Send(script, padLock, controlGetCount, 0, 0), 1);
    });
}

TEST_F(ControlsTest, SettingThePadlockTellsNobody) {
    setup = [&] {
        dialog.SetValue(padLock, 42);
        EXPECT_EQ(dialog.GetValue(padLock), 1);
        dialog.SetValue(padLock, 0);
        EXPECT_EQ(dialog.GetValue(padLock), 0);
    };
    Run([](Script&) {});
    EXPECT_EQ(Hits(padLock), 0);
}

// --- The button with a picture, the tabs ---

TEST_F(ControlsTest, ABitmapButtonIsPressedByMouseAndKeys) {
    Run([&](Script& script) {
        script.Click(script.Middle(bitmapButton));
        script.WaitFor("hit 17");
        EXPECT_EQ(script.Focus(), bitmapButton);
        script.Keys({{VK_SPACE}});
        script.WaitFor("hit 17", 2);
        script.Keys({{VK_TAB}, {VK_MENU, 'U'}});
        script.WaitFor("hit 17", 3);
    });
    EXPECT_EQ(Hits(bitmapButton), 3);
}

TEST_F(ControlsTest, ABitmapButtonShowsThatItIsPressedAndDisabled) {
    Run([&](Script& script) {
        const host::Picture before = script.Shot(bitmapButton);
        SendMessageA(script.Item(bitmapButton), BM_SETSTATE, TRUE, 0);
        const host::Picture pressed = script.Shot(bitmapButton);
        SendMessageA(script.Item(bitmapButton), BM_SETSTATE, FALSE, 0);
        EXPECT_FALSE(before == pressed);
        EXPECT_TRUE(before == script.Shot(bitmapButton));
        EnableWindow(script.Item(bitmapButton), FALSE);
        EXPECT_FALSE(before == script.Shot(bitmapButton));
    });
}

TEST_F(ControlsTest, TabsHaveTheNamesOfTheWindowText) {
    Run([&](Script& script) {
        RECT rect{};
        GetWindowRect(script.Item(tab), &rect);
        script.Click({rect.left + 70, rect.top + 10});
        // The tab control tells more than once of one click.
        script.WaitUntil("the hit", [&] { return Hits(tab) == 1; });
        EXPECT_EQ(dialog.GetShort(tab), 2);
    });
    EXPECT_EQ(Hits(tab), 1);
}

TEST_F(ControlsTest, CheckBoxesRadioButtonsAndListsAreHits) {
    setup = [&] {
        SendMessageA(GetDlgItem(static_cast<HWND>(dialog.Window()), 9), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>("one"));
        SendMessageA(GetDlgItem(static_cast<HWND>(dialog.Window()), 9), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>("two"));
    };
    Run([&](Script& script) {
        script.Click(script.Middle(7));
        script.WaitFor("hit 7");
        script.Click(script.Middle(8));
        script.WaitFor("hit 8");
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(script.Item(9)),
                     TRUE);
        script.Keys({{VK_DOWN}, {VK_DOWN}});
        script.WaitFor("hit 9", 2);
        EXPECT_EQ(dialog.GetShort(9), 2);
        EXPECT_EQ(dialog.GetShort(7), 0) << "the dialog itself checks the box";
    });
}

// --- Without their resources ---

TEST_F(DialogTest, ControlsWithoutPicturesStayEmptyAndQuiet) {
    TestDialog dialog(bare);
    RunWithScript(dialog, [&](Script& script) {
        const auto send = [&](int item, UINT message, WPARAM wParam, LPARAM lParam) {
            return SendMessageA(script.Item(item), message, wParam, lParam);
        };
        EXPECT_EQ(send(3, controlGetCount, 0, 0), 0) << "a palette without cells";
        send(3, controlSetValue, 0, 1);
        script.Click(script.Middle(3));
        for (const int item : {4, 5}) {
            send(item, controlSetValue, 0, 3);
            EXPECT_EQ(send(item, controlGetValue, 0, 0), 0) << item;
            EXPECT_EQ(send(item, CB_GETCOUNT, 0, 0), 0) << item;
            send(item, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("x"));
            script.Click(script.Middle(item));
            EXPECT_FALSE(script.IsInMenu()) << item;
        }
        EXPECT_TRUE(dialog.log.All().empty());
        LetTimePass();
        script.Click(script.Middle(6));
        script.WaitFor("hit 6");
        EXPECT_EQ(send(6, controlGetValue, 0, 0), 1) << "a padlock works without its pictures";
        const host::Picture shot = script.Shot(4);
        for (int y = 0; y < shot.height; ++y) {
            for (int x = 0; x < shot.width; ++x) {
                ASSERT_EQ(ColorAt(shot, x, y), GetSysColor(COLOR_BTNFACE));
            }
        }
        script.KeepPicture("bare");
    });
}

// --- Looks ---

TEST_F(ControlsTest, EveryControlLooksDifferentWhenItIsDisabled) {
    Run([&](Script& script) {
        script.KeepPicture("controls");
        for (const int item : {palette, popup, live, slider, padLock, bitmapButton}) {
            const host::Picture before = script.Shot(item);
            EnableWindow(script.Item(item), FALSE);
            EXPECT_FALSE(before == script.Shot(item)) << item;
        }
        script.KeepPicture("controls-disabled");
    });
}

TEST_F(ControlsTest, ControlsShowTheFocus) {
    Run([&](Script& script) {
        for (const int item : {popup, live, slider, bitmapButton}) {
            const host::Picture before = script.Shot(item);
            SendMessageA(script.Dialog(), WM_NEXTDLGCTL,
                         reinterpret_cast<WPARAM>(script.Item(item)), TRUE);
            EXPECT_FALSE(before == script.Shot(item)) << item;
            script.KeepPicture("focus-" + std::to_string(item));
        }
    });
}

TEST_F(ControlsTest, ARangeAroundZeroHasAGapInTheGroove) {
    setup = [&] {
        dialog.SetRange(slider, 0, 100);
        dialog.SetValue(slider, 100);
        dialog.SetRange(22, -100, 100);
        dialog.SetValue(22, 100);
    };
    Run([&](Script& script) {
        const host::Picture plain = script.Shot(slider);
        const host::Picture gapped = script.Shot(22);
        ASSERT_EQ(plain.width, gapped.width);
        int different = 0;
        for (int y = 0; y < plain.height; ++y) {
            for (int x = 0; x < plain.width; ++x) {
                different += ColorAt(plain, x, y) != ColorAt(gapped, x, y) ? 1 : 0;
            }
        }
        // Both lines of the groove's two edges, three pixels wide.
        EXPECT_GE(different, 6);
        EXPECT_LE(different, 3 * plain.height);
        script.KeepPicture("slider-gap");
    });
}

}  // namespace

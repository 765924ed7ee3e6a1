// Windows where several screens are.
#include "base/Screens.Win.h"
#include "framework/alerts/Alert.Win.h"
#include "framework/dialog/DialogGeometry.h"
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"
#include "tests/support/windows/FakeScreens.Win.h"

namespace {

bool LiesIn(const ScreenRect& inner, const ScreenRect& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

/// The client area of a window of this size, so much from the screen's corner.
hostapi::Rect PlaceOn(const Screen& screen, const hostapi::Rect& client, int distance) {
    const int left = screen.work.left + distance;
    const int top = screen.work.top + distance;
    return ToRect({left, top, left + client.right - client.left, top + client.bottom - client.top});
}

/// The mouse of the desktop in memory does not go beyond its one screen.
void PressOk(Script& script) {
    PostMessageA(script.Item(1), BM_CLICK, 0, 0);
}

class ScreensTest : public DialogTest {
  protected:
    /// Opens the dialog at a place on the screen and tells where it is then.
    static ScreenRect FrameAfterPlacing(const hostapi::Rect& place) {
        TestDialog dialog(resizable);
        dialog.atSetup = [&] { dialog.SetPlacement(place); };
        ScreenRect frame{};
        RunWithScript(dialog, [&](Script& script) {
            frame = FrameOf(script.Dialog());
            PressOk(script);
        });
        return frame;
    }
    /// One run that opens where the last one was closed; what it leaves to the next.
    static hostapi::Rect PlaceAfterRunAt(const hostapi::Rect& place, bool* wasMaximized) {
        TestDialog dialog(resizable);
        hostapi::Rect left{};
        dialog.atSetup = [&] { dialog.SetPlacement(place); };
        dialog.atHit = [&](short item) {
            left = dialog.Placement();
            *wasMaximized = IsZoomed(static_cast<HWND>(dialog.Window())) != FALSE;
            return item;
        };
        RunWithScript(dialog, [&](Script& script) {
            const bool isMaximized = UnpackPlacement(place).isMaximized;
            script.WaitUntil("the window as it was",
                             [&] { return (IsZoomed(script.Dialog()) != FALSE) == isMaximized; });
            PressOk(script);
        });
        return left;
    }
};

constexpr hostapi::Rect someSize{0, 0, 260, 400};

TEST_F(ScreensTest, AnAlertStandsOnTheScreenOfItsDialog) {
    for (const Screen& second : SecondScreens()) {
        const TwoScreens screens(second);
        TestDialog dialog(resizable);
        // At the screen's edge, so that the middle of the window leaves no room for the alert.
        dialog.atSetup = [&] {
            dialog.SetPlacement(PackPlacement({PlaceOn(second, someSize, 8), false}));
        };
        dialog.atHit = [&](short item) {
            Alert(&dialog, 18013);
            return item;
        };
        ScreenRect alert{};
        ScreenRect below{};
        RunWithScript(dialog, [&](Script& script) {
            PressOk(script);
            alert = FrameOf(script.WaitForOther());
            below = FrameOf(script.Dialog());
            script.EndAlert(1);
        });
        EXPECT_TRUE(LiesIn(alert, Shrunk(second.work, alertMargin)));
        EXPECT_TRUE(LiesIn(below, second.work));
        EXPECT_GT(alert.Width(), 0);
    }
}

TEST_F(ScreensTest, AStopBoxStandsOnTheScreenOfTheHost) {
    for (const Screen& second : SecondScreens()) {
        const TwoScreens screens(second);
        const HWND host =
            CreateWindowExA(0, "STATIC", "Host", WS_POPUP | WS_VISIBLE, second.work.left - 10,
                            second.work.top - 10, 60, 60, nullptr, nullptr, nullptr, nullptr);
        ScreenRect box{};
        RunWithUser(
            [&] {
                RunAlert(host, 20901, {"some", "some", "1"}, AlertIcon::stop);
            },
            [&](const GuiDriver& gui) {
                const auto open = gui.WaitForAny(host);
                ASSERT_TRUE(open);
                box = FrameOf(open->Window());
                open->PressToOpen(1);
            });
        DestroyWindow(host);
        EXPECT_EQ(box.left, second.work.left + alertMargin);
        EXPECT_EQ(box.top, second.work.top + alertMargin);
    }
}

TEST_F(ScreensTest, AnAlertOverAnIconStandsInTheMiddleOfItsScreen) {
    const HWND host = CreateWindowExA(0, "STATIC", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 60,
                                      200, 100, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(host, SW_MINIMIZE);
    ScreenRect box{};
    RunWithUser([&] { RunAlert(host, 18013, {}, AlertIcon::warning); },
                [&](const GuiDriver& gui) {
                    const auto open = gui.WaitForAny(host);
                    ASSERT_TRUE(open);
                    box = FrameOf(open->Window());
                    open->PressToOpen(1);
                });
    const ScreenRect screen = ScreenOf(nullptr).whole;
    DestroyWindow(host);
    EXPECT_NEAR(box.left + box.right, screen.left + screen.right, 1);
    EXPECT_NEAR(box.top + box.bottom, screen.top + screen.bottom, 1);
}

TEST_F(ScreensTest, ADialogOpensOnTheScreenOfTheOneBelow) {
    for (const Screen& second : SecondScreens()) {
        const TwoScreens screens(second);
        TestDialog outer(resizable);
        ScreenRect frame{};
        outer.atSetup = [&] {
            outer.SetPlacement(PackPlacement({PlaceOn(second, someSize, 1), false}));
        };
        outer.atHit = [&](short item) {
            TestDialog nested(allItems);
            nested.Run();
            return item;
        };
        RunWithScript(outer, [&](Script& script) {
            PressOk(script);
            const HWND nested = script.WaitForOther();
            frame = FrameOf(nested);
            PostMessageA(GetDlgItem(nested, 1), BM_CLICK, 0, 0);
        });
        EXPECT_TRUE(LiesIn(frame, Shrunk(second.work, dialogMargin)));
    }
}

TEST_F(ScreensTest, AWindowComesBackWhereItWasMaximisedOrNot) {
    for (const Screen& second : SecondScreens()) {
        const TwoScreens screens(second);
        for (const bool isMaximized : {false, true}) {
            const hostapi::Rect first =
                PackPlacement({PlaceOn(second, someSize, 100), isMaximized});
            hostapi::Rect place = first;
            for (int run = 0; run < 3; ++run) {
                bool wasMaximized = !isMaximized;
                place = PlaceAfterRunAt(place, &wasMaximized);
                EXPECT_EQ(wasMaximized, isMaximized);
            }
            EXPECT_TRUE(AreEqual(place, first))
                << place.top << ", " << place.left << " after " << first.top << ", " << first.left;
        }
    }
}

TEST_F(ScreensTest, AWindowRememberedOnAScreenThatIsGoneIsSeenAllTheSame) {
    const std::vector<Screen> former = SecondScreens();
    const FakeScreens screens({fakePrimaryScreen});
    for (const Screen& gone : former) {
        for (const bool isMaximized : {false, true}) {
            const hostapi::Rect place = PackPlacement({PlaceOn(gone, someSize, 200), isMaximized});
            bool wasMaximized = false;
            const hostapi::Rect after = PlaceAfterRunAt(place, &wasMaximized);
            EXPECT_EQ(wasMaximized, isMaximized);
            EXPECT_TRUE(
                LiesIn(ToScreenRect(UnpackPlacement(after).client), fakePrimaryScreen.work));
            EXPECT_TRUE(
                LiesIn(FrameAfterPlacing(PackPlacement({PlaceOn(gone, someSize, 200), false})),
                       fakePrimaryScreen.work));
        }
    }
}

TEST_F(ScreensTest, WhereTheSystemTellsOfNoScreenThePrimaryOneIsTaken) {
    const ScreenRect area = ScreenOf(nullptr).work;
    const FakeScreens none({});
    EXPECT_EQ(ScreenOf(nullptr).work, area);
    EXPECT_EQ(ScreenOf(GetDesktopWindow()).work, area);
    EXPECT_EQ(ScreenAt({5000, 5000, 5100, 5100}).work, area);
    EXPECT_TRUE(LiesIn(FrameAfterPlacing({5000, 5000, 5300, 5300}), area));
}

}  // namespace

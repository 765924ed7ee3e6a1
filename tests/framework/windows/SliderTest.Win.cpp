// Sliders and scroll bars.
#include <algorithm>
#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

class SliderTest : public ControlsTest {};

TEST_F(SliderTest, ADragOfTheSliderIsFollowed) {
    int depthDuring = -1;
    dialog.atScroll = [&](short, int) {
        depthDuring = dialogState.dragDepth;
        return true;
    };
    Run([&](Script& script) {
        RECT rect{};
        GetWindowRect(script.Item(slider), &rect);
        const int y = (rect.top + rect.bottom) / 2;
        script.Press({rect.left + 20, y});
        script.WaitUntil("the press", [&] { return dialogState.dragDepth > 0; });
        script.MoveTo({(rect.left + rect.right) / 2, y});
        const int middle = Value(slider);
        EXPECT_NEAR(middle, 50, 2);
        script.ReleaseAt({rect.right + 200, y});
        script.WaitFor("hit 14");
        EXPECT_EQ(Value(slider), 100);
        EXPECT_EQ(dialog.GetShort(slider), 100);
    });
    EXPECT_GE(depthDuring, 1);
    EXPECT_EQ(Hits(slider), 1) << "at the end";
    EXPECT_EQ(dialog.log.Count("scroll 14 to 100"), 1);
}

TEST_F(SliderTest, ADragEndsWhenTheSliderLosesTheMouse) {
    Run([&](Script& script) {
        script.Press(script.Middle(slider));
        script.WaitUntil("the press", [&] { return dialogState.dragDepth > 0; });
        PostMessageA(script.Item(slider), WM_CANCELMODE, 0, 0);
        script.WaitFor("hit 14");
        EXPECT_EQ(dialogState.dragDepth, 0);
        ReleaseMouse();
        script.Settle();
    });
    EXPECT_EQ(Hits(slider), 1) << "not once more when the button comes up";
}

TEST_F(SliderTest, KeysMoveTheSlider) {
    Run([&](Script& script) {
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(script.Item(slider)),
                     TRUE);
        const auto press = [&](const std::vector<WORD>& keys) {
            script.Keys({keys});
            return Value(slider);
        };
        EXPECT_EQ(press({VK_HOME}), 100);
        EXPECT_EQ(press({VK_LEFT}), 99);
        EXPECT_EQ(press({VK_DOWN}), 98);
        EXPECT_EQ(press({VK_SHIFT, VK_DOWN}), 88);
        EXPECT_EQ(press({VK_NEXT}), 68);
        EXPECT_EQ(press({VK_PRIOR}), 88);
        EXPECT_EQ(press({VK_END}), 0);
        EXPECT_EQ(press({VK_RIGHT}), 1);
        EXPECT_EQ(press({VK_SHIFT, VK_UP}), 11);
        EXPECT_EQ(press({VK_UP}), 12);
    });
    EXPECT_EQ(Hits(slider), 10);
    EXPECT_EQ(dialog.log.Count("scroll 14 to 12"), 1);
}

/// The picture's columns around the middle, a letter for each of the system's colours.
std::vector<std::string> LettersAroundTheMiddle(const host::Picture& shot, int reach) {
    const std::pair<int, char> letters[] = {{COLOR_BTNFACE, '.'},
                                            {COLOR_BTNHIGHLIGHT, 'H'},
                                            {COLOR_3DLIGHT, 'L'},
                                            {COLOR_BTNSHADOW, 'S'},
                                            {COLOR_3DDKSHADOW, 'D'}};
    std::vector<std::string> rows(static_cast<std::size_t>(shot.height));
    for (int y = 0; y < shot.height; ++y) {
        for (int x = shot.width / 2 - reach; x <= shot.width / 2 + reach; ++x) {
            const COLORREF color = ColorAt(shot, x, y);
            const auto* const letter = std::ranges::find_if(
                letters, [&](const auto& each) { return GetSysColor(each.first) == color; });
            rows[static_cast<std::size_t>(y)] += letter != std::end(letters) ? letter->second : '?';
        }
    }
    return rows;
}

TEST_F(SliderTest, TheThumbIsAPentagonWithBevels) {
    // clang-format off
    const std::vector<std::string> raised = {
        ".....................",
        ".....................",
        ".....................",
        "..........D..........",
        "..........SD.........",
        "SSSSSSSS.LHSDSSSSSSSS",
        "DDDDDDD.LH..SDDDDDDDD",
        ".......LH....SD......",
        "......LH......SD.....",
        ".....LH........SD....",
        "....LH..........SD...",
        "...LH............SD..",
        "..LH..............SD.",
        "LLSSSSSSSSSSSSSSSSSDL",
        "HDDDDDDDDDDDDDDDDDDDH",
        ".....................",
    };
    const std::vector<std::string> flat = {
        ".....................",
        ".....................",
        ".....................",
        "..........S..........",
        "...........S.........",
        "SSSSSSSS.S..SSSSSSSSS",
        "........S....S.......",
        ".......S......S......",
        "......S........S.....",
        ".....S..........S....",
        "....S............S...",
        "...S..............S..",
        "..S................S.",
        ".S.................S.",
        "SSSSSSSSSSSSSSSSSSSSS",
        ".....................",
    };
    // clang-format on
    setup = [&] { dialog.SetValue(slider, 50); };
    Run([&](Script& script) {
        EXPECT_EQ(LettersAroundTheMiddle(script.Shot(slider), 10), raised);
        EnableWindow(script.Item(slider), FALSE);
        EXPECT_EQ(LettersAroundTheMiddle(script.Shot(slider), 10), flat);
    });
}

TEST_F(SliderTest, APressedThumbIsSunkenAndHasTheFocus) {
    setup = [&] { dialog.SetValue(slider, 50); };
    Run([&](Script& script) {
        EXPECT_NE(script.Focus(), slider);
        // At the left edge of the thumb's slope a raised bevel is light, and a sunken one dark.
        const auto slope = [&] { return LettersAroundTheMiddle(script.Shot(slider), 10)[10]; };
        EXPECT_EQ(slope().substr(4, 2), "LH");
        script.Press(script.Middle(slider));
        script.WaitUntil("the press", [&] { return dialogState.dragDepth > 0; });
        EXPECT_EQ(Value(slider), 50);
        EXPECT_EQ(slope().substr(4, 2), "SD");
        EXPECT_EQ(script.Focus(), slider);
        ReleaseMouse();
        script.WaitFor("hit 14");
        EXPECT_EQ(slope().substr(4, 2), "LH");
    });
}

TEST_F(SliderTest, SettingTheSliderTellsNobody) {
    setup = [&] {
        dialog.SetRange(slider, -100, 100);
        dialog.SetValue(slider, 5000);
        EXPECT_EQ(dialog.GetValue(slider), 100);
        dialog.SetValue(slider, -7);
        EXPECT_EQ(dialog.GetValue(slider), -7);
        dialog.SetRange(slider, 1, 5);
        EXPECT_EQ(dialog.GetValue(slider), 1);
    };
    Run([](Script&) {});
    EXPECT_EQ(dialog.log.All(), (std::vector<std::string>{"hit 2"}));
}

TEST_F(SliderTest, AValueThatIsNotAcceptedIsStoredAtTheEndOfTheDrag) {
    std::atomic<double> duringTheDrag = -1;
    double atTheEnd = -1;
    // No further: an arrow that is held steps again after a while.
    setup = [&] { dialog.SetRange(scrollBar, 0, 1); };
    dialog.atScroll = [&](short, int) {
        duringTheDrag = dialog.GetValue(scrollBar);
        return false;
    };
    dialog.atHit = [&](short item) {
        atTheEnd = item == scrollBar ? dialog.GetValue(scrollBar) : atTheEnd;
        return item <= 2 ? item : short{0};
    };
    Run([&](Script& script) {
        RECT rect{};
        GetWindowRect(script.Item(scrollBar), &rect);
        script.Press({rect.right - 4, (rect.top + rect.bottom) / 2});
        script.WaitUntil("the call", [&] { return duringTheDrag != -1; });
        EXPECT_EQ(duringTheDrag, 0);
        EXPECT_EQ(dialog.GetValue(scrollBar), 0) << "not accepted";
        ReleaseMouse();
        script.WaitFor("hit 10");
    });
    EXPECT_EQ(atTheEnd, 1);
    EXPECT_EQ(dialog.log.Count("scroll 10 to 1"), 1);
}

TEST_F(SliderTest, TheThumbOfAScrollBarGoesBeyond16Bits) {
    setup = [&] { dialog.SetRange(scrollBar, 0, 100000); };
    int depth = -1;
    dialog.atScroll = [&](short, int) {
        depth = dialogState.dragDepth;
        return true;
    };
    Run([&](Script& script) {
        RECT rect{};
        GetWindowRect(script.Item(scrollBar), &rect);
        const int y = (rect.top + rect.bottom) / 2;
        script.Press({rect.left + GetSystemMetrics(SM_CXHSCROLL) + 3, y});
        script.WaitUntil("the press", [&] { return GetAsyncKeyState(VK_LBUTTON) < 0; });
        MoveMouse({(rect.left + rect.right) / 2, y});
        MoveMouse({rect.right - 30, y});
        script.WaitUntil("the thumb", [&] { return dialog.GetValue(scrollBar) > 66000; });
        EXPECT_EQ(Hits(scrollBar), 0) << "not before the end";
        ReleaseMouse();
        script.WaitFor("hit 10");
        script.Settle();
        EXPECT_GT(dialog.GetValue(scrollBar), 66000);
        EXPECT_EQ(dialogState.dragDepth, 0);
    });
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(Hits(scrollBar), 1);
}

TEST_F(SliderTest, AScrollBarStepsByItsArrowsAndItsShaft) {
    setup = [&] {
        dialog.SetRange(scrollBar, 0, 100);
        dialog.SetSteps(scrollBar, 3, 40);
        dialog.SetValue(scrollBar, 10);
    };
    Run([&](Script& script) {
        RECT rect{};
        GetWindowRect(script.Item(scrollBar), &rect);
        const int y = (rect.top + rect.bottom) / 2;
        script.Click({rect.right - 4, y});
        script.WaitFor("hit 10");
        EXPECT_EQ(dialog.GetShort(scrollBar), 13);
        script.Click({rect.right - 22, y});
        script.WaitFor("hit 10", 2);
        EXPECT_EQ(dialog.GetShort(scrollBar), 53);
        script.Click({rect.left + 4, y});
        script.WaitFor("hit 10", 3);
        EXPECT_EQ(dialog.GetShort(scrollBar), 50);
    });
    EXPECT_EQ(dialog.log.Count("scroll 10 to 13"), 1);
}

TEST_F(SliderTest, AScrollBarReachesItsMaximum) {
    setup = [&] {
        dialog.SetRange(scrollBar, 0, 1000);
        dialog.SetSteps(scrollBar, 1, 300);
        dialog.SetValue(scrollBar, 1000);
        EXPECT_EQ(dialog.GetValue(scrollBar), 1000);
    };
    Run([](Script&) {});
}

}  // namespace

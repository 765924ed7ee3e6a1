// The custom controls: mouse, keys, protocol, looks.
#include <atomic>
#include <cstdlib>

#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/controls/ControlClasses.Win.h"
#include "framework/controls/GlobeControl.h"
#include "framework/controls/GlobeGeometry.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/DialogScript.Win.h"

namespace {

constexpr short allItems = 500;
constexpr short palette = 11;
constexpr short popup = 12;
constexpr short live = 13;
constexpr short slider = 14;
constexpr short padLock = 15;
constexpr short dial = 16;
constexpr short bitmapButton = 17;
constexpr short tab = 18;
constexpr short scrollBar = 10;
constexpr short userItem = 20;

class ControlsTest : public DialogTest {
  protected:
    ControlsTest() : dialog(allItems) {
        dialog.atSetup = [this] {
            if (setup) {
                setup();
            }
        };
    }

    int Run(const std::function<void(Script&)>& script) { return RunWithScript(dialog, script); }

    int Value(short item) const {
        return static_cast<int>(SendMessageA(GetDlgItem(static_cast<HWND>(dialog.Window()), item),
                                             controlGetValue, 0, 0));
    }

    LRESULT Send(Script& script, int item, UINT message, WPARAM wParam, LPARAM lParam) const {
        return SendMessageA(script.Item(item), message, wParam, lParam);
    }

    int Hits(short item) const {
        const std::string hit = "hit " + std::to_string(item);
        return dialog.log.Count(hit) + dialog.log.Count(hit + " twice");
    }

    TestDialog dialog;
    std::function<void()> setup;
};

// --- The palette: two columns and two rows ---

POINT CellOf(Script& script, int cell) {
    RECT client{};
    GetClientRect(script.Item(palette), &client);
    const int column = (cell - 1) % 2;
    const int row = (cell - 1) / 2;
    return script.Inside(palette, client.right / 4 + column * client.right / 2,
                         client.bottom / 4 + row * client.bottom / 2);
}

TEST_F(ControlsTest, ThePaletteHasThePicturesCells) {
    Run([&](Script& script) {
        EXPECT_EQ(Send(script, palette, controlGetValue, 0, 0), 1);
        EXPECT_EQ(Send(script, palette, controlGetMinimum, 0, 0), 0);
        EXPECT_EQ(Send(script, palette, controlGetCount, 0, 0), 4);
    });
}

TEST_F(ControlsTest, AClickChoosesATool) {
    Run([&](Script& script) {
        script.Click(CellOf(script, 4));
        script.WaitFor("hit 11");
        EXPECT_EQ(Value(palette), 4);
        LetTimePass();
        script.Click(CellOf(script, 1));
        script.WaitFor("hit 11", 2);
        EXPECT_EQ(Value(palette), 1);
    });
    EXPECT_EQ(Hits(palette), 2);
}

TEST_F(ControlsTest, OnlyAQuickSecondClickOnTheChosenToolCounts) {
    Run([&](Script& script) {
        script.Click(CellOf(script, 2));
        script.WaitFor("hit 11");
        LetTimePass();
        script.Click(CellOf(script, 2));
        EXPECT_EQ(Hits(palette), 1) << "a slow second click does nothing";
        script.Click(CellOf(script, 2));
        script.WaitFor("hit 11 twice");
    });
    EXPECT_EQ(Hits(palette), 2);
}

TEST_F(ControlsTest, ThePaletteCanBeSetAndShowNoTool) {
    Run([&](Script& script) {
        Send(script, palette, controlSetValue, 0, 3);
        EXPECT_EQ(Value(palette), 3);
        Send(script, palette, controlSetValue, 0, 5);
        EXPECT_EQ(Value(palette), 3) << "there is no such cell";
        Send(script, palette, controlSetValue, 0, 0);
        EXPECT_EQ(Value(palette), 0);
        script.Click(CellOf(script, 2));
        script.WaitFor("hit 11");
    });
    EXPECT_EQ(Hits(palette), 1) << "setting tells nobody";
}

TEST_F(ControlsTest, ADisabledPaletteLooksSoAndTakesNoClicks) {
    Run([&](Script& script) {
        const host::Picture before = script.Shot(palette);
        EnableWindow(script.Item(palette), FALSE);
        EXPECT_FALSE(before == script.Shot(palette));
        script.Click(CellOf(script, 4));
    });
    EXPECT_EQ(Hits(palette), 0);
}

// --- Popups ---

void OpenMenu(Script& script, int item) {
    RECT rect{};
    GetWindowRect(script.Item(item), &rect);
    script.Click({rect.right - 8, (rect.top + rect.bottom) / 2});
    script.WaitUntil("an open menu", [&] { return script.IsInMenu(); });
}

void CloseMenu(Script& script, WORD key) {
    SendChords({{key}});
    script.WaitUntil("a closed menu", [&] { return !script.IsInMenu(); });
    script.Settle();
}

TEST_F(ControlsTest, APopupTakesTheChosenEntry) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        SendChords({{VK_DOWN}, {VK_DOWN}});
        CloseMenu(script, VK_RETURN);
        script.WaitFor("hit 12");
        EXPECT_EQ(Value(popup), 2);
    });
    EXPECT_EQ(Hits(popup), 1) << "not while the menu was open";
}

TEST_F(ControlsTest, ChoosingTheChosenEntryOfAPopupCounts) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        SendChords({{VK_DOWN}});
        CloseMenu(script, VK_RETURN);
        script.WaitFor("hit 12");
        EXPECT_EQ(Value(popup), 1);
    });
    EXPECT_EQ(Hits(popup), 1);
}

TEST_F(ControlsTest, APopupLeftWithEscapeChangesNothing) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        SendChords({{VK_DOWN}, {VK_DOWN}});
        CloseMenu(script, VK_ESCAPE);
        EXPECT_EQ(Value(popup), 1);
    });
    EXPECT_EQ(Hits(popup), 0);
    EXPECT_EQ(dialog.log.Count("hit 2"), 1) << "the script's end, not the menu's Escape";
}

TEST_F(ControlsTest, ALiveMenuFollowsThePointerAndComesBack) {
    std::vector<int> values;
    dialog.atHit = [&](short item) {
        if (item == live) {
            values.push_back(Value(live));
        }
        return item <= 2 ? item : short{0};
    };
    setup = [&] { dialog.SetValue(live, 2); };
    Run([&](Script& script) {
        OpenMenu(script, live);
        SendChords({{VK_END}});
        script.WaitFor("hit 13");
        CloseMenu(script, VK_ESCAPE);
        script.WaitFor("hit 13 twice");
    });
    EXPECT_EQ(values, (std::vector<int>{5, 2}));
}

TEST_F(ControlsTest, OverAnUnusableEntryALiveMenuShowsTheOldOne) {
    std::vector<int> values;
    dialog.atHit = [&](short item) {
        if (item == live) {
            values.push_back(Value(live));
        }
        return item <= 2 ? item : short{0};
    };
    setup = [&] { dialog.SetValue(live, 2); };
    Run([&](Script& script) {
        OpenMenu(script, live);
        SendChords({{VK_END}});
        script.WaitFor("hit 13");
        // The first entry is disabled.
        SendChords({{VK_HOME}});
        script.WaitFor("hit 13 twice");
        CloseMenu(script, VK_ESCAPE);
    });
    EXPECT_EQ(values, (std::vector<int>{5, 2}));
}

TEST_F(ControlsTest, ALiveMenuFollowsThePointer) {
    std::vector<int> values;
    dialog.atHit = [&](short item) {
        if (item == live) {
            values.push_back(Value(live));
        }
        return item <= 2 ? item : short{0};
    };
    setup = [&] { dialog.SetValue(live, 2); };
    Run([&](Script& script) {
        OpenMenu(script, live);
        // The first entry is disabled, the third a separator.
        for (const int entry : {4, 1, 5, 3}) {
            script.MoveTo(script.MenuEntry(entry));
        }
        CloseMenu(script, VK_ESCAPE);
    });
    EXPECT_EQ(values, (std::vector<int>{4, 2, 5, 2}));
}

TEST_F(ControlsTest, ALongMenuHasColumns) {
    Run([&](Script& script) {
        for (int i = static_cast<int>(Send(script, live, CB_GETCOUNT, 0, 0)); i < 80; ++i) {
            Send(script, live, CB_INSERTSTRING, 1, reinterpret_cast<LPARAM>("more"));
        }
        OpenMenu(script, live);
        const HMENU menu = script.OpenMenu();
        int breaks = 0;
        int first = 0;
        for (UINT at = 0; at < 80; ++at) {
            if ((GetMenuState(menu, at, MF_BYPOSITION) & MF_MENUBREAK) != 0) {
                first = breaks++ == 0 ? static_cast<int>(at) : first;
            }
        }
        ASSERT_GT(first, 1);
        EXPECT_EQ(breaks, 79 / first);
        CloseMenu(script, VK_ESCAPE);
    });
}

TEST_F(ControlsTest, ALiveMenuKeepsTheChosenEntry) {
    setup = [&] { dialog.SetValue(live, 2); };
    Run([&](Script& script) {
        OpenMenu(script, live);
        SendChords({{VK_END}});
        script.WaitFor("hit 13");
        CloseMenu(script, VK_RETURN);
        EXPECT_EQ(Value(live), 5);
    });
    EXPECT_EQ(Hits(live), 1);
}

TEST_F(ControlsTest, TheClickThatClosesAMenuGoesNowhere) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        script.Press(script.Middle(1));
        script.WaitUntil("a closed menu", [&] { return !script.IsInMenu(); });
        ReleaseMouse();
        script.Settle();
    });
    EXPECT_EQ(dialog.log.Count("hit 1"), 0);
}

TEST_F(ControlsTest, KeysPassOverWhatCannotBeChosen) {
    Run([&](Script& script) {
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(script.Item(popup)),
                     TRUE);
        const auto press = [&](WORD key) {
            script.Keys({{key}});
            return Value(popup);
        };
        EXPECT_EQ(press(VK_DOWN), 2);
        EXPECT_EQ(press(VK_RIGHT), 5) << "a separator and a disabled entry lie between";
        EXPECT_EQ(press(VK_UP), 2);
        EXPECT_EQ(press(VK_END), 6);
        EXPECT_EQ(press(VK_NEXT), 6);
        EXPECT_EQ(press(VK_HOME), 1);
        EXPECT_EQ(press(VK_PRIOR), 1);
        EXPECT_EQ(Hits(popup), 5) << "each change, and only these";
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(script.Item(live)),
                     TRUE);
        script.Keys({{VK_END}, {VK_HOME}});
        EXPECT_EQ(Value(live), 2) << "the first entry is disabled";
    });
}

TEST_F(ControlsTest, APopupIsFilledLikeAList) {
    setup = [&] {
        EXPECT_EQ(dialog.PopupCount(live), 5);
        dialog.InsertPopupEntry(live, 2, "inserted");
        dialog.InsertPopupEntry(live, 100, "appended");
        EXPECT_EQ(dialog.PopupCount(live), 7);
        EXPECT_EQ(dialog.PopupText(live, 2), "inserted");
        EXPECT_EQ(dialog.PopupText(live, 3), "Two");
        EXPECT_EQ(dialog.PopupText(live, 7), "appended");
        EXPECT_EQ(dialog.PopupText(live, 8), "");
        dialog.DeletePopupEntry(live, 1);
        EXPECT_EQ(dialog.PopupText(live, 1), "inserted");
        dialog.DeletePopupEntry(live, 99);
        EXPECT_EQ(dialog.PopupCount(live), 6);
        dialog.InsertPopupEntry(live, 1, std::string(400, 'x').c_str());
        EXPECT_EQ(dialog.PopupText(live, 1).size(), 255u);
    };
    Run([](Script&) {});
}

TEST_F(ControlsTest, EntriesCanBeDisabledAndHavePictures) {
    setup = [&] {
        dialog.EnablePopupEntry(popup, 2, false);
        dialog.SetPopupPicture(popup, 1, 603);
        dialog.SetPopupPicture(popup, 2, 9999);
    };
    Run([&](Script& script) {
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(script.Item(popup)),
                     TRUE);
        script.Keys({{VK_DOWN}});
        EXPECT_EQ(Value(popup), 5);
    });
}

TEST_F(ControlsTest, APictureStaysUntilAnotherTakesItsPlace) {
    Run([&](Script& script) {
        const auto setPicture = [&](int resource) {
            return Send(script, popup, CB_SETITEMDATA, 0, resource);
        };
        const host::Picture without = script.Shot(popup);
        EXPECT_EQ(setPicture(603), 0);
        const host::Picture with = script.Shot(popup);
        EXPECT_FALSE(without == with);
        EXPECT_EQ(setPicture(9999), CB_ERR);
        EXPECT_TRUE(with == script.Shot(popup));
        EXPECT_EQ(setPicture(600), 0);
        EXPECT_FALSE(with == script.Shot(popup));
        script.KeepPicture("popup-picture");
    });
}

TEST_F(ControlsTest, APopupTakes32Pictures) {
    setup = [&] {
        const HWND control = GetDlgItem(static_cast<HWND>(dialog.Window()), popup);
        constexpr int count = 33;
        for (int i = dialog.PopupCount(popup); i < count; ++i) {
            dialog.InsertPopupEntry(popup, static_cast<short>(i + 1), "more");
        }
        int taken = 0;
        for (int i = 0; i < count; ++i) {
            taken += SendMessageA(control, CB_SETITEMDATA, static_cast<WPARAM>(i), 603) == 0;
        }
        // Position 3 is a separator, which takes one as well.
        EXPECT_EQ(taken, 32);
        EXPECT_EQ(SendMessageA(control, CB_SETITEMDATA, 0, 600), 0) << "one for another";
    };
    Run([](Script& script) { script.Settle(); });
}

TEST_F(ControlsTest, ControlsThatUseArrowsSaySo) {
    Run([&](Script& script) {
        for (const int item : {popup, live, slider}) {
            EXPECT_EQ(Send(script, item, WM_GETDLGCODE, 0, 0), 1) << item;
        }
        EXPECT_EQ(Send(script, palette, WM_GETDLGCODE, 0, 0), 0);
    });
}

TEST_F(ControlsTest, PopupsKeepWhateverNumberTheyAreGiven) {
    setup = [&] {
        dialog.SetValue(popup, 77);
        EXPECT_EQ(dialog.GetValue(popup), 77);
        dialog.SetValue(popup, -3);
        EXPECT_EQ(dialog.GetValue(popup), -3);
    };
    Run([](Script& script) { script.Settle(); });
    EXPECT_EQ(Hits(popup), 0);
}

// --- The slider ---

TEST_F(ControlsTest, ADragOfTheSliderIsFollowed) {
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

TEST_F(ControlsTest, ADragEndsWhenTheSliderLosesTheMouse) {
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

TEST_F(ControlsTest, KeysMoveTheSlider) {
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

TEST_F(ControlsTest, SettingTheSliderTellsNobody) {
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

TEST_F(ControlsTest, AValueThatIsNotAcceptedIsStoredAtTheEndOfTheDrag) {
    double duringTheDrag = -1;
    double atTheEnd = -1;
    setup = [&] { dialog.SetRange(scrollBar, 0, 9); };
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
        script.WaitFor("scroll 10 to 1");
        EXPECT_EQ(duringTheDrag, 0);
        EXPECT_EQ(dialog.GetValue(scrollBar), 0) << "not accepted";
        ReleaseMouse();
        script.WaitFor("hit 10");
    });
    EXPECT_EQ(atTheEnd, 1);
    EXPECT_EQ(dialog.log.Count("scroll 10 to 1"), 1);
}

TEST_F(ControlsTest, TheThumbOfAScrollBarGoesBeyond16Bits) {
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

TEST_F(ControlsTest, AScrollBarStepsByItsArrowsAndItsShaft) {
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

TEST_F(ControlsTest, AScrollBarReachesItsMaximum) {
    setup = [&] {
        dialog.SetRange(scrollBar, 0, 1000);
        dialog.SetSteps(scrollBar, 1, 300);
        dialog.SetValue(scrollBar, 1000);
        EXPECT_EQ(dialog.GetValue(scrollBar), 1000);
    };
    Run([](Script&) {});
}

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

// --- User items ---

TEST_F(ControlsTest, AUserItemIsDrawnByTheDialog) {
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

TEST_F(ControlsTest, AUserItemIsDrawnAnewWhenItIsDisabled) {
    std::atomic<int> draws = 0;
    dialog.atDraw = [&](short item) { draws += item == userItem ? 1 : 0; };
    Run([&](Script& script) {
        script.Settle();
        const int before = draws;
        EnableWindow(script.Item(userItem), FALSE);
        script.WaitUntil("a paint", [&] { return draws > before; });
    });
}

TEST_F(ControlsTest, ADragInAUserItemFollowsTheMouseAndRestsBetween) {
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

TEST_F(ControlsTest, ASecondPressInAUserItemIsADoubleClick) {
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

TEST_F(ControlsTest, AnAlertInAPressFreesTheUserItem) {
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

// --- The dial ---

/// The dialog with a dial in item 16 and its angle in field 3.
class DialTest : public ControlsTest {
  protected:
    DialTest() {
        setup = [this] {
            dialog.SetFormat(3, "%d", -180, 180);
            globe.Initialize(&dialog, dial, 600, 601, 7, &DialTest::ShowAngle);
            globe.SetAngle(0);
        };
        dialog.atDraw = [this](short item) {
            if (item == dial) {
                globe.Draw();
            }
        };
        dialog.atHit = [this](short item) {
            if (item == dial) {
                EXPECT_TRUE(globe.Track());
                ++drags;
            }
            return item <= 2 ? item : short{0};
        };
    }

    static void ShowAngle(GlobeControl* control, int elevation, int angle) {
        EXPECT_EQ(elevation, -1);
        control->Dialog()->SetValue(3, angle);
    }

    POINT OnDial(Script& script, int right, int down) const {
        const POINT middle = script.Middle(dial);
        return {middle.x + right, middle.y + down};
    }

    GlobeControl globe;
    std::atomic<int> drags = 0;
};

TEST_F(DialTest, ADragTurnsTheDial) {
    Run([&](Script& script) {
        script.Press(OnDial(script, 30, 0));
        script.WaitUntil("90 degrees", [&] { return script.Text(3) == "90"; });
        MoveMouse(OnDial(script, -80, 0));
        script.WaitUntil("-90 degrees", [&] { return script.Text(3) == "-90"; });
        MoveMouse(OnDial(script, 40, -40));
        script.WaitUntil("45 degrees", [&] {
            const int angle = std::atoi(script.Text(3).c_str());
            return angle >= 43 && angle <= 47;
        });
        ReleaseMouse();
        script.WaitUntil("the end", [&] { return drags == 1; });
        script.KeepPicture("dial");
    });
    EXPECT_NEAR(globe.Angle(), 45, 2);
}

TEST_F(DialTest, AClickAloneSetsTheAngle) {
    Run([&](Script& script) {
        script.Press(OnDial(script, 0, 25));
        script.WaitUntil("180 degrees",
                         [&] { return std::abs(std::atoi(script.Text(3).c_str())) >= 178; });
        ReleaseMouse();
        script.WaitUntil("the end", [&] { return drags == 1; });
    });
}

TEST_F(DialTest, AClickOnTheKnobSetsTheAngleOfItsPoint) {
    Run([&](Script& script) {
        const GlobeGeometry geometry = MeasureGlobe(dialog.GetBounds(dial), 7);
        const hostapi::Point knob = KnobPlace(geometry, {-1, 0});
        const hostapi::Point place{knob.v, static_cast<std::int16_t>(knob.h + 3)};
        const int expected = ValueUnder(geometry, {-1, 0}, place).angle;
        ASSERT_GT(expected, 0);
        POINT screen{place.h, place.v};
        ClientToScreen(script.Dialog(), &screen);
        script.Click(screen);
        script.WaitUntil("the angle", [&] { return script.Text(3) == std::to_string(expected); });
    });
}

TEST_F(DialTest, ADragAcrossTheBottomStaysWithinHalfATurn) {
    std::vector<int> angles;
    Run([&](Script& script) {
        script.Press(OnDial(script, 6, 30));
        for (const int right : {3, 1, 0, -1, -3, -6}) {
            MoveMouse(OnDial(script, right, 30));
            script.WaitUntil("the other side", [&] {
                const int angle = std::atoi(script.Text(3).c_str());
                return right > 0 ? angle > 0 : right < 0 ? angle < 0 : std::abs(angle) >= 178;
            });
            angles.push_back(std::atoi(script.Text(3).c_str()));
        }
        ReleaseMouse();
        script.WaitUntil("the end", [&] { return drags == 1; });
    });
    for (const int angle : angles) {
        EXPECT_GE(std::abs(angle), 165);
        EXPECT_LE(std::abs(angle), 180);
    }
}

/// The colour in the middle of the dial's knob.
COLORREF KnobColor(Script& script, TestDialog& dialog) {
    const hostapi::Rect bounds = dialog.GetBounds(dial);
    const hostapi::Point knob = KnobPlace(MeasureGlobe(bounds, 7), {-1, 0});
    // The dialog paints it, in its own time.
    script.Settle();
    return ColorAt(script.Shot(dial), knob.h - bounds.left, knob.v - bounds.top);
}

/// That of an icon, drawn in the other user item.
COLORREF IconColor(Script& script, TestDialog& dialog, short icon) {
    const hostapi::Rect bounds = dialog.GetBounds(userItem);
    const hostapi::Point size = dialog.Port().IconSize(icon);
    dialog.Port().FillRect(bounds);
    dialog.Port().DrawIcon(icon, {bounds.top, bounds.left});
    const HDC context = GetDC(script.Dialog());
    const COLORREF color = GetPixel(context, bounds.left + size.h / 2, bounds.top + size.v / 2);
    ReleaseDC(script.Dialog(), context);
    return color;
}

TEST_F(DialTest, ADisabledDialHasAnotherKnob) {
    Run([&](Script& script) {
        const COLORREF normal = IconColor(script, dialog, 601);
        const COLORREF disabled = IconColor(script, dialog, 602);
        ASSERT_NE(normal, disabled);
        EXPECT_EQ(KnobColor(script, dialog), normal);
        EnableWindow(script.Item(dial), FALSE);
        EXPECT_EQ(KnobColor(script, dialog), disabled);
        EnableWindow(script.Item(dial), TRUE);
        EXPECT_EQ(KnobColor(script, dialog), normal);
    });
}

TEST_F(DialTest, WithoutADisabledKnobTheNormalOneIsDrawn) {
    setup = [this] {
        globe.Initialize(&dialog, dial, 600, 602, 7, &DialTest::ShowAngle);
        globe.SetAngle(0);
        dialog.Enable(dial, false);
    };
    Run([&](Script& script) {
        EXPECT_EQ(KnobColor(script, dialog), IconColor(script, dialog, 602));
    });
}

TEST_F(DialTest, ADialThatWasNotInitializedIsAFault) {
    GlobeControl other;
    EXPECT_EQ(FaultOf([&] { other.Draw(); }), 20008);
    EXPECT_EQ(FaultOf([&] { other.Track(); }), 20008);
    EXPECT_EQ(FaultOf([&] { other.SetAngle(3); }), 20008);
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

constexpr short bare = 550;

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

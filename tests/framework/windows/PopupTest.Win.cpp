// Popups and live menus.
#include <atomic>

#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

class PopupTest : public ControlsTest {
  protected:
    /// Runs with entry 2 of the live menu chosen. Returns what it shows at each hit.
    std::vector<int> RunLive(const std::function<void(Script&)>& script) {
        std::vector<int> values;
        dialog.atHit = [&](short item) {
            if (item == live) {
                values.push_back(Value(live));
            }
            return item <= 2 ? item : short{0};
        };
        setup = [&] { dialog.SetValue(live, 2); };
        Run(script);
        return values;
    }
};

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

TEST_F(PopupTest, APopupTakesTheChosenEntry) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        SendChords({{VK_DOWN}, {VK_DOWN}});
        CloseMenu(script, VK_RETURN);
        script.WaitFor("hit 12");
        EXPECT_EQ(Value(popup), 2);
    });
    EXPECT_EQ(Hits(popup), 1) << "not while the menu was open";
}

TEST_F(PopupTest, ChoosingTheChosenEntryOfAPopupCounts) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        SendChords({{VK_DOWN}});
        CloseMenu(script, VK_RETURN);
        script.WaitFor("hit 12");
        EXPECT_EQ(Value(popup), 1);
    });
    EXPECT_EQ(Hits(popup), 1);
}

TEST_F(PopupTest, APopupLeftWithEscapeChangesNothing) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        SendChords({{VK_DOWN}, {VK_DOWN}});
        CloseMenu(script, VK_ESCAPE);
        EXPECT_EQ(Value(popup), 1);
    });
    EXPECT_EQ(Hits(popup), 0);
    EXPECT_EQ(dialog.log.Count("hit 2"), 1) << "the script's end, not the menu's Escape";
}

TEST_F(PopupTest, ALiveMenuFollowsThePointerAndComesBack) {
    const std::vector<int> values = RunLive([&](Script& script) {
        OpenMenu(script, live);
        SendChords({{VK_END}});
        script.WaitFor("hit 13");
        CloseMenu(script, VK_ESCAPE);
        script.WaitFor("hit 13 twice");
    });
    EXPECT_EQ(values, (std::vector<int>{5, 2}));
}

TEST_F(PopupTest, OverAnUnusableEntryALiveMenuShowsTheOldOne) {
    const std::vector<int> values = RunLive([&](Script& script) {
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

TEST_F(PopupTest, ALiveMenuFollowsThePointer) {
    const std::vector<int> values = RunLive([&](Script& script) {
        OpenMenu(script, live);
        // The first entry is disabled, the third a separator.
        for (const int entry : {4, 1, 5, 3}) {
            script.MoveTo(script.MenuEntry(entry));
        }
        CloseMenu(script, VK_ESCAPE);
    });
    EXPECT_EQ(values, (std::vector<int>{4, 2, 5, 2}));
}

TEST_F(PopupTest, ALongMenuHasColumns) {
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

TEST_F(PopupTest, ColumnsFollowEntriesThatAreDeleted) {
    Run([&](Script& script) {
        for (int i = static_cast<int>(Send(script, live, CB_GETCOUNT, 0, 0)); i < 80; ++i) {
            Send(script, live, CB_INSERTSTRING, 1, reinterpret_cast<LPARAM>("more"));
        }
        for (int i = 0; i < 3; ++i) {
            Send(script, live, CB_DELETESTRING, 1, 0);
        }
        OpenMenu(script, live);
        const HMENU menu = script.OpenMenu();
        std::vector<UINT> breaks;
        for (UINT at = 0; at < 77; ++at) {
            if ((GetMenuState(menu, at, MF_BYPOSITION) & MF_MENUBREAK) != 0) {
                breaks.push_back(at);
            }
        }
        ASSERT_FALSE(breaks.empty());
        for (std::size_t i = 1; i < breaks.size(); ++i) {
            EXPECT_EQ(breaks[i], (i + 1) * breaks[0]);
        }
        EXPECT_EQ(breaks.size(), 76 / breaks[0]);
        CloseMenu(script, VK_ESCAPE);
    });
}

TEST_F(PopupTest, ALiveMenuKeepsTheChosenEntry) {
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

TEST_F(PopupTest, ADialogThatClosesWhileAMenuIsOpenClosesTheMenu) {
    dialog.atHit = [&](short item) { return item == live ? short{9} : short{0}; };
    const int result = Run([&](Script& script) {
        OpenMenu(script, live);
        EXPECT_EQ(dialogState.dragDepth, 1);
        SendChords({{VK_END}});
        script.WaitUntil("a closed dialog", [&] { return !IsWindow(script.Dialog()); });
    });
    EXPECT_EQ(result, 9);
    EXPECT_EQ(dialogState.dragDepth, 0);
}

// The menu takes the mouse, which ends the drag.
TEST_F(PopupTest, AMenuThatOpensWithinADragIsAllThatKeepsIdleOut) {
    std::atomic<int> idles = 0;
    dialog.atIdle = [&] { ++idles; };
    Run([&](Script& script) {
        script.Press(script.Middle(userItem));
        script.WaitUntil("the drag", [] { return dialogState.dragDepth == 1; });
        PostMessageA(script.Item(popup), WM_LBUTTONDOWN, MK_LBUTTON, 0);
        script.WaitUntil("an open menu", [&] { return script.IsInMenu(); });
        script.WaitUntil("the end of the drag", [] { return dialogState.dragDepth == 1; });
        const int before = idles;
        script.Settle();
        ReleaseMouse();
        script.Settle();
        EXPECT_EQ(dialogState.dragDepth, 1);
        EXPECT_EQ(idles, before);
        CloseMenu(script, VK_ESCAPE);
        EXPECT_EQ(dialogState.dragDepth, 0);
        script.WaitUntil("idle work", [&] { return idles > before; });
    });
}

TEST_F(PopupTest, TheClickThatClosesAMenuGoesNowhere) {
    Run([&](Script& script) {
        OpenMenu(script, popup);
        script.Press(script.Middle(1));
        script.WaitUntil("a closed menu", [&] { return !script.IsInMenu(); });
        ReleaseMouse();
        script.Settle();
    });
    EXPECT_EQ(dialog.log.Count("hit 1"), 0);
}

TEST_F(PopupTest, KeysPassOverWhatCannotBeChosen) {
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

TEST_F(PopupTest, SeparatorsStayThoseWhenEntriesAreAdded) {
    Run([&](Script& script) {
        Send(script, popup, CB_INSERTSTRING, 100, reinterpret_cast<LPARAM>("appended"));
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(script.Item(popup)),
                     TRUE);
        script.Keys({{VK_DOWN}});
        EXPECT_EQ(Value(popup), 2);
        script.Keys({{VK_DOWN}});
        EXPECT_EQ(Value(popup), 5) << "a separator and a disabled entry lie between";
        OpenMenu(script, popup);
        const HMENU menu = script.OpenMenu();
        const UINT state = GetMenuState(menu, 2, MF_BYPOSITION);
        EXPECT_NE(state & MF_SEPARATOR, 0u);
        CloseMenu(script, VK_ESCAPE);
        // Some systems make a separator of any entry without a text; the radio mark shows for all.
        Send(script, popup, CB_INSERTSTRING, 100, reinterpret_cast<LPARAM>("one more"));
        MENUITEMINFOA info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE;
        EXPECT_TRUE(GetMenuItemInfoA(menu, 4, TRUE, &info));
        EXPECT_NE(info.fType & MFT_RADIOCHECK, 0u);
    });
}

TEST_F(PopupTest, APopupIsFilledLikeAList) {
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

TEST_F(PopupTest, EntriesCanBeDisabledAndHavePictures) {
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

TEST_F(PopupTest, APictureStaysUntilAnotherTakesItsPlace) {
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

TEST_F(PopupTest, APopupTakes32Pictures) {
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

TEST_F(PopupTest, ControlsThatUseArrowsSaySo) {
    Run([&](Script& script) {
        for (const int item : {popup, live, slider}) {
            EXPECT_EQ(Send(script, item, WM_GETDLGCODE, 0, 0), 1) << item;
        }
        EXPECT_EQ(Send(script, palette, WM_GETDLGCODE, 0, 0), 0);
    });
}

TEST_F(PopupTest, PopupsKeepWhateverNumberTheyAreGiven) {
    setup = [&] {
        dialog.SetValue(popup, 77);
        EXPECT_EQ(dialog.GetValue(popup), 77);
        dialog.SetValue(popup, -3);
        EXPECT_EQ(dialog.GetValue(popup), -3);
    };
    Run([](Script& script) { script.Settle(); });
    EXPECT_EQ(Hits(popup), 0);
}

}  // namespace

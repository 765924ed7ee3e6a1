// Help, cursors and menus.
#include "framework/help/Help.Win.h"

#include <atomic>
#include <cstring>

#include "base/FatalError.h"
#include "base/Module.Win.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"

namespace {

std::string openedAddress;
std::intptr_t openAnswer = 42;

std::intptr_t NoteAddress(const char* address) {
    openedAddress = address;
    return openAnswer;
}

class HelpTest : public DialogTest {
  protected:
    HelpTest() {
        openedAddress.clear();
        openAnswer = 42;
        openAddress = NoteAddress;
    }
    ~HelpTest() override { openAddress = before; }

    AddressOpener before = openAddress;
};

TEST_F(HelpTest, ThePagesBesideTheModuleAreOpened) {
    TestDialog dialog(resizable);
    RunWithScript(dialog, [](Script& script) {
        SendMessageA(script.Dialog(), WM_COMMAND, 20000, 0);
        script.Click(script.Middle(1));
    });
    char module[MAX_PATH];
    GetModuleFileNameA(instanceHandle, module, MAX_PATH);
    const std::string path(module);
    EXPECT_EQ(openedAddress,
              "file://" + path.substr(0, path.rfind('\\')) + "\\Brenvalder Help\\WHStart.htm");
    EXPECT_EQ(dialog.log.Count("menu 20000"), 0);
}

TEST_F(HelpTest, WhatTheSystemRefusesIsThrown) {
    TestDialog dialog(resizable);
    openAnswer = 31;
    EXPECT_EQ(FaultOf([&] { dialog.HelpCommand(); }), 31);
    openAnswer = 0;
    EXPECT_EQ(FaultOf([&] { dialog.HelpCommand(); }), -108);
    openAnswer = 33;
    EXPECT_EQ(FaultOf([&] { dialog.HelpCommand(); }), 0);
}

TEST_F(HelpTest, WhatTheSystemRefusesIsToldAndTheDialogStays) {
    for (const std::intptr_t answer : {2, 31, 0}) {
        openAnswer = answer;
        TestDialog dialog(resizable);
        EXPECT_EQ(RunWithScript(dialog,
                                [](Script& script) {
                                    PostMessageA(script.Dialog(), WM_COMMAND, 20000, 0);
                                    EXPECT_EQ(script.EndAlert(1),
                                              "The help pages could not be opened. They should be "
                                              "beside the plug-in: " +
                                                  HelpPagePath());
                                    script.Click(script.Middle(1));
                                }),
                  1);
        EXPECT_EQ(errorCell, 0);
    }
}

TEST_F(HelpTest, APageIsThereIfItIsAFile) {
    const std::string page = HelpPagePath();
    EXPECT_FALSE(isHelpThere(page.c_str()));
    const std::string folder = page.substr(0, page.rfind('\\'));
    ASSERT_TRUE(CreateDirectoryA(folder.c_str(), nullptr));
    EXPECT_FALSE(isHelpThere(folder.c_str()));
    CloseHandle(CreateFileA(page.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    EXPECT_TRUE(isHelpThere(page.c_str()));
    DeleteFileA(page.c_str());
    RemoveDirectoryA(folder.c_str());
}

TEST_F(HelpTest, ADialogThatIsNoLongerActiveShowsNoHelp) {
    TestDialog dialog(allItems);
    dialog.SetHelpItem(6);
    std::string after = "not asked";
    std::atomic<bool> mayAsk = false;
    std::atomic<bool> hasAsked = false;
    dialog.atIdle = [&] {
        if (mayAsk && !hasAsked) {
            dialog.SetActive(false);
            after = dialog.GetText(6);
            dialog.SetActive(true);
            hasAsked = true;
        }
    };
    RunWithScript(dialog, [&](Script& script) {
        script.MoveTo(script.Middle(4));
        script.WaitUntil("the help", [&] { return script.Text(6) == "Help on item 4."; });
        mayAsk = true;
        script.WaitUntil("the answer", [&] { return hasAsked.load(); });
    });
    EXPECT_EQ(after, "");
}

TEST_F(HelpTest, EachItemHasItsHelpId) {
    TestDialog dialog(allItems);
    std::vector<std::uint32_t> ids;
    dialog.atSetup = [&] {
        ids = {dialog.HelpAt(4), dialog.HelpAt(22), dialog.HelpAt(0), dialog.HelpAt(23),
               dialog.HelpAt(-1)};
    };
    RunWithScript(dialog, [](Script&) {});
    EXPECT_EQ(ids, (std::vector<std::uint32_t>{500u << 16 | 4, 500u << 16 | 22, 0, 0, 0}));
}

TEST_F(HelpTest, TheHelpItemShowsTheStringOfTheItemUnderTheMouse) {
    TestDialog dialog(allItems);
    dialog.SetHelpItem(6);
    RunWithScript(dialog, [](Script& script) {
        script.MoveTo(script.Middle(4));
        script.WaitUntil("the help", [&] { return script.Text(6) == "Help on item 4."; });
        script.MoveTo(script.Middle(5));
        script.WaitUntil("none", [&] { return script.Text(6).empty(); });
    });
    EXPECT_EQ(dialog.log.Count("hit 6"), 0);
}

TEST_F(HelpTest, TheCursorFollowsTheItem) {
    TestDialog dialog(allItems);
    RunWithScript(dialog, [&](Script& script) {
        const auto cursorIs = [](LPCSTR name) {
            CURSORINFO info{};
            info.cbSize = sizeof info;
            return GetCursorInfo(&info) && info.hCursor == LoadCursorA(nullptr, name);
        };
        script.MoveTo(script.Middle(3));
        script.WaitUntil("the text cursor", [&] { return cursorIs(MAKEINTRESOURCEA(32513)); });
        script.MoveTo(script.Middle(1));
        script.WaitUntil("the arrow", [&] { return cursorIs(MAKEINTRESOURCEA(32512)); });
        ++dialogState.dragDepth;
        script.MoveTo(script.Middle(3));
        script.Settle();
        EXPECT_TRUE(cursorIs(MAKEINTRESOURCEA(32512))) << "not in a drag";
        --dialogState.dragDepth;
    });
}

TEST_F(HelpTest, AnItemInsideAGroupIsFoundBeforeTheGroup) {
    TestDialog dialog(allItems);
    short inDial = 0;
    short inGroup = 0;
    short hidden = 0;
    dialog.atSetup = [&] {
        const hostapi::Rect dial = dialog.GetBounds(16);
        const hostapi::Rect group = dialog.GetBounds(19);
        const hostapi::Point middle{static_cast<std::int16_t>((dial.top + dial.bottom) / 2),
                                    static_cast<std::int16_t>((dial.left + dial.right) / 2)};
        inDial = dialog.ItemAtPoint(middle);
        inGroup = dialog.ItemAtPoint(
            {static_cast<std::int16_t>(group.top + 3), static_cast<std::int16_t>(group.left + 3)});
        dialog.Show(16, false);
        hidden = dialog.ItemAtPoint(middle);
    };
    RunWithScript(dialog, [](Script&) {});
    EXPECT_EQ(inDial, 16);
    EXPECT_EQ(inGroup, 19);
    EXPECT_EQ(hidden, 19);
}

/// Empty for an empty clipboard.
void SetClipboard(const std::string& text) {
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    if (!text.empty()) {
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
        std::memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
        GlobalUnlock(memory);
        SetClipboardData(CF_TEXT, memory);
    }
    CloseClipboard();
}

TEST_F(HelpTest, TheEditMenuFollowsTheField) {
    TestDialog dialog(resizable);
    dialog.atSetup = [&] { dialog.SetText(2, "abc"); };
    std::vector<bool> enabled;
    dialog.atHit = [&](short item) {
        if (item == 3) {
            const HMENU menu = GetMenu(static_cast<HWND>(dialog.Window()));
            dialog.SetFocus(2);
            dialog.UpdateMenus();
            for (const UINT id : {18204u, 18205u, 18207u, 18209u}) {
                enabled.push_back((GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED) == 0);
            }
            enabled.push_back((GetMenuState(menu, 18201, MF_BYCOMMAND) & MF_GRAYED) == 0);
            SetClipboard("");
            dialog.UpdateMenus();
            enabled.push_back((GetMenuState(menu, 18206, MF_BYCOMMAND) & MF_GRAYED) == 0);
            SetClipboard("text");
            dialog.MenuCommand(18207);
            dialog.UpdateMenus();
            enabled.push_back((GetMenuState(menu, 18206, MF_BYCOMMAND) & MF_GRAYED) == 0);
            enabled.push_back((GetMenuState(menu, 18201, MF_BYCOMMAND) & MF_GRAYED) == 0);
            dialog.SetFocus(1);
            dialog.UpdateMenus();
            enabled.push_back((GetMenuState(menu, 18204, MF_BYCOMMAND) & MF_GRAYED) == 0);
            enabled.push_back((GetMenuState(menu, 18209, MF_BYCOMMAND) & MF_GRAYED) == 0);
        }
        return item == 1 ? item : short{0};
    };
    RunWithScript(dialog, [](Script& script) {
        script.Click(script.Middle(3));
        script.WaitFor("hit 3");
        script.Click(script.Middle(1));
    });
    EXPECT_EQ(enabled,
              (std::vector<bool>{true, true, true, true, false, false, true, true, false, false}));
}

TEST_F(HelpTest, AnAlertWithoutAResourceIsAFault) {
    EXPECT_EQ(FaultOf([] { Alert(nullptr, 20555); }), 20555) << "a string has the id";
    EXPECT_EQ(FaultOf([] { Alert(nullptr, 20556); }), 20001);
    EXPECT_EQ(Alert(nullptr, 1), 2);
    EXPECT_EQ(Log().faults.size(), 2u);
}

TEST_F(HelpTest, ADialogThatBecomesActiveMeanwhileStaysActive) {
    TestDialog dialog(allItems);
    const NorvantaDialog* active = nullptr;
    const NorvantaDialog* focused = nullptr;
    dialog.atHit = [&](short item) {
        if (item == 7) {
            NorvantaDialog* const before = dialogState.active;
            dialogState.active = nullptr;
            dialogState.focused = nullptr;
            {
                const DialogSuspension suspension;
                dialogState.active = before;
                dialogState.focused = before;
            }
            active = dialogState.active;
            focused = dialogState.focused;
        }
        return item <= 2 ? item : short{0};
    };
    RunWithScript(dialog, [](Script& script) {
        script.Click(script.Middle(7));
        script.WaitFor("hit 7");
    });
    EXPECT_EQ(active, &dialog);
    EXPECT_EQ(focused, &dialog);
}

TEST_F(HelpTest, NoDialogIsActiveWhileTheyAreSuspended) {
    struct Moment {
        const NorvantaDialog* active;
        const NorvantaDialog* focused;
        bool hasMouse;
        bool operator==(const Moment&) const = default;
    };
    std::vector<Moment> moments;
    const auto look = [&] {
        moments.push_back({NorvantaDialog::Active(), dialogState.focused, GetCapture() != nullptr});
    };
    TestDialog dialog(allItems);
    dialog.atHit = [&](short item) {
        if (item == 7) {
            SetCapture(static_cast<HWND>(dialog.Window()));
            look();
            {
                const DialogSuspension suspension;
                look();
                {
                    const DialogSuspension inner;
                    look();
                }
                look();
            }
            look();
        }
        return item <= 2 ? item : short{0};
    };
    RunWithScript(dialog, [](Script& script) {
        // A key, so that the focus has been looked at.
        script.Keys({{VK_SHIFT}});
        script.Click(script.Middle(7));
        script.WaitFor("hit 7");
    });
    const Moment none{nullptr, nullptr, false};
    EXPECT_EQ(moments, (std::vector<Moment>{
                           {&dialog, &dialog, true}, none, none, none, {&dialog, &dialog, false}}));
}

}  // namespace

// The end of the program comes while a loop of the system's own runs in a dialog: a menu, a scroll
// bar, the window's frame. The loop ends, the dialog with it, as by Cancel, and the host gets the
// message.
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

class ProgramEndTest : public ControlsTest {
  protected:
    /// `work` brings the dialog into the loop.
    void ExpectCancel(const std::function<void(Script&)>& work) {
        const DWORD thread = GetCurrentThreadId();
        const int result = Run([&](Script& script) {
            work(script);
            PostThreadMessageA(thread, WM_QUIT, 7, 0);
            script.WaitUntil("a closed dialog", [&] { return !IsWindow(script.Dialog()); });
        });
        ReleaseMouse();
        EXPECT_EQ(result, cancelItem);
        EXPECT_EQ(dialogState.dragDepth, 0);
        MSG quit{};
        EXPECT_TRUE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "is the host's";
        EXPECT_EQ(quit.wParam, 7u);
        EXPECT_FALSE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "once";
    }
    static void OpenMenuOf(Script& script, int item) {
        RECT rect{};
        GetWindowRect(script.Item(item), &rect);
        script.Click({rect.right - 8, (rect.top + rect.bottom) / 2});
        script.WaitUntil("an open menu", [&] { return script.IsInMenu(); });
    }
};

TEST_F(ProgramEndTest, WithinADialog) {
    ExpectCancel([](Script&) {});
}

TEST_F(ProgramEndTest, WithinAPopupsMenu) {
    ExpectCancel([](Script& script) { OpenMenuOf(script, popup); });
    EXPECT_EQ(Hits(popup), 0);
}

TEST_F(ProgramEndTest, WithinALiveMenuThatShowsAnotherEntry) {
    setup = [&] { dialog.SetValue(live, 2); };
    ExpectCancel([](Script& script) {
        OpenMenuOf(script, live);
        SendChords({{VK_END}});
        script.WaitFor("hit 13");
    });
    EXPECT_EQ(Hits(live), 2) << "it shows the old one again";
}

TEST_F(ProgramEndTest, WithinTheMenuOfTheWindow) {
    ExpectCancel([](Script& script) {
        PostMessageA(script.Dialog(), WM_SYSCOMMAND, SC_KEYMENU, VK_SPACE);
        script.WaitUntil("an open menu", [&] { return script.IsInMenu(); });
    });
}

TEST_F(ProgramEndTest, WithinTheDragOfAScrollBar) {
    setup = [&] { dialog.SetRange(scrollBar, 0, 100); };
    ExpectCancel([](Script& script) {
        RECT rect{};
        GetWindowRect(script.Item(scrollBar), &rect);
        script.Press(
            {rect.left + GetSystemMetrics(SM_CXHSCROLL) + 3, (rect.top + rect.bottom) / 2});
        script.WaitUntil("the drag", [&] { return HasCapture(script.Dialog()); });
    });
}

TEST_F(ProgramEndTest, WithinTheDragOfTheWindow) {
    ExpectCancel([](Script& script) {
        PostMessageA(script.Dialog(), WM_SYSCOMMAND, SC_MOVE, 0);
        script.WaitUntil("the drag", [&] { return HasCapture(script.Dialog()); });
    });
}

}  // namespace

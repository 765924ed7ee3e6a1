// The pixels of controls while they are in use: during drags, with an open popup.
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"

namespace {

constexpr short field = 5;

class LooksTest : public DialogTest {};

TEST_F(LooksTest, APopupLooksPressedWhileItsMenuIsOpen) {
    TestDialog dialog(allItems);
    RunWithScript(dialog, [](Script& script) {
        SendMessageA(script.Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(script.Item(popup)),
                     TRUE);
        const host::Picture closed = script.Shot(popup);
        RECT rect{};
        GetWindowRect(script.Item(popup), &rect);
        script.Click({rect.right - 8, (rect.top + rect.bottom) / 2});
        script.WaitUntil("an open menu", [&] { return script.IsInMenu(); });
        EXPECT_FALSE(closed == script.Shot(popup));
        SendChords({{VK_ESCAPE}});
        script.WaitUntil("a closed menu", [&] { return !script.IsInMenu(); });
        script.Settle();
        EXPECT_TRUE(closed == script.Shot(popup));
    });
}

/// Whether a control of the dialog is still to be painted.
bool AwaitsPaint(const TestDialog& dialog, int item) {
    return GetUpdateRect(GetDlgItem(static_cast<HWND>(dialog.Window()), item), nullptr, FALSE) !=
           FALSE;
}

TEST_F(LooksTest, ADragPaintsTheTextsThatItWritesAtOnce) {
    TestDialog dialog(allItems);
    bool afterwards = false;
    bool atOnce = true;
    dialog.atHit = [&](short item) {
        if (item == check) {
            dialog.SetText(field, "one");
            afterwards = AwaitsPaint(dialog, field);
            ++dialogState.dragDepth;
            dialog.SetText(field, "two");
            atOnce = !AwaitsPaint(dialog, field);
            --dialogState.dragDepth;
        }
        return item <= 2 ? item : short{0};
    };
    RunWithScript(dialog, [](Script& script) {
        script.Click(script.Middle(check));
        script.WaitFor("hit 7");
    });
    EXPECT_TRUE(afterwards) << "otherwise the system paints by itself, and nothing is shown here";
    EXPECT_TRUE(atOnce);
}

}  // namespace

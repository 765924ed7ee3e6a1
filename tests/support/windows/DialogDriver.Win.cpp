#include "tests/support/windows/DialogDriver.Win.h"

#include <gtest/gtest.h>

#include "fixtures/GuiDriver.Win.h"
#include "fixtures/Screenshot.Win.h"

namespace {

bool IsCut(HWND control, const std::string& text) {
    char className[16];
    GetClassNameA(control, className, sizeof className);
    const bool isText = std::string(className) == "Static" &&
                        (GetWindowLongA(control, GWL_STYLE) & SS_TYPEMASK) == SS_LEFT;
    if (!isText) {
        return false;
    }
    RECT room;
    GetClientRect(control, &room);
    const HDC context = GetDC(control);
    const HGDIOBJ font =
        SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageA(control, WM_GETFONT, 0, 0)));
    RECT needed = room;
    DrawTextA(context, text.c_str(), -1, &needed,
              DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
    SelectObject(context, font);
    ReleaseDC(control, context);
    return needed.right > room.right || needed.bottom > room.bottom;
}

void NoteControls(HWND dialog, SeenDialog& seen) {
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(control) & 0xFFFF;
        seen.texts[id] = TextOf(control);
        if (IsCut(control, seen.texts[id])) {
            seen.cutControls.push_back(id);
        }
    }
}

SeenDialog Note(HWND dialog) {
    SeenDialog seen;
    seen.title = TextOf(dialog);
    seen.owner = GetWindow(dialog, GW_OWNER);
    GetWindowRect(dialog, &seen.frame);
    ClientToScreen(dialog, &seen.clientOrigin);
    seen.clientOrigin.x -= seen.frame.left;
    seen.clientOrigin.y -= seen.frame.top;
    RECT iconPlace{7, 7, 7, 7};
    MapDialogRect(dialog, &iconPlace);
    seen.iconPlace = {iconPlace.left, iconPlace.top};
    NoteControls(dialog, seen);
    Repaint(dialog);
    seen.picture = GrabFrame(dialog);
    return seen;
}

void End(HWND dialog, Ending ending) {
    switch (ending) {
        case Ending::pressOk:
            PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
            break;
        case Ending::enter:
            PostMessageA(dialog, WM_KEYDOWN, VK_RETURN, 0);
            break;
        case Ending::escape:
            PostMessageA(dialog, WM_KEYDOWN, VK_ESCAPE, 0);
            break;
        case Ending::closeBox:
            PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
            break;
    }
}

}  // namespace

std::vector<SeenDialog> DriveDialogs(const std::function<void()>& action,
                                     const std::vector<Ending>& endings) {
    std::vector<SeenDialog> seen;
    RunWithUser(action, [&](const GuiDriver& gui) {
        HWND before = nullptr;
        for (const Ending ending : endings) {
            const std::optional<DrivenDialog> dialog = gui.WaitForAny(before);
            if (!dialog) {
                return;
            }
            before = dialog->Window();
            seen.push_back(Note(before));
            End(before, ending);
            dialog->WaitUntilClosed();
            seen.back().closed = true;
        }
    });
    return seen;
}

SeenDialog DriveDialog(const std::function<void()>& action, Ending ending) {
    const std::vector<SeenDialog> seen = DriveDialogs(action, {ending});
    if (seen.size() != 1) {
        ADD_FAILURE() << "no dialog appeared";
        return {};
    }
    EXPECT_TRUE(seen[0].closed);
    return seen[0];
}

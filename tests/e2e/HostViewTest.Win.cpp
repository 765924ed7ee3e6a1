// The host's window with real input: selection, scrolling and zoom.
#include "tests/e2e/HostWindow.Win.h"

namespace {

TEST_F(HostWindowTest, ClickDeselectsAndEscapeDropsADrag) {
    StartWithPicture();
    DragUsualSelection();
    // A drag that Escape ends leaves the selection unchanged.
    MoveMouse(program->OnScreen({10, 10}, usual));
    PressMouse();
    MoveMouse(program->OnScreen({60, 60}, usual));
    program->WaitForStatus(StatusBar::selectionInfo, L"10, 10 to 61, 61 (51 \u00D7 51)");
    SendChords({{VK_ESCAPE}});
    program->WaitForStatus(StatusBar::selectionInfo, draggedText);
    ReleaseMouse();
    program->Window();
    EXPECT_EQ(program->StatusText(StatusBar::selectionInfo), draggedText);
    MoveMouse(program->OnScreen({300, 200}, usual));
    PressMouse();
    ReleaseMouse();
    program->WaitForStatus(StatusBar::selectionInfo, L"Nothing selected");
}

TEST_F(HostWindowTest, DraggingBeyondTheViewScrolls) {
    const host::Size large{1500, 1200};
    StartWithPicture({}, large);
    const RECT view = program->ViewRect();
    MoveMouse(program->OnScreen({100, 50}, large));
    PressMouse();
    // The last column and row that the screen has.
    MoveMouse({GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1});
    ASSERT_LT(view.right, GetSystemMetrics(SM_CXSCREEN) - 1);
    program->WaitForStatus(StatusBar::selectionInfo, L"100, 50 to 1500, 1200 (1400 \u00D7 1150)");
    ReleaseMouse();
    program->Window();
    EXPECT_EQ(program->StatusText(StatusBar::selectionInfo),
              L"100, 50 to 1500, 1200 (1400 \u00D7 1150)");
}

TEST_F(HostWindowTest, ScrollsByWheelAndKeys) {
    const host::Size large{1500, 1200};
    StartWithPicture({}, large);
    MoveMouse(program->OnScreen({100, 50}, large));
    program->WaitForStatus(StatusBar::pointer, L"100, 50");
    TurnWheel(2);
    program->WaitForStatus(StatusBar::pointer, L"100, 242");
    SendChords({{VK_RIGHT}, {VK_RIGHT}});
    program->WaitForStatus(StatusBar::pointer, L"164, 242");
    SendChords({{VK_UP}});
    program->WaitForStatus(StatusBar::pointer, L"164, 210");
    SendChords({{VK_HOME}});
    program->WaitForStatus(StatusBar::pointer, L"100, 50");
}

TEST_F(HostWindowTest, SelectsByNumbers) {
    StartWithPicture();
    program->Window();
    SendChords({{VK_CONTROL, 'B'}});
    HWND dialog = program->WaitForDialog(L"Selection Bounds");
    EXPECT_EQ(HostProgram::ControlText(dialog, CONTROL_HINT),
              L"The picture is 320 \u00D7 240 pixels.");
    SetDlgItemTextW(dialog, CONTROL_LEFT, L"300");
    SetDlgItemTextW(dialog, CONTROL_WIDTH, L"21");
    HostProgram::Push(dialog, IDOK);
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_EQ(
        HostProgram::BoxText(box),
        L"The selection must lie inside the picture, which is 320 \u00D7 240 pixels, and hold "
        L"a pixel at least.");
    HostProgram::Push(box, IDOK);
    WaitUntil("the dialog again", [&] { return IsWindowEnabled(dialog) != FALSE; });
    SetDlgItemTextW(dialog, CONTROL_WIDTH, L"20");
    HostProgram::Push(dialog, IDOK);
    program->WaitForStatus(StatusBar::selectionInfo, L"300, 0 to 320, 240 (20 \u00D7 240)");
}

TEST_F(HostWindowTest, ZoomsByKeys) {
    StartWithPicture();
    program->Window();
    SendChords({{VK_CONTROL, VK_OEM_PLUS}, {VK_CONTROL, VK_OEM_PLUS}});
    program->WaitForStatus(StatusBar::zoom, L"400 %");
    SendChords({{VK_CONTROL, VK_OEM_MINUS}});
    program->WaitForStatus(StatusBar::zoom, L"200 %");
    SendChords({{VK_CONTROL, '1'}});
    program->WaitForStatus(StatusBar::zoom, L"100 %");
}

}  // namespace

// The host's window with real input: filters that run, and what they leave.
#include "tests/e2e/HostWindow.Win.h"

namespace {

TEST_F(HostWindowTest, FillsADraggedSelectionFromTheMenu) {
    const fs::path file = WritePicture("picture.png");
    Start();
    program->Window();
    SendChords({{VK_CONTROL, 'O'}});
    HostProgram::EnterFile(program->WaitForDialog(L"Open"), file);
    program->WaitForTitle(L"picture.png - Zandermolite Host");
    program->Window();
    EXPECT_EQ(program->StatusText(StatusBar::pictureInfo), L"320 \u00D7 240, 72 ppi, RGB");
    EXPECT_EQ(program->StatusText(StatusBar::selectionInfo), L"Nothing selected");
    DragUsualSelection();
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    EXPECT_EQ(program->Title(), L"*picture.png - Zandermolite Host");
    const Picture saved = SaveAndLoad();
    EXPECT_EQ(program->Title(), L"saved.png - Zandermolite Host");
    EXPECT_EQ(CountChanged(original, saved, dragged, false), 0);
    EXPECT_GT(CountChanged(original, saved, dragged, true), 15000);
}

TEST_F(HostWindowTest, RepeatsTheLastFilterByItsKey) {
    StartWithPicture();
    DragUsualSelection();
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    const Picture first = SaveAndLoad("first.png");
    // The same tile on another part: as large, so that it is the same texture to the pixel.
    const Place shift{90, 70};
    Drag({corner.x + shift.x, corner.y + shift.y},
         {oppositeCorner.x + shift.x, oppositeCorner.y + shift.y});
    program->WaitForStatus(StatusBar::selectionInfo, L"130, 100 to 290, 200 (160 \u00D7 100)");
    program->Window();
    SendChords({{VK_CONTROL, 'F'}});
    program->WaitForTitle(L"*first.png - Zandermolite Host");
    const Picture second = SaveAndLoad("second.png");
    for (int y = dragged.top; y < dragged.bottom; ++y) {
        for (int x = dragged.left; x < dragged.right; ++x) {
            ASSERT_TRUE(std::equal(first.Pixel(x, y), first.Pixel(x, y) + 3,
                                   second.Pixel(x + shift.x, y + shift.y)))
                << "at " << x << ", " << y;
        }
    }
}

TEST_F(HostWindowTest, RepeatsTheLastFilterFromTheMenu) {
    StartWithPicture({L"--selection", L"0,0,64,64"});
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    program->ChooseInMenu(filterMenu, lastFilterItem);
    program->WaitForStatus(StatusBar::message, L"Zandermolite 3.0: done, nothing changed");
}

TEST_F(HostWindowTest, UndoesAndRedoes) {
    StartWithPicture({L"--selection", L"10,20,110,120"});
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    const Picture filled = SaveAndLoad("filled.png");
    EXPECT_NE(filled.pixels, original.pixels);
    SendChords({{VK_CONTROL, 'Z'}});
    program->WaitForStatus(StatusBar::message, L"Undone");
    EXPECT_EQ(program->Title(), L"*filled.png - Zandermolite Host");
    EXPECT_EQ(SaveAndLoad("undone.png").pixels, original.pixels);
    SendChords({{VK_CONTROL, 'Y'}});
    program->WaitForStatus(StatusBar::message, L"Redone");
    EXPECT_EQ(SaveAndLoad("redone.png").pixels, filled.pixels);
}

TEST_F(HostWindowTest, EscapeAbortsTheFilter) {
    const host::Size tall{48, 6000};
    StartWithPicture({}, tall);
    OpenEditor();
    // Apply; then the filter finds Escape waiting.
    SendChords({{VK_RETURN}, {VK_ESCAPE}});
    program->WaitForStatus(StatusBar::message, L"Zandermolite 3.0: cancelled");
    EXPECT_EQ(program->Title(), L"picture.png - Zandermolite Host");
    EXPECT_EQ(SaveAndLoad().pixels, original.pixels);
}

TEST_F(HostWindowTest, CtrlDragsAnEllipse) {
    StartWithPicture();
    SendKey({VK_CONTROL, true});
    DragUsualSelection();
    SendKey({VK_CONTROL, false});
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    const Picture saved = SaveAndLoad();
    EXPECT_EQ(CountChanged(original, saved, dragged, false), 0);
    EXPECT_TRUE(IsSamePixel(original, saved, dragged.left + 5, dragged.top + 5));
    EXPECT_TRUE(IsSamePixel(original, saved, dragged.right - 6, dragged.bottom - 6));
    const hostapi::VRect middle{70, 100, 90, 140};
    EXPECT_GT(CountChanged(original, saved, middle, true), 700);
}

TEST_F(HostWindowTest, TellsWhatIsNoFilter) {
    const fs::path picture = WritePicture("picture.png");
    Start({L"--filter", picture.wstring(), picture.wstring()});
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_NE(HostProgram::BoxText(box).find(L"picture.png: not a plug-in"), std::wstring::npos);
    HostProgram::Push(box, IDOK);
    program->WaitForTitle(L"picture.png - Zandermolite Host");
}

TEST_F(HostWindowTest, SaysWhatAFilterAnswered) {
    StartWithPicture({L"--memory", L"1000"});
    OpenFromMenu();
    HostProgram::Push(newDialog, IDOK);
    program->WaitForStatus(StatusBar::message, L"The filter answered -108 (out of memory)");
    EXPECT_EQ(program->Title(), L"picture.png - Zandermolite Host");
}

TEST_F(HostWindowTest, RefusesACommandLineThatMakesNoSense) {
    Start({L"--memory", L"much"});
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_NE(HostProgram::BoxText(box).find(L"--memory"), std::wstring::npos);
    HostProgram::Push(box, IDOK);
    program->WaitForExit();
}

TEST_F(HostWindowTest, ShowsTheAboutBoxOfThePluginsFamily) {
    StartWithPicture();
    program->ChooseInMenu('H', 0, 0);
    const HWND box = program->WaitForDialog(L"About Zandermolite");
    HostProgram::Push(box, IDOK);
    program->WaitForDialogsEnd();
}

}  // namespace

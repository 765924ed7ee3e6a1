// The host's window with real input: opening, saving and the end.
#include "tests/e2e/HostWindow.Win.h"

namespace {

TEST_F(HostWindowTest, TellsWhatCannotBeOpenedAndStays) {
    Start({(folder / "missing.png").wstring()});
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_NE(HostProgram::BoxText(box).find(L"missing.png: cannot be opened"), std::wstring::npos);
    HostProgram::Push(box, IDOK);
    program->WaitForDialogsEnd();
    EXPECT_EQ(program->Title(), host::programTitle);
}

TEST_F(HostWindowTest, AsksBeforeItReplacesAFile) {
    StartWithPicture({L"--selection", L"0,0,50,50"});
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    SendChords({{VK_CONTROL, 'S'}});
    HWND dialog = program->WaitForDialog(L"Save As");
    HostProgram::EnterFile(dialog, folder / "picture.png");
    HostProgram::Push(program->WaitForDialog(L"Error"), IDNO);
    WaitUntil("the dialog again", [&] { return IsWindowEnabled(dialog) != FALSE; });
    EXPECT_EQ(host::LoadPicture(folder / "picture.png").pixels, original.pixels);
    HostProgram::EnterFile(dialog, folder / "picture.png");
    HostProgram::Push(program->WaitForDialog(L"Error"), IDYES);
    program->WaitForStatus(StatusBar::message, L"Saved as picture.png");
    EXPECT_NE(host::LoadPicture(folder / "picture.png").pixels, original.pixels);
}

TEST_F(HostWindowTest, AsksBeforeItLosesWork) {
    StartWithPicture({L"--selection", L"0,0,50,50"});
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    program->Window();
    SendChords({{VK_MENU, VK_F4}});
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_EQ(HostProgram::BoxText(box), L"Save the changes to picture.png?");
    HostProgram::Push(box, IDCANCEL);
    program->WaitForDialogsEnd();
    EXPECT_EQ(program->Title(), L"*picture.png - Zandermolite Host");
    SendChords({{VK_MENU, VK_F4}});
    HostProgram::Push(program->WaitForDialog(host::programTitle), IDNO);
    program->WaitForExit();
}

TEST_F(HostWindowTest, EndsWithoutAskingWhenNothingChanged) {
    StartWithPicture();
    program->ChooseInMenu(fileMenu, 2);
    program->WaitForExit();
}

TEST_F(HostWindowTest, SavesBeforeItEnds) {
    StartWithPicture({L"--selection", L"0,0,50,50"});
    RunFromMenu();
    program->WaitForStatus(StatusBar::message, done);
    program->Window();
    SendChords({{VK_MENU, VK_F4}});
    HostProgram::Push(program->WaitForDialog(host::programTitle), IDYES);
    HostProgram::EnterFile(program->WaitForDialog(L"Save As"), folder / "kept.png");
    program->WaitForExit();
    EXPECT_NE(host::LoadPicture(folder / "kept.png").pixels, original.pixels);
}

TEST_F(HostWindowTest, SavesUnderNoNameButAPngFiles) {
    StartWithPicture();
    program->Window();
    SendChords({{VK_CONTROL, 'S'}});
    HostProgram::EnterFile(program->WaitForDialog(L"Save As"), folder / "picture.jpg");
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_EQ(HostProgram::BoxText(box),
              L"Pictures are saved as PNG. Choose a name that ends in .png.");
    HostProgram::Push(box, IDOK);
    HostProgram::Push(program->WaitForDialog(L"Save As"), IDCANCEL);
    program->WaitForDialogsEnd();
    EXPECT_FALSE(fs::exists(folder / "picture.jpg"));
    EXPECT_EQ(program->Title(), L"picture.png - Zandermolite Host");
}

}  // namespace

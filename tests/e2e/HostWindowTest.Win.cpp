// The host's window with real input: mouse, keys, menus and dialogs.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "base/Rectangles.h"
#include "fixtures/InputDesktop.Win.h"
#include "host/picture/Picture.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/WindowResources.h"
#include "tests/e2e/HostProgram.Win.h"
#include "tests/support/OwnPreferences.Win.h"

namespace {

namespace fs = std::filesystem;
using host::Picture;
using host::Place;
using host::StatusBar;

constexpr host::Size usual{320, 240};
// What the tests drag, both corners included.
constexpr Place corner{40, 30};
constexpr Place oppositeCorner{199, 129};
constexpr hostapi::VRect dragged{30, 40, 130, 200};
constexpr const wchar_t* draggedText = L"40, 30 to 200, 130 (160 \u00D7 100)";

constexpr const wchar_t* done = L"Zandermolite 3.0: done";
// Items of the menus.
constexpr WORD fileMenu = 'F', filterMenu = 'T';
constexpr int lastFilterItem = 0, firstCategoryItem = 1;
// Of the plug-in's editor.
constexpr int linesItem = 35;

// Before any test has put its own in its place.
const fs::path temporaryFolder = fs::temp_directory_path();

/// Every pixel different from its neighbours.
Picture MakePattern(host::Size size) {
    Picture picture = host::MakePicture(size.width, size.height, 3);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            std::uint8_t* pixel = picture.Pixel(x, y);
            pixel[0] = static_cast<std::uint8_t>(x);
            pixel[1] = static_cast<std::uint8_t>(y);
            pixel[2] = static_cast<std::uint8_t>(3 * x + 5 * y);
        }
    }
    return picture;
}

bool IsSamePixel(const Picture& a, const Picture& b, int x, int y) {
    return std::equal(a.Pixel(x, y), a.Pixel(x, y) + 3, b.Pixel(x, y));
}

/// Pixels inside, or outside, the rectangle that differ.
int CountChanged(const Picture& before, const Picture& after, const hostapi::VRect& rect,
                 bool isInside) {
    int changed = 0;
    for (int y = 0; y < before.height; ++y) {
        for (int x = 0; x < before.width; ++x) {
            if (hostapi::Contains(rect, x, y) == isInside && !IsSamePixel(before, after, x, y))
                ++changed;
        }
    }
    return changed;
}

class HostWindowTest : public testing::Test {
  protected:
    HostWindowTest()
        : folder(temporaryFolder /
                 ("zandermolite-window-" + std::to_string(GetCurrentProcessId()))),
          preferences(folder) {
        EnterOwnDesktop();
        fs::remove_all(folder);
        fs::create_directories(folder);
        // The plug-in keeps its last texture there; other tests run it at the same time.
        SetEnvironmentVariableW(L"TMP", folder.c_str());
    }
    ~HostWindowTest() override {
        program.reset();
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

    fs::path WritePicture(const std::string& name, host::Size size = usual) {
        original = MakePattern(size);
        host::SavePicture(original, folder / name);
        return folder / name;
    }

    /// Starts the program with the plug-in.
    HostProgram& Start(std::vector<std::wstring> arguments = {}) {
        arguments.insert(arguments.end(), {L"--filter", host::Wide(PLUGIN_FILE)});
        program = std::make_unique<HostProgram>(arguments);
        return *program;
    }

    HostProgram& StartWithPicture(std::vector<std::wstring> arguments = {},
                                  host::Size size = usual) {
        arguments.push_back(WritePicture("picture.png", size).wstring());
        HostProgram& started = Start(arguments);
        started.WaitForTitle(L"picture.png - Zandermolite Host");
        started.Window();
        return started;
    }

    void Drag(Place from, Place to, host::Size size = usual) {
        const POINT start = program->OnScreen(from, size);
        const POINT end = program->OnScreen(to, size);
        MoveMouse(start);
        PressMouse();
        MoveMouse({(start.x + end.x) / 2, (start.y + end.y) / 2});
        MoveMouse(end);
        ReleaseMouse();
    }

    void DragUsualSelection() {
        Drag(corner, oppositeCorner);
        program->WaitForStatus(StatusBar::selectionInfo, draggedText);
    }

    /// The New dialog waits then.
    void OpenFromMenu() {
        program->ChooseInMenu(filterMenu, firstCategoryItem, 0);
        newDialog = program->WaitForDialog(L"New");
    }

    /// Takes what the New dialog comes with; answers the editor.
    HWND OpenEditor() {
        OpenFromMenu();
        HostProgram::Push(newDialog, IDOK);
        return program->WaitForDialog(L"Zandermolite");
    }

    /// Draws lines and applies.
    void RunFromMenu() {
        HWND editor = OpenEditor();
        HostProgram::Push(editor, linesItem);
        HostProgram::Push(program->WaitForDialog(L"Lines"), IDOK);
        WaitUntil("the editor again", [&] { return IsWindowEnabled(editor) != FALSE; });
        HostProgram::Push(editor, IDOK);
    }

    /// What Save As writes.
    Picture SaveAndLoad(const std::string& name = "saved.png") {
        program->Window();
        SendChords({{VK_CONTROL, 'S'}});
        HostProgram::EnterFile(program->WaitForDialog(L"Save As"), folder / name);
        program->WaitForStatus(StatusBar::message, L"Saved as " + host::Wide(name));
        return host::LoadPicture(folder / name);
    }

    fs::path folder;
    OwnPreferences preferences;
    HWND newDialog = nullptr;
    Picture original;
    std::unique_ptr<HostProgram> program;
};

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

TEST_F(HostWindowTest, ClickDeselectsAndEscapeDropsADrag) {
    StartWithPicture();
    DragUsualSelection();
    // A drag that Escape ends leaves the selection that there was.
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

TEST_F(HostWindowTest, TellsWhatCannotBeOpenedAndStays) {
    Start({(folder / "missing.png").wstring()});
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_NE(HostProgram::BoxText(box).find(L"missing.png: cannot be opened"), std::wstring::npos);
    HostProgram::Push(box, IDOK);
    program->WaitForDialogsEnd();
    EXPECT_EQ(program->Title(), host::programTitle);
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

TEST_F(HostWindowTest, RefusesACommandLineThatMakesNoSense) {
    Start({L"--memory", L"much"});
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_NE(HostProgram::BoxText(box).find(L"--memory"), std::wstring::npos);
    HostProgram::Push(box, IDOK);
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

/// With the filters that are made to try hosts on.
class MisbehavingFilterTest : public HostWindowTest {
  protected:
    // In the order of the menu.
    enum TestFilter { About, BehindRow, Continue, Control, Count, Crash, Endless, FlatOnly };

    HostProgram& StartWithTestFilters(std::vector<std::wstring> arguments = {}) {
        arguments.insert(arguments.end(), {L"--filter", host::Wide(TEST_FILTERS)});
        return StartWithPicture(arguments);
    }

    void RunTestFilter(TestFilter filter) {
        constexpr int testCategoryItem = firstCategoryItem + 1;
        program->ChooseInMenu(filterMenu, testCategoryItem, filter);
    }
};

TEST_F(MisbehavingFilterTest, ShowsWhatTheFilterWasCaughtAt) {
    StartWithTestFilters({L"--selection", L"0,0,10,10"});
    RunTestFilter(BehindRow);
    HWND dialog = program->WaitForDialog(L"Faults Found");
    EXPECT_EQ(HostProgram::ControlText(dialog, CONTROL_HEADING),
              L"The host caught Behind row at this:");
    EXPECT_NE(
        HostProgram::ControlText(dialog, CONTROL_FAULTS).find(L"outData: written behind its end"),
        std::wstring::npos);
    HostProgram::Push(dialog, IDOK);
    program->WaitForDialogsEnd();
    EXPECT_NE(program->StatusText(StatusBar::message).find(L"; 1 fault found"), std::wstring::npos);
}

TEST_F(MisbehavingFilterTest, StopsAFilterWithoutEnd) {
    StartWithTestFilters({L"--continue-limit", L"20"});
    RunTestFilter(Endless);
    HostProgram::Push(program->WaitForDialog(L"Faults Found"), IDOK);
    program->WaitForStatus(StatusBar::message,
                           L"Endless did not come to an end and was stopped; 1 fault found");
    EXPECT_EQ(program->Title(), L"picture.png - Zandermolite Host");
}

TEST_F(MisbehavingFilterTest, RefusesAFilterThatDoesNotTakeThePicture) {
    StartWithTestFilters({L"--layer", L"transparent"});
    RunTestFilter(FlatOnly);
    HWND box = program->WaitForDialog(host::programTitle);
    EXPECT_NE(HostProgram::BoxText(box).find(L"doesn't work on such a picture and selection"),
              std::wstring::npos);
    HostProgram::Push(box, IDOK);
    program->WaitForStatus(StatusBar::message, L"Flat only could not run");
}

TEST_F(MisbehavingFilterTest, ShowsTheFiltersAbout) {
    StartWithTestFilters();
    // Behind the plug-in.
    program->ChooseInMenu('H', 0, 1 + About);
    program->WaitForStatus(StatusBar::message, L"The filter answered 7");
}

TEST_F(HostWindowTest, ShowsTheAboutBoxOfThePluginsFamily) {
    StartWithPicture();
    program->ChooseInMenu('H', 0, 0);
    const HWND box = program->WaitForDialog(L"About Zandermolite");
    HostProgram::Push(box, IDOK);
    program->WaitForDialogsEnd();
}

class CountingFilterTest : public MisbehavingFilterTest,
                           public testing::WithParamInterface<const wchar_t*> {};

// The filter adds the number of the run that its parameters count.
TEST_P(CountingFilterTest, FindsItsParametersAgain) {
    std::vector<std::wstring> arguments;
    if (*GetParam() != L'\0')
        arguments = {L"--trait", GetParam()};
    StartWithTestFilters(arguments);
    RunTestFilter(Count);
    program->WaitForStatus(StatusBar::message, L"Count: done");
    const Picture first = SaveAndLoad("first.png");
    SendChords({{VK_CONTROL, 'F'}});
    program->WaitForStatus(StatusBar::message, L"Count: done");
    const Picture second = SaveAndLoad("second.png");
    for (std::size_t i = 0; i < original.pixels.size(); ++i) {
        ASSERT_EQ(first.pixels[i], static_cast<std::uint8_t>(original.pixels[i] + 1));
        ASSERT_EQ(second.pixels[i], static_cast<std::uint8_t>(original.pixels[i] + 3));
    }
}

INSTANTIATE_TEST_SUITE_P(Libraries, CountingFilterTest, testing::Values(L"", L"free-library"),
                         [](const auto& parameter) {
                             return *parameter.param == L'\0' ? "Kept" : "Freed";
                         });

}  // namespace

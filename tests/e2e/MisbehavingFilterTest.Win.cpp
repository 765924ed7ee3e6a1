// The host's window with the filters that are made to try hosts on.
#include "tests/e2e/HostWindow.Win.h"

namespace {

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
    // After the plug-in in the menu.
    program->ChooseInMenu('H', 0, 1 + About);
    program->WaitForStatus(StatusBar::message, L"The filter answered 7");
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

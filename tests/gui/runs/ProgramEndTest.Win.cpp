// The end of the host's program, in the middle of a run.
#include "fixtures/InputDesktop.Win.h"
#include "resources/Ids.h"
#include "tests/gui/PluginRun.Win.h"

namespace {

using Items = TextureItems;

/// A run that the end of the program interrupts after `work`.
class ProgramEndTest : public PluginRunTest {
  protected:
    void ExpectCancel(const std::function<void(const GuiDriver&)>& work) {
        NoteFaults();
        const DWORD thread = GetCurrentThreadId();
        const host::RunReport report = Run([&](const GuiDriver& gui) {
            work(gui);
            PostThreadMessageA(thread, WM_QUIT, 7, 0);
        });
        EXPECT_EQ(report.result, -128);
        EXPECT_TRUE(picture.pixels == before.pixels);
        EXPECT_EQ(errorCell, 0);
        EXPECT_TRUE(Log().faults.empty());
        MSG quit{};
        EXPECT_TRUE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "is the host's";
        EXPECT_EQ(quit.wParam, 7u);
        EXPECT_FALSE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "once";
    }
    static DrivenDialog OpenLines(const GuiDriver& gui) {
        gui.WaitFor(textureDialog).PressToOpen(Items::lines);
        return gui.WaitFor(linesDialog);
    }
};

TEST_F(ProgramEndTest, OverAResultThatIsShown) {
    SkipNewDialog();
    const DWORD thread = GetCurrentThreadId();
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.PressToOpen(Items::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        lines.Press(ApplyItems::apply);
        PostThreadMessageA(thread, WM_QUIT, 7, 0);
        editor.WaitUntilClosed();
    });
    EXPECT_EQ(report.result, -128);
    EXPECT_TRUE(picture.pixels == before.pixels);
    EXPECT_EQ(errorCell, 0);
    MSG quit{};
    EXPECT_TRUE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "is the host's";
    EXPECT_EQ(quit.wParam, 7u);
}

TEST_F(ProgramEndTest, WithinNew) {
    ExpectCancel([](const GuiDriver& gui) { gui.WaitFor(createrDialog); });
}

TEST_F(ProgramEndTest, WithinAnAlert) {
    SkipNewDialog();
    ExpectCancel([](const GuiDriver& gui) {
        const DrivenDialog lines = OpenLines(gui);
        for (const char digit : {'9', '9', '9'}) {
            PostMessageA(lines.Control(LinesItems::angle), WM_CHAR, static_cast<WPARAM>(digit), 0);
        }
        gui.WaitForAlert(lines);
    });
}

// Its loop is one of the system's within two of ours.
TEST_F(ProgramEndTest, WithinAPopupsMenu) {
    SkipNewDialog();
    ExpectCancel([](const GuiDriver& gui) {
        const DrivenDialog lines = OpenLines(gui);
        const RECT popup = lines.Bounds(ApplyItems::presets);
        lines.Click(ApplyItems::presets,
                    {popup.right - popup.left - 8, (popup.bottom - popup.top) / 2});
        WaitUntil("the menu", [&] { return IsInMenu(lines.Window()); });
    });
}

TEST_F(ProgramEndTest, WithinADrag) {
    SkipNewDialog();
    ExpectCancel([](const GuiDriver& gui) {
        const DrivenDialog lines = OpenLines(gui);
        lines.Point(LinesItems::precision, {5, 5});
        gui.PressMouse();
        WaitUntil("the drag", [&] { return HasCapture(lines.Window()); });
    });
    ReleaseMouse();
}

}  // namespace

// A whole run of the editor for a host on a second screen, and the start after it.
#include <filesystem>

#include "base/Screens.Win.h"
#include "files/Preferences.h"
#include "fixtures/InputDesktop.Win.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/windows/FakeScreens.Win.h"

namespace {

using Texture = TextureItems;

bool LiesIn(const ScreenRect& inner, const ScreenRect& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool IsMiddleIn(const ScreenRect& window, const ScreenRect& screen) {
    const int x = (window.left + window.right) / 2;
    const int y = (window.top + window.bottom) / 2;
    return x > screen.left && x < screen.right && y > screen.top && y < screen.bottom;
}

class SecondScreenTest : public PluginRunTest {
  protected:
    /// A run for a host in the middle of the screen.
    host::RunReport RunOn(const Screen& screen, const std::function<void(const GuiDriver&)>& user) {
        picture = before;
        dialogPlaces = {};
        const HWND host =
            CreateWindowExA(0, "STATIC", "Host", WS_POPUP | WS_VISIBLE, screen.work.left + 150,
                            screen.work.top + 120, 600, 400, nullptr, nullptr, nullptr, nullptr);
        settings.hooks.window = host;
        const host::RunReport report = Run(user);
        DestroyWindow(host);
        return report;
    }
    static void ExpectOn(const Screen& screen, const DrivenDialog& dialog) {
        dialog.Settle();
        const ScreenRect frame = FrameOf(dialog.Window());
        EXPECT_TRUE(LiesIn(frame, screen.work))
            << dialog.Title() << " at " << frame.left << ", " << frame.top << " to " << frame.right
            << ", " << frame.bottom;
    }
    static void ExpectLarge(const DrivenDialog& editor, const Screen& screen) {
        WaitUntil("the large window", [&] { return IsZoomed(editor.Window()) != FALSE; });
        editor.Settle();
        EXPECT_TRUE(IsMiddleIn(FrameOf(editor.Window()), screen.whole));
    }
    static void WorkInDialogs(const GuiDriver& gui, const DrivenDialog& editor,
                              const Screen& screen) {
        editor.PressToOpen(Texture::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        ExpectOn(screen, lines);
        lines.Press(ApplyItems::apply);
        lines.PressToOpen(ApplyItems::save);
        const DrivenDialog name = gui.WaitFor(presetDialog);
        ExpectOn(screen, name);
        CloseWith(name, cancelItem);
        lines.SetText(LinesItems::angle, "99");
        PostMessageA(lines.Control(LinesItems::angle), WM_CHAR, '9', 0);
        const DrivenDialog alert = gui.WaitForAlert(lines);
        ExpectOn(screen, alert);
        CloseWith(alert, cancelItem);
        CloseWith(lines, okItem);
        for (const auto& [item, title] :
             {std::pair<int, const char*>{Texture::open, "Open"}, {Texture::save, "Save As"}}) {
            editor.PressToOpen(item);
            const DrivenDialog file = gui.WaitForTitle(title);
            WaitUntil("the dialog on the screen",
                      [&] { return LiesIn(FrameOf(file.Window()), screen.work); });
            file.PressToOpen(IDCANCEL);
            file.WaitUntilClosed();
        }
    }
    static void ApplyIn(const DrivenDialog& editor) {
        editor.PressToOpen(Texture::apply);
        editor.WaitUntilClosed();
    }
};

TEST_F(SecondScreenTest, AllOfARunStandsThereAndComesBack) {
    for (const Screen& second : SecondScreens()) {
        const TwoScreens screens(second);
        const host::RunReport first = RunOn(second, [&](const GuiDriver& gui) {
            const DrivenDialog opening = gui.WaitFor(createrDialog);
            ExpectOn(second, opening);
            opening.PressToOpen(okItem);
            const DrivenDialog editor = gui.WaitFor(textureDialog);
            ExpectOn(second, editor);
            WorkInDialogs(gui, editor, second);
            Keep(editor, "second-screen");
            // The system maximises a window on the screens that it has itself.
            if (IsOnRealScreens()) {
                PostMessageA(editor.Window(), WM_SYSCOMMAND, SC_MAXIMIZE, 0);
                ExpectLarge(editor, second);
                Keep(editor, "second-screen-large");
                WorkInDialogs(gui, editor, second);
            }
            ApplyIn(editor);
        });
        EXPECT_TRUE(first.Succeeded());
        ExpectFilledWithApplied();
        const host::RunReport again = RunOn(second, [&](const GuiDriver& gui) {
            const DrivenDialog opening = gui.WaitFor(createrDialog);
            ExpectOn(second, opening);
            opening.PressToOpen(okItem);
            const DrivenDialog editor = gui.WaitFor(textureDialog);
            if (IsOnRealScreens()) {
                ExpectLarge(editor, second);
            } else {
                ExpectOn(second, editor);
            }
            ApplyIn(editor);
        });
        EXPECT_TRUE(again.Succeeded());
        std::filesystem::remove(folder.Path() / "Zandermolite3.prf");
    }
}

}  // namespace

// The behaviour that all dialogs with an Apply button share, shown by Lines and Blur.
#include "dialogs/effects/LinesDialog.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

constexpr std::uint32_t laterClock = testClock + 1;

class ApplyDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenLines(const GuiDriver& gui, const DrivenDialog& editor) {
        return OpenDialog(gui, editor, TextureItems::lines, linesDialog);
    }
    static DrivenDialog OpenBlur(const GuiDriver& gui, const DrivenDialog& editor) {
        return OpenDialog(gui, editor, TextureItems::blur, blurDialog);
    }
    /// As drawn in the given second.
    static std::unique_ptr<PaintClass> LinesAt(std::uint32_t clock, const LinesParams& params) {
        const std::uint32_t now = Log().clock;
        Log().clock = clock;
        std::unique_ptr<PaintClass> texture = Blank();
        RunLines(*texture, params);
        Log().clock = now;
        return texture;
    }
    std::unique_ptr<PaintClass> Blurred(int times) const {
        std::unique_ptr<PaintClass> texture = Noise();
        for (int i = 0; i < times; ++i) {
            RunBlur(*texture, {});
        }
        return texture;
    }
    /// Presses Apply with Control held, which lays the result on the last one.
    static void ApplyAgain(const GuiDriver& gui, const DrivenDialog& dialog) {
        gui.HoldKey(VK_CONTROL);
        WaitUntil("Apply again", [&] { return dialog.Text(ApplyItems::apply) == "Apply again"; });
        dialog.Press(ApplyItems::apply);
        gui.ReleaseKey(VK_CONTROL);
        WaitUntil("Apply", [&] { return dialog.Text(ApplyItems::apply) == "Apply"; });
    }
};

/// On stand-ins for the system, so that the fault is noted and not shown.
class FatherTest : public CoreTest {
  protected:
    // A pending error would close every later dialog.
    ~FatherTest() override { errorCell = 0; }
};

TEST_F(FatherTest, ADialogHasOne) {
    LinesParams params;
    hostapi::Rect place{};
    EXPECT_EQ(AssertionOf([&] {
                  LinesDialog({nullptr, place, nullptr}, params);
              }),
              "ApplyDialog / Zeile 23 !(father != NULL)");
}

TEST_F(ApplyDialogTest, ControlAloneMakesItApplyAgain) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        const auto expectText = [&](const std::string& text) {
            WaitUntil(text, [&] { return lines.Text(ApplyItems::apply) == text; });
        };
        gui.HoldKey(VK_CONTROL);
        expectText("Apply again");
        gui.HoldKey(VK_SHIFT);
        expectText("Apply");
        gui.ReleaseKey(VK_SHIFT);
        expectText("Apply again");
        gui.ReleaseKey(VK_CONTROL);
        expectText("Apply");
        CloseWith(lines, cancelItem);
    });
}

TEST_F(ApplyDialogTest, OkWithoutApplyRunsOnce) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        CloseWith(OpenBlur(gui, editor), okItem);
    });
    ExpectApplied(*Blurred(1));
}

TEST_F(ApplyDialogTest, ApplyThenOkRunsOnce) {
    const std::unique_ptr<PaintClass> once = Blurred(1);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        blur.Press(ApplyItems::apply);
        ExpectShown(editor, *once);
        CloseWith(blur, okItem);
    });
    ExpectApplied(*Blurred(1));
}

TEST_F(ApplyDialogTest, ThePatternThatWasSeenStays) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        lines.Press(ApplyItems::apply);
        Log().clock = laterClock;
        CloseWith(lines, okItem);
    });
    ExpectApplied(*LinesAt(testClock, {}));
}

TEST_F(ApplyDialogTest, ApplyOnceMoreBeginsFromTheStateBefore) {
    const std::unique_ptr<PaintClass> once = Blurred(1);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        blur.Press(ApplyItems::apply);
        blur.Press(ApplyItems::apply);
        ExpectShown(editor, *once);
        CloseWith(blur, okItem);
    });
    ExpectApplied(*Blurred(1));
}

TEST_F(ApplyDialogTest, ApplyOnceMoreHasANewPattern) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        lines.Press(ApplyItems::apply);
        Log().clock = laterClock;
        lines.Press(ApplyItems::apply);
        CloseWith(lines, okItem);
    });
    ExpectApplied(*LinesAt(laterClock, {}));
}

TEST_F(ApplyDialogTest, AChangeAfterApplyRunsOnceMoreAtOk) {
    const std::unique_ptr<PaintClass> drawn = LinesAt(testClock, {});
    const std::unique_ptr<PaintClass> blank = Blank();
    LinesParams changed;
    changed.precision = 1;
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        lines.Press(ApplyItems::apply);
        ExpectShown(editor, *drawn);
        DragSlider(lines, LinesItems::precision, {0, 100}, {1});
        ExpectShown(editor, *blank);
        Log().clock = laterClock;
        CloseWith(lines, okItem);
    });
    ExpectApplied(*LinesAt(laterClock, changed));
}

TEST_F(ApplyDialogTest, LayersWithControlAndOk) {
    const std::unique_ptr<PaintClass> twice = Blurred(2);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        ApplyAgain(gui, blur);
        ApplyAgain(gui, blur);
        ExpectShown(editor, *twice);
        CloseWith(blur, okItem);
    });
    ExpectApplied(*Blurred(2));
}

TEST_F(ApplyDialogTest, CancelRemovesAllLayers) {
    const std::unique_ptr<PaintClass> thrice = Blurred(3);
    const std::unique_ptr<PaintClass> noise = Noise();
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        blur.Press(ApplyItems::apply);
        ApplyAgain(gui, blur);
        ApplyAgain(gui, blur);
        ExpectShown(editor, *thrice);
        CloseWith(blur, cancelItem);
        ExpectShown(editor, *noise);
        EXPECT_FALSE(editor.IsEnabled(TextureItems::repeatFilter));
    });
    ExpectApplied(*Noise());
}

TEST_F(ApplyDialogTest, AppliedValuesOutliveACancel) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        TypeInto(gui, blur, BlurItems::amount, "64");
        blur.Press(ApplyItems::apply);
        CloseWith(blur, cancelItem);
        const DrivenDialog second = OpenBlur(gui, editor);
        EXPECT_EQ(second.Text(BlurItems::amount), "64");
        CloseWith(second, cancelItem);
    });
    ExpectApplied(*Noise());
}

TEST_F(ApplyDialogTest, ValuesThatWereNotAppliedGoWithACancel) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        TypeInto(gui, blur, BlurItems::amount, "64");
        CloseWith(blur, cancelItem);
        const DrivenDialog second = OpenBlur(gui, editor);
        EXPECT_EQ(second.Text(BlurItems::amount), "20");
        CloseWith(second, cancelItem);
    });
    ExpectApplied(*Noise());
}

TEST_F(ApplyDialogTest, UndoTakesTheWholeDialogBack) {
    const std::unique_ptr<PaintClass> noise = Noise();
    const std::unique_ptr<PaintClass> twice = Blurred(2);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        blur.Press(ApplyItems::apply);
        ApplyAgain(gui, blur);
        CloseWith(blur, okItem);
        editor.Choose(commandUndo);
        ExpectShown(editor, *noise);
        editor.Choose(commandUndo);
        ExpectShown(editor, *twice);
    });
    ExpectApplied(*Blurred(2));
}

TEST_F(ApplyDialogTest, TheSettingsFileHoldsTheLastValuesAfterACancelOfTheEditor) {
    stored.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(stored));
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        const DrivenDialog blur = OpenBlur(gui, editor);
        TypeInto(gui, blur, BlurItems::amount, "33");
        CloseWith(blur, okItem);
        gui.Type("xb");
        WaitUntil("the keys", [&] { return editor.Value(TextureItems::toolPalette) == 2; });
        CloseWith(editor, cancelItem);
    });
    Preferences after;
    EXPECT_TRUE(LoadPreferences(after));
    EXPECT_EQ(after.blur.amount, 33);
    EXPECT_EQ(after.foreground.red, 0xFFFF);
    EXPECT_EQ(after.background.red, 0);
    EXPECT_EQ(after.launchFlag, 0);
}

TEST_F(ApplyDialogTest, TheEditorTakesNoPressBelowAnotherDialog) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        // A screen reader's press is not kept from a disabled window, as a mouse's is.
        editor.PressToOpen(TextureItems::blur);
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        editor.Press(TextureItems::lines);
        const HWND lines = editor.Control(TextureItems::lines);
        Ask(editor.Window(), WM_COMMAND, MAKEWPARAM(TextureItems::lines, BN_DOUBLECLICKED),
            reinterpret_cast<LPARAM>(lines));
        editor.Choose(commandAbout);
        editor.Press(cancelItem);
        // As posted for an Escape just before the press that opened the dialog.
        Ask(editor.Window(), messageCancel);
        Ask(editor.Window(), WM_CLOSE);
        EXPECT_TRUE(blur.IsOpen());
        EXPECT_TRUE(editor.IsOpen());
        EXPECT_FALSE(gui.QuestionOver(blur));
        CloseWith(blur, okItem);
        EXPECT_TRUE(editor.IsOpen());
        editor.PressToOpen(TextureItems::lines);
        CloseWith(gui.WaitFor(linesDialog), cancelItem);
    });
    ExpectFilledWithApplied();
}

TEST_F(ApplyDialogTest, DialogsComeBackWhereTheyWere) {
    const auto move = [](const DrivenDialog& dialog, int x, int y) {
        SetWindowPos(dialog.Window(), nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        dialog.Settle();
    };
    const auto place = [](const DrivenDialog& dialog) {
        RECT frame;
        GetWindowRect(dialog.Window(), &frame);
        return std::pair(frame.left, frame.top);
    };
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(TextureItems::blur);
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        move(blur, 31, 47);
        CloseWith(blur, cancelItem);
        editor.PressToOpen(TextureItems::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        move(lines, 301, 203);
        CloseWith(lines, okItem);
        editor.PressToOpen(TextureItems::blur);
        const DrivenDialog again = gui.WaitFor(blurDialog);
        EXPECT_EQ(place(again), std::pair(31L, 47L)) << "in the same run";
        CloseWith(again, cancelItem);
    });
    // A plug-in that was loaded anew knows them from the file.
    dialogPlaces = {};
    picture = before;
    Run([&](const GuiDriver& gui) {
        CloseWith(gui.WaitFor(createrDialog), okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.PressToOpen(TextureItems::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        EXPECT_EQ(place(lines), std::pair(301L, 203L)) << "in the next run";
        CloseWith(lines, cancelItem);
        editor.PressToOpen(TextureItems::blur);
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        EXPECT_EQ(place(blur), std::pair(31L, 47L));
        CloseWith(blur, cancelItem);
        CloseWith(editor, cancelItem);
    });
}

}  // namespace

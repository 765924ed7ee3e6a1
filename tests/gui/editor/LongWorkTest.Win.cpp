// The screen while an operation works: the busy cursor, and the progress bar of those that have
// one.
#include <atomic>
#include <utility>

#include "base/Platform.h"
#include "base/Progress.h"
#include "editor/ViewGeometry.h"
#include "fixtures/Screenshot.Win.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

using Items = TextureItems;

/// The system's number of the busy cursor.
constexpr int busyCursor = 32514;

/// Receives the calls to the editor's progress bar and the busy cursor, and holds the program at a
/// chosen one, so that its user can look at the screen.
class HeldWork final : public ProgressTarget {
  public:
    /// Begin and End are called while no work runs.
    void Begin() {
        editor = std::exchange(ShowClass::target, this);
        isWatching = this;
        platformServices.showWaitCursor = [] { isWatching->ShowWait(); };
        // The clock runs fast, so that every look at it is late enough for the cursor.
        platformServices.tickCount = [] {
            constexpr std::uint32_t second = 1000;
            static std::uint32_t now = 0;
            return now += second;
        };
    }
    void End() {
        holdsAtCursor = false;
        holdsFrom = never;
        isHeld = false;
        ShowClass::target = editor;
        platformServices = plugins;
    }

    /// Holds the next time that the bar is drawn with at least `percent`.
    void HoldFrom(int percent) { holdsFrom = percent; }
    /// Holds the next time that the busy cursor is shown.
    void HoldAtCursor() { holdsAtCursor = true; }
    /// Returns the percents that the bar was drawn with last.
    int WaitUntilHeld() const {
        WaitUntil("the work to come so far", [this] { return isHeld.load(); });
        return percentDrawn;
    }
    void LetGo() { isHeld = false; }

    void DrawProgress(short percent) override {
        editor->DrawProgress(percent);
        percentDrawn = percent;
        if (percent >= holdsFrom) {
            holdsFrom = never;
            Hold();
        }
    }

  private:
    void ShowWait() {
        plugins.showWaitCursor();
        if (holdsAtCursor.exchange(false)) {
            Hold();
        }
    }
    void Hold() {
        isHeld = true;
        while (isHeld) {
            Sleep(1);
        }
    }

    static constexpr int never = 1000;
    static inline HeldWork* isWatching = nullptr;
    ProgressTarget* editor = nullptr;
    const PlatformServices plugins = platformServices;
    std::atomic<int> holdsFrom = never;
    std::atomic<bool> holdsAtCursor = false;
    std::atomic<bool> isHeld = false;
    std::atomic<int> percentDrawn = 0;
};

class LongWorkTest : public DialogRunTest {
  protected:
    struct Dialog {
        int item;
        int id;
    };

    LongWorkTest() {
        stored.drops.count = 100;
        stored.drops.size = 100;
        stored.drops.coveredBlur = coveredBlurMost;
        stored.twirls = {100, 100, 100};
        stored.blur.amount = 100;
    }

    /// A run in which the user watches each dialog's Apply, from where `hold` says.
    void WatchApplies(const std::vector<Dialog>& dialogs, const std::function<void()>& hold,
                      const std::function<void(const DrivenDialog& editor)>& watch) {
        RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
            for (const Dialog& each : dialogs) {
                SCOPED_TRACE(CaptionOf(each.id));
                const DrivenDialog dialog = OpenDialog(gui, editor, each.item, each.id);
                dialog.Point(ApplyItems::apply, {5, 5});
                {
                    const Watch watching(work);
                    hold();
                    dialog.PressToOpen(ApplyItems::apply);
                    watch(editor);
                    work.LetGo();
                    dialog.Settle();
                }
                WaitUntil("the arrow", [] { return GuiDriver::CursorId() == arrowCursor; });
                // The end of the work erases the bar, and the next paint draws it.
                WaitUntil("the empty bar", [&] { return IsBarEmpty(editor.Grab(), editor); });
                CloseWith(dialog, cancelItem);
            }
        });
    }

    static bool IsBarEmpty(const host::Picture& shown, const DrivenDialog& editor) {
        const RECT bounds = editor.Bounds(Items::progress);
        const int row = static_cast<int>(bounds.top + bounds.bottom) / 2;
        // Within the frame and its shade.
        for (int x = static_cast<int>(bounds.left) + 2; x < static_cast<int>(bounds.right) - 1;
             ++x) {
            if (ColorAt(shown, x, row) != GetSysColor(COLOR_WINDOW)) {
                return false;
            }
        }
        return true;
    }
    static void ExpectBar(const host::Picture& shown, const DrivenDialog& editor, int percent) {
        const RECT bounds = editor.Bounds(Items::progress);
        const int left = static_cast<int>(bounds.left) + 1;
        const int right = static_cast<int>(bounds.right) - 1;
        const int row = static_cast<int>(bounds.top + bounds.bottom) / 2;
        const int end = ProgressEnd(left, right, percent);
        // The first column is the bar's shade.
        for (int x = left + 1; x < right; ++x) {
            ASSERT_EQ(ColorAt(shown, x, row),
                      GetSysColor(x < end ? COLOR_ACTIVECAPTION : COLOR_WINDOW))
                << percent << " percent at " << x - left;
        }
    }

    HeldWork work;

  private:
    class Watch {
      public:
        explicit Watch(HeldWork& newWork) : work(newWork) { work.Begin(); }
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        ~Watch() { work.End(); }

      private:
        HeldWork& work;
    };
};

TEST_F(LongWorkTest, ABarFillsUnderTheBusyCursor) {
    const std::vector<Dialog> withBar{
        {Items::twirls, twirlsDialog},   {Items::drops, dropsDialog}, {Items::lines, linesDialog},
        {Items::shapes, shapesDialog},   {Items::skew, skewDialog},   {Items::blur, blurDialog},
        {Items::sharpen, sharpenDialog}, {Items::noise, noiseDialog}};
    const auto expectBusy = [&](const DrivenDialog& editor, int least) {
        const int percent = work.WaitUntilHeld();
        EXPECT_GE(percent, least);
        EXPECT_EQ(GuiDriver::CursorId(), busyCursor);
        ExpectBar(GrabClient(editor.Window()), editor, percent);
    };
    WatchApplies(
        withBar, [&] { work.HoldFrom(0); },
        [&](const DrivenDialog& editor) {
            expectBusy(editor, 0);
            work.HoldFrom(45);
            work.LetGo();
            expectBusy(editor, 45);
        });
}

TEST_F(LongWorkTest, TheOthersShowTheBusyCursorAlone) {
    stored.blur.motion = 1;
    const std::vector<Dialog> withCursor{{Items::dividers, devidersDialog},
                                         {Items::waves, wavesDialog},
                                         {Items::blur, blurDialog},
                                         {Items::saturation, saturationDialog},
                                         {Items::brightContr, brightContrDialog},
                                         {Items::addColor, addColorDialog}};
    WatchApplies(
        withCursor, [&] { work.HoldAtCursor(); },
        [&](const DrivenDialog& editor) {
            work.WaitUntilHeld();
            EXPECT_EQ(GuiDriver::CursorId(), busyCursor);
            ExpectBar(GrabClient(editor.Window()), editor, 0);
        });
}

}  // namespace

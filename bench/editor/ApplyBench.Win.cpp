#include <algorithm>
#include <cstdio>
#include <optional>
#include <random>
#include <utility>

#include "base/Platform.h"
#include "base/Progress.h"
#include "bench/editor/EditorRun.Win.h"
#include "bench/editor/Measurements.Win.h"
#include "editor/Operations.h"
#include "framework/dialog/NorvantaDialog.h"
#include "resources/Ids.h"

namespace {

constexpr int applies = 7;

/// A picture on which no branch is foretold.
host::Picture NoisePicture() {
    host::Picture picture = host::MakePicture(tileSide, tileSide, 3);
    std::mt19937 generator(1);
    for (std::uint8_t& byte : picture.pixels) {
        byte = static_cast<std::uint8_t>(generator());
    }
    return picture;
}

/// In milliseconds from the press of Apply.
struct ApplyTimes {
    double redrawn;
    /// From when on the busy cursor is shown without a break; nothing if it is not.
    std::optional<double> busy;
    /// When the progress bar is drawn first.
    std::optional<double> bar;
};

/// Notes what an Apply shows while it works. It stands before the editor's progress bar.
class ApplyWatch final : public ProgressTarget {
  public:
    ApplyWatch() : editor(ShowClass::target) {
        current = this;
        ShowClass::target = this;
        showWait = std::exchange(platformServices.showWaitCursor, [] { current->Wait(); });
        showArrow = std::exchange(platformServices.showArrowCursor, [] { current->Arrow(); });
    }
    ApplyWatch(const ApplyWatch&) = delete;
    ApplyWatch& operator=(const ApplyWatch&) = delete;
    ~ApplyWatch() {
        platformServices.showWaitCursor = showWait;
        platformServices.showArrowCursor = showArrow;
        ShowClass::target = editor;
    }

    void DrawProgress(short percent) override {
        times.bar = times.bar.value_or(MillisecondsSince(start));
        editor->DrawProgress(percent);
    }
    const ApplyTimes& Times() const { return times; }

  private:
    void Wait() {
        if (!isBusy) {
            times.busy = MillisecondsSince(start);
            isBusy = true;
        }
        showWait();
    }
    void Arrow() {
        isBusy = false;
        showArrow();
    }

    static inline ApplyWatch* current = nullptr;
    ProgressTarget* const editor;
    const Clock::time_point start = Clock::now();
    decltype(platformServices.showWaitCursor) showWait = nullptr;
    decltype(platformServices.showArrowCursor) showArrow = nullptr;
    ApplyTimes times{};
    bool isBusy = false;
};

/// The dialog's thread is idle while the watch comes and goes.
ApplyTimes MeasureApply(const DrivenDialog& editor, const DrivenDialog& dialog) {
    dialog.Settle();
    editor.WaitUntilPainted();
    const Clock::time_point start = Clock::now();
    const ApplyWatch watch;
    dialog.Press(ApplyItems::apply);
    editor.WaitUntilPainted();
    editor.Settle();
    ApplyTimes times = watch.Times();
    times.redrawn = MillisecondsBetween(start, LastDisplay());
    return times;
}

/// In how many of the runs it came, and after how many milliseconds at the latest.
void ReportMoment(const char* what, const std::vector<ApplyTimes>& all,
                  std::optional<double> ApplyTimes::*moment) {
    std::vector<double> values;
    for (const ApplyTimes& times : all) {
        if (times.*moment) {
            values.push_back(*(times.*moment));
        }
    }
    std::printf("; %s in %zu of %zu", what, values.size(), all.size());
    if (!values.empty()) {
        std::printf(" by %.1f ms", *std::max_element(values.begin(), values.end()));
    }
}

void ReportApplies(const char* name, const std::vector<ApplyTimes>& all) {
    std::vector<double> redrawn;
    for (const ApplyTimes& times : all) {
        redrawn.push_back(times.redrawn);
    }
    std::printf("%-20s median %7.1f ms, best %7.1f ms", name, Median(redrawn),
                *std::min_element(redrawn.begin(), redrawn.end()));
    ReportMoment("bar", all, &ApplyTimes::bar);
    ReportMoment("busy cursor", all, &ApplyTimes::busy);
    std::printf("\n");
}

}  // namespace

/// Applies the worst case of each operation to the same noise.
void MeasureApplies() {
    StorePreferences(true);
    platformServices.clockSeconds = [] { return std::uint32_t{1}; };
    RunOn(NoisePicture(), [](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        opening.Press(SizeItems::selection);
        CloseWith(opening, okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        for (const Operation& operation : AllOperations()) {
            editor.PressToOpen(operation.item);
            const DrivenDialog dialog = gui.WaitFor(operation.id);
            std::vector<ApplyTimes> times;
            for (int i = 0; i < applies; ++i) {
                times.push_back(MeasureApply(editor, dialog));
            }
            ReportApplies(operation.Row().name, times);
            CloseWith(dialog, cancelItem);
        }
        CloseWith(editor, cancelItem);
    });
}

// How soon the editor opens, how closely a stroke of the brush follows the mouse, and how soon
// Apply shows its result: the real windows, in a host of our own, with real input. Needs the mouse
// for itself; see bench/README.md.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/Module.Win.h"
#include "base/Platform.h"
#include "base/Progress.h"
#include "base/Rectangles.h"
#include "bench/Records.h"
#include "editor/Operations.h"
#include "files/Preferences.h"
#include "fixtures/GuiDriver.Win.h"
#include "fixtures/PreferencePlaceInMemory.h"
#include "fixtures/PreferencesInMemory.h"
#include "framework/dialog/NorvantaDialog.h"
#include "host/record/FilterHost.h"
#include "hostapi/Results.h"
#include "resources/Ids.h"
#include "shell/Selectors.h"

namespace {

using Clock = std::chrono::steady_clock;
using Items = TextureItems;

constexpr short side = 512;
constexpr int opens = 15;
constexpr int applies = 7;
constexpr int strokes = 3;
constexpr std::chrono::milliseconds strokeTime(1500);

/// Redraws of the view so far. A redraw begins with the first call of the host's display service
/// that draws over what the redraw before has drawn.
std::atomic<int> redraws = 0;
std::vector<hostapi::VRect> drawnInRedraw;
/// When the last call was done.
std::atomic<Clock::rep> lastDisplay = 0;
decltype(hostapi::FilterRecord::displayPixels) hostDisplay = nullptr;
/// The time that each call takes in a slow host, beside the drawing.
std::atomic<DWORD> slowness = 0;

void CountRedraw(const hostapi::VRect& drawn) {
    const bool isNext = std::any_of(
        drawnInRedraw.begin(), drawnInRedraw.end(),
        [&](const hostapi::VRect& before) { return !IsEmpty(Intersect(drawn, before)); });
    if (isNext) {
        drawnInRedraw.clear();
        ++redraws;
    }
    drawnInRedraw.push_back(drawn);
}

std::int16_t HOST_CALL CountDisplay(const hostapi::PSPixelMap* source,
                                    const hostapi::VRect* sourceRect, std::int32_t row,
                                    std::int32_t column, void* context) {
    const std::int16_t result = hostDisplay(source, sourceRect, row, column, context);
    if (slowness != 0) {
        Sleep(slowness);
    }
    lastDisplay = Clock::now().time_since_epoch().count();
    CountRedraw({row, column, row + Height(*sourceRect), column + Width(*sourceRect)});
    return result;
}

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// The time of the plug-in's last start, the host's callbacks included, in milliseconds.
double startTook = 0;

void HOST_CALL Entry(std::int16_t selector, hostapi::FilterRecord* record, void*,
                     std::int16_t* result) {
    hostDisplay = record->displayPixels;
    record->displayPixels = CountDisplay;
    const Clock::time_point start = Clock::now();
    DispatchSelector(selector, record, result);
    if (selector == hostapi::filterSelectorStart) {
        startTook = MillisecondsSince(start);
    }
    record->displayPixels = hostDisplay;
}

/// An editor whose client area has the screen's size, and the worst case of each dialog's record.
/// No New dialog unless it is asked for.
void StorePreferences(bool opensNew) {
    Preferences preferences;
    preferences.launchFlag = opensNew ? 1 : 0;
    preferences.editorPlace = {0, 0, static_cast<short>(GetSystemMetrics(SM_CYSCREEN)),
                               static_cast<short>(GetSystemMetrics(SM_CXSCREEN))};
    for (const Operation& operation : AllOperations()) {
        const CatalogRow& row = operation.Row();
        std::memcpy(LastUsedRecord(preferences, operation.id), WorstRecordOf(row).Data(),
                    row.recordSize);
    }
    SavePreferences(preferences);
}

/// A picture on which no branch is foretold.
host::Picture NoisePicture() {
    host::Picture picture = host::MakePicture(side, side, 3);
    std::mt19937 generator(1);
    for (std::uint8_t& byte : picture.pixels) {
        byte = static_cast<std::uint8_t>(generator());
    }
    return picture;
}

void CloseWith(const DrivenDialog& dialog, int item) {
    dialog.PressToOpen(item);
    dialog.WaitUntilClosed();
}

/// One run of the filter on the picture; the user cancels in the end.
void RunOn(host::Picture picture, const std::function<void(const GuiDriver&)>& user) {
    host::FilterHost filterHost;
    RunWithUser(
        [&] {
            filterHost.Run(Entry, picture, host::SelectRectangle({0, 0, side, side}));
        },
        user);
}

/// One with a blank texture.
void Run(const std::function<void(const GuiDriver&, const DrivenDialog&)>& user) {
    RunOn(host::MakePicture(side, side, 3, 200), [&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        user(gui, editor);
        CloseWith(editor, cancelItem);
    });
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// From the host's call to the window with all that is in it on the screen.
double MeasureOpening() {
    const Clock::time_point start = Clock::now();
    double opened = 0;
    Run([&](const GuiDriver&, const DrivenDialog& editor) {
        editor.WaitUntilPainted();
        opened = MillisecondsSince(start);
    });
    return opened;
}

/// The time that the system alone takes for a window with as many plain controls as the editor has.
double MeasurePlainWindow() {
    constexpr int controls = 63;
    const Clock::time_point start = Clock::now();
    const HWND window = CreateWindowExA(0, "STATIC", "Plain", WS_POPUP | WS_CAPTION, 0, 0, 850, 550,
                                        nullptr, nullptr, instanceHandle, nullptr);
    for (int i = 0; i < controls; ++i) {
        CreateWindowExA(0, "BUTTON", "Button", WS_CHILD | WS_VISIBLE, i % 8 * 100, i / 8 * 60, 90,
                        20, window, nullptr, instanceHandle, nullptr);
    }
    ShowWindow(window, SW_SHOW);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_INVALIDATE);
    const double taken = MillisecondsSince(start);
    DestroyWindow(window);
    return taken;
}

struct StrokeSetting {
    const char* name;
    int zoomSteps;
    /// Every redraw is one of the whole view, as it is while a part of it waits for its paint.
    bool isPlain;
    DWORD millisecondsACall;
};

/// Looks at the mouse a second, each with a redraw, while a stroke goes round.
double MeasureStroke(const StrokeSetting& setting) {
    double polls = 0;
    Run([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int step = 0; step < setting.zoomSteps; ++step) {
            editor.Press(Items::zoomIn);
        }
        gui.Type("b");
        WaitUntil("the brush", [&] { return editor.Value(Items::toolPalette) == 2; });
        editor.WaitUntilPainted();
        editor.Point(Items::drawingArea, {150, 150});
        gui.PressMouse();
        const Clock::time_point start = Clock::now();
        const int redrawnBefore = redraws;
        slowness = setting.millisecondsACall;
        if (setting.isPlain) {
            const RECT view = editor.Bounds(Items::drawingArea);
            const RECT pixel{view.left + 5, view.top + 5, view.left + 6, view.top + 6};
            InvalidateRect(editor.Window(), &pixel, FALSE);
        }
        for (int i = 0; Clock::now() - start < strokeTime; ++i) {
            editor.Point(Items::drawingArea, {150 + i * 3 % 300, 150 + i * 5 % 250});
            Sleep(1);
        }
        polls = (redraws - redrawnBefore) / (MillisecondsSince(start) / 1000);
        slowness = 0;
        gui.ReleaseMouse();
        editor.Settle();
    });
    return polls;
}

/// The settings take turns.
void MeasureStrokes() {
    constexpr DWORD slow = 10;
    constexpr StrokeSetting settings[] = {
        {"zoom 1", 0, false, 0},
        {"zoom 1, plain", 0, true, 0},
        {"zoom 2", 2, false, 0},
        {"zoom 2, plain", 2, true, 0},
        {"zoom 1, 10 ms a call", 0, false, slow},
        {"zoom 1, plain, 10 ms a call", 0, true, slow},
        {"zoom 2, 10 ms a call", 2, false, slow},
        {"zoom 2, plain, 10 ms a call", 2, true, slow},
    };
    std::vector<double> polls[std::size(settings)];
    for (int i = 0; i < strokes; ++i) {
        for (std::size_t j = 0; j < std::size(settings); ++j) {
            polls[j].push_back(MeasureStroke(settings[j]));
        }
    }
    for (std::size_t j = 0; j < std::size(settings); ++j) {
        std::printf("Polls a second, %-28s median %6.0f, best %6.0f\n", settings[j].name,
                    Median(polls[j]), *std::max_element(polls[j].begin(), polls[j].end()));
    }
}

// --- Apply ---

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
    const Clock::time_point redrawn{Clock::duration(lastDisplay.load())};
    times.redrawn = std::chrono::duration<double, std::milli>(redrawn - start).count();
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

void Report(const char* name, const std::vector<double>& values) {
    std::printf("%-32s median %6.1f ms, first %6.1f ms, best %6.1f ms\n", name, Median(values),
                values.front(), *std::min_element(values.begin(), values.end()));
}

// --- The transfer ---

/// A filter that has every row of the selection delivered and taken back, and leaves it as it is.
void HOST_CALL RowsAlone(std::int16_t selector, hostapi::FilterRecord* record, void*,
                         std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector != hostapi::filterSelectorStart) {
        return;
    }
    const Clock::time_point start = Clock::now();
    record->inLoPlane = record->outLoPlane = 0;
    record->inHiPlane = record->outHiPlane = static_cast<std::int16_t>(record->planes - 1);
    record->inRect = record->outRect = record->filterRect;
    for (std::int16_t y = record->filterRect.top; y < record->filterRect.bottom; ++y) {
        record->inRect.top = record->outRect.top = y;
        record->inRect.bottom = record->outRect.bottom = static_cast<std::int16_t>(y + 1);
        record->advanceState();
    }
    record->inRect = record->outRect = {};
    startTook = MillisecondsSince(start);
}

/// The texture into a large selection, as after Apply in the editor: through the host, which has
/// its picture's rows delivered and taken back one by one. Beside it that alone, and a plain copy
/// of as many bytes.
void MeasureTransfer() {
    constexpr int large = 8000;
    constexpr int transfers = 5;
    StorePreferences(false);
    host::Picture picture = host::MakePicture(large, large, 3, 200);
    const host::Selection all = host::SelectRectangle({0, 0, large, large});
    host::FilterHost filterHost;
    RunWithUser([&] { filterHost.Run(Entry, picture, all); },
                [](const GuiDriver& gui) { CloseWith(gui.WaitFor(textureDialog), okItem); });
    std::vector<double> applied;
    std::vector<double> rows;
    std::vector<double> copied;
    std::vector<std::uint8_t> copy(picture.pixels.size());
    for (int i = 0; i < transfers; ++i) {
        filterHost.Run(Entry, picture, all, host::Execution::repeat);
        applied.push_back(startTook);
        filterHost.Run(RowsAlone, picture, all, host::Execution::repeat);
        rows.push_back(startTook);
        const Clock::time_point start = Clock::now();
        std::memcpy(copy.data(), picture.pixels.data(), copy.size());
        copied.push_back(MillisecondsSince(start));
    }
    Report("Repeat over 8000 by 8000", applied);
    Report("The host's rows alone", rows);
    Report("Plain copy of its bytes", copied);
}

// --- Settings ---

/// As many presets in one list as its count has room for.
std::unique_ptr<Preferences> ManyPresets() {
    constexpr int presetCount = 32766;
    auto preferences = std::make_unique<Preferences>();
    for (int i = 0; i < presetCount; ++i) {
        void* const record = ::operator new(sizeof(SkewParams));
        new (record) SkewParams();
        preferences->presets[presetSkew].Append(record, std::to_string(i).c_str());
    }
    return preferences;
}

/// A real file, which the process has in its own folder; and beside it the bytes in memory.
void MeasurePresets() {
    const std::unique_ptr<Preferences> many = ManyPresets();
    const std::string bytes = WrittenBytes(*many);
    std::vector<double> saved;
    std::vector<double> loaded;
    std::vector<double> read;
    for (int i = 0; i < opens; ++i) {
        Clock::time_point start = Clock::now();
        SavePreferences(*many);
        saved.push_back(MillisecondsSince(start));
        Preferences fromFile;
        start = Clock::now();
        LoadPreferences(fromFile);
        loaded.push_back(MillisecondsSince(start));
        Preferences fromMemory;
        start = Clock::now();
        ReadFromBytes(bytes, fromMemory);
        read.push_back(MillisecondsSince(start));
    }
    Report("Saving 32766 presets", saved);
    Report("Loading them from the file", loaded);
    Report("Reading them from memory", read);
}

/// Takes turns with a plain window.
void MeasureOpenings() {
    std::vector<double> plain;
    std::vector<double> opening;
    for (int i = 0; i < opens; ++i) {
        plain.push_back(MeasurePlainWindow());
        opening.push_back(MeasureOpening());
    }
    Report("Editor opens", opening);
    Report("Plain window of 63 buttons", plain);
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> asked(argv + 1, argv + argc);
    const auto isAsked = [&](const char* what) {
        return asked.empty() || std::find(asked.begin(), asked.end(), what) != asked.end();
    };
    instanceHandle = GetModuleHandleA(nullptr);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "editor-bench";
    std::filesystem::create_directories(folder);
    const PreferencePlaceInMemory place((folder / "Zandermolite.8bf").string());
    StorePreferences(false);
    std::printf("Tile %d by %d, window %d by %d\n", side, side, GetSystemMetrics(SM_CXSCREEN),
                GetSystemMetrics(SM_CYSCREEN));
    if (isAsked("open")) {
        MeasureOpenings();
    }
    if (isAsked("presets")) {
        MeasurePresets();
    }
    if (isAsked("transfer")) {
        MeasureTransfer();
    }
    if (isAsked("stroke")) {
        MeasureStrokes();
    }
    if (isAsked("apply")) {
        MeasureApplies();
    }
    std::filesystem::remove_all(folder);
}

#include "bench/editor/EditorRun.Win.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>

#include "base/Rectangles.h"
#include "bench/Records.h"
#include "editor/Operations.h"
#include "files/Preferences.h"
#include "framework/dialog/NorvantaDialog.h"
#include "resources/Ids.h"
#include "shell/Selectors.h"

namespace {

std::atomic<int> redraws = 0;
std::vector<hostapi::VRect> drawnInRedraw;
std::atomic<Clock::rep> lastDisplay = 0;
decltype(hostapi::FilterRecord::displayPixels) hostDisplay = nullptr;
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

double startTook = 0;

}  // namespace

double MillisecondsBetween(Clock::time_point start, Clock::time_point end) {
    return std::chrono::duration<double, std::milli>(end - start).count();
}

double MillisecondsSince(Clock::time_point start) {
    return MillisecondsBetween(start, Clock::now());
}

// --- Runs ---

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

void HOST_CALL NotedEntry(std::int16_t selector, hostapi::FilterRecord* record, void*,
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

void CloseWith(const DrivenDialog& dialog, int item) {
    dialog.PressToOpen(item);
    dialog.WaitUntilClosed();
}

void RunOn(host::Picture picture, const std::function<void(const GuiDriver&)>& user) {
    host::FilterHost filterHost;
    RunWithUser(
        [&] {
            filterHost.Run(NotedEntry, picture, host::SelectRectangle({0, 0, tileSide, tileSide}));
        },
        user);
}

void RunEditor(const std::function<void(const GuiDriver&, const DrivenDialog&)>& user) {
    RunOn(host::MakePicture(tileSide, tileSide, 3, 200), [&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        user(gui, editor);
        CloseWith(editor, cancelItem);
    });
}

// --- What is noted of them ---

int Redraws() {
    return redraws;
}

Clock::time_point LastDisplay() {
    return Clock::time_point(Clock::duration(lastDisplay.load()));
}

void SetSlowness(DWORD milliseconds) {
    slowness = milliseconds;
}

double StartTook() {
    return startTook;
}

// --- Reports ---

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Report(const char* name, const std::vector<double>& values) {
    std::printf("%-32s median %6.1f ms, first %6.1f ms, best %6.1f ms\n", name, Median(values),
                values.front(), *std::min_element(values.begin(), values.end()));
}

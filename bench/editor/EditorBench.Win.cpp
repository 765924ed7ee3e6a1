// How soon the editor opens, and how closely a stroke of the brush follows the mouse: the real
// windows, in a host of our own, with real input. Needs the mouse for itself; see bench/README.md.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/Module.Win.h"
#include "files/Preferences.h"
#include "fixtures/GuiDriver.Win.h"
#include "fixtures/PreferencePlaceInMemory.h"
#include "framework/dialog/NorvantaDialog.h"
#include "host/record/FilterHost.h"
#include "resources/Ids.h"
#include "shell/Selectors.h"

namespace {

using Clock = std::chrono::steady_clock;
using Items = TextureItems;

constexpr short side = 512;
constexpr int opens = 15;
constexpr std::chrono::milliseconds strokeTime(3000);
/// The view shows the tile so often, each time by a call of the host.
constexpr int drawsOfView = 9;

std::atomic<int> displays = 0;
decltype(hostapi::FilterRecord::displayPixels) hostDisplay = nullptr;

std::int16_t HOST_CALL CountDisplay(const hostapi::PSPixelMap* source,
                                    const hostapi::VRect* sourceRect, std::int32_t row,
                                    std::int32_t column, void* context) {
    ++displays;
    return hostDisplay(source, sourceRect, row, column, context);
}

void HOST_CALL Entry(std::int16_t selector, hostapi::FilterRecord* record, void*,
                     std::int16_t* result) {
    hostDisplay = record->displayPixels;
    record->displayPixels = CountDisplay;
    DispatchSelector(selector, record, result);
    record->displayPixels = hostDisplay;
}

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Straight to an editor whose client area has the screen's size.
void StorePreferences(short width, short height) {
    Preferences preferences;
    preferences.launchFlag = 0;
    preferences.editorPlace = {0, 0, height, width};
    SavePreferences(preferences);
}

/// One run of the filter; the user cancels in the end.
void Run(const std::function<void(const GuiDriver&, const DrivenDialog&)>& user) {
    host::FilterHost filterHost;
    host::Picture picture = host::MakePicture(side, side, 3, 200);
    RunWithUser(
        [&] {
            filterHost.Run(Entry, picture, host::SelectRectangle({0, 0, side, side}));
        },
        [&](const GuiDriver& gui) {
            const DrivenDialog editor = gui.WaitFor(textureDialog);
            user(gui, editor);
            editor.PressToOpen(cancelItem);
            editor.WaitUntilClosed();
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

/// Looks at the mouse a second, each with a redraw, while a stroke goes round.
double MeasureStroke(int zoomSteps) {
    double polls = 0;
    Run([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int step = 0; step < zoomSteps; ++step) {
            editor.Press(Items::zoomIn);
        }
        gui.Type("b");
        WaitUntil("the brush", [&] { return editor.Value(Items::toolPalette) == 2; });
        editor.WaitUntilPainted();
        editor.Point(Items::drawingArea, {150, 150});
        gui.PressMouse();
        const Clock::time_point start = Clock::now();
        const int drawnBefore = displays;
        for (int i = 0; Clock::now() - start < strokeTime; ++i) {
            editor.Point(Items::drawingArea, {150 + i * 3 % 300, 150 + i * 5 % 250});
            Sleep(1);
        }
        polls = (displays - drawnBefore) / drawsOfView / (MillisecondsSince(start) / 1000);
        gui.ReleaseMouse();
        editor.Settle();
    });
    return polls;
}

void Report(const char* name, const std::vector<double>& values) {
    std::printf("%-32s median %6.1f ms, first %6.1f ms, best %6.1f ms\n", name, Median(values),
                values.front(), *std::min_element(values.begin(), values.end()));
}

}  // namespace

int main() {
    instanceHandle = GetModuleHandleA(nullptr);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "editor-bench";
    std::filesystem::create_directories(folder);
    const PreferencePlaceInMemory place((folder / "Zandermolite.8bf").string());
    const auto width = static_cast<short>(GetSystemMetrics(SM_CXSCREEN));
    const auto height = static_cast<short>(GetSystemMetrics(SM_CYSCREEN));
    StorePreferences(width, height);
    std::printf("Tile %d by %d, window %d by %d\n", side, side, width, height);
    std::vector<double> plain;
    std::vector<double> opening;
    for (int i = 0; i < opens; ++i) {
        plain.push_back(MeasurePlainWindow());
        opening.push_back(MeasureOpening());
    }
    Report("Editor opens", opening);
    Report("Plain window of 63 buttons", plain);
    std::printf("Polls a second at zoom 1: %.0f\n", MeasureStroke(0));
    std::printf("Polls a second at zoom 2: %.0f\n", MeasureStroke(2));
    std::filesystem::remove_all(folder);
}

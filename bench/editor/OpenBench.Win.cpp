#include <windows.h>

#include <future>
#include <optional>

#include "base/Module.Win.h"
#include "bench/editor/EditorRun.Win.h"
#include "bench/editor/Measurements.Win.h"

namespace {

constexpr int opens = 15;

/// When the thread of the dialogs first came to rest; nothing from then to the next opening.
std::optional<std::promise<Clock::time_point>> firstRest;

/// A timer's message comes only when no other one waits, nor any window for its paint.
LRESULT CALLBACK NoteRest(int code, WPARAM use, LPARAM parameter) {
    const bool isRest = code == HC_ACTION && use == PM_REMOVE &&
                        reinterpret_cast<const MSG*>(parameter)->message == WM_TIMER;
    if (isRest && firstRest) {
        firstRest->set_value(Clock::now());
        firstRest.reset();
    }
    return CallNextHookEx(nullptr, code, use, parameter);
}

/// In milliseconds from the host's call.
struct Opening {
    /// When the window with all that is in it was painted.
    double painted;
    /// When another thread had asked each control whether it waits for its paint.
    double seen;
};

Opening MeasureOpening() {
    std::future<Clock::time_point> rest = firstRest.emplace().get_future();
    const HHOOK hook = SetWindowsHookExA(WH_GETMESSAGE, NoteRest, nullptr, GetCurrentThreadId());
    const Clock::time_point start = Clock::now();
    double seen = 0;
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        editor.WaitUntilPainted();
        seen = MillisecondsSince(start);
        // On one processor the editor may still have messages, which closing it would come before.
        rest.wait();
    });
    UnhookWindowsHookEx(hook);
    return {MillisecondsBetween(start, rest.get()), seen};
}

/// The time that the system alone takes for a window with as many plain controls as the editor has.
double MeasurePlainWindow(int width, int height) {
    constexpr int controls = 63;
    const Clock::time_point start = Clock::now();
    const HWND window = CreateWindowExA(0, "STATIC", "Plain", WS_POPUP | WS_CAPTION, 0, 0, width,
                                        height, nullptr, nullptr, instanceHandle, nullptr);
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

}  // namespace

/// Takes turns with plain windows: one as large as the editor's template, and one of the editor's
/// size, which is the screen's.
void MeasureOpenings() {
    std::vector<double> plain;
    std::vector<double> large;
    std::vector<double> painted;
    std::vector<double> seen;
    for (int i = 0; i < opens; ++i) {
        plain.push_back(MeasurePlainWindow(850, 550));
        large.push_back(
            MeasurePlainWindow(GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)));
        const Opening opening = MeasureOpening();
        painted.push_back(opening.painted);
        seen.push_back(opening.seen);
    }
    Report("Editor opens", painted);
    Report("The same, seen from outside", seen);
    Report("Plain window of 63 buttons", plain);
    Report("One of the editor's size", large);
}

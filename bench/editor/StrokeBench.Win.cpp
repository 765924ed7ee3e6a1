#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iterator>

#include "bench/editor/EditorRun.Win.h"
#include "bench/editor/Measurements.Win.h"
#include "resources/Ids.h"

namespace {

using Items = TextureItems;

constexpr int strokes = 3;
constexpr std::chrono::milliseconds strokeTime(1500);

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
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (int step = 0; step < setting.zoomSteps; ++step) {
            editor.Press(Items::zoomIn);
        }
        gui.Type("b");
        WaitUntil("the brush", [&] { return editor.Value(Items::toolPalette) == 2; });
        editor.WaitUntilPainted();
        editor.Point(Items::drawingArea, {150, 150});
        gui.PressMouse();
        const Clock::time_point start = Clock::now();
        const int redrawnBefore = Redraws();
        SetSlowness(setting.millisecondsACall);
        if (setting.isPlain) {
            const RECT view = editor.Bounds(Items::drawingArea);
            const RECT pixel{view.left + 5, view.top + 5, view.left + 6, view.top + 6};
            InvalidateRect(editor.Window(), &pixel, FALSE);
        }
        for (int i = 0; Clock::now() - start < strokeTime; ++i) {
            editor.Point(Items::drawingArea, {150 + i * 3 % 300, 150 + i * 5 % 250});
            Sleep(1);
        }
        polls = (Redraws() - redrawnBefore) / (MillisecondsSince(start) / 1000);
        SetSlowness(0);
        gui.ReleaseMouse();
        editor.Settle();
    });
    return polls;
}

}  // namespace

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

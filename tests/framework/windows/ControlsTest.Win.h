// A dialog with one of each custom control.
#pragma once

#include <functional>
#include <string>

#include "framework/controls/ControlClasses.Win.h"
#include "tests/framework/windows/DialogScript.Win.h"

/// Its resource, and its items.
namespace controls {

constexpr short allItems = 500;
constexpr short palette = 11;
constexpr short popup = 12;
constexpr short live = 13;
constexpr short slider = 14;
constexpr short padLock = 15;
constexpr short dial = 16;
constexpr short bitmapButton = 17;
constexpr short tab = 18;
constexpr short scrollBar = 10;
constexpr short userItem = 20;

}  // namespace controls

class ControlsTest : public DialogTest {
  protected:
    ControlsTest() : dialog(controls::allItems) {
        dialog.atSetup = [this] {
            if (setup) {
                setup();
            }
        };
    }

    int Run(const std::function<void(Script&)>& script) { return RunWithScript(dialog, script); }

    int Value(short item) const {
        return static_cast<int>(SendMessageA(GetDlgItem(static_cast<HWND>(dialog.Window()), item),
                                             controlGetValue, 0, 0));
    }

    LRESULT Send(Script& script, int item, UINT message, WPARAM wParam, LPARAM lParam) const {
        return SendMessageA(script.Item(item), message, wParam, lParam);
    }

    int Hits(short item) const {
        const std::string hit = "hit " + std::to_string(item);
        return dialog.log.Count(hit) + dialog.log.Count(hit + " twice");
    }

    TestDialog dialog;
    std::function<void()> setup;
};

// A dialog with one of each custom control.
#pragma once

#include <functional>
#include <string>

#include "framework/controls/ControlClasses.Win.h"
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"

class ControlsTest : public DialogTest {
  protected:
    ControlsTest() : dialog(allItems) {
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

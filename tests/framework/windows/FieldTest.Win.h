// A dialog with three fields, and what is typed into them.
#pragma once

#include <functional>
#include <string>

#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"

/// Fields 3 (1 to 100, shows 20), 4 (0.1 to 7.1, shows 2.5) and 5 (a text of 5 characters).
class FieldTest : public DialogTest {
  protected:
    FieldTest() : dialog(allItems) {
        dialog.atSetup = [this] {
            dialog.SetFormat(integerField, "%d", 1, 100);
            dialog.SetFormat(realField, "%.1f", 0.1, 7.1);
            dialog.SetFormat(textField, "%5s");
            dialog.SetValue(integerField, 20);
            dialog.SetValue(realField, 2.5);
            if (more) {
                more();
            }
        };
    }

    int Run(const std::function<void(Script&)>& script) { return RunWithScript(dialog, script); }

    /// The field shows what was typed into it in place of its text.
    static void Fill(Script& script, int item, const std::string& text) {
        script.Click(script.Middle(item));
        script.Keys({{VK_HOME}, {VK_SHIFT, VK_END}});
        script.Type(text);
    }

    TestDialog dialog;
    std::function<void()> more;
};

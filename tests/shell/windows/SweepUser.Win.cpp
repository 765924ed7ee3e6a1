#include "tests/shell/windows/SweepUser.Win.h"

#include "fixtures/FileDialog.Win.h"
#include "fixtures/InputDesktop.Win.h"
#include "resources/Ids.h"

namespace {

/// The same number in all dialogs.
constexpr int okButton = 1;
/// More than any run has; one with an alert at each step has some thirty.
constexpr int mostAnswers = 200;

/// Until the dialog has taken what was asked of it, and has opened another one, has closed, or
/// stays as it is. The window of one that has closed may wait, hidden, for what it opened: without
/// a dialog that rests.
void WaitForOutcome(const DrivenDialog& dialog) {
    WaitForTurnOr(GetWindowThreadProcessId(dialog.Window(), nullptr),
                  [&] { return !IsWindowVisible(dialog.Window()); });
}

void Press(const DrivenDialog& dialog, int item) {
    PostMessageA(GetDlgItem(dialog.Window(), item), BM_CLICK, 0, 0);
    WaitForOutcome(dialog);
}

void Close(const DrivenDialog& dialog) {
    PostMessageA(dialog.Window(), WM_CLOSE, 0, 0);
    WaitForOutcome(dialog);
}

/// By the button, or, where it is not to be had, by the close box.
void End(const DrivenDialog& dialog, int item) {
    const HWND button = GetDlgItem(dialog.Window(), item);
    if (button == nullptr || !IsWindowEnabled(button)) {
        Close(dialog);
    } else {
        Press(dialog, item);
    }
}

/// A dialog that has gone meanwhile takes nothing.
void PutTextIfThere(const DrivenDialog& dialog, int item, const std::string& text) {
    const HWND field = GetDlgItem(dialog.Window(), item);
    if (field != nullptr) {
        PutText(field, text);
    }
}

/// How often the paint goes on, at least, between places of a stroke.
void LetPaint() {
    Sleep(15);
}

}  // namespace

void SweepUser::Work() {
    int answers = 0;
    while (const std::optional<DrivenDialog> top = gui.WaitForAny()) {
        if (++answers > mostAnswers) {
            throw GuiError("the dialogs have no end; the last one: " + CaptionOf(top->Window()));
        }
        try {
            Answer(*top);
        } catch (const GuiError& error) {
            // Unless it has closed under the user's hands: it is hidden first, then without
            // controls.
            if (IsWindowVisible(top->Window())) {
                throw GuiError(error.what() +
                               WindowsOf(GetWindowThreadProcessId(top->Window(), nullptr)));
            }
        }
    }
}

void SweepUser::Answer(const DrivenDialog& dialog) {
    const std::string title = CaptionOf(dialog.Window());
    if (title == "Zandermolite" && GetMenu(dialog.Window()) != nullptr) {
        WorkInEditor(dialog);
    } else if (title == "New") {
        FillNew(dialog);
        End(dialog, okButton);
    } else if (title == "Lines") {
        WorkInLines(dialog);
    } else if (title == "Save New Preset") {
        PutTextIfThere(dialog, PresetItems::name, work.presetName);
        End(dialog, okButton);
    } else if (title == "Save As") {
        EnterFile(dialog);
    } else {
        // Twirls, Blur, an alert, a fault.
        End(dialog, okButton);
    }
}

void SweepUser::FillNew(const DrivenDialog& dialog) const {
    if (work.takesSelection) {
        Press(dialog, SizeItems::selection);
        return;
    }
    PutTextIfThere(dialog, SizeItems::width, std::to_string(work.blankWidth));
    PutTextIfThere(dialog, SizeItems::height, std::to_string(work.blankHeight));
}

void SweepUser::WorkInEditor(const DrivenDialog& editor) {
    constexpr int pressed[] = {TextureItems::lines, TextureItems::twirls, TextureItems::blur,
                               TextureItems::save};
    constexpr int strokeStep = static_cast<int>(std::size(pressed));
    const int now = work.isFull ? step++ : strokeStep + 1;
    if (now < strokeStep) {
        Press(editor, pressed[now]);
    } else if (now == strokeStep) {
        Stroke(editor);
    } else {
        End(editor, TextureItems::apply);
    }
}

void SweepUser::WorkInLines(const DrivenDialog& dialog) {
    if (hasSavedPreset) {
        End(dialog, okButton);
    } else {
        hasSavedPreset = true;
        Press(dialog, ApplyItems::save);
    }
}

void SweepUser::EnterFile(const DrivenDialog& dialog) {
    if (hasEnteredFile) {
        Close(dialog);
        return;
    }
    hasEnteredFile = true;
    OpenFileDialog(gui, dialog).Enter(work.savedFile);
    WaitForOutcome(dialog);
}

/// With the brush. Where the press begins no drag there is none to end.
void SweepUser::Stroke(const DrivenDialog& editor) const {
    gui.Chord({'B'});
    WaitForOutcome(editor);
    const RECT area = editor.Bounds(TextureItems::drawingArea);
    const ItemPlace middle{(area.right - area.left) / 2, (area.bottom - area.top) / 2};
    editor.Point(TextureItems::drawingArea, middle);
    gui.PressMouse();
    WaitForRestOr(editor.Window(),
                  [&] { return HasCapture(editor.Window()) || !IsWindowVisible(editor.Window()); });
    for (const ItemPlace& place : {ItemPlace{20, 10}, ItemPlace{30, 30}}) {
        LetPaint();
        if (editor.IsOpen()) {
            editor.Point(TextureItems::drawingArea, {middle.x + place.x, middle.y + place.y});
        }
    }
    LetPaint();
    ReleaseMouse();
    WaitForOutcome(editor);
}

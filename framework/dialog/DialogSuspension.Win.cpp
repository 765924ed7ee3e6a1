// Keeps the dialogs out of the way of other windows, and shows alerts over them.
#include <windows.h>

#include "base/FatalError.h"
#include "base/Platform.h"
#include "framework/alerts/Alert.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"

namespace {

constexpr char sourceName[] = "DialogSuspension.Win";

}  // namespace

DialogSuspension::DialogSuspension() : active(dialogState.active), focused(dialogState.focused) {
    ReleaseCapture();
    dialogState.active = nullptr;
    dialogState.focused = nullptr;
    for (NorvantaDialog* dialog = dialogState.newest; dialog != nullptr; dialog = dialog->next) {
        if (dialog->kind == NorvantaDialog::Kind::floating && dialog->windowExists) {
            dialog->AppActivate(false);
            hidden.push_back(dialog);
        }
    }
}

DialogSuspension::~DialogSuspension() {
    // An error may have closed them meanwhile.
    const auto ifOpen = [](NorvantaDialog* dialog) {
        return dialog != nullptr && dialog->windowExists ? dialog : nullptr;
    };
    // Without one before, that stays which has become active at the end of what was shown.
    if (NorvantaDialog* const before = ifOpen(active)) {
        dialogState.active = before;
    }
    if (NorvantaDialog* const before = ifOpen(focused)) {
        dialogState.focused = before;
    }
    for (NorvantaDialog* const dialog : hidden) {
        dialog->AppActivate(true);
    }
}

/// The time that a dialog shows an alert.
class AlertSection {
  public:
    explicit AlertSection(NorvantaDialog* newDialog) : dialog(newDialog) { Mark(true); }
    AlertSection(const AlertSection&) = delete;
    AlertSection& operator=(const AlertSection&) = delete;
    ~AlertSection() { Mark(false); }

  private:
    void Mark(bool on) {
        if (dialog != nullptr) {
            dialog->isInAlert = on;
        }
    }

    NorvantaDialog* dialog;
};

namespace {

/// The dialog's window, or what it stood over when it has closed.
HWND WindowUnderAlert(const NorvantaDialog* dialog) {
    if (dialog == nullptr) {
        return nullptr;
    }
    return dialog->IsOpen() ? DialogWindow::Window(*dialog) : DialogWindow::OwnerOf(*dialog);
}

bool HasString(short id) {
    char text[textBufferSize];
    return LoadIndexedString(text, id, 0) == 0;
}

}  // namespace

short Alert(NorvantaDialog* dialog, short id, const char* text0, const char* text1,
            const char* text2, const char* text3) {
    const AlertSection section(dialog);
    if (dialog != nullptr) {
        platformServices.showArrowCursor();
    }
    int answer = 0;
    {
        const DialogSuspension suspension;
        answer = RunAlert(WindowUnderAlert(dialog), id, {text0, text1, text2, text3},
                          AlertIcon::warning);
    }
    if (dialogState.active != nullptr) {
        dialogState.active->AppActivate(true);
    }
    constexpr short firstKnownId = 2;
    if (answer == 0 && id >= firstKnownId) {
        FatalError(HasString(id) ? id : std::int16_t{faultResourceMissing}, sourceName, __LINE__);
    }
    return static_cast<short>(answer != 0 ? answer : int{cancelItem});
}

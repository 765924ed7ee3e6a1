// The plug-in's platform: real cursors, dialogs and folders.
#include "base/Platform.h"

#include <windows.h>

#include <ctime>

#include "dialogs/JPEGDialog.h"
#include "files/FileDialog.Win.h"
#include "framework/alerts/Alert.Win.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "framework/help/About.Win.h"
#include "shell/FatalError.Win.h"
#include "shell/Zandermolite.h"

namespace {

std::uint32_t ClockSeconds() {
    return static_cast<std::uint32_t>(std::time(nullptr));
}

std::uint32_t TickCount() {
    return GetTickCount();
}

void ShowWaitCursor() {
    SetCursor(LoadCursor(nullptr, IDC_WAIT));
}

void ShowArrowCursor() {
    SetCursor(LoadCursor(nullptr, IDC_ARROW));
}

void Beep() {
    MessageBeep(0);
}

int TemporaryPath(char* buffer, int size) {
    return static_cast<int>(GetTempPathA(static_cast<DWORD>(size), buffer));
}

/// Over the dialog that is in use, which rests meanwhile.
int ShowAlert(std::int16_t id, const AlertTexts& texts) {
    if (NorvantaDialog* const active = NorvantaDialog::Active()) {
        return Alert(active, id, texts[0], texts[1], texts[2], texts[3]);
    }
    return Alert(DialogWindow::OfHost(), id, texts);
}

}  // namespace

PlatformServices platformServices = {ClockSeconds, TickCount,      ShowWaitCursor, ShowArrowCursor,
                                     Beep,         ShowFatalError, TemporaryPath,  ShowAbout,
                                     '\\',         ShowAlert,      RunFileDialog,  RunJPEGDialog};

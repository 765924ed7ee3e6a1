#include "host/window/StatusLog.Win.h"

#include "host/command/Arguments.Win.h"
#include "host/command/CommonOptions.h"
#include "host/window/NativeWindow.Win.h"

namespace host {

StatusLog::StatusLog(StatusBar& newBar, const std::filesystem::path& newFile) : bar(newBar) {
    if (newFile.empty()) {
        return;
    }
    file.open(newFile, std::ios::binary | std::ios::trunc);
    if (!file) {
        throw CommandLineError("--status-file " + Utf8Name(newFile) + ": cannot be written");
    }
}

void StatusLog::NoteWaiting(WPARAM kind, HWND waiting) {
    if (waiting == lastWaiting) {
        return;
    }
    lastWaiting = waiting;
    wchar_t title[128] = L"";
    GetWindowTextW(waiting, title, 128);
    Note(kind == MSGF_MENU ? "(menu)" : "(dialog " + Utf8(title) + ")");
}

void StatusLog::Note(const std::string& line) {
    if (file.is_open()) {
        file << line << std::endl;
    }
}

void StatusLog::Say(const std::string& message) {
    bar.SetText(StatusBar::message, message);
    lastWaiting = nullptr;
    if (!message.empty()) {
        Note(message);
    }
}

}  // namespace host

// Messages in the status bar, and lines in the status file.
#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "host/window/StatusBar.Win.h"

namespace host {

class StatusLog {
  public:
    /// No file if the name is empty. Throws CommandLineError if the file can't be written. The bar
    /// lives longer.
    StatusLog(StatusBar& newBar, const std::filesystem::path& newFile);

    /// Shows a message in the bar, and writes it to the file if it isn't empty.
    void Say(const std::string& message);
    /// Writes a line to the file alone.
    void Note(const std::string& line);
    /// Writes once that a dialog or a menu waits for input; `kind` as in WM_ENTERIDLE.
    void NoteWaiting(WPARAM kind, HWND waiting);

  private:
    StatusBar& bar;
    std::ofstream file;
    /// The window of the last NoteWaiting() since the last message.
    HWND lastWaiting = nullptr;
};

}  // namespace host

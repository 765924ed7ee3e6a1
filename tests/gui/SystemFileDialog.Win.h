// The system's dialogs to open and save files, as far as tests of the editor need them.
#pragma once

#include <filesystem>

#include "tests/gui/DialogWork.Win.h"

/// The field with the name in dialogs of the explorer style.
constexpr int fileNameField = 0x47C;

/// Types a whole path into the open dialog with this title and accepts it.
inline void ChooseFile(const GuiDriver& gui, const std::string& title,
                       const std::filesystem::path& file) {
    const DrivenDialog dialog = gui.WaitForTitle(title);
    dialog.SetText(fileNameField, file.string());
    dialog.PressToOpen(IDOK);
    dialog.WaitUntilClosed();
}

// The system's common dialogs for opening and saving.
#pragma once

#include "files/FileDialog.h"

/// Runs the dialog and stores the chosen path in it. False if the user left it without a choice.
bool RunFileDialog(FileDialog& dialog);

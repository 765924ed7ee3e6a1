// The place of dialogs that are not the framework's own: alerts, and the system's file dialogs.
#pragma once

#include <windows.h>

/// Centres a dialog on its owner (none: the desktop), then pushes it into the screen's work area.
void PlaceOverOwner(HWND dialog);

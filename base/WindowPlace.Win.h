// The place of dialogs that are not the framework's own: alerts, and the system's file dialogs.
#pragma once

#include <windows.h>

/// Centres a dialog on its owner, then pushes it into the work area of the owner's screen. One
/// without an owner, or with one that is an icon, stands in the middle of the screen.
void PlaceOverOwner(HWND dialog);

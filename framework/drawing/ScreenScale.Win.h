// The scale of a window.
#pragma once

#include <windows.h>

#include "framework/drawing/ScreenScale.h"

/// Returns the scale of a dialog's window; for a control, that of the dialog it stands in.
ScreenScale ScaleOf(HWND window);

/// The window of a dialog is going to be made: up to KeepScale its scale is measured once for all
/// the controls that ask for it while they are made.
void StartScale();
/// From now to ForgetScale a dialog's window has the scale that it has been laid out by, on
/// whichever screen it comes to stand: fonts, places and pictures stay of one size. A host may
/// follow each screen's resolution; the system then does not lay the window out anew. Returns it.
ScreenScale KeepScale(HWND dialog);
/// To be called when the window goes.
void ForgetScale(HWND dialog);

// The scale of a window.
#pragma once

#include <windows.h>

#include "framework/drawing/ScreenScale.h"

/// Returns the scale of a dialog's window; for a control, that of the dialog it stands in.
ScreenScale ScaleOf(HWND window);

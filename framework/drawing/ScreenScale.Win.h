// The scale of a window.
#pragma once

#include <windows.h>

#include "framework/drawing/ScreenScale.h"

/// That of a dialog of ours, or of the one that a control stands in.
ScreenScale ScaleOf(HWND window);

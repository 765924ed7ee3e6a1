// The window's own small dialogs.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "host/picture/Selection.h"
#include "host/window/Viewport.h"

namespace host {

/// Asks for a rectangle inside the picture. Nothing if the user cancels.
std::optional<hostapi::VRect> AskForBounds(HWND owner, const hostapi::VRect& bounds, Size picture);

/// Asks for the width of an ellipse's soft edge in pixels, 0 to largestFeather.
std::optional<double> AskForFeather(HWND owner, double feather);
constexpr double largestFeather = 1000.0;

/// Shows the faults of a filter, one line each, in UTF-8; the text can be copied.
void ShowFaults(HWND owner, const std::string& filterName, const std::vector<std::string>& faults);

/// Shows the program's name, version and purpose.
void ShowAbout(HWND owner);

}  // namespace host

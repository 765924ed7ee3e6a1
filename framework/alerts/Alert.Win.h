// Alerts: dialog resources with up to four text slots, a button or two and a stock icon.
#pragma once

#include <windows.h>

#include <cstdint>

#include "framework/alerts/AlertText.h"

enum class AlertIcon { warning, stop };

/// Runs the dialog resource `id` modally over `parent` (none, or no longer a window: over the
/// desktop). Returns the control that ended it, 1 or 2; closing it in any other way gives 2. 0 if
/// there is no such dialog.
int RunAlert(HWND parent, int id, const AlertTexts& texts, AlertIcon icon);

/// The same with the warning icon. Without such a dialog FatalError: `id` if there is a string of
/// that number, otherwise 20001.
int Alert(HWND parent, std::int16_t id, const AlertTexts& texts);

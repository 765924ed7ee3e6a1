// The dialogs of the fatal error path.
#pragma once

#include <cstdint>

/// Shows the fault over the host's window: in the dialog of its own id, or in dialog 20901 with the
/// string of its id, or in the general dialog 20900. Without a module there is nothing to show.
/// `file` is shortened to the part after its last backslash.
void ShowFatalError(std::int16_t id, const char* file, int line);

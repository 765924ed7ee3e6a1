// Libraries of the system that need not be there.
#pragma once

#include <windows.h>

/// Loads the library `name`, without a path, from the system's folder alone: by its name the system
/// would look in the host's folder and in the current one first, where anybody may have put a file
/// of that name. The caller frees it. Null if it is not there or cannot be loaded.
HMODULE LoadSystemLibrary(const wchar_t* name);

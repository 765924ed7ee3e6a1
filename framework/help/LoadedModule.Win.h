// Modules of this process by their names.
#pragma once

#include <windows.h>

/// A module that is loaded already: by the name of its file, or else by the name that it was linked
/// under, which it keeps when its file is called otherwise. Both without ".dll", in any case. Null
/// if there is none; the module's count of uses stays as it is.
HMODULE FindLoadedModule(const char* name);

// Modules of this process by their names.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

struct ModuleRelease {
    void operator()(HMODULE module) const { FreeLibrary(module); }
};
/// A module that stays loaded as long as this lives.
using HeldModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleRelease>;

/// A module that is loaded already: by the name of its file, or else by the name that it was linked
/// under, which it keeps when its file is called otherwise. Both without ".dll", in any case. Null
/// if there is none.
HeldModule FindLoadedModule(const char* name);

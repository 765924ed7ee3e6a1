// Libraries that the tests load, the product among them.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "host/command/DialogPress.h"
#include "host/record/FilterHost.h"
#include "resources/Ids.h"
#include "tests/shell/windows/ProgramArguments.Win.h"

/// Loaded as long as the object lives. A library that does not load fails the test.
class LoadedLibrary {
  public:
    explicit LoadedLibrary(const std::string& path) : module(LoadLibraryA(path.c_str())) {
        EXPECT_NE(module, nullptr) << path << ": error " << GetLastError();
    }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary() {
        if (module != nullptr) {
            FreeLibrary(module);
        }
    }

    HMODULE Module() const { return module; }

    template <typename Procedure>
    Procedure Find(const char* name) const {
        // Through a pointer without a type: the system hands out every function as one of its own.
        const auto found =
            reinterpret_cast<Procedure>(reinterpret_cast<void*>(GetProcAddress(module, name)));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

  private:
    HMODULE module;
};

/// The product as a host loads it.
class LoadedPlugin : public LoadedLibrary {
  public:
    LoadedPlugin() : LoadedLibrary(Arguments().plugin) {}
    host::EntryPoint Entry() const { return Find<host::EntryPoint>("ENTRYPOINT"); }
};

/// A user's clicks in the product's dialogs in a short run: a blank texture, Lines, Apply.
inline std::vector<host::DialogPress> UsualPresses() {
    return {{"New", SizeItems::ok},
            {"Zandermolite", TextureItems::lines},
            {"Lines", ApplyItems::ok},
            {"Zandermolite", TextureItems::apply}};
}

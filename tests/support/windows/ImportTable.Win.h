// Functions of the system that are exchanged for one module's calls.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// While it lives, the module's calls of some functions that it imports by name go elsewhere. Calls
/// of the system's own libraries are not seen.
class ImportExchange {
  public:
    explicit ImportExchange(HMODULE newModule) : module(newModule) {}
    ImportExchange(const ImportExchange&) = delete;
    ImportExchange& operator=(const ImportExchange&) = delete;
    ~ImportExchange();

    /// Whether the module imports the function; one that it does not import is left alone.
    bool Exchange(const std::string& function, void* replacement);

  private:
    struct Place {
        void** address;
        void* original;
    };

    HMODULE module;
    std::vector<Place> places;
};

// The shared library of a filter family, in the host's process.
#pragma once

#include <windows.h>

namespace host {

/// Loads the library from the program's folder, as long as the object lives, so that filters find
/// it by its name. Without the file the family's filters do without its services.
class FamilyServices {
  public:
    FamilyServices();
    FamilyServices(const FamilyServices&) = delete;
    FamilyServices& operator=(const FamilyServices&) = delete;
    ~FamilyServices();

  private:
    HMODULE library;
};

}  // namespace host

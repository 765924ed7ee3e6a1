// Functions of the system that refuse a loaded library's calls.
#pragma once

#include <windows.h>

#include "tests/support/windows/ImportTable.Win.h"

/// While it lives, the library's imports that may be refused go by Refusals. Calls of the system's
/// own libraries are not seen.
class ImportPatch {
  public:
    explicit ImportPatch(HMODULE library);

  private:
    ImportExchange imports;
};

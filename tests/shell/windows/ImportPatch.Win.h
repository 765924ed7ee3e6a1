// Functions of the system that refuse a loaded library's calls.
#pragma once

#include <windows.h>

#include "tests/support/windows/ImportTable.Win.h"

/// The kinds of functions that a library is refused.
enum class Refused { drawing, memory, files, registry };

/// In the order of Refused.
constexpr const char* refusedNames[] = {"drawing", "memory", "files", "registry"};

/// While it lives, the library's imports of one kind of function are counted, and those that are
/// wanted fail. One at a time.
class ImportPatch {
  public:
    /// The calls from `first` on fail, counted from 1: that one alone, or all. 0 refuses none.
    ImportPatch(HMODULE library, Refused kind, int first, bool andAllAfter);
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;
    ~ImportPatch();

    /// Calls so far.
    static int Calls();

  private:
    ImportExchange imports;
};

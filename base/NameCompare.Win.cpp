#include <windows.h>

#include "base/NameCompare.h"

bool NamesAreEqual(const char* a, const char* b) {
    return lstrcmpiA(a, b) == 0;
}

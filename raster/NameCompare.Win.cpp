#include <windows.h>

#include "raster/NameCompare.h"

bool NamesAreEqual(const char* a, const char* b) {
    return lstrcmpiA(a, b) == 0;
}

#include <strings.h>

#include "raster/NameCompare.h"

bool NamesAreEqual(const char* a, const char* b) {
    return strcasecmp(a, b) == 0;
}

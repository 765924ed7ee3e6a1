#include <strings.h>

#include "base/NameCompare.h"

bool NamesAreEqual(const char* a, const char* b) {
    return strcasecmp(a, b) == 0;
}

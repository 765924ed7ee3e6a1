#include "base/FatalError.h"

#include "base/Platform.h"

std::int16_t errorCell = 0;

void FatalError(std::int16_t id, const char* file, int line) {
    if (id == 0) {
        return;
    }
    errorCell = id;
    if (id > 0 && id < firstSilentFault) {
        platformServices.reportFault(id, file, line);
    }
    throw id;
}

void FailAssertion(const char* message) {
    FatalError(faultAssertion, message, -1);
    __builtin_unreachable();
}

// Exports the filters under the names that TestFilters.rc gives them.
#include "tests/host/TestFilters.h"

#define EXPORT_FILTER(name, filter)                                                               \
    extern "C" __declspec(dllexport) void HOST_CALL name(                                         \
        std::int16_t selector, hostapi::FilterRecord* record, void* data, std::int16_t* result) { \
        testfilters::filter(selector, record, data, result);                                      \
    }

EXPORT_FILTER(INVERT, Invert)
EXPORT_FILTER(CONTINUE, InvertByContinuing)
EXPORT_FILTER(COUNT, Count)
EXPORT_FILTER(REFUSE, Refuse)
EXPORT_FILTER(CONTROLWORD, ReportControlWord)
EXPORT_FILTER(ABOUT, ReportAbout)
EXPORT_FILTER(BEHINDROW, WriteBehindRow)
EXPORT_FILTER(LEAK, Leak)
EXPORT_FILTER(FREETWICE, FreeTwice)
EXPORT_FILTER(ENDLESS, LeaveMaskRect)
EXPORT_FILTER(CRASH, Crash)
EXPORT_FILTER(THROW, Throw)

// Small filters that behave well, or badly in one way each, to try the host on. The same code runs
// inside the tests and, in testfilters.8bf, through PIPL resources.
#pragma once

#include <cstdint>

#include "host/record/FilterHost.h"

namespace testfilters {

/// One filter: its entry, and what its start selector does with the record.
#define DECLARE_TEST_FILTER(name)                                                         \
    void HOST_CALL name(std::int16_t selector, hostapi::FilterRecord* record, void* data, \
                        std::int16_t* result)

// Well behaved.
DECLARE_TEST_FILTER(Invert);              ///< Inverts row by row through advanceState.
DECLARE_TEST_FILTER(InvertByContinuing);  ///< The same, one row a continue selector.
DECLARE_TEST_FILTER(
    Count);  ///< Keeps a handle in `parameters`; adds the run's number to each byte.
DECLARE_TEST_FILTER(Refuse);             ///< Writes, then returns -30100 from start.
DECLARE_TEST_FILTER(ReportControlWord);  ///< Returns the x87 control word.
DECLARE_TEST_FILTER(ReportStack);        ///< Returns the stack pointer's remainder by 16, plus 100.
DECLARE_TEST_FILTER(ReportAbout);        ///< About returns 7 if it got a window's record.

// Each caught at something.
DECLARE_TEST_FILTER(WriteBehindRow);
DECLARE_TEST_FILTER(WriteBehindBuffer);
DECLARE_TEST_FILTER(Leak);
DECLARE_TEST_FILTER(FreeTwice);
DECLARE_TEST_FILTER(LeaveMaskRect);
DECLARE_TEST_FILTER(ChangeControlWord);
DECLARE_TEST_FILTER(ChangeRecord);
DECLARE_TEST_FILTER(Crash);
DECLARE_TEST_FILTER(Throw);

#undef DECLARE_TEST_FILTER

}  // namespace testfilters

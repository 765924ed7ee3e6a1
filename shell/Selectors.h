// The selector switch: the part of ENTRYPOINT that is independent of the window system.
#pragma once

#include <cstdint>

#include "hostapi/FilterRecord.h"

/// Runs one selector and stores its result. Unknown selectors, and a null record where one is
/// needed, give filterBadParameters. A start within a start gives userCanceledErr, and the outer
/// call keeps its record. Nothing is thrown: exceptions of a handler end here with a beep, and the
/// host gets the result stored before, most often 0.
void DispatchSelector(std::int16_t selector, hostapi::FilterRecord* record, std::int16_t* result);

// The selector switch: everything behind ENTRYPOINT that knows no window system.
#pragma once

#include <cstdint>

#include "hostapi/FilterRecord.h"

/// Runs one selector and stores its result. Unknown selectors, and a null record where one is
/// needed, give filterBadParameters. Nothing is thrown: what a handler throws ends here with a
/// beep, and the host gets whatever result was stored before, most often 0.
void DispatchSelector(std::int16_t selector, hostapi::FilterRecord* record, std::int16_t* result);

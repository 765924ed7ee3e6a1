// Calls a filter's entry under the conditions that a host's thread brings along.
#pragma once

#include <cstdint>

#include "host/record/Faults.h"
#include "host/record/FilterHost.h"
#include "host/record/HostSettings.h"

namespace host {

/// Calls the entry once and returns its result. The traits Fpu27f, Fpu37f and MisalignStack set the
/// conditions. A filter that leaves another floating-point control word than it found is a fault.
std::int16_t CallEntry(EntryPoint entry, std::int16_t selector, hostapi::FilterRecord* record,
                       void* data, const TraitSet& traits, Faults& faults);

}  // namespace host

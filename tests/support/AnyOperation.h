// One operation of the core on a small texture, with settings that no dialog gives: any bytes at
// all, as a damaged preference file may bring them.
#pragma once

#include <cstddef>

#include "host/record/MemorySuites.h"

/// The operations that a run chooses from.
std::size_t AnyOperationCount();
const char* AnyOperationName(std::size_t operation);

struct AnyRun {
    std::size_t operation;
    /// Whether the operation ended with a failed assertion, the only fault that it may throw.
    bool assertionFailed;
    /// Whether the operation left its clone behind, which only strokes and failed assertions may.
    bool cloneLeft;
};

/// Size, texture, operation and settings follow from the seed alone; in some runs an allocation
/// fails. `memory` is the host's, which filterRecord leads to. Throws what the operation throws,
/// other than a failed assertion.
AnyRun RunAnyOperation(unsigned seed, host::MemorySuites& memory);

// The guard between the system's callbacks and our code.
#pragma once

#include <windows.h>

#include <cstdint>
#include <new>

#include "base/FatalError.h"
#include "hostapi/Results.h"

/// Runs `work`, of which nothing may be thrown into the system: an exception cannot cross a window
/// procedure in 32 bits. What is thrown stays in the error cell, where every dialog finds it at its
/// next message; the callback returns `fallback`.
template <typename Result, typename Work>
Result Guarded(Result fallback, Work work) {
    try {
        return work();
    } catch (std::int16_t id) {
        errorCell = id;
    } catch (const std::bad_alloc&) {
        errorCell = hostapi::memFullErr;
    } catch (...) {
        errorCell = faultBadArgument;
    }
    return fallback;
}

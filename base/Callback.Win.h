// The guard between the system's callbacks and our code.
#pragma once

#include <windows.h>

#include <cstdint>
#include <new>

#include "base/FatalError.h"
#include "hostapi/Results.h"

/// The id of what is being handled; memFullErr for a lack of memory.
inline std::int16_t IdOfThrown() {
    try {
        throw;
    } catch (std::int16_t id) {
        return id;
    } catch (const std::bad_alloc&) {
        return hostapi::memFullErr;
    } catch (...) {
        return faultBadArgument;
    }
}

/// Runs `work`, of which nothing may be thrown into the system: an exception cannot cross a window
/// procedure in 32 bits. The callback then returns `fallback`. A fault is in the error cell, where
/// every dialog finds it at its next message. For whatever else was thrown `tell` is called with
/// its id; the dialogs stay.
template <typename Result, typename Work, typename Tell>
Result Guarded(Result fallback, Work work, Tell tell) {
    try {
        try {
            return work();
        } catch (...) {
            if (errorCell == 0) {
                tell(IdOfThrown());
            }
        }
    } catch (...) {
        // Not even that could be told.
    }
    return fallback;
}

/// As above, but silent: the next message of this kind tries again.
template <typename Result, typename Work>
Result Guarded(Result fallback, Work work) {
    return Guarded(fallback, work, [](std::int16_t) {});
}

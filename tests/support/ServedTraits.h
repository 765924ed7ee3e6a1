// The habits of hosts that make no difference to the plug-in's user.
#pragma once

#include <algorithm>
#include <vector>

#include "host/record/HostSettings.h"

/// The traits with which the plug-in works as with none. What becomes of a run with one of the rest
/// has a test of its own; docs/hosts.md names it.
inline std::vector<host::Trait> ServedTraits() {
    std::vector<host::Trait> traits = host::AllTraits();
    for (const host::Trait unserved : {host::Trait::lastChunkOnly, host::Trait::spaceInKilobytes,
                                       host::Trait::negativeSpace, host::Trait::sixteenBits}) {
        traits.erase(std::find(traits.begin(), traits.end(), unserved));
    }
    return traits;
}

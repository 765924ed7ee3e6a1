// Result codes and selectors of the filter interface.
#pragma once

#include <cstdint>

namespace hostapi {

enum Result : std::int16_t {
    noErr = 0,
    memFullErr = -108,
    userCanceledErr = -128,
    filterBadParameters = -30100,
    /// A host's result for a colour conversion that it does not offer.
    errPlugInHostInsufficient = -30900,
};

enum Selector : std::int16_t {
    filterSelectorAbout = 0,
    filterSelectorParameters = 1,
    filterSelectorPrepare = 2,
    filterSelectorStart = 3,
    filterSelectorContinue = 4,
    filterSelectorFinish = 5,
};

}  // namespace hostapi

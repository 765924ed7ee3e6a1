// What the definitions of base/HostServices.h and base/Progress.h share between the neutral source
// and that of the window system.
#pragma once

#include "hostapi/FilterRecord.h"

/// The map that DisplayPixels hands to the host: a copy whose right and bottom bounds are at least
/// those of `rect`.
hostapi::PSPixelMap MapCovering(const hostapi::PSPixelMap& map, const hostapi::VRect& rect);

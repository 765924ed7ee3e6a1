// Shared by the two sources that define base/HostServices.h and base/Progress.h: the neutral one
// and that of the window system.
#pragma once

#include "hostapi/FilterRecord.h"

/// The map that DisplayPixels hands to the host: a copy whose right and bottom bounds are at least
/// those of `rect`.
hostapi::PSPixelMap MapCovering(const hostapi::PSPixelMap& map, const hostapi::VRect& rect);

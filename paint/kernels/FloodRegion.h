// Grows a region over the torus from pixel to neighbouring pixel.
//
// The order of growth is defined by a queue: each pixel of the region is visited once, and looks at
// its neighbours to the right, to the left, below and above, whose places are queued unwrapped in
// 16 bits. Where these overflow, and the tile's side is no power of two, the region continues at
// another place. So a region can depend on the queue, but only if it goes around the torus often
// enough. If it does not, it is all that is connected with the start, in whatever order it is
// found: whole runs of pixels at a time.
#pragma once

#include "hostapi/HostTypes.h"
#include "paint/kernels/PixelBits.h"

/// Leaves in `rest` what is set in `similar` and not part of the region of `start`, which is not
/// wrapped and whose own bit has to be set. Both are of the tile's size. False without memory.
bool TakeRegion(const PixelBits& similar, hostapi::Point start, PixelBits& rest);

// Twirls in the plainest form: the whole raster copied for each twirl, every angle computed anew.
// The tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

/// False without memory for the clone.
bool PlainTwirls(PaintClass& pic, const TwirlsParams& params);

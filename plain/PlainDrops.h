// Drops in the plainest form: a square root and a cosine for every pixel of every disc, through the
// accessors. The tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

/// False without memory for a blur.
bool PlainDrops(PaintClass& pic, const DropsParams& params);

// Add Bump and its smoothing in the plainest form: pixel by pixel through the accessors, with a
// remainder for each. The tests hold the fast ones against them, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

void PlainSmoothAlpha(PaintClass& pic);
void PlainAddBump(PaintClass& pic);

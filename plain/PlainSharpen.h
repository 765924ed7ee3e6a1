// Sharpen in the plainest form: nine weighted pixels through the accessors, with a remainder for
// each. The tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

bool PlainSharpen(PaintClass& pic);

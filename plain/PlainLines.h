// Lines and its wax pass in the plainest form: pixel by pixel through the accessors, with a
// remainder for each. The tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

bool PlainLines(PaintClass& pic, const LinesParams& params);
bool PlainSoften(PaintClass& pic);

// Dividers in the plainest form: vertical and horizontal lines each written out, pixel by pixel
// through the accessors. The tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

void PlainDividers(PaintClass& pic, const DividersParams& params);

// Skew in the plainest form, pixel by pixel through the accessors. The tests hold the fast one
// against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

/// False without memory for the clone.
bool PlainSkew(PaintClass& pic, std::int32_t direction, bool nearest);

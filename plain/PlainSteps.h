// The plain form of each run step of the catalogue. The tests of the laws hold the fast steps
// against these, and the benchmark times both.
#pragma once

#include <string_view>

#include "paint/PaintClass.h"

/// False without memory. `record` is of the type that the catalogue's row has.
using PlainStep = bool (*)(PaintClass& pic, const void* record);

/// Returns the plain form of the operation with this name, which has to be in the catalogue, or
/// null if nobody has written one.
PlainStep PlainStepOf(std::string_view name);

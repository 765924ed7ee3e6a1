// Waves in the plainest form: both waveforms evaluated for every pixel, every read through the
// accessors. The tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

/// False without memory for the clone.
bool PlainWaves(PaintClass& pic, const WavesParams& params);

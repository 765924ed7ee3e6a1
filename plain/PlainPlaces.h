// The operations that move or average pixels as they are, in the plainest form. The tests hold the
// fast ones against them, and the benchmarks time both.
#pragma once

#include "paint/PaintClass.h"

/// Both sides are above 0.
void PlainMosaic(PaintClass& pic, short blockWidth, short blockHeight);
void PlainFlip(PaintClass& pic, short mode);
void PlainShiftBy(PaintClass& pic, short dx, short dy);
void PlainCopyTiled(const PicClass& from, PicClass& to);
/// The two numbers are computed in the x87's own registers, through an 80-bit long double; on a
/// system where a process starts with a lower precision, set that first.
void PlainCopyResampled(const PicClass& from, PicClass& to);

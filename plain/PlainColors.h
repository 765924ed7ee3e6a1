// The colour operations in the plainest form: pixel by pixel through the accessors. The tests hold
// the fast ones against them, and the benchmarks time both.
#pragma once

#include "paint/PaintClass.h"

void PlainNoise(PaintClass& pic, short amount, int mode);
void PlainSaturation(PaintClass& pic, short saturation);
void PlainBrightnessContrast(PaintClass& pic, short contrast, short brightness);
void PlainAddColor(PaintClass& pic, const RGBColor16& color, short opacity);
void PlainInvert(PaintClass& pic);
void PlainCombine(PaintClass& pic, const CombineRecord& record);

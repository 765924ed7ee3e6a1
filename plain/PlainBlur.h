// Blur and Motion Blur in the plainest form: pixel by pixel through the accessors, with a remainder
// for each sample. The tests hold the fast ones against them, and the benchmark times both.
#pragma once

#include <cstdint>
#include <vector>

#include "paint/PaintClass.h"

/// A square of weights in 8.24, row by row.
struct PlainKernel {
    int half;
    int side;
    std::vector<std::uint32_t> weights;
};

PlainKernel MakePlainKernel(double radius);

/// One channel's sum over the square around (x, y), brought down to a byte. Channels 0 to 3 are
/// red, green, blue and alpha.
unsigned char PlainBlurredByte(const PicClass& pic, const PlainKernel& kernel, int x, int y,
                               int channel);

/// Modes 1 to 3. False without memory for the clone.
bool PlainBlur(PaintClass& pic, double radius, short mode);
bool PlainMotionBlur(PaintClass& pic, short length, short direction);

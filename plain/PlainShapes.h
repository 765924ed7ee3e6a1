// Shapes in the plainest form: for every pixel of every shape's box a rotation by angles, through
// the accessors. The tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "paint/PaintClass.h"

/// False without memory for the blur.
bool PlainShapes(PaintClass& pic, const ShapesParams& params);

/// One pixel's height; 255 where there is no shape.
unsigned char PlainShapeHeight(std::int32_t kind, short cx, short cy, short px, short py,
                               double angle, double hs, double vs, double bevel);

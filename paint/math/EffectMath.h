// Arithmetic that the effects share.
#pragma once

#include "paint/math/ExactMath.h"

/// degrees * pi / 180, rounded in this very order. Whole degrees only: twists and profiles advance
/// in steps of one degree.
constexpr double DegreesToRadians(short degrees) {
    return degrees * 3.141592653589793 * 0.005555555555555556;
}

/// A quarter of a cosine in steps of one degree: 0 to 0, 255 to 254. 255 is kept for flat ground
/// in the height fields.
unsigned char CosineProfile(unsigned char value);

/// 160 below 4, 220 above 26, and a straight line between.
short ReliefThreshold(double e);

// Arithmetic that the effects share.
#pragma once

/// degrees * pi / 180, rounded in this very order. Whole degrees only: twists and profiles advance
/// in steps of one degree.
constexpr double DegreesToRadians(short degrees) {
    return degrees * 3.141592653589793 * 0.005555555555555556;
}

/// Correctly rounded sine and cosine, for arguments up to a million either way. The libraries'
/// own differ in the last bit from system to system, and a stroke that sums such values can then
/// cross a pixel's edge on one of them and not on the other.
double ExactSin(double radians);
double ExactCos(double radians);

/// A quarter of a cosine in steps of one degree: 0 to 0, 255 to 254. 255 is kept for flat ground
/// in the height fields.
unsigned char CosineProfile(unsigned char value);

/// 160 below 4, 220 above 26, and a straight line between.
short ReliefThreshold(double e);

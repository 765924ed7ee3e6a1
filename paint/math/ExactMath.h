// Elementary functions, correctly rounded: each result is the double nearest to the true value.
//
// The libraries' own differ in the last bit from system to system; a position that sums such
// values can then cross a pixel's edge on one of them and not on the other. These are made of
// additions, multiplications, divisions and square roots of doubles, and of integers, so every
// build gives the same bits. docs/exactness.md tells why they are right.
#pragma once

struct SinCos {
    double sin;
    double cos;
};

/// The largest argument of sines and cosines in either direction, about a million.
constexpr double exactSinLimit = 1048576.0;

// Beyond exactSinLimit, and for what is not a number, the result is not a number.

double ExactSin(double radians);
double ExactCos(double radians);
/// Both at little more than the price of one.
SinCos ExactSinCos(double radians);

// Outside -1 to 1, and for what is not a number, the result is not a number.

/// -pi/2 to pi/2.
double ExactAsin(double sine);
/// 0 to pi.
double ExactAcos(double cosine);

/// 360^y, for any y: too large becomes infinity, too small zero.
double ExactPow360(double y);

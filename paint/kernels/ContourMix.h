// The mix that softens the contour of a fill.
#pragma once

/// 0.17 * sides + 0.08 * corners in doubles, truncated, for two sums of four bytes each. In
/// integers, which is the same for all such sums: where the exact result is no whole number, a
/// hundredth lies between it and the next one, and where it is, no rounding of the doubles goes
/// below it.
constexpr unsigned char ContourMix(int sides, int corners) {
    return static_cast<unsigned char>((17 * sides + 8 * corners) / 100);
}

// A texture of another size made from one.
#pragma once

#include <cstdint>

#include "raster/PicClass.h"

/// Fills `to` with copies of `from`, side by side and one above the other from the upper left
/// corner on; all 32 bits of each pixel.
void CopyTiled(const PicClass& from, PicClass& to);

/// Stretches `from` over `to`: each pixel is the nearest to the upper left of where it lies in
/// `from`; all 32 bits of it.
void CopyResampled(const PicClass& from, PicClass& to);

/// Where the places of one side are taken from: place x from x * (oldLength / newLength), both
/// results rounded to the 64 digits of the x87's extended precision and then truncated. That is one
/// less than x * oldLength / newLength where this is whole and the roundings go down.
///
/// Computed in integers, as compilers differ in what they offer of that precision, and hosts in how
/// they set it.
class ResampledSide {
  public:
    /// Both are above 0.
    ResampledSide(short oldLength, short newLength);

    /// 0 to oldLength - 1, for `x` from 0 to newLength - 1.
    short Place(short x) const;

  private:
    /// A positive number in extended precision: `digits`, of which the top bit is set, by 2 to the
    /// -`scale`.
    struct Extended {
        std::uint64_t digits;
        int scale;
    };

    static Extended Quotient(std::uint32_t numerator, std::uint32_t denominator);
    static Extended Product(std::uint32_t factor, const Extended& number);
    static Extended Rounded(Extended number, std::uint32_t rest, std::uint32_t half);

    Extended ratio;
};

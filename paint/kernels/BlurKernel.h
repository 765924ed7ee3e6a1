// The weights of Blur: a round bell on a square of pixels, in 8.24 fixed point.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "raster/HandleClass.h"

class BlurKernel {
  public:
    /// At the distance of four radii the bell has fallen to 1/360 of its centre; the square cuts it
    /// off at half that. 0.05 to 5 from the dialog, and any number is safe: a radius from -1 down
    /// has a square without pixels, and what is not a number weighs nothing. Asserts that the
    /// block's size can be counted.
    explicit BlurKernel(double radius);

    /// True if there was no memory, or if the square would be larger than `largestHalf` allows.
    /// Then there are no weights.
    bool Failed() const { return failed; }

    /// The square reaches from -Half() to Half() in both directions: at most `largestHalf`, and
    /// below 0 if it has no pixels.
    int Half() const { return half; }

    /// The weight of the pixels that are `outer` away in one direction and `inner` in the other,
    /// 0 <= inner <= outer <= Half(): up to eight of them. At most 2 to the 24th, and so are all
    /// weights of the square together.
    std::uint32_t Weight(int outer, int inner) const { return weights[OctantIndex(outer, inner)]; }

    /// Keeps a damaged record from taking hundreds of megabytes and hours: a square of 511 pixels
    /// has a block of 4 MB. The dialog's largest is 11.
    static constexpr int largestHalf = 255;

  private:
    static std::size_t OctantIndex(int outer, int inner) {
        return static_cast<std::size_t>(outer * (outer + 1) / 2 + inner);
    }
    std::size_t OctantSize() const;
    double FillBell(double* bell, double reach) const;

    bool failed = true;
    int half;
    std::optional<HandleClass> block;
    /// One for each pair of distances, in the order of OctantIndex.
    std::uint32_t* weights = nullptr;
};

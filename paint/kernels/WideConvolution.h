// The sums of Blur under squares of hundreds of pixels, through transforms in whole numbers.
#pragma once

#include <cstdint>

#include "paint/kernels/BlurKernel.h"
#include "raster/HandleArray.h"

/// A block of side by side bytes, all of which it takes to their sums at once: what a square of
/// any size costs is the same. The sums are exact, as those of BlurSums are.
class WideConvolution {
  public:
    static constexpr int side = 1024;

    explicit WideConvolution(const BlurKernel& kernel);

    /// True if there was no memory, some 12 MB.
    bool Failed() const { return block.Failed() || turned.Failed() || weights.Failed(); }

    /// Whether it is quicker than BlurSums, for three channels of `width` by `height` pixels.
    static bool Pays(const BlurKernel& kernel, int width, int height);

    /// The sums that a block gives in each direction.
    int SumSide() const { return side - 2 * half; }

    /// Row `y` of the block. Before Run() it takes `side` bytes, one a number; after it, its first
    /// SumSide() numbers are the sums, of which that at (x, y) belongs to the byte that was at
    /// (x + Half(), y + Half()). Rows from SumSide() on, and the rest of each, mean nothing then.
    std::uint32_t* Row(int y) const { return block.Values() + y * side; }
    void Run() const;

  private:
    int half;
    HandleArray<std::uint32_t> block;
    HandleArray<std::uint32_t> turned;
    /// The transform of the square.
    HandleArray<std::uint32_t> weights;
};

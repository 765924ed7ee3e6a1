// The sums of a plane's bytes under a blur's weights, a run of pixels at a time.
#pragma once

#include <cstddef>
#include <cstdint>

#include "paint/kernels/BlurKernel.h"
#include "paint/kernels/WrappedPlane.h"
#include "raster/HandleArray.h"

class BlurSums {
  public:
    /// For runs of up to `width` pixels. The kernel must outlive this object.
    BlurSums(const BlurKernel& newKernel, int width);

    /// True if there was no memory.
    bool Failed() const { return sums.Failed() || folded.Failed(); }

    /// The columns that a plane needs on either side.
    int Margin() const { return margin; }

    /// The sums for the pixels `first` to `first` + `count` - 1 of row y, in 8.24. They stay until
    /// the slot, 0 to 2, is asked for again.
    const std::uint32_t* Sum(const WrappedPlane& plane, int y, int first, int count, int slot);

  private:
    std::uint16_t* FoldedRow(int distance) const {
        return folded.Values() + static_cast<std::size_t>(distance) * foldedStride;
    }
    void FoldRows(const WrappedPlane& plane, int y, int first, int count);

    const BlurKernel& kernel;
    int margin;
    std::size_t sumsStride;
    std::size_t foldedStride;
    HandleArray<std::uint32_t> sums;
    /// The plane's rows around the run, folded, and a last one of zeros.
    HandleArray<std::uint16_t> folded;
};

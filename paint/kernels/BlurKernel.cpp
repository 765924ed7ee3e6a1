#include "paint/kernels/BlurKernel.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "base/FatalError.h"
#include "paint/math/ExactMath.h"
#include "raster/Truncation.h"

namespace {

constexpr double one = 16777216.0;  // in 8.24

/// Four times what a square of 32-bit weights needs. 0 if 32 bits cannot count it.
std::int32_t BlockSize(int half) {
    const std::int64_t side = 2 * half + 1;
    const std::int64_t size = 16 * side * side;
    return size <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(size) : 0;
}

/// The bell's height at a distance in pixels, in each direction.
double Bell(double reach, int dx, int dy) {
    const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
    const double z = (1.0 / (2.0 * reach)) * distance;
    return ExactPow360(-(z * z));
}

/// The share is from 0 to 1, or not a number: then it weighs nothing.
std::uint32_t WeightOf(double share) {
    return share >= 0.0 ? static_cast<std::uint32_t>(one * share) : 0;
}

}  // namespace

BlurKernel::BlurKernel(double radius) : half(0) {
    const double reach = radius * 2.0;
    half = TruncateToShort(1.0 + reach);
    const std::int32_t dataSize = BlockSize(half);
    Assert(dataSize > 0, "PaintClass1 / Zeile 599 !(datasize > 0)");
    if (half > largestHalf) {
        return;
    }
    if (half < 0) {
        failed = false;
        return;
    }
    block.emplace(static_cast<std::size_t>(dataSize));
    if (block->failed) {
        return;
    }
    failed = false;
    double* const bell = static_cast<double*>(block->Lock());
    const double sum = FillBell(bell, reach);
    // After the bell, in the spare part of the block.
    weights = static_cast<std::uint32_t*>(static_cast<void*>(bell + OctantSize()));
    for (std::size_t i = 0; i < OctantSize(); ++i) {
        weights[i] = WeightOf(bell[i] / sum);
    }
}

std::size_t BlurKernel::OctantSize() const {
    return OctantIndex(half + 1, 0);
}

/// Fills `bell` by OctantIndex and returns the sum over the whole square. The square is summed row
/// by row, all of it: another order rounds to another sum.
double BlurKernel::FillBell(double* bell, double reach) const {
    for (int outer = 0; outer <= half; ++outer) {
        for (int inner = 0; inner <= outer; ++inner) {
            bell[OctantIndex(outer, inner)] = Bell(reach, outer, inner);
        }
    }
    double sum = 0.0;
    for (int y = -half; y <= half; ++y) {
        for (int x = -half; x <= half; ++x) {
            const auto [inner, outer] = std::minmax({std::abs(x), std::abs(y)});
            sum += bell[OctantIndex(outer, inner)];
        }
    }
    return sum;
}

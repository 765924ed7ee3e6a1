// Pixels read between two neighbours, of which an estimate in integers decides nearly all.
#pragma once

#include <cstdint>

#include "raster/PicClass.h"

/// Positions between pixels that are moved along one axis alone, all by the same fraction of a
/// pixel, and the four pixels around each.
struct ShearedRun {
    /// The pixel at the truncated position, and that across the axis. Each is followed by its
    /// neighbour along the axis.
    const Pixel* at;
    const Pixel* across;
    /// A position's distance from the truncated one, times shearFractionScale and truncated.
    /// Negative for positions below 0.
    std::int32_t fraction;
    int count;
};

constexpr int shearFractionBits = 20;
constexpr double shearFractionScale = 1 << shearFractionBits;

/// Writes the colour that PicClass::GetPixelInterpolated gives at each position, and the alpha byte
/// 0. The pixels for which `undecided` becomes other than 0 are still to be read exactly.
void MixSheared(const ShearedRun& run, unsigned char* out, Pixel* undecided);

// Pixels read between two neighbours, of which an estimate in integers decides nearly all.
#pragma once

#include <cstdint>

#include "raster/PicClass.h"

/// Positions between pixels that are moved along one axis alone, and the four pixels around each.
struct ShearedRun {
    /// The pixel at the truncated position; its neighbour along the axis; that across the axis; and
    /// the neighbours' own.
    const Pixel* at;
    const Pixel* along;
    const Pixel* across;
    const Pixel* diagonal;
    /// The fraction of each position, its distance from the truncated one, times
    /// shearFractionScale and truncated. Negative for positions below 0.
    const std::int32_t* fractions;
    int count;
};

constexpr int shearFractionBits = 20;
constexpr double shearFractionScale = 1 << shearFractionBits;

/// Pixels that are decided together.
constexpr int shearGroup = 16;

/// Writes the colour that PicClass::GetPixelInterpolated gives at each position, and the alpha byte
/// 0. Of the groups, those for which `undecided` becomes 1 are still to be read exactly; so is an
/// incomplete last one.
void MixSheared(const ShearedRun& run, unsigned char* out, unsigned char* undecided);

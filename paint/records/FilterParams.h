// The parameter records of the filters, byte for byte as they stand in the preference file.
#pragma once

#include <cstddef>
#include <cstdint>

#include "paint/Color.h"

struct BlurParams {
    /// 1 to 100.
    std::int16_t amount = 20;
    /// 0 or 1.
    std::uint8_t motion = 0;
    std::uint8_t unused3 = 0;
    /// 0 to 7: the way the trail goes, clockwise from the top.
    std::int16_t direction = 1;
};
static_assert(sizeof(BlurParams) == 6 && offsetof(BlurParams, direction) == 4);

struct SharpenParams {
    /// 1 to 5.
    std::int16_t passes = 1;
};
static_assert(sizeof(SharpenParams) == 2);

enum NoiseMode : std::int32_t { noiseGrey = 0, noiseColored = 1, noiseColorful = 2 };

struct NoiseParams {
    /// 1 to 100 percent.
    std::int16_t amount = 50;
    std::int16_t unused2 = 0;
    /// A NoiseMode.
    std::int32_t mode = noiseColored;
};
static_assert(sizeof(NoiseParams) == 8 && offsetof(NoiseParams, mode) == 4);

struct SaturationParams {
    /// 0 to 100; shown less 50.
    std::int16_t saturation = 60;
};
static_assert(sizeof(SaturationParams) == 2);

struct BrightContrParams {
    /// 0 to 100; shown less 50.
    std::int16_t brightness = 50;
    std::int16_t contrast = 50;
};
static_assert(sizeof(BrightContrParams) == 4);

struct AddColorParams {
    /// 1 to 100 percent.
    std::int16_t opacity = 10;
    RGBColor16 color{0x7FFF, 0x7FFF, 0x7FFF};
};
static_assert(sizeof(AddColorParams) == 8 && offsetof(AddColorParams, color) == 2);

struct MosaicParams {
    /// 1, or 3 to 9: the position of the popup's item, which is the block's size in pixels. The
    /// item labelled n makes blocks of n + 1; meant.
    std::int16_t horizontal = 1;
    std::int16_t vertical = 1;
};
static_assert(sizeof(MosaicParams) == 4);

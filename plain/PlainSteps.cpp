#include "plain/PlainSteps.h"

#include <cstdint>
#include <type_traits>

#include "paint/records/FilterParams.h"
#include "plain/PlainBlur.h"
#include "plain/PlainColors.h"
#include "plain/PlainDividers.h"
#include "plain/PlainDrops.h"
#include "plain/PlainLines.h"
#include "plain/PlainPlaces.h"
#include "plain/PlainShapes.h"
#include "plain/PlainSharpen.h"
#include "plain/PlainSkew.h"
#include "plain/PlainTwirls.h"
#include "plain/PlainWaves.h"

namespace {

// The steps whose record is not what the plain form takes. The angles are turned as the editor
// turns them.

bool Lines(PaintClass& pic, const LinesParams& params) {
    LinesParams turned = params;
    turned.angle = static_cast<std::int16_t>(180 - params.angle);
    return PlainLines(pic, turned);
}

bool Shapes(PaintClass& pic, const ShapesParams& params) {
    ShapesParams turned = params;
    turned.angle = static_cast<std::int16_t>(270 - params.angle);
    return PlainShapes(pic, turned);
}

bool Skew(PaintClass& pic, const SkewParams& params) {
    return PlainSkew(pic, params.direction, false);
}

bool Blur(PaintClass& pic, const BlurParams& params) {
    if (params.motion == 1) {
        return PlainMotionBlur(pic, static_cast<short>(params.amount / 4), params.direction);
    }
    return PlainBlur(pic, params.amount * 0.05, 1);
}

bool Sharpen(PaintClass& pic, const SharpenParams& params) {
    bool done = true;
    for (int pass = 0; pass < params.passes; ++pass) {
        done = PlainSharpen(pic) && done;
    }
    return done;
}

void Noise(PaintClass& pic, const NoiseParams& params) {
    PlainNoise(pic, params.amount, params.mode);
}

void Saturation(PaintClass& pic, const SaturationParams& params) {
    PlainSaturation(pic, params.saturation);
}

void BrightnessContrast(PaintClass& pic, const BrightContrParams& params) {
    PlainBrightnessContrast(pic, params.contrast, params.brightness);
}

void AddColor(PaintClass& pic, const AddColorParams& params) {
    PlainAddColor(pic, params.color, params.opacity);
}

void Mosaic(PaintClass& pic, const MosaicParams& params) {
    PlainMosaic(pic, params.horizontal, params.vertical);
}

void Flip(PaintClass& pic, const FlipParams& params) {
    PlainFlip(pic, params.mode);
}

template <auto step, typename Record>
bool Run(PaintClass& pic, const void* record) {
    const auto& params = *static_cast<const Record*>(record);
    if constexpr (std::is_same_v<decltype(step(pic, params)), bool>) {
        return step(pic, params);
    } else {
        step(pic, params);
        return true;
    }
}

template <auto step, typename Result, typename Record>
constexpr PlainStep Erase(Result (*)(PaintClass&, const Record&)) {
    return Run<step, Record>;
}

struct Row {
    std::string_view name;
    PlainStep step;
};

constexpr Row rows[] = {
    {"lines", Erase<Lines>(Lines)},
    {"shapes", Erase<Shapes>(Shapes)},
    {"drops", Erase<PlainDrops>(PlainDrops)},
    {"dividers", Erase<PlainDividers>(PlainDividers)},
    {"waves", Erase<PlainWaves>(PlainWaves)},
    {"twirls", Erase<PlainTwirls>(PlainTwirls)},
    {"skew", Erase<Skew>(Skew)},
    {"blur", Erase<Blur>(Blur)},
    {"sharpen", Erase<Sharpen>(Sharpen)},
    {"noise", Erase<Noise>(Noise)},
    {"saturation", Erase<Saturation>(Saturation)},
    {"brightnessContrast", Erase<BrightnessContrast>(BrightnessContrast)},
    {"mosaic", Erase<Mosaic>(Mosaic)},
    {"addColor", Erase<AddColor>(AddColor)},
    {"flip", Erase<Flip>(Flip)},
};

}  // namespace

PlainStep PlainStepOf(std::string_view name) {
    for (const Row& row : rows) {
        if (row.name == name) {
            return row.step;
        }
    }
    return nullptr;
}

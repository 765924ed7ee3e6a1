#include "paint/EffectRun.h"

bool RunLines(PaintClass& pic, const LinesParams& params) {
    LinesParams handedOver = params;
    // The generator's 0 points down, along y, and turns the other way.
    handedOver.angle = static_cast<std::int16_t>(180 - params.angle);
    return pic.Lines(handedOver);
}

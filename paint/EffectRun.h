// The editor's run step of each effect: what the user's record becomes on its way to the raster.
// The editor, its Repeat commands and the recipes all come through here.
#pragma once

#include "paint/PaintClass.h"

/// `params.angle` is the user's: 0 goes straight up, 90 right, -90 left, 180 down.
bool RunLines(PaintClass& pic, const LinesParams& params);

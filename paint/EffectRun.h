// The editor's run step of each effect: what the user's record becomes on its way to the raster.
// The editor, its Repeat commands and the recipes all come through here.
#pragma once

#include <memory>

#include "paint/PaintClass.h"
#include "paint/records/FilterParams.h"

/// `params.angle` is the user's: 0 goes straight up, 90 right, -90 left, 180 down.
bool RunLines(PaintClass& pic, const LinesParams& params);

/// `params.angle` is the user's: the turn of every shape, clockwise. False without memory.
bool RunShapes(PaintClass& pic, const ShapesParams& params);
/// False without memory.
bool RunDrops(PaintClass& pic, const DropsParams& params);
/// Draws with the record's two colours. Who makes a record of a dialog or a preset puts the
/// editor's there; a repeat draws with those of its record, though the editor's may have changed
/// since.
void RunDividers(PaintClass& pic, const DividersParams& params);
/// False without memory.
bool RunWaves(PaintClass& pic, const WavesParams& params);
/// False without memory.
bool RunTwirls(PaintClass& pic, const TwirlsParams& params);
/// Reads between pixels, as the editor always does, or the nearest ones. False without memory.
bool RunSkew(PaintClass& pic, const SkewParams& params, bool nearest = false);

// The filters. Where a result is bool, false means that there was no memory for it; the editor does
// not look at it.

/// The motion blur if `params.motion` is 1, which is of no length for an amount below 4.
bool RunBlur(PaintClass& pic, const BlurParams& params);
/// As many passes as the record says. Without memory for one it goes on to the next.
bool RunSharpen(PaintClass& pic, const SharpenParams& params);
void RunNoise(PaintClass& pic, const NoiseParams& params);
void RunSaturation(PaintClass& pic, const SaturationParams& params);
void RunBrightnessContrast(PaintClass& pic, const BrightContrParams& params);
void RunAddColor(PaintClass& pic, const AddColorParams& params);
void RunMosaic(PaintClass& pic, const MosaicParams& params);

// What works on several textures or moves one.

/// False if the sizes differ: nothing has changed then. `amount` is in percent, `mode` 1 to 3.
bool RunCombine(PaintClass& pic, PaintClass& other, std::int16_t amount, std::int32_t mode);
/// A new texture of `horizontal` by `vertical` copies, with the colours of `pic` and an undo store
/// that holds the same. Null without memory.
std::unique_ptr<PaintClass> RunTile(const PaintClass& pic, short horizontal, short vertical);
/// A new texture of the given size, `pic` stretched over it, with its colours and an undo store
/// that holds the same. Null without memory.
std::unique_ptr<PaintClass> RunResize(const PaintClass& pic, short width, short height);
/// The contents move around the torus, to the right and down. False without memory.
bool RunMove(PaintClass& pic, int right, int down);

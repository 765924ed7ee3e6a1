// The run step of each effect: translates the user's record to the operation's parameters and runs
// it. The editor, its Repeat commands and the recipes all use these.
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
/// Draws with the record's two colours. A record made from a dialog or a preset has the editor's
/// colours of that moment; a repeat draws with those of its record, even if the editor's have
/// changed since.
void RunDividers(PaintClass& pic, const DividersParams& params);
/// False without memory.
bool RunWaves(PaintClass& pic, const WavesParams& params);
/// False without memory.
bool RunTwirls(PaintClass& pic, const TwirlsParams& params);
/// Reads between pixels, as the editor always does, or the nearest ones. False without memory.
bool RunSkew(PaintClass& pic, const SkewParams& params, bool nearest = false);

// The filters. Where a result is bool, false means that there was no memory for it; the editor
// ignores it.

/// The motion blur if `params.motion` is 1, whose length is 0 for an amount below 4.
bool RunBlur(PaintClass& pic, const BlurParams& params);
/// Runs as many passes as the record says. A pass without memory is skipped.
bool RunSharpen(PaintClass& pic, const SharpenParams& params);
void RunNoise(PaintClass& pic, const NoiseParams& params);
void RunSaturation(PaintClass& pic, const SaturationParams& params);
void RunBrightnessContrast(PaintClass& pic, const BrightContrParams& params);
void RunAddColor(PaintClass& pic, const AddColorParams& params);
void RunMosaic(PaintClass& pic, const MosaicParams& params);

// Operations on several textures, and moving one.

/// False if the sizes differ: nothing has changed then. `amount` is in percent, `mode` 1 to 3.
bool RunCombine(PaintClass& pic, PaintClass& other, std::int16_t amount, std::int32_t mode);
/// A new texture of `horizontal` by `vertical` copies, with the colours of `pic` and an undo store
/// that holds the same. Null without memory.
std::unique_ptr<PaintClass> RunTile(const PaintClass& pic, short horizontal, short vertical);
/// A new texture of the given size, `pic` stretched over it, with its colours and an undo store
/// that holds the same. Null without memory.
std::unique_ptr<PaintClass> RunResize(const PaintClass& pic, short width, short height);
/// Moves the contents to the right and down; they wrap around. False without memory.
bool RunMove(PaintClass& pic, int right, int down);

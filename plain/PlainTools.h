// The paint tools in the plainest form: pixel by pixel through the accessors, every distance and
// colour computed anew. The tests hold the fast ones against them, and the benchmark times both.
#pragma once

#include <vector>

#include "hostapi/HostTypes.h"
#include "paint/PaintClass.h"

struct PlainBrush {
    unsigned char coverage[20][20];
};
/// `size` is 1 to 20 pixels.
PlainBrush PlainRoundBrush(int size);
PlainBrush PlainSquareBrush(int size);

struct PlainPosition {
    double x;
    double y;
    friend bool operator==(const PlainPosition&, const PlainPosition&) = default;
};
/// Where a line's stamps are laid.
std::vector<PlainPosition> PlainWalk(hostapi::Point from, hostapi::Point to);
/// The pixels of a thin line.
std::vector<PlainPosition> PlainTrace(hostapi::Point from, hostapi::Point to);

/// One stroke along the points, from each to the next. The two colours have to be set, and a brush
/// is of at most 20 pixels.
void PlainBrushStroke(PaintClass& pic, const std::vector<hostapi::Point>& path);
void PlainEraserStroke(PaintClass& pic, const std::vector<hostapi::Point>& path);
void PlainPencilStroke(PaintClass& pic, const std::vector<hostapi::Point>& path);
/// A stamp is of at most 20 pixels.
void PlainStampStroke(PaintClass& pic, const std::vector<hostapi::Point>& path);

void PlainFloodFill(PaintClass& pic, hostapi::Point start);
/// The two points share a row or a column.
void PlainGradient(PaintClass& pic, hostapi::Point from, hostapi::Point to);

#include "paint/Stroke.h"

#include <algorithm>
#include <limits>

#include "raster/Torus.h"

using hostapi::Point;

namespace {

/// The largest radius of a brush or a stamp, and a pixel for what truncation moves.
constexpr short stampReach = brushTableSide / 2 + 1;

struct Span {
    int from;
    int to;
};

/// The places within `reach` of those from `a` to `b`, brought into the tile.
Span SpanAround(int a, int b, int reach, short size) {
    const int from = std::min(a, b) - reach;
    const int to = std::max(a, b) + reach + 1;
    // The tools lift positions by a tile and keep 16 bits of them. Around the torus a position is
    // the same one with and without the bits above only where none are lost.
    using Limits = std::numeric_limits<short>;
    if (to - from >= size || from < Limits::min() || to + size > Limits::max()) {
        return {0, size};
    }
    const int first = Wrap(from, size);
    return {first, first + to - from};
}

}  // namespace

void Stroke::Paint(Point from, Point to) {
    if (hasBegun) {
        PaintSegment(from, to);
        pic.SetDirty();
    }
}

hostapi::VRect Stroke::Touched(Point from, Point to) const {
    const Span rows = SpanAround(from.v, to.v, reach, pic.grY);
    const Span columns = SpanAround(from.h, to.h, reach, pic.grX);
    return {rows.from, columns.from, rows.to, columns.to};
}

bool Stroke::KeepTexture(unsigned char alpha) {
    if (pic.GetClone() == nullptr) {
        return false;
    }
    pic.SetAllAlpha(alpha);
    pic.CopyToClone();
    return true;
}

BrushStroke::BrushStroke(PaintClass& newPic) : Stroke(newPic, stampReach) {
    constexpr unsigned char notCovered = 0;
    if (KeepTexture(notCovered)) {
        PaintClass::MakeRoundBrush(pic.brushSize);
        hasBegun = true;
    }
}

void BrushStroke::PaintSegment(Point from, Point to) {
    PaintClass::WalkLine(from, to, PaintClass::StampBrush, &pic);
}

EraserStroke::EraserStroke(PaintClass& newPic)
    : Stroke(newPic, stampReach), savedColor(pic.foreColor), savedSize(pic.brushSize) {
    pic.foreColor = pic.backColor != nullptr ? pic.backColor : &white16;
    pic.brushSize = size;
    constexpr unsigned char notCovered = 0;
    if (KeepTexture(notCovered)) {
        PaintClass::MakeSquareBrush(pic.brushSize);
        hasBegun = true;
    }
}

EraserStroke::~EraserStroke() {
    if (hasBegun) {
        pic.foreColor = savedColor;
        pic.brushSize = savedSize;
    }
}

void EraserStroke::PaintSegment(Point from, Point to) {
    PaintClass::WalkLine(from, to, PaintClass::StampBrush, &pic);
}

PencilStroke::PencilStroke(PaintClass& newPic) : Stroke(newPic, 0) {
    hasBegun = true;
}

void PencilStroke::PaintSegment(Point from, Point to) {
    PaintClass::TraceLine(from, to, PaintClass::PlotPixel, &pic);
}

StampStroke::StampStroke(PaintClass& newPic) : Stroke(newPic, stampReach) {
    constexpr unsigned char farAway = 255;
    hasBegun = KeepTexture(farAway);
}

void StampStroke::PaintSegment(Point from, Point to) {
    PaintClass::StampLine(from, to, &pic);
}

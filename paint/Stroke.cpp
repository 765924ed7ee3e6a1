#include "paint/Stroke.h"

using hostapi::Point;

void Stroke::Paint(Point from, Point to) {
    if (hasBegun) {
        PaintSegment(from, to);
        pic.SetDirty();
    }
}

bool Stroke::KeepTexture(unsigned char alpha) {
    if (pic.GetClone() == nullptr) {
        return false;
    }
    pic.SetAllAlpha(alpha);
    pic.CopyToClone();
    return true;
}

BrushStroke::BrushStroke(PaintClass& newPic) : Stroke(newPic) {
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
    : Stroke(newPic), savedColor(pic.foreColor), savedSize(pic.brushSize) {
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

PencilStroke::PencilStroke(PaintClass& newPic) : Stroke(newPic) {
    hasBegun = true;
}

void PencilStroke::PaintSegment(Point from, Point to) {
    PaintClass::TraceLine(from, to, PaintClass::PlotPixel, &pic);
}

StampStroke::StampStroke(PaintClass& newPic) : Stroke(newPic) {
    constexpr unsigned char farAway = 255;
    hasBegun = KeepTexture(farAway);
}

void StampStroke::PaintSegment(Point from, Point to) {
    PaintClass::WalkLine(from, to, PaintClass::StampClone, &pic);
}

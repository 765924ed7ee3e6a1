// A stroke of a painting tool, from the press of the button to its release. The editor's mouse
// loops and the recipes both paint through these classes.
//
// A stroke begins with its construction and ends with its destruction. The undo snapshot before it
// is the caller's.
#pragma once

#include "hostapi/HostTypes.h"
#include "paint/PaintClass.h"

class Stroke {
  public:
    Stroke(const Stroke&) = delete;
    Stroke& operator=(const Stroke&) = delete;
    virtual ~Stroke() = default;

    /// False if there was no memory for the clone. Then nothing is painted.
    bool HasBegun() const { return hasBegun; }
    /// Paints from one position to the next, both in texture coordinates and not wrapped. A press
    /// without a movement is the segment from a point to itself. Does nothing in a stroke that has
    /// not begun.
    void Paint(hostapi::Point from, hostapi::Point to);
    /// The part of the texture outside of which Paint(from, to) changes no pixel. Its top left
    /// corner lies in the tile, and it is no larger than the tile; beyond the tile's right and
    /// bottom edges it goes on at the left and at the top.
    hostapi::VRect Touched(hostapi::Point from, hostapi::Point to) const;

  protected:
    /// `newReach` is the distance, across and down, beyond which the tool changes no pixel.
    Stroke(PaintClass& newPic, short newReach) : pic(newPic), reach(newReach) {}

    /// Keeps the texture in the clone, which stays allocated after the stroke, for the next one.
    /// All alpha bytes begin with `alpha`. False without memory.
    bool KeepTexture(unsigned char alpha);

    PaintClass& pic;
    bool hasBegun = false;

  private:
    const short reach;

    virtual void PaintSegment(hostapi::Point from, hostapi::Point to) = 0;
};

/// Round and soft, of `brushSize` pixels in the foreground colour. Asserts a size of at most 20.
class BrushStroke : public Stroke {
  public:
    explicit BrushStroke(PaintClass& newPic);

  private:
    void PaintSegment(hostapi::Point from, hostapi::Point to) override;
};

/// Square, in the background colour. While it lives, it replaces the foreground colour and the
/// brush size of the texture. A stroke that has not begun leaves them replaced. That is intended.
class EraserStroke : public Stroke {
  public:
    explicit EraserStroke(PaintClass& newPic);
    ~EraserStroke() override;

    static constexpr short size = 14;

  private:
    void PaintSegment(hostapi::Point from, hostapi::Point to) override;

    const RGBColor16* savedColor;
    short savedSize;
};

/// One hard pixel in the foreground colour. Always begins: it needs no clone.
class PencilStroke : public Stroke {
  public:
    explicit PencilStroke(PaintClass& newPic);

  private:
    void PaintSegment(hostapi::Point from, hostapi::Point to) override;
};

/// Copies from `stampOffsetH`, `stampOffsetV` away, in a soft disc of `stampSize` pixels. The
/// offset may change from segment to segment.
class StampStroke : public Stroke {
  public:
    explicit StampStroke(PaintClass& newPic);

  private:
    void PaintSegment(hostapi::Point from, hostapi::Point to) override;
};

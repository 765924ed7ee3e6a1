// The raster with all its effects, filters and paint operations.
//
// Every operation treats the tile as a torus. The undo snapshot before an operation is the
// editor's to take, never the operation's. The operations stand in PaintClass1.cpp to
// PaintClass6.cpp, by kind; paint/README.md tells which is where.
#pragma once

#include "paint/Color.h"
#include "paint/LinesParams.h"
#include "raster/PicClass.h"

class ShowClass;

class PaintClass : public PicClass {
  public:
    /// Always with undo. Test `pixelMap`: null means no memory.
    PaintClass(short width, short height);
    ~PaintClass() override;

    /// Bytes 0 to 2 of every pixel take the high bytes of the colour; the alpha byte stays.
    void FillColor(const RGBColor16& color);
    void FillWhite();

    /// Fills the tile with thousands of thin random strokes; nothing of the old picture survives.
    /// `params.angle` is the handed-over angle, 180 - the user's. False without memory for the
    /// softening pass: raster and undo store are then exchanged.
    bool Lines(const LinesParams& params);
    /// The wax pass of Lines: half of each pixel and an eighth of each of its four neighbours,
    /// truncating. Reports rows from `rowOffset` on. False without memory for the clone.
    bool Soften(short rowOffset, ShowClass* progress, bool* abortFlag);

    /// Stands at the end of every operation that has changed pixels.
    void SetDirty() { changed = true; }

    /// What a tool lifted from the texture.
    std::unique_ptr<PicClass> cut;
    bool changed = false;
    /// The editor's foreground and background; null outside it.
    const RGBColor16* foreground = nullptr;
    const RGBColor16* background = nullptr;
};

/// Entry [a][b] is a * b * (1 / 255) truncated, which equals a * b / 255 for all pairs. Filled by
/// the first PaintClass.
extern unsigned char productTable[256][256];

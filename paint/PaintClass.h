// The raster with all its effects, filters and paint operations.
//
// Every operation treats the tile as a torus. The undo snapshot before an operation is the
// editor's to take, never the operation's. The operations stand in PaintClass1.cpp to
// PaintClass6.cpp, by kind; paint/README.md tells which is where.
#pragma once

#include "base/Progress.h"
#include "hostapi/HostTypes.h"
#include "paint/Color.h"
#include "paint/records/EffectParams.h"
#include "paint/records/LinesParams.h"
#include "paint/records/ToolParams.h"
#include "raster/PicClass.h"

/// Pixels that a texture has at most on either side. Rasters of other uses can be larger.
constexpr int maximalTextureSide = 512;

class ShowClass;
class PaintClass;

struct CombineRecord {
    /// 0 to 100 percent.
    std::int16_t amount;
    /// 1 blends, 2 structures, 3 colours.
    std::int32_t mode;
    PaintClass* target;
    /// Must have the same size as the target.
    PaintClass* other;
};

class PaintClass : public PicClass {
  public:
    /// Returns a white texture; null without memory for it, or for a size that no raster has.
    static std::unique_ptr<PaintClass> Make(short width, short height);
    /// Always with undo. Test `pixelMap`: null means no memory.
    PaintClass(short width, short height);
    ~PaintClass() override;

    /// Called at the end of every operation that has changed pixels.
    void SetDirty() { changed = true; }
    /// Borrows the editor's colours, which the tools paint with.
    void SetColors(const RGBColor16* fore, const RGBColor16* back);

    // PaintClass1: convolutions. Where a result is bool, false means that there was no memory, and
    // the colours are unchanged. `progress` may be null in Blur alone; `abortFlag` is cleared at
    // first. Blur sets it if a progress object asks for the end of the work, which the program's
    // own never does.

    /// Mode 1: the colours of all pixels; 2: the alpha bytes below 255; 3: the colours of pixels
    /// whose alpha byte is not 255. Any other mode does nothing and returns false. Reports rows
    /// from `rowOffset` on.
    bool Blur(double radius, short mode, ShowClass* progress, short rowOffset, bool* abortFlag);
    /// A trail of `length` pixels with falling weights. Directions 0 to 7 go clockwise from the
    /// top. A length below 1 changes nothing.
    bool MotionBlur(short length, short direction);
    bool Sharpen();
    /// Lightens and darkens along one diagonal of the brightness.
    bool AddBump();
    /// Half of each alpha byte and an eighth of each of its four neighbours', truncating.
    bool SmoothAlpha(short rowOffset, ShowClass* progress, bool* abortFlag);

    // PaintClass2: generators.

    /// Fills the tile with thousands of thin random strokes; nothing of the old picture survives.
    /// `params.angle` is the handed-over angle, 180 - the user's. False without memory for the
    /// softening pass: raster and undo store are then exchanged.
    bool Lines(const LinesParams& params);
    /// The wax pass of Lines: half of each pixel and an eighth of each of its four neighbours,
    /// truncating. Reports rows from `rowOffset` on. False without memory for the clone.
    bool Soften(short rowOffset, ShowClass* progress, bool* abortFlag);
    /// Raised shapes, lit, over the texture. `params.angle` is the handed-over angle,
    /// (180 - the user's) + 90. False without memory.
    bool Shapes(const ShapesParams& params);
    /// The place that the pixel (px, py) comes from when a shape is turned around (cx, cy) by the
    /// whole degrees of `angle`. Not a number at the centre itself.
    static void RotateAboutCentre(short cx, short cy, short px, short py, double angle, double* x,
                                  double* y);
    /// Whether the point lies on the shape of a ShapeKind with these half sizes and this width of
    /// the rounded edge, in pixels; then `value` is its alpha byte, 0 on top to 254. Otherwise, as
    /// in the hole of a ring and for what is not a number, it is 255.
    static bool ShapeCoverage(std::int32_t kind, double x, double y, short cx, short cy, double hs,
                              double vs, double bevel, unsigned char* value);
    /// Water drops over the texture. False without memory.
    bool Drops(const DropsParams& params);
    /// Lines that run until they meet another. A draw that falls on W or H, one of 32768, fails
    /// the assertion of PixelAddress.
    void Dividers(const DividersParams& params);

    // PaintClass3: distortions.

    void Waves(const WavesParams& params);
    /// False without memory for the clone.
    bool Twirls(const TwirlsParams& params);
    /// Directions 0 and 1 shear rows, 2 and 3 columns, by one tile over the tile's length.
    bool Skew(std::int32_t direction, bool nearest);

    // PaintClass4: operations that set or move whole pixels.

    /// Bytes 0 to 2 of every pixel take the high bytes of the colour; the alpha byte stays.
    void FillColor(const RGBColor16& color);
    void FillWhite();
    /// Each block of the grid becomes its average colour.
    void Mosaic(short blockWidth, short blockHeight);
    /// 0 vertically, 1 horizontally, 2 both.
    void Flip(short mode);
    /// Moves the contents by (-dx, -dy), wrapped. Asserts that there is a clone.
    void ShiftBy(short dx, short dy);
    /// Asserts that there is a `cut`.
    void DisposeCut();

    // PaintClass5: colours.

    void Noise(short amount, int mode);
    /// 0 to 100; 50 leaves the saturation.
    void Saturation(short saturation);
    /// 0 to 100 each; 50 is neutral.
    void BrightnessContrast(short contrast, short brightness);
    void AddColor(const RGBColor16& color, short opacity);
    void Invert();
    void Combine(const CombineRecord* record);

    // PaintClass6: the paint tools. Positions are in texture coordinates, not wrapped. Points are
    // vertical first. A stroke from press to release is a Stroke (paint/Stroke.h).

    using WalkCallback = void (*)(double x, double y, PaintClass* pic);
    using TraceCallback = void (*)(short x, short y, PaintClass* pic);

    /// Fill the first `size` rows and columns of the brush table. Assert a size of at most 20; one
    /// below 1 fills nothing.
    static void MakeRoundBrush(short size);
    static void MakeSquareBrush(short size);
    /// Lays the brush table around a position, `brushSize` pixels of it, in the foreground colour.
    /// Needs the stroke's clone and alpha bytes; without a clone nothing happens.
    static void StampBrush(double x, double y, PaintClass* pic);
    /// Copies a disc of `stampSize` pixels from `stampOffsetH`, `stampOffsetV` away to a position.
    /// Needs the stroke's clone and alpha bytes; without a clone nothing happens.
    static void StampClone(double x, double y, PaintClass* pic);
    /// The same as WalkLine with StampClone, but quicker.
    static void StampLine(hostapi::Point from, hostapi::Point to, PaintClass* pic);
    /// The pixel takes the foreground colour, its alpha byte 0.
    static void PlotPixel(short x, short y, PaintClass* pic);
    /// Calls back about once a pixel from one point to the other, both included, and once for a
    /// segment shorter than a pixel.
    static void WalkLine(hostapi::Point from, hostapi::Point to, WalkCallback callback,
                         PaintClass* pic);
    /// Calls back for each pixel of a thin line from one point to the other, both included.
    static void TraceLine(hostapi::Point from, hostapi::Point to, TraceCallback callback,
                          PaintClass* pic);
    /// Paints the region of similar colour around a point in the foreground colour; a region wraps
    /// around the tile's edges. False without memory for the queue: the colours are then as they
    /// were.
    bool FloodFill(hostapi::Point start);
    /// A ramp from the foreground colour at `from` to the background colour at `to`, over whole
    /// rows or columns; that at the larger coordinate is not painted. Asserts that the two points
    /// share a row or a column.
    void Gradient(hostapi::Point from, hostapi::Point to);

    // The tools' settings, which start anew with each texture object.
    // The defaults and ranges of those that have a dialog are in paint/records/ToolParams.h.
    short brushSize = BrushSettings{}.size;
    short stampSize = StampSettings{}.size;
    /// Texture pixels from the brush to the source, right and down; both 0 means undefined. While
    /// stampSourcePending they hold the source point itself.
    short stampOffsetH = 0;
    short stampOffsetV = 0;
    /// Where the editor drew the cross of the source, in window pixels.
    short stampCrossV = 0;
    short stampCrossH = 0;
    bool stampSourcePending = false;
    bool stampCrossShown = false;
    short fillTolerance = FillSettings{}.tolerance;
    short fillAntiAlias = FillSettings{}.antiAlias;
    /// The editor's colours. Null outside it: the tools then use black and white.
    const RGBColor16* foreColor = nullptr;
    const RGBColor16* backColor = nullptr;

    /// A cut-out piece; nothing in the program fills it.
    std::unique_ptr<PicClass> cut;
    bool changed = false;

  private:
    /// Roughens the raised part of the height field at random places.
    void ShapeGrain(short material);
    /// A stamp of the rubber stamp after one at the previous position.
    void LayStampAt(double x, double y, double previousX, double previousY);
};

/// The coverages of the stroke that is being painted, 0 to 255, one brush for all textures.
constexpr int brushTableSide = 20;
extern unsigned char brushTable[brushTableSide][brushTableSide];

/// Entry [a][b] is a * b * (1 / 255) truncated, which equals a * b / 255 for all pairs.
extern unsigned char productTable[256][256];

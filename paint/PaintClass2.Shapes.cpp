// The generators: Shapes.
#include <algorithm>
#include <cmath>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/ShapeScan.h"
#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "raster/HandleArray.h"
#include "raster/Truncation.h"

namespace {

constexpr unsigned char flatGround = 255;
constexpr short reportsPerShape = 10;

/// A guard against damaged records: clamps the number, size and displacement of shapes to the
/// dialog's range. Otherwise a run could take hours, and all memory.
ShapesParams InDialogsRange(ShapesParams params) {
    const auto put = [&params](auto... members) { (PutInRange(FieldFor(members), &params), ...); };
    put(&ShapesParams::sizeX, &ShapesParams::sizeY, &ShapesParams::repeatX, &ShapesParams::repeatY,
        &ShapesParams::shiftX, &ShapesParams::shiftY, &ShapesParams::shiftSize);
    return params;
}

/// The random layout of a run.
class ShapeGrid {
  public:
    explicit ShapeGrid(const ShapesParams& params)
        : columns(params.repeatX),
          rows(params.repeatY),
          shapes(static_cast<std::size_t>(CellCount())) {}

    /// True if there was no memory.
    bool Failed() const { return shapes.Failed(); }

    /// In pixels; may lie outside the tile.
    struct Centre {
        short x;
        short y;
    };
    struct Shape {
        Centre centre;
        double hs;
        double vs;
    };

    /// Draws five random numbers a shape. None of them is ever switched off: a spread of 0 still
    /// jitters by one step.
    void Fill(const PicClass& pic, const ShapesParams& params);

    const Shape& At(int column, int row) const { return shapes.Values()[columns * row + column]; }
    int CellCount() const { return columns * rows; }

    const short columns;
    const short rows;

  private:
    HandleArray<Shape> shapes;
};

void ShapeGrid::Fill(const PicClass& pic, const ShapesParams& params) {
    const double cellW = static_cast<double>(pic.grX) / columns;
    const double cellH = static_cast<double>(pic.grY) / rows;
    for (int i = 0; i < columns; ++i) {
        for (int j = 0; j < rows; ++j) {
            short x = TruncateToShort(i * cellW + cellW * 0.5);
            short y = TruncateToShort(j * cellH + cellH * 0.5);
            const short shiftX = RandomSpread(params.shiftX);
            x = TruncateToShort(x + params.sizeX * 0.5 * cellW * shiftX * 0.02);
            const short shiftY = RandomSpread(params.shiftY);
            y = TruncateToShort(y + params.sizeY * 0.5 * cellH * shiftY * 0.02);
            const short wider = RandomSpread(params.shiftSize);
            const short higher = RandomSpread(params.shiftSize);
            if (params.halfShift != 0 && j % 2 == 0) {
                x = TruncateToShort(x + cellW * 0.5);
            }
            shapes.Values()[columns * j + i] = {{x, y},
                                                params.sizeX * 0.5 * cellW * (wider * 0.01 + 1.0),
                                                params.sizeY * 0.5 * cellH * (higher * 0.01 + 1.0)};
        }
    }
}

// How the height of a shape is combined with a pixel of the field that may already belong to
// another shape, or to a wrapped part of the same one. (px, py) are not wrapped.

/// The rule of the dialog's records: shapes are seen through each other.
struct Blended {
    void operator()(int, int, unsigned char& alpha, unsigned char height) const {
        alpha = alpha == flatGround ? height : static_cast<unsigned char>(alpha / 2 + height / 2);
    }
};

/// The earlier shape stays on top, except for its parts that hang over the right and lower edge.
struct Stacked {
    short width;
    short height;

    void operator()(int px, int py, unsigned char& alpha, unsigned char value) const {
        const bool hangsOver = px >= width || py >= height;
        if (hangsOver || (px >= 0 && py >= 0 && alpha == flatGround)) {
            alpha = value;
        }
    }
};

/// The part that Stacked omits of shapes that cross the left and the upper edge.
struct StackedBeyondStart {
    void operator()(int px, int py, unsigned char& alpha, unsigned char value) const {
        if ((px < 0 || py < 0) && alpha == flatGround) {
            alpha = value;
        }
    }
};

/// Presses shapes into the alpha bytes.
class HeightField {
  public:
    HeightField(PicClass& newPic, const ShapesParams& params, double newMargin, double bevel)
        : pic(newPic),
          // With the angle from the run step, this is a whole turn less the user's angle.
          scan(params.kind, bevel, params.angle + 90.0),
          margin(newMargin) {}

    template <typename Rule>
    void Press(const ShapeGrid::Shape& shape, const Rule& rule) {
        const auto [cx, cy] = shape.centre;
        scan.Place(cx, cy, shape.hs, shape.vs);
        const ShapeScan::Range rows{TruncateToShort(cy - shape.vs - margin),
                                    static_cast<int>(std::ceil(cy + shape.vs + margin))};
        const ShapeScan::Range columns =
            scan.ReachAcross({TruncateToShort(cx - shape.hs - margin),
                              static_cast<int>(std::ceil(cx + shape.hs + margin))});
        // The defined order is by columns. Pixels at different places of the tile are
        // independent, so within the width of one tile the order can be by rows.
        for (int first = columns.first; first < columns.end; first += pic.grX) {
            PressBlock({first, std::min(first + pic.grX, columns.end)}, rows, rule);
        }
    }

  private:
    template <typename Rule>
    void PressBlock(ShapeScan::Range columns, ShapeScan::Range rows, const Rule& rule) {
        const ShapeScan::Range reached = scan.ReachDown(columns, rows);
        for (int py = reached.first; py < reached.end; ++py) {
            const auto [start, end] = scan.Reach(py, columns);
            for (int px = start; px < end; px += ShapeScan::longestRun) {
                PressRun(px, py, std::min(end - px, ShapeScan::longestRun), rule);
            }
        }
    }

    template <typename Rule>
    void PressRun(int px, int py, int count, const Rule& rule) {
        unsigned char heights[ShapeScan::longestRun];
        scan.Read(px, py, count, heights);
        unsigned char* const row = pic.PixelAddress(0, Wrap(py, pic.grY));
        int column = Wrap(px, pic.grX);
        for (int i = 0; i < count; ++i) {
            if (heights[i] != ShapeScan::ground) {
                rule(px + i, py, row[column * bytesPerPixel + 3], heights[i]);
            }
            column = column + 1 < pic.grX ? column + 1 : 0;
        }
    }

    PicClass& pic;
    ShapeScan scan;
    /// Margin added on each side of a rotated shape's bounding box, in pixels.
    double margin;
};

template <typename Rule>
void PressAll(PicClass& pic, const ShapesParams& params, const ShapeGrid& grid, HeightField& field,
              ShowClass& progress, const Rule& rule) {
    for (int i = 0; i < grid.columns; ++i) {
        for (int j = 0; j < grid.rows; ++j) {
            progress.Report(static_cast<short>((grid.rows * i + j) * reportsPerShape));
            const ShapeGrid::Shape shape = grid.At(i, j);
            if (params.kind != shapeRing) {
                // The centre is reached in no other way: without a distance there is no direction.
                pic.SetAlphaWrapped(shape.centre.x, shape.centre.y, 0);
            }
            field.Press(shape, rule);
        }
    }
}

void PressShapes(PicClass& pic, const ShapesParams& params, const ShapeGrid& grid,
                 HeightField& field, ShowClass& progress) {
    if (params.stacking != shapesStacked) {
        PressAll(pic, params, grid, field, progress, Blended{});
        return;
    }
    PressAll(pic, params, grid, field, progress, Stacked{pic.grX, pic.grY});
    for (int i = 0; i < grid.columns; ++i) {
        field.Press(grid.At(i, 0), StackedBeyondStart{});
    }
    for (int j = 0; j < grid.rows; ++j) {
        field.Press(grid.At(0, j), StackedBeyondStart{});
    }
}

/// Lifts the tops a little over 0; the ground stays.
void LiftTops(const PicClass& pic) {
    unsigned char lifted[256];
    for (int alpha = 0; alpha < 256; ++alpha) {
        lifted[alpha] = static_cast<unsigned char>(TruncateToShort(alpha * 0.9 + 25.5));
    }
    unsigned char* alpha = pic.Base() + 3;
    for (int i = 0; i < pic.grX * pic.grY; ++i, alpha += bytesPerPixel) {
        *alpha = lifted[*alpha];
    }
}

/// The shapes' colour under the light from the upper left, by the slope: the difference of two
/// alpha bytes.
class ShapeLight {
  public:
    ShapeLight(const ShapesParams& params, double bevel) {
        const unsigned char channels[3] = {HighByte(params.color.red), HighByte(params.color.green),
                                           HighByte(params.color.blue)};
        for (int slope = -255; slope <= 255; ++slope) {
            const double light =
                (params.contrast + 5.0) * slope * bevel * 0.00392156862745098 * 0.6666666666666666;
            for (int c = 0; c < 3; ++c) {
                const short lit = TruncateToShort(channels[c] + light);
                colors[slope + 255][c] = static_cast<unsigned char>(std::clamp<short>(lit, 0, 255));
            }
        }
    }

    const unsigned char* Color(int slope) const { return colors[slope + 255]; }

  private:
    unsigned char colors[511][3];
};

/// Weights of the old colour and the shape's by alpha byte: full on the body, falling in the rim.
/// Flat ground keeps the old colour.
class ShapeCover {
  public:
    ShapeCover(std::int16_t transparency, short threshold) {
        const double through = transparency * 0.01;
        const double opaque = 1.0 - through;
        for (int alpha = 0; alpha < 256; ++alpha) {
            if (alpha < threshold) {
                ofOld[alpha] = through;
                ofShape[alpha] = opaque;
            } else {
                const double share = (255.0 - alpha) / (255 - threshold);
                ofShape[alpha] = opaque * share;
                ofOld[alpha] = 1.0 - ofShape[alpha];
            }
        }
    }

    void Mix(unsigned char* pixel, const unsigned char* color) const {
        const double keep = ofOld[pixel[3]];
        const double cover = ofShape[pixel[3]];
        for (int c = 0; c < 3; ++c) {
            pixel[c] =
                static_cast<unsigned char>(TruncateToShort(pixel[c] * keep + color[c] * cover));
        }
    }

  private:
    double ofOld[256];
    double ofShape[256];
};

/// Renders the columns `first` to `end` - 1. The light's slope at a pixel leads to the next one
/// below and to the right.
void RenderColumns(const PicClass& pic, int first, int end, const ShapeLight& light,
                   const ShapeCover& cover) {
    for (short y = 0; y < pic.grY; ++y) {
        unsigned char* const row = pic.PixelAddress(0, y);
        const unsigned char* const below = pic.PixelAddressWrapped(0, static_cast<short>(y + 1));
        for (int x = first; x < end; ++x) {
            unsigned char* const pixel = row + x * bytesPerPixel;
            if (pixel[3] != flatGround) {
                const int next = x + 1 < pic.grX ? x + 1 : 0;
                cover.Mix(pixel, light.Color(pixel[3] - below[next * bytesPerPixel + 3]));
            }
        }
    }
}

/// By strips of columns, within which the rows of memory are followed.
void RenderShapes(const PicClass& pic, const ShapeLight& light, const ShapeCover& cover,
                  ShowClass& progress, short rowOffset) {
    constexpr int reportStep = 5;
    constexpr int strip = 16 * reportStep;
    for (int first = 0; first < pic.grX; first += strip) {
        const int end = std::min<int>(first + strip, pic.grX);
        for (int x = first; x < end; x += reportStep) {
            progress.Report(static_cast<short>(x / reportStep + rowOffset));
        }
        RenderColumns(pic, first, end, light, cover);
    }
}

}  // namespace

void PaintClass::ShapeGrain(short material) {
    const double size = (grY + grX) * 0.5 * 0.00390625;
    const auto loops = static_cast<std::int32_t>(grX * grY / std::max(size, 1.0));
    const int amount = material * 25 / 100;
    // The clock's second again, so most often the seed of the layout.
    SeedRandom();
    if (!(size < 1.5)) {
        // Intended: large tiles get no grain, whatever the slider says.
        return;
    }
    RandomGenerator random(Seed());
    for (std::int32_t i = 0; i < loops; ++i) {
        const auto y = static_cast<short>(random.Range(0, grY - 1));
        const auto x = static_cast<short>(random.Range(0, grX - 1));
        unsigned char* const alpha = PixelAddress(x, y) + 3;
        if (*alpha < 254) {
            const bool lower = random.Spread(3) < 0;
            *alpha = static_cast<unsigned char>(lower ? std::min(*alpha + amount, 255)
                                                      : std::max(*alpha - amount, 0));
        }
    }
    SetSeed(random.State());
}

bool PaintClass::Shapes(const ShapesParams& record) {
    const ShapesParams params = InDialogsRange(record);
    ShapeGrid grid(params);
    if (grid.Failed()) {
        return false;
    }
    const auto blurOffset = static_cast<short>(grid.CellCount() * reportsPerShape);
    ShowClass progress(static_cast<short>(blurOffset + grY + grX / 5));
    SeedRandom();
    grid.Fill(*this, params);
    const double hw = params.sizeX * 0.5 * (static_cast<double>(grX) / grid.columns);
    const double hh = params.sizeY * 0.5 * (static_cast<double>(grY) / grid.rows);
    const double bevel = params.bevel * 0.01 * std::min(hw, hh);
    SetAllAlpha(flatGround);
    HeightField field(*this, params, 1.41421356 * std::max(hw, hh), bevel);
    PressShapes(*this, params, grid, field, progress);
    LiftTops(*this);
    bool abortFlag = false;
    if (!Blur((grY + grX) * 0.5 * 0.0078125, 2, &progress, blurOffset, &abortFlag)) {
        return false;
    }
    ShapeGrain(params.material);
    RenderShapes(*this, ShapeLight(params, bevel),
                 ShapeCover(params.transparency, ReliefThreshold(bevel)), progress,
                 static_cast<short>(blurOffset + grY));
    Unlock();
    SetDirty();
    return true;
}

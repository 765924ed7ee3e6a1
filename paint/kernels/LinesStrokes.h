// The strokes of Lines, four at a time: first what each draws from the random generator, then the
// steps of all side by side. They are drawn in a canvas of their own, which gives the tile its
// pixels at the end.
#pragma once

#include <cstdint>

#include "paint/kernels/PixelBytes.h"
#include "raster/PicClass.h"

constexpr int stepsPerStroke = 350;
/// A stroke's start takes two draws, each step one, and each drift two more.
constexpr int startDraws = 2;

/// How strokes go: their direction, in pixels a step, before the first drift, and how far one drift
/// can turn them, for RandomSpread.
struct StrokeHabit {
    double dx;
    double dy;
    short driftWidth;
};

/// For each pixel of a tile the number of the last stroke there, from 1 on, or 0 for the ground.
/// Numbers take half the memory of pixels, and lie in strips of columns, so that a stroke in any
/// direction touches few lines of the processor's caches.
class StrokeCanvas {
  public:
    static constexpr short stripColumns = 8;

    /// Whether strokes stay in the range of QuickWrap on a tile of the raster's size, and the
    /// raster has room for its canvas with so many of them.
    static bool Fits(const PicClass& raster, int strokes);

    /// Takes the memory of a raster that it fits in, whose pixels are lost. All is ground.
    StrokeCanvas(const PicClass& raster, Pixel ground);

    void SetColor(int number, Pixel color) const { StorePixel(colors, number, color); }

    /// A stroke's steps, each `stride` numbers after the one before. Places are columns /
    /// stripColumns * StripSize() + row * stripColumns + columns % stripColumns.
    void Mark(const std::int32_t* places, int stride, int number) const;
    std::int32_t StripSize() const { return height * stripColumns; }

    /// The tile's pixels take the colours of their strokes and keep their alpha bytes.
    void Paint(const PicClass& tile) const;

    const short width;
    const short height;

  private:
    using Number = std::uint16_t;
    static constexpr std::int32_t numberBytes = 2;

    static std::int64_t NumberBytes(short width, short height);
    static void PaintPixels(unsigned char* __restrict pixels, const unsigned char* numbers,
                            const unsigned char* colors, int count);

    // Neither need be aligned, as the host's memory need not.
    unsigned char* const numbers;
    unsigned char* const colors;
};

/// Strokes that are drawn together.
class StrokeBatch {
  public:
    static constexpr int size = 4;

    StrokeBatch(const StrokeHabit& newHabit, const StrokeCanvas& newCanvas)
        : habit(newHabit), canvas(newCanvas) {}

    /// Takes the draws of the next stroke from the program's generator. For `size` strokes, then
    /// they have to be drawn.
    void Add();
    /// Marks the steps of the strokes, which have the numbers from `firstNumber` on.
    void Draw(int firstNumber);

  private:
    static constexpr int mostDraws = startDraws + 3 * stepsPerStroke;
    static constexpr int mostTurns = size * stepsPerStroke;
    static constexpr int turnsOfStep = 2 * size;
    /// Draws that are looked at together; a few words more than are needed may be computed.
    static constexpr int wordDraws = 64;
    static constexpr int chunk = 8;

    static void FindTurnsLoop(StrokeBatch& batch, std::uint32_t seed);
    static void TurnsLoop(StrokeBatch& batch);
    static void WalkLoop(StrokeBatch& batch);
    static void PlacesLoop(StrokeBatch& batch);

    const StrokeHabit habit;
    const StrokeCanvas& canvas;
    int count = 0;

    // Where the strokes start.
    double startX[size];
    double startY[size];

    /// The states of the generator after each draw of a stroke, then after its last.
    std::uint32_t states[mostDraws + 2 * wordDraws];
    std::uint32_t stateAfter = 0;

    // The drifts of all strokes, one after the other: where in `turns` each belongs, and the two
    // draws that it takes, in the generator's states, which become what RandomSpread makes of them.
    int turnCount = 0;
    std::int32_t turnPlaces[mostTurns];
    std::int32_t turnDraws[2 * mostTurns + chunk] = {};

    /// For each step by how many hundredths each stroke turns: all in x, then all in y. Nothing
    /// but 0 between the batches.
    std::int32_t turns[stepsPerStroke * turnsOfStep] = {};

    // Where each step of each stroke is; then the columns become places in the canvas.
    std::int32_t columns[stepsPerStroke][size];
    std::int32_t rows[stepsPerStroke][size];
};

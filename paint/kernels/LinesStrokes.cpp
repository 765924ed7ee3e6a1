#include "paint/kernels/LinesStrokes.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstdlib>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/QuickWrap.h"
#include "paint/math/Random.h"

namespace {

/// A bit for each of the draws, the lowest for the first.
using Word = std::uint64_t;
constexpr int wordBits = 64;

/// The states after each draw of a word, from the state before.
struct WordSteps {
    constexpr WordSteps() {
        std::uint32_t factor = 1;
        std::uint32_t addend = 0;
        for (int i = 0; i < wordBits; ++i) {
            factor *= RandomGenerator::factor;
            addend = addend * RandomGenerator::factor + RandomGenerator::addend;
            factors[i] = factor;
            addends[i] = addend;
        }
    }

    std::uint32_t factors[wordBits] = {};
    std::uint32_t addends[wordBits] = {};
};

constexpr WordSteps wordSteps;

// A drift adds at most 0.15 to a step, so that none is longer than 53.5 pixels.
static_assert(stepsPerStroke * 54 < QuickWrap::reach);

/// For each of four draws all bits if a step with it drifts: RandomRange(0, 8) is 4 for the draws
/// from 16384 to 20479.
__m128i AreDrifts(const std::uint32_t* states) {
    const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(states));
    return _mm_cmpeq_epi32(_mm_and_si128(four, _mm_set1_epi32(0x70000000)),
                           _mm_set1_epi32(0x40000000));
}

/// Computes the states of a word. Returns which of the draws would let a step drift.
Word FindDrifts(std::uint32_t seed, std::uint32_t* __restrict states) {
    for (int i = 0; i < wordBits; ++i) {
        states[i] = seed * wordSteps.factors[i] + wordSteps.addends[i];
    }
    Word drifts = 0;
    for (int i = 0; i < wordBits; i += 16) {
        const __m128i low = _mm_packs_epi32(AreDrifts(states + i), AreDrifts(states + i + 4));
        const __m128i high = _mm_packs_epi32(AreDrifts(states + i + 8), AreDrifts(states + i + 12));
        const auto bits = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
        drifts |= static_cast<Word>(bits) << i;
    }
    return drifts;
}

using Doubles = double __attribute__((vector_size(StrokeBatch::size * sizeof(double))));
using Integers = std::int32_t __attribute__((vector_size(StrokeBatch::size * 4)));

/// One by one, which becomes one instruction; converting the whole vector would become four.
void Widen(const std::int32_t* from, Doubles& widened) {
    Integers values;
    std::memcpy(&values, from, sizeof values);
    widened = Doubles{static_cast<double>(values[0]), static_cast<double>(values[1]),
                      static_cast<double>(values[2]), static_cast<double>(values[3])};
}

void StoreTruncated(const Doubles& values, std::int32_t* to) {
    const Integers truncated = __builtin_convertvector(values, Integers);
    std::memcpy(to, &truncated, sizeof truncated);
}

}  // namespace

// A set bit is a drift unless it is one of the two draws that the drift before takes.
void StrokeBatch::FindTurnsLoop(StrokeBatch& batch, std::uint32_t seed) {
    static_assert(wordDraws == wordBits);
    constexpr int drawsOfDrift = 3;
    std::uint32_t* word = batch.states;
    std::int32_t* places = batch.turnPlaces + batch.turnCount;
    std::int32_t* draws = batch.turnDraws + 2 * batch.turnCount;
    // The step that the word's first draw would be; drifts set it back.
    std::ptrdiff_t firstStep = -startDraws;
    Word drifts = FindDrifts(seed, word) >> startDraws << startDraws;
    while (true) {
        // Before the drifts: the draws of the last one may be in the next word.
        const Word next = FindDrifts(word[wordBits - 1], word + wordBits);
        std::ptrdiff_t taken = 0;
        while (drifts != 0) {
            const std::ptrdiff_t draw = std::countr_zero(drifts);
            const std::ptrdiff_t step = firstStep + draw;
            if (step >= stepsPerStroke) {
                break;
            }
            *places++ = static_cast<std::int32_t>(step) * turnsOfStep + batch.count;
            std::memcpy(draws, word + draw + 1, 2 * sizeof *draws);
            draws += 2;
            firstStep -= 2;
            taken = draw + drawsOfDrift;
            const Word lowest = drifts & (0 - drifts);
            drifts &= 0 - (lowest << drawsOfDrift);
        }
        firstStep += wordBits;
        if (firstStep >= stepsPerStroke) {
            break;
        }
        const std::ptrdiff_t takenOfNext = std::max<std::ptrdiff_t>(taken - wordBits, 0);
        drifts = next >> takenOfNext << takenOfNext;
        word += wordBits;
    }
    batch.stateAfter = word[wordBits - 1 - (firstStep - stepsPerStroke)];
    batch.turnCount = static_cast<int>(places - batch.turnPlaces);
}

void StrokeBatch::Add() {
    RandomGenerator random(Seed());
    startX[count] = random.Range(0, canvas.width);
    startY[count] = random.Range(0, canvas.height);
    ForThisProcessor<FindTurnsLoop>(*this, Seed());
    SetSeed(stateAfter);
    ++count;
}

// RandomSpread of the drift width for each draw. A quotient that is truncated towards zero has the
// same size for either sign.
void StrokeBatch::TurnsLoop(StrokeBatch& batch) {
    const int reach = batch.habit.driftWidth + 1;
    const std::int32_t width = std::abs(reach);
    const std::int32_t sign = reach < 0 ? -1 : 1;
    for (int start = 0; start < 2 * batch.turnCount; start += chunk) {
        for (int i = start; i < start + chunk; ++i) {
            const std::int32_t draw = batch.turnDraws[i] >> 16 & 0x7FFF;
            batch.turnDraws[i] = (By16383(width * draw) - width) * sign;
        }
    }
    for (int i = 0; i < batch.turnCount; ++i) {
        std::int32_t* const turn = batch.turns + batch.turnPlaces[i];
        turn[0] = batch.turnDraws[2 * i];
        turn[size] = batch.turnDraws[2 * i + 1];
    }
    batch.turnCount = 0;
}

// A step without a drift adds 0 to the direction, which leaves it as it is.
void StrokeBatch::WalkLoop(StrokeBatch& batch) {
    Doubles x;
    Doubles y;
    std::memcpy(&x, batch.startX, sizeof x);
    std::memcpy(&y, batch.startY, sizeof y);
    Doubles dx = Doubles{} + batch.habit.dx;
    Doubles dy = Doubles{} + batch.habit.dy;
    for (int step = 0; step < stepsPerStroke; ++step) {
        std::int32_t* const turns = batch.turns + step * turnsOfStep;
        Doubles turnX;
        Doubles turnY;
        Widen(turns, turnX);
        Widen(turns + size, turnY);
        std::memset(turns, 0, turnsOfStep * sizeof *turns);
        dx += turnX * 0.01;
        dy += turnY * 0.01;
        x += dx;
        y += dy;
        StoreTruncated(x, batch.columns[step]);
        StoreTruncated(y, batch.rows[step]);
    }
}

void StrokeBatch::PlacesLoop(StrokeBatch& batch) {
    const QuickWrap across(batch.canvas.width);
    const QuickWrap down(batch.canvas.height);
    const auto stripSize = static_cast<std::uint32_t>(batch.canvas.StripSize());
    constexpr std::uint32_t stripColumns = StrokeCanvas::stripColumns;
    std::int32_t* const columns = batch.columns[0];
    const std::int32_t* const rows = batch.rows[0];
    for (int i = 0; i < stepsPerStroke * size; ++i) {
        const std::uint32_t x = across.Place(columns[i]);
        const std::uint32_t y = down.Place(rows[i]);
        columns[i] = static_cast<std::int32_t>(x / stripColumns * stripSize + y * stripColumns +
                                               x % stripColumns);
    }
}

void StrokeBatch::Draw(int firstNumber) {
    ForThisProcessor<TurnsLoop>(*this);
    ForThisProcessor<WalkLoop>(*this);
    ForThisProcessor<PlacesLoop>(*this);
    for (int stroke = 0; stroke < count; ++stroke) {
        canvas.Mark(&columns[0][stroke], size, firstNumber + stroke);
    }
    count = 0;
}

bool StrokeCanvas::Fits(const PicClass& raster, int strokes) {
    const std::int64_t bytes = NumberBytes(raster.grX, raster.grY) +
                               static_cast<std::int64_t>(std::max(strokes, 0) + 1) * bytesPerPixel;
    return raster.grX <= QuickWrap::largestSize && raster.grY <= QuickWrap::largestSize &&
           bytes <= static_cast<std::int64_t>(raster.RowBytes()) * raster.grY;
}

std::int64_t StrokeCanvas::NumberBytes(short width, short height) {
    const int strips = (width + stripColumns - 1) / stripColumns;
    return static_cast<std::int64_t>(strips) * stripColumns * height * numberBytes;
}

StrokeCanvas::StrokeCanvas(const PicClass& raster, Pixel ground)
    : width(raster.grX),
      height(raster.grY),
      numbers(raster.Base()),
      colors(numbers + NumberBytes(width, height)) {
    std::memset(numbers, 0, static_cast<std::size_t>(colors - numbers));
    SetColor(0, ground);
}

void StrokeCanvas::Mark(const std::int32_t* places, int stride, int number) const {
    const auto stored = static_cast<Number>(number);
    unsigned char* const to = numbers;
    for (int step = 0; step < stepsPerStroke; ++step) {
        std::memcpy(to + places[step * stride] * numberBytes, &stored, sizeof stored);
    }
}

void StrokeCanvas::Paint(const PicClass& tile) const {
    // As many rows together as are in a line of the processor's caches.
    constexpr int rowsTogether = 4;
    for (int first = 0; first < height; first += rowsTogether) {
        const int end = std::min<int>(first + rowsTogether, height);
        for (int x = 0; x < width; x += stripColumns) {
            const int columns = std::min<int>(stripColumns, width - x);
            const unsigned char* from =
                numbers + (x / stripColumns * StripSize() + first * stripColumns) * numberBytes;
            unsigned char* to = tile.Base() + first * tile.RowBytes() + x * bytesPerPixel;
            for (int y = first; y < end; ++y) {
                if (columns == stripColumns) {
                    PaintPixels(to, from, colors, stripColumns);
                } else {
                    PaintPixels(to, from, colors, columns);
                }
                from += stripColumns * numberBytes;
                to += tile.RowBytes();
            }
        }
    }
}

void StrokeCanvas::PaintPixels(unsigned char* __restrict pixels, const unsigned char* numbers,
                               const unsigned char* colors, int count) {
    for (int i = 0; i < count; ++i) {
        Number number;
        std::memcpy(&number, numbers + i * numberBytes, sizeof number);
        StorePixel(pixels, i, (LoadPixel(pixels, i) & alphaMask) | LoadPixel(colors, number));
    }
}

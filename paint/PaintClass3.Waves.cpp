// The distortions: Waves.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/Progress.h"
#include "paint/Distortion.h"
#include "paint/PaintClass.h"
#include "paint/math/ExactMath.h"
#include "paint/math/Random.h"
#include "raster/Truncation.h"

namespace {

/// One of the two waves: how far pixels are moved along one axis, by their place on the other.
class Wave {
  public:
    /// A wave over `length` pixels that moves them on an axis of `reach` pixels.
    Wave(std::int16_t newForm, std::int16_t height, std::int16_t newCount, short length,
         short reach)
        : form(newForm),
          count(newCount),
          step(6.283185307179586 / length),
          period(static_cast<double>(length) / newCount),
          amplitude(reach * height * 0.00125),
          drawLimit(reach * height / 8) {}

    /// Whether each pixel draws a shift of its own.
    bool IsRandom() const { return form == waveRandom; }
    double DrawShift() const { return RandomRange(0, drawLimit) * 0.01; }

    /// A waveform outside the table moves nothing; a random one moves nothing here.
    double ShiftAt(short place) const {
        switch (form) {
            case waveSine:
                return ExactSin(place * count * step) * amplitude;
            case waveSawtooth:
                return -Sawtooth(PlaceInPeriod(place));
            case waveSquare:
                return PlaceInPeriod(place) >= period * 0.5 ? -amplitude : amplitude;
            default:
                return 0;
        }
    }

  private:
    /// By repeated subtraction, each rounded; a whole period is left standing. A period below 0,
    /// which only a damaged record has, is never taken off.
    double PlaceInPeriod(short place) const {
        double rest = place;
        while (rest > period && period > 0) {
            rest -= period;
        }
        return rest;
    }

    /// Rises from 0 to twice the amplitude and falls again. The falling part counts in whole
    /// pixels; a period below one pixel leaves no remainder.
    double Sawtooth(double rest) const {
        if (!(rest >= period * 0.5)) {
            return rest / period * amplitude * 4.0;
        }
        const short whole = TruncateToShort(period);
        const int remainder = whole != 0 ? TruncateToShort(period - rest) % whole : 0;
        return remainder / period * amplitude * 4.0;
    }

    std::int16_t form;
    std::int16_t count;
    double step;
    double period;
    double amplitude;
    std::int32_t drawLimit;
};

/// Where the pixels of each row come from.
class WavePlaces {
  public:
    WavePlaces(const WavesParams& params, short newWidth, short newHeight)
        : width(newWidth),
          height(newHeight),
          horizontal(params.formX, params.heightX, params.countX, height, width),
          vertical(params.formY, params.heightY, params.countY, width, height),
          table(width) {
        for (short x = 0; x < width && !Failed(); ++x) {
            table.SetShift(x, vertical.ShiftAt(x));
            largestShift = std::max(largestShift, std::fabs(table.Shift(x)));
        }
        for (short place = 0; place < height; ++place) {
            largestRowShift = std::max(largestRowShift, std::fabs(horizontal.ShiftAt(place)));
        }
    }

    /// True if there was no memory.
    bool Failed() const { return table.Failed(); }

    void BeginRow(short newY) {
        y = newY;
        rowShift = horizontal.ShiftAt(y);
    }

    /// Whether 16 bits hold all positions, and their neighbours.
    bool AreOrdinary() const {
        constexpr double limit = 32767.0;
        constexpr double largestDraw = 656.0;
        return largestRowShift + largestDraw + width < limit &&
               largestShift + largestDraw + height < limit;
    }

    /// The part from column `first` on. Draws for each pixel in turn, first across, then down.
    Positions Part(int first) {
        const int count = std::min(distortionChunk, width - first);
        Positions part = table.PartOfRow(rowShift, y, first, count);
        if (horizontal.IsRandom() || vertical.IsRandom()) {
            Draw(first, count);
        }
        if (horizontal.IsRandom()) {
            part.x = drawnX;
        }
        if (vertical.IsRandom()) {
            part.originY = 0;
            part.y = drawnY;
        }
        return part;
    }

  private:
    void Draw(int first, int count) {
        for (int i = 0; i < count; ++i) {
            if (horizontal.IsRandom()) {
                drawnX[i] = first + i + horizontal.DrawShift();
            }
            if (vertical.IsRandom()) {
                drawnY[i] = y + vertical.DrawShift();
            }
        }
    }

    short width;
    short height;
    Wave horizontal;
    Wave vertical;
    ColumnTable table;
    double largestShift = 0;
    double largestRowShift = 0;
    short y = 0;
    double rowShift = 0;
    double drawnX[distortionChunk];
    double drawnY[distortionChunk];
};

/// The alpha bytes stay.
void WriteColors(const unsigned char* __restrict colors, unsigned char* __restrict row, int count) {
    constexpr Pixel colorMask = 0x00FFFFFF;
    for (int i = 0; i < count; ++i) {
        Pixel color;
        Pixel old;
        std::memcpy(&color, colors + i * bytesPerPixel, sizeof color);
        std::memcpy(&old, row + i * bytesPerPixel, sizeof old);
        color = (color & colorMask) | (old & ~colorMask);
        std::memcpy(row + i * bytesPerPixel, &color, sizeof color);
    }
}

}  // namespace

void PaintClass::Waves(const WavesParams& params) {
    CursorClass cursor;
    if (!HasRoomForClone()) {
        return;
    }
    WavePlaces places(params, grX, grY);
    const WholeTile window(*this);
    const bool interpolates = params.interpolate == 1;
    const bool throughWindow = interpolates && !window.Failed() && places.AreOrdinary();
    if (places.Failed() || (!throughWindow && !KeepInClone(*this))) {
        DeleteClone();
        return;
    }
    for (short y = 0; y < grY; ++y) {
        cursor.Tick();
        places.BeginRow(y);
        for (int first = 0; first < grX; first += distortionChunk) {
            const Positions part = places.Part(first);
            unsigned char* const row = PixelAddress(static_cast<short>(first), y);
            unsigned char colors[distortionChunk * bytesPerPixel];
            if (throughWindow) {
                window.ReadWrapped(part, colors);
            } else if (interpolates) {
                ReadOneByOne(*clone, part, colors);
            } else {
                WriteNearest(*clone, part, row);
                continue;
            }
            WriteColors(colors, row, part.count);
        }
    }
    Unlock();
    DeleteClone();
    SetDirty();
}

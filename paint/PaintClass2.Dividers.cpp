// The generators: Dividers.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/math/Random.h"

namespace {

// The alpha bytes are the map of what lines occupy.
constexpr unsigned char freePlace = 0;
constexpr unsigned char occupied = 255;

/// A coordinate as a distance in bytes, which goes round at the tile's edge.
class WrappedOffset {
  public:
    /// `place` is wrapped to a side of `size` places, `newStep` bytes each.
    WrappedOffset(int place, short size, int newStep)
        : offset(Wrap(place, size) * newStep), step(newStep), end(size * newStep) {}

    int Bytes() const { return offset; }
    void Forward() {
        offset += step;
        offset = offset == end ? 0 : offset;
    }
    void Back() { offset = (offset == 0 ? end : offset) - step; }

  private:
    int offset;
    int step;
    int end;
};

/// The raster in coordinates along and across the lines of one direction, both wrapped.
class LineField {
  public:
    LineField(const PicClass& pic, bool isVertical)
        : length(isVertical ? pic.grY : pic.grX),
          breadth(isVertical ? pic.grX : pic.grY),
          base(pic.Base()),
          alongStep(isVertical ? pic.RowBytes() : bytesPerPixel),
          acrossStep(isVertical ? bytesPerPixel : pic.RowBytes()) {}

    WrappedOffset Along(int place) const { return {place, length, alongStep}; }
    WrappedOffset Across(int place) const { return {place, breadth, acrossStep}; }

    unsigned char* At(const WrappedOffset& along, const WrappedOffset& across) const {
        return base + along.Bytes() + across.Bytes();
    }
    bool IsFree(const WrappedOffset& along, const WrappedOffset& across) const {
        return At(along, across)[alphaByte] == freePlace;
    }

    /// The size of the tile along a line and across it.
    const short length;
    const short breadth;

  private:
    unsigned char* base;
    int alongStep;
    int acrossStep;
};

/// The start of a new line, and its drawing parameters.
struct NewLine {
    int along;
    int across;
    short width;
    /// With the alpha byte of what is occupied.
    Pixel color;
    bool antiAliased;
};

/// Whether the row across the line's start is free as far as the line and a gap on either side
/// reach. A reach beyond the tile's breadth wraps to the same places.
bool HasRoom(const LineField& field, const NewLine& line, short gap) {
    const int places = std::min<int>(2 * gap + line.width, field.breadth);
    const WrappedOffset along = field.Along(line.along);
    WrappedOffset across = field.Across(line.across - gap);
    for (int k = 0; k < places; ++k) {
        if (!field.IsFree(along, across)) {
            return false;
        }
        across.Forward();
    }
    return true;
}

/// The place after the nearest line before the start; the start itself if there is none.
int StartBehindLastLine(const LineField& field, const NewLine& line) {
    const WrappedOffset across = field.Across(line.across);
    WrappedOffset along = field.Along(line.along);
    for (int k = 1; k < field.length; ++k) {
        along.Back();
        if (!field.IsFree(along, across)) {
            return line.along - (k - 1);
        }
    }
    return line.along;
}

/// Mixes half the line's colour into the place beside it, which stays unoccupied.
void SoftenSide(unsigned char* place, Pixel color) {
    const Pixel pixel = LoadPixel(place, 0);
    // The alpha byte with itself.
    const Pixel other = (color & ~alphaMask) | (pixel & alphaMask);
    // Half of each sum, rounded down: the bits of both, and half of those of one.
    StorePixel(place, 0, (pixel & other) + ((pixel ^ other) >> 1 & 0x7F7F7F7F));
}

/// Draws until the line's first column meets another line, or its own start around the tile. Its
/// other columns run over what they meet.
void DrawLine(const LineField& field, const NewLine& line) {
    const int places = std::min(line.width, field.breadth);
    const WrappedOffset first = field.Across(line.across);
    const WrappedOffset before = field.Across(line.across - 1);
    const WrappedOffset behind = field.Across(line.across + line.width);
    WrappedOffset along = field.Along(line.along);
    for (int drawn = 0; drawn < field.length && field.IsFree(along, first); ++drawn) {
        WrappedOffset across = first;
        for (int k = 0; k < places; ++k) {
            StorePixel(field.At(along, across), 0, line.color);
            across.Forward();
        }
        if (line.antiAliased) {
            SoftenSide(field.At(along, before), line.color);
            SoftenSide(field.At(along, behind), line.color);
        }
        along.Forward();
    }
}

Pixel ColorOfLine(const DividersParams& params) {
    constexpr Pixel occupying = Pixel{occupied} << 24;
    if (params.randomColors == 0) {
        return WithColor(occupying, HighByte(params.foreground.red),
                         HighByte(params.foreground.green), HighByte(params.foreground.blue));
    }
    const int red = RandomRange(0, 255);
    const int green = RandomRange(0, 255);
    const int blue = RandomRange(0, 255);
    return WithColor(occupying, red, green, blue);
}

/// Tries one line at a random place. Returns its width, or 0 if there was no place for it.
short TryLine(const PicClass& pic, const DividersParams& params) {
    NewLine line{};
    line.color = ColorOfLine(params);
    line.antiAliased = params.antiAliased != 0;
    // The variation only ever widens a line.
    line.width = static_cast<short>(params.lineWidth +
                                    RandomRange(0, params.lineWidth * params.widthVariation / 50));
    const bool isVertical = RandomRange(0, 100) < params.direction;
    const auto x = static_cast<short>(RandomRange(0, pic.grX));
    const auto y = static_cast<short>(RandomRange(0, pic.grY));
    // Checked on purpose: a draw of just W or H fails the assertion.
    const bool startIsFree = pic.PixelAddress(x, y)[3] == freePlace;
    // A guard: a line without width would occupy nothing, and the tries would never end.
    if (!startIsFree || line.width < 1) {
        return 0;
    }
    const LineField field(pic, isVertical);
    line.along = isVertical ? y : x;
    line.across = isVertical ? x : y;
    if (!HasRoom(field, line, params.minimalGap)) {
        return 0;
    }
    line.along = StartBehindLastLine(field, line);
    DrawLine(field, line);
    return line.width;
}

}  // namespace

void PaintClass::Dividers(const DividersParams& params) {
    const CursorClass cursor;
    const int attempts = static_cast<short>((grY + grX) / 2 * params.lines / 100) * 2;
    int misses = 0;
    SetAllAlpha(freePlace);
    if (params.transparent == 0) {
        FillColor(params.background);
    }
    SeedRandom();
    // Each try takes at least one free pixel or counts as a miss, so this ends for any record.
    for (short i = 0; i < misses + attempts; ++i) {
        const short width = TryLine(*this, params);
        if (width > 0) {
            // Intended: a line's columns are counted in the counter of the tries. So drawn lines
            // hardly count, and it is the misses that end the run when the tile is full.
            i = width;
        } else {
            ++misses;
        }
        if (misses >= attempts / 4) {
            break;
        }
    }
    SetDirty();
    Unlock();
}

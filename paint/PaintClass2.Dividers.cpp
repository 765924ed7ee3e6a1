// The generators: Dividers.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/math/Random.h"

namespace {

// The alpha bytes are the map of what lines occupy.
constexpr unsigned char freePlace = 0;
constexpr unsigned char occupied = 255;

struct LineColor {
    unsigned char rgb[3];
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

    unsigned char* At(int along, int across) const {
        return base + Wrap(along, length) * alongStep + Wrap(across, breadth) * acrossStep;
    }
    bool IsFree(int along, int across) const { return At(along, across)[3] == freePlace; }

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
    LineColor color;
    bool antiAliased;
};

/// Whether the row across the line's start is free as far as the line and a gap on either side
/// reach. A reach beyond the tile's breadth wraps to the same places.
bool HasRoom(const LineField& field, const NewLine& line, short gap) {
    const int places = std::min<int>(2 * gap + line.width, field.breadth);
    for (int k = 0; k < places; ++k) {
        if (!field.IsFree(line.along, line.across + k - gap)) {
            return false;
        }
    }
    return true;
}

/// The place after the nearest line before the start; the start itself if there is none.
int StartBehindLastLine(const LineField& field, const NewLine& line) {
    for (int k = 1; k < field.length; ++k) {
        if (!field.IsFree(line.along - k, line.across)) {
            return line.along - (k - 1);
        }
    }
    return line.along;
}

/// Mixes half the line's colour into the place beside it, which stays unoccupied.
void SoftenSide(unsigned char* pixel, const LineColor& color) {
    for (int c = 0; c < 3; ++c) {
        pixel[c] = static_cast<unsigned char>((pixel[c] + color.rgb[c]) / 2);
    }
}

/// Draws until the line's first column meets another line, or its own start around the tile. Its
/// other columns run over what they meet.
void DrawLine(const LineField& field, const NewLine& line) {
    const int places = std::min(line.width, field.breadth);
    for (int along = line.along; along < line.along + field.length; ++along) {
        if (!field.IsFree(along, line.across)) {
            return;
        }
        for (int k = 0; k < places; ++k) {
            unsigned char* const pixel = field.At(along, line.across + k);
            std::memcpy(pixel, line.color.rgb, sizeof line.color.rgb);
            pixel[3] = occupied;
        }
        if (line.antiAliased) {
            SoftenSide(field.At(along, line.across - 1), line.color);
            SoftenSide(field.At(along, line.across + line.width), line.color);
        }
    }
}

LineColor ColorOfLine(const DividersParams& params) {
    if (params.randomColors == 0) {
        return {{HighByte(params.foreground.red), HighByte(params.foreground.green),
                 HighByte(params.foreground.blue)}};
    }
    LineColor color;
    for (unsigned char& component : color.rgb) {
        component = static_cast<unsigned char>(RandomRange(0, 255));
    }
    return color;
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
            // Meant: a line's columns are counted in the counter of the tries. So drawn lines
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

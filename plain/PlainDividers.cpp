#include "plain/PlainDividers.h"

#include "paint/math/Random.h"

namespace {

struct Colour {
    int channels[3];
};

short Short(int value) {
    return static_cast<short>(value);
}

bool IsFree(const PaintClass& pic, int x, int y) {
    return pic.GetAlphaWrapped(Short(x), Short(y)) == 0;
}

void Occupy(PaintClass& pic, int x, int y, const Colour& color) {
    unsigned char* const pixel = pic.PixelAddressWrapped(Short(x), Short(y));
    for (int c = 0; c < 3; ++c) {
        pixel[c] = static_cast<unsigned char>(color.channels[c]);
    }
    pixel[3] = 255;
}

void Average(PaintClass& pic, int x, int y, const Colour& color) {
    unsigned char* const pixel = pic.PixelAddressWrapped(Short(x), Short(y));
    for (int c = 0; c < 3; ++c) {
        pixel[c] = static_cast<unsigned char>((pixel[c] + color.channels[c]) / 2);
    }
}

/// False if there was no room.
bool PlainVertical(PaintClass& pic, int x, int y, int w, int gap, const Colour& color,
                   bool antiAliased) {
    for (int k = 0; k <= 2 * gap + w - 1; ++k) {
        if (!IsFree(pic, x + k - gap, y)) {
            return false;
        }
    }
    for (int k = 1; k <= pic.grY - 1; ++k) {
        if (!IsFree(pic, x, y - k)) {
            y = y - (k - 1);
            break;
        }
    }
    for (int r = y; r < pic.grY + y; ++r) {
        if (!IsFree(pic, x, r)) {
            break;
        }
        for (int i = 0; i < w; ++i) {
            Occupy(pic, x + i, r, color);
        }
        if (antiAliased) {
            Average(pic, x - 1, r, color);
            Average(pic, x + w, r, color);
        }
    }
    return true;
}

bool PlainHorizontal(PaintClass& pic, int x, int y, int w, int gap, const Colour& color,
                     bool antiAliased) {
    for (int k = 0; k <= 2 * gap + w - 1; ++k) {
        if (!IsFree(pic, x, y + k - gap)) {
            return false;
        }
    }
    for (int k = 1; k <= pic.grX - 1; ++k) {
        if (!IsFree(pic, x - k, y)) {
            x = x - (k - 1);
            break;
        }
    }
    for (int column = x; column < pic.grX + x; ++column) {
        if (!IsFree(pic, column, y)) {
            break;
        }
        for (int i = 0; i < w; ++i) {
            Occupy(pic, column, y + i, color);
        }
        if (antiAliased) {
            Average(pic, column, y - 1, color);
            Average(pic, column, y + w, color);
        }
    }
    return true;
}

}  // namespace

void PlainDividers(PaintClass& pic, const DividersParams& params) {
    const int attempts = static_cast<short>(((pic.grY + pic.grX) / 2) * params.lines / 100) * 2;
    int misses = 0;
    pic.SetAllAlpha(0);
    if (params.transparent == 0) {
        pic.FillColor(params.background);
    }
    SeedRandom();
    short i = 0;
    while (i < misses + attempts) {
        Colour color{{params.foreground.red >> 8, params.foreground.green >> 8,
                      params.foreground.blue >> 8}};
        if (params.randomColors != 0) {
            color.channels[0] = RandomRange(0, 255);
            color.channels[1] = RandomRange(0, 255);
            color.channels[2] = RandomRange(0, 255);
        }
        const short w =
            Short(params.lineWidth + RandomRange(0, params.lineWidth * params.widthVariation / 50));
        const bool vertical = RandomRange(0, 100) < params.direction;
        const short x = Short(RandomRange(0, pic.grX));
        const short y = Short(RandomRange(0, pic.grY));
        // A line without width counts as a miss.
        bool drawn = pic.PixelAddress(x, y)[3] == 0 && w > 0;
        if (drawn) {
            drawn = (vertical ? PlainVertical : PlainHorizontal)(pic, x, y, w, params.minimalGap,
                                                                 color, params.antiAliased != 0);
        }
        if (drawn) {
            i = w;
        } else {
            misses = misses + 1;
        }
        if (misses >= attempts / 4) {
            break;
        }
        i = Short(i + 1);
    }
    pic.SetDirty();
}

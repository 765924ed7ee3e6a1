#include "plain/PlainShapes.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "plain/PlainBlur.h"
#include "raster/Truncation.h"

namespace {

struct Placed {
    short cx;
    short cy;
    double hs;
    double vs;
};

short Short(int value) {
    return static_cast<short>(value);
}

unsigned char Byte(double value) {
    return static_cast<unsigned char>(TruncateToShort(value));
}

unsigned char PlainSquare(double x, double y, short cx, short cy, double hs, double vs,
                          double bevel) {
    const double xl = cx - hs;
    const double xr = cx + hs;
    const double yt = cy - vs;
    const double yb = cy + vs;
    if (!(xl < x && x < xr && yt < y && y < yb)) {
        return 255;
    }
    if (xl + bevel <= x && x < xr - bevel && yt + bevel <= y && y < yb - bevel) {
        return 0;
    }
    const bool left = x < xl + bevel;
    const bool right = !left && x >= xr - bevel;
    const bool top = y < yt + bevel;
    const bool bottom = !top && y >= yb - bevel;
    const double leftValue = (xl + bevel - x) * 255.0 / bevel;
    const double rightValue = (x - (xr - bevel)) / bevel * 255.0;
    const double topValue =
        left ? (yt + bevel - y) * 255.0 / bevel : (yt + bevel - y) / bevel * 255.0;
    const double bottomValue =
        left ? (y - (yb - bevel)) * 255.0 / bevel : (y - (yb - bevel)) / bevel * 255.0;
    double value = 0.0;
    if (left) {
        value = leftValue;
    }
    if (right) {
        value = rightValue;
    }
    if (top && !(value > topValue)) {
        value = topValue;
    }
    if (bottom && !(value > bottomValue)) {
        value = bottomValue;
    }
    return CosineProfile(Byte(value));
}

unsigned char PlainRound(bool ring, double x, double y, short cx, short cy, double hs, double vs,
                         double bevel) {
    const double q = vs / hs;
    const double dist = std::sqrt((cy - y) * (cy - y) + ((cx - x) * q) * ((cx - x) * q));
    if (std::isnan(dist) || dist >= vs) {
        return 255;
    }
    if (vs - dist <= bevel) {
        unsigned char t = Byte(255.0 - ((vs - dist) / bevel) * 255.0);
        if (ring) {
            if (t < 128) {
                t = static_cast<unsigned char>(255 - t);
            }
            t = static_cast<unsigned char>(t * 2);
        }
        return CosineProfile(t);
    }
    return ring ? 255 : 0;
}

enum class Pass { whole, closing };

void PlainPress(PaintClass& pic, const ShapesParams& params, const Placed& shape, double margin,
                double bevel, Pass pass) {
    const auto [cx, cy, hs, vs] = shape;
    const double turn = params.angle + 90.0;
    for (int px = TruncateToShort(cx - hs - margin); px < cx + hs + margin; ++px) {
        for (int py = TruncateToShort(cy - vs - margin); py < cy + vs + margin; ++py) {
            const unsigned char v =
                PlainShapeHeight(params.kind, cx, cy, Short(px), Short(py), turn, hs, vs, bevel);
            if (v == 255) {
                continue;
            }
            const unsigned char a = pic.GetAlphaWrapped(Short(px), Short(py));
            const auto write = [&](int value) {
                pic.SetAlphaWrapped(Short(px), Short(py), static_cast<unsigned char>(value));
            };
            if (pass == Pass::closing) {
                if ((px < 0 || py < 0) && a == 255) {
                    write(v);
                }
            } else if (params.stacking != 44) {
                write(a == 255 ? v : a / 2 + v / 2);
            } else if (px < pic.grX && py < pic.grY) {
                if (px >= 0 && py >= 0 && a == 255) {
                    write(v);
                }
            } else {
                write(v);
            }
        }
    }
}

void PlainGrain(PaintClass& pic, short material) {
    const double s = (pic.grY + pic.grX) * 0.5 * 0.00390625;
    const auto loops = static_cast<std::int32_t>(pic.grX * pic.grY / (s > 1.0 ? s : 1.0));
    const int amount = material * 25 / 100;
    SeedRandom();
    if (!(s < 1.5)) {
        return;
    }
    for (std::int32_t i = 0; i < loops; ++i) {
        const short y = Short(RandomRange(0, pic.grY - 1));
        const short x = Short(RandomRange(0, pic.grX - 1));
        int a = pic.GetAlpha(x, y);
        if (a < 254) {
            const short r = RandomSpread(3);
            if (r < 0) {
                a = a + amount > 255 ? 255 : a + amount;
            } else {
                a = a - amount < 0 ? 0 : a - amount;
            }
            pic.SetAlpha(x, y, static_cast<unsigned char>(a));
        }
    }
}

void PlainRender(PaintClass& pic, const ShapesParams& params, double bevel) {
    const double through = params.transparency * 0.01;
    const double opaque = 1.0 - through;
    const short T = ReliefThreshold(bevel);
    const int high[3] = {params.color.red >> 8, params.color.green >> 8, params.color.blue >> 8};
    for (short x = 0; x < pic.grX; ++x) {
        for (short y = 0; y < pic.grY; ++y) {
            const int a = pic.GetAlpha(x, y);
            const int b = pic.GetAlphaWrapped(Short(x + 1), Short(y + 1));
            const double d = (params.contrast + 5.0) * (a - b) * bevel * 0.00392156862745098 *
                             0.6666666666666666;
            unsigned char* const pixel = pic.PixelAddress(x, y);
            for (int i = 0; i < 3; ++i) {
                const int c = std::clamp<int>(TruncateToShort(high[i] + d), 0, 255);
                const int old = pixel[i];
                if (a < T) {
                    pixel[i] = Byte(old * through + c * opaque);
                } else if (a != 255) {
                    const double f = (255.0 - a) / (255 - T);
                    const double m = opaque * f;
                    pixel[i] = Byte(old * (1.0 - m) + c * m);
                }
            }
        }
    }
}

/// Counts, sizes and displacements outside the dialog's ranges become the nearest value in them.
ShapesParams Limited(ShapesParams params) {
    for (double* const size : {&params.sizeX, &params.sizeY}) {
        if (std::isnan(*size) || *size < 0.0) {
            *size = 0.0;
        } else if (*size > 1.0) {
            *size = 1.0;
        }
    }
    for (std::int16_t* const repeat : {&params.repeatX, &params.repeatY}) {
        *repeat = std::clamp<std::int16_t>(*repeat, 1, 32);
    }
    for (std::int16_t* const shift : {&params.shiftX, &params.shiftY, &params.shiftSize}) {
        *shift = std::clamp<std::int16_t>(*shift, 0, 100);
    }
    return params;
}

}  // namespace

unsigned char PlainShapeHeight(std::int32_t kind, short cx, short cy, short px, short py,
                               double angle, double hs, double vs, double bevel) {
    const double dist = std::sqrt(static_cast<double>(cx - px) * (cx - px) +
                                  static_cast<double>(cy - py) * (cy - py));
    if (dist == 0.0) {
        return 255;
    }
    double phi = ExactAcos((cx - px) / dist);
    if (cy < py) {
        phi = -phi;
    }
    const double t = DegreesToRadians(TruncateToShort(angle)) + phi;
    const double x = cx - ExactCos(t) * dist;
    const double y = cy - ExactSin(t) * dist;
    switch (kind) {
        case 1:
            return PlainSquare(x, y, cx, cy, hs, vs, bevel);
        case 2:
        case 3:
            return PlainRound(kind == 3, x, y, cx, cy, hs, vs, bevel);
        default:
            return 255;
    }
}

bool PlainShapes(PaintClass& pic, const ShapesParams& record) {
    const ShapesParams params = Limited(record);
    const int nx = params.repeatX;
    const int ny = params.repeatY;
    const double W = pic.grX;
    const double H = pic.grY;
    const double cellW = W / nx;
    const double cellH = H / ny;
    SeedRandom();
    std::vector<Placed> shapes(static_cast<std::size_t>(nx * ny));
    const auto at = [&](int i, int j) -> Placed& {
        return shapes[static_cast<std::size_t>(nx * j + i)];
    };
    for (int i = 0; i < nx; ++i) {
        for (int j = 0; j < ny; ++j) {
            Placed& s = at(i, j);
            s.cx = TruncateToShort(i * cellW + cellW * 0.5);
            s.cy = TruncateToShort(j * cellH + cellH * 0.5);
            short r = RandomSpread(params.shiftX);
            s.cx = TruncateToShort(s.cx + params.sizeX * 0.5 * cellW * r * 0.02);
            r = RandomSpread(params.shiftY);
            s.cy = TruncateToShort(s.cy + params.sizeY * 0.5 * cellH * r * 0.02);
            r = RandomSpread(params.shiftSize);
            s.hs = params.sizeX * 0.5 * cellW * (r * 0.01 + 1.0);
            r = RandomSpread(params.shiftSize);
            s.vs = params.sizeY * 0.5 * cellH * (r * 0.01 + 1.0);
            if (params.halfShift != 0 && (j & 1) == 0) {
                s.cx = TruncateToShort(s.cx + (W / nx) * 0.5);
            }
        }
    }
    const double hw = params.sizeX * 0.5 * cellW;
    const double hh = params.sizeY * 0.5 * cellH;
    const double margin = 1.41421356 * std::max(hw, hh);
    const double bevel = params.bevel * 0.01 * std::min(hw, hh);
    pic.SetAllAlpha(255);
    for (int i = 0; i < nx; ++i) {
        for (int j = 0; j < ny; ++j) {
            if (params.kind != 3) {
                pic.SetAlphaWrapped(at(i, j).cx, at(i, j).cy, 0);
            }
            PlainPress(pic, params, at(i, j), margin, bevel, Pass::whole);
        }
    }
    if (params.stacking == 44) {
        for (int i = 0; i < nx; ++i) {
            PlainPress(pic, params, at(i, 0), margin, bevel, Pass::closing);
        }
        for (int j = 0; j < ny; ++j) {
            PlainPress(pic, params, at(0, j), margin, bevel, Pass::closing);
        }
    }
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetAlpha(x, y, Byte(pic.GetAlpha(x, y) * 0.9 + 25.5));
        }
    }
    if (!PlainBlur(pic, (pic.grY + pic.grX) * 0.5 * 0.0078125, 2)) {
        return false;
    }
    PlainGrain(pic, params.material);
    PlainRender(pic, params, bevel);
    pic.SetDirty();
    return true;
}

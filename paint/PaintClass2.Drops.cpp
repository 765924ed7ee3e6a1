// The generators: Drops.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/math/EffectMath.h"
#include "paint/math/Random.h"
#include "raster/HandleArray.h"
#include "raster/Truncation.h"

namespace {

constexpr unsigned char flatGround = 255;

/// A guard: a divisor of 0, which only damaged records give, counts as 1.
int Divisor(int value) {
    return value != 0 ? value : 1;
}

/// A guard: more than the dialog gives, which only a damaged record has, counts as its highest.
int KeptCount(const DropsParams& params) {
    return std::min<int>(params.count, static_cast<int>(FieldFor(&DropsParams::count).high));
}

/// The record's sizes in pixels, in integer arithmetic.
struct DropSizes {
    DropSizes(const PicClass& pic, const DropsParams& params)
        : average((pic.grX + pic.grY) / 2),
          count(static_cast<short>(KeptCount(params) / 2 + 15)),
          largest(average / Divisor(16 - params.size / 10)),
          smallest(average / Divisor(params.variation / 4 + 16 - params.size / 10)),
          rim(average / 40) {}

    int average;
    short count;
    int largest;
    int smallest;
    /// The width of the rounded rim.
    int rim;
};

/// The height in the rim, `depth` pixels inside the edge: 1 to `rim`.
unsigned char RimHeight(int depth, int rim) {
    const double fall = static_cast<double>(depth) / rim * 255.0;
    return CosineProfile(static_cast<unsigned char>(TruncateToShort(255.0 - fall)));
}

/// Takes the minimum of each of the pixels' four bytes.
void KeepLowerBytes(const unsigned char* __restrict stamp, unsigned char* __restrict pixels,
                    int count) {
    for (int i = 0; i < count * bytesPerPixel; ++i) {
        pixels[i] = std::min(pixels[i], stamp[i]);
    }
}

/// Presses drops into the height field: the higher one wins where they overlap.
///
/// Where a drop overlaps its own wrapped copy, the copy nearest the centre wins: it is the highest.
/// So a pass never writes more than the tile.
class DropStamp {
  public:
    DropStamp(PicClass& newPic, int newRim)
        : pic(newPic),
          rim(newRim),
          row(static_cast<std::size_t>(pic.grX)),
          rimHeights(static_cast<std::size_t>(rim) + 1) {
        for (int depth = 1; depth <= rim && !Failed(); ++depth) {
            rimHeights.Values()[depth] = RimHeight(depth, rim);
        }
    }

    /// True if there was no memory.
    bool Failed() const { return row.Failed() || rimHeights.Failed(); }

    /// A radius below 1 is no drop.
    void Press(short cx, short cy, short radius) {
        const int above = std::min(radius - 1, pic.grY / 2);
        const int below = std::min(radius - 1, (pic.grY - 1) / 2);
        for (int dy = 0; dy <= above; ++dy) {
            const Part part = FillRow(dy, radius);
            PressRow(part, cx, cy - dy);
            if (dy > 0 && dy <= below) {
                PressRow(part, cx, cy + dy);
            }
        }
    }

  private:
    /// The pixels of a row within a drop, counted to the left and right of its centre.
    struct Part {
        int left;
        int right;
    };

    /// Fills `row` for the given distance of rows, with colours of 255, which never win the
    /// minimum.
    Part FillRow(int dy, int radius) {
        const int middle = std::min(radius - 1, pic.grX / 2);
        int distance = dy;
        int dx = 0;
        for (; dx <= middle && dx * dx + dy * dy < radius * radius; ++dx) {
            // The truncated square root, which grows by one at most.
            while ((distance + 1) * (distance + 1) <= dx * dx + dy * dy) {
                ++distance;
            }
            const int depth = radius - distance;
            const unsigned char height = depth > rim ? 0 : rimHeights.Values()[depth];
            const Pixel pixel = static_cast<Pixel>(height) << 24 | 0xFFFFFF;
            row.Values()[middle - dx] = pixel;
            if (middle + dx < pic.grX) {
                row.Values()[middle + dx] = pixel;
            }
        }
        start = row.Values() + middle - (dx - 1);
        return {dx - 1, std::min(dx - 1, (pic.grX - 1) / 2)};
    }

    void PressRow(const Part& part, int cx, int y) {
        unsigned char* const pixels = pic.PixelAddress(0, Wrap(y, pic.grY));
        const short first = Wrap(cx - part.left, pic.grX);
        const int count = part.left + part.right + 1;
        const int run = std::min(count, pic.grX - first);
        KeepLowerBytes(Bytes(start), pixels + first * bytesPerPixel, run);
        KeepLowerBytes(Bytes(start + run), pixels, count - run);
    }

    static const unsigned char* Bytes(const Pixel* pixels) {
        return static_cast<const unsigned char*>(static_cast<const void*>(pixels));
    }

    PicClass& pic;
    int rim;
    HandleArray<Pixel> row;
    /// The first pixel of the filled part.
    const Pixel* start = nullptr;
    /// By the depth inside the edge, from 1 on.
    HandleArray<unsigned char> rimHeights;
};

/// The light on a slope, which is the difference of two alpha bytes.
class DropLight {
  public:
    DropLight(const DropsParams& params, int rim) {
        const int light = params.reflection + 20;
        for (int slope = -255; slope <= 255; ++slope) {
            double shade = (light + 5.0) * rim * slope * 0.00392156862745098 * 0.6666666666666666;
            if (params.emphasizeLight != 0 && shade < 0) {
                shade *= 0.5;
            }
            shades[slope + 255] = shade + Tone(params.coveredTone);
        }
    }

    unsigned char Lit(unsigned char channel, int slope) const {
        const short lit = TruncateToShort(channel + shades[slope + 255]);
        return static_cast<unsigned char>(std::clamp<short>(lit, 0, 255));
    }

  private:
    static double Tone(std::int16_t coveredTone) {
        switch (coveredTone) {
            case coveredLighter:
                return 10.0;
            case coveredDarker:
                return -10.0;
            default:
                return 0.0;
        }
    }

    double shades[511];
};

/// How much of the light a pixel of the rim takes, by its alpha byte; the body takes all, and flat
/// ground none.
class DropFading {
  public:
    explicit DropFading(short newThreshold) : threshold(newThreshold) {
        for (int alpha = threshold; alpha < flatGround; ++alpha) {
            shares[alpha] = (255.0 - alpha) / (255 - threshold);
        }
    }

    unsigned char Faded(unsigned char old, unsigned char lit, unsigned char alpha) const {
        if (alpha < threshold) {
            return lit;
        }
        const double share = shares[alpha];
        return static_cast<unsigned char>(TruncateToShort(lit * share + old * (1.0 - share)));
    }

  private:
    short threshold;
    double shares[256];
};

/// Lights the drops from the upper left, on the colours that are there. The light's slope at a
/// pixel leads to the next one below and to the right.
void RenderDrops(const PicClass& pic, const DropLight& light, const DropFading& fading) {
    for (short y = 0; y < pic.grY; ++y) {
        unsigned char* pixel = pic.PixelAddress(0, y);
        const unsigned char* const below = pic.PixelAddressWrapped(0, static_cast<short>(y + 1));
        for (short x = 0; x < pic.grX; ++x, pixel += bytesPerPixel) {
            const unsigned char alpha = pixel[3];
            if (alpha == flatGround) {
                continue;
            }
            const int next = x + 1 < pic.grX ? x + 1 : 0;
            const int slope = alpha - below[next * bytesPerPixel + 3];
            for (int c = 0; c < 3; ++c) {
                pixel[c] = fading.Faded(pixel[c], light.Lit(pixel[c], slope), alpha);
            }
        }
    }
}

/// The radius of the blur under the drops; 0, for none, also for codes that no dialog makes.
double CoveredRadius(std::int16_t coveredBlur, int average) {
    switch (coveredBlur) {
        case coveredBlurNone + 1:
            return average * 0.00390625;
        case coveredBlurNone + 2:
            return average * 0.0078125;
        case coveredBlurMost:
            return average * 0.015625;
        default:
            return 0.0;
    }
}

}  // namespace

bool PaintClass::Drops(const DropsParams& params) {
    const DropSizes sizes(*this, params);
    const short blurSteps = params.coveredBlur != coveredBlurNone ? grY : 0;
    ShowClass progress(static_cast<short>(sizes.count * 2 + grY + blurSteps));
    DropStamp stamp(*this, sizes.rim);
    if (stamp.Failed()) {
        return false;
    }
    SeedRandom();
    SetAllAlpha(flatGround);
    for (short i = 0; i < sizes.count; ++i) {
        progress.Report(static_cast<short>(i * 2));
        const auto cx = static_cast<short>(RandomRange(0, grX));
        const auto cy = static_cast<short>(RandomRange(0, grY));
        stamp.Press(cx, cy, static_cast<short>(RandomRange(sizes.smallest, sizes.largest)));
    }
    bool abortFlag = false;
    auto offset = static_cast<short>(sizes.count * 2);
    if (!Blur(sizes.average * 0.0078125, 2, &progress, offset, &abortFlag)) {
        return false;
    }
    const double coveredRadius = CoveredRadius(params.coveredBlur, sizes.average);
    offset = static_cast<short>(offset + grY);
    if (coveredRadius > 0.0 && !Blur(coveredRadius, 3, &progress, offset, &abortFlag)) {
        return false;
    }
    RenderDrops(*this, DropLight(params, sizes.rim), DropFading(ReliefThreshold(sizes.rim)));
    Unlock();
    SetDirty();
    return true;
}

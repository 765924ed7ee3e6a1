// The paint tools: the gradient.
#include <algorithm>

#include "paint/PaintClass.h"
#include "paint/PaintColors.h"
#include "paint/kernels/PixelBytes.h"
#include "raster/Truncation.h"

using hostapi::Point;

namespace {

/// The colours along a gradient, the foreground at the end where the drag began.
class Ramp {
  public:
    Ramp(const PaintClass& pic, int from, int to)
        : first(std::min(from, to)),
          last(std::max(from, to)),
          start(to < from ? BackgroundOf(pic) : ForegroundOf(pic)),
          end(to < from ? ForegroundOf(pic) : BackgroundOf(pic)) {}

    /// The first place that still shows on a tile of this size: a ramp that is longer than the tile
    /// goes around and paints over itself.
    int FirstShown(int size) const { return std::max(first, last - size); }
    /// Not painted itself.
    int Last() const { return last; }

    Pixel At(int place) const {
        const double share = static_cast<double>(place - first) / (last - first);
        return RasterColor({Mix(start.red, end.red, share), Mix(start.green, end.green, share),
                            Mix(start.blue, end.blue, share)});
    }

  private:
    static std::uint16_t Mix(std::uint16_t a, std::uint16_t b, double share) {
        return static_cast<std::uint16_t>(TruncateToShort(a + (b - a) * share));
    }

    int first;
    int last;
    RGBColor16 start;
    RGBColor16 end;
};

/// The alpha byte stays.
void StoreColor(unsigned char* row, int x, Pixel color) {
    StorePixel(row, x, (color & ~alphaMask) | (LoadPixel(row, x) & alphaMask));
}

void PaintRows(PaintClass& pic, const Ramp& ramp) {
    for (int place = ramp.FirstShown(pic.grY); place < ramp.Last(); ++place) {
        unsigned char* const row = pic.PixelAddress(0, Wrap(place, pic.grY));
        const Pixel color = ramp.At(place);
        for (int x = 0; x < pic.grX; ++x) {
            StoreColor(row, x, color);
        }
    }
}

/// The first row shows the colours; the others take them from there, a stretch at a time.
void PaintColumns(PaintClass& pic, const Ramp& ramp) {
    int place = ramp.FirstShown(pic.grX);
    while (place < ramp.Last()) {
        const short left = Wrap(place, pic.grX);
        const int count = std::min(ramp.Last() - place, pic.grX - left);
        unsigned char* const first = pic.PixelAddress(left, 0);
        for (int i = 0; i < count; ++i) {
            StoreColor(first, i, ramp.At(place + i));
        }
        for (short y = 1; y < pic.grY; ++y) {
            unsigned char* const row = pic.PixelAddress(left, y);
            for (int i = 0; i < count; ++i) {
                StoreColor(row, i, LoadPixel(first, i));
            }
        }
        place += count;
    }
}

}  // namespace

void PaintClass::Gradient(Point from, Point to) {
    AssertLocked(lockedAtPixelAddressWrapped);
    if (from.h == to.h) {
        PaintRows(*this, Ramp(*this, from.v, to.v));
    } else {
        Assert(from.v == to.v, "PaintClass6 / Zeile 579 !(false)");
        PaintColumns(*this, Ramp(*this, from.h, to.h));
    }
    Unlock();
    SetDirty();
}

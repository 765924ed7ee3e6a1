// The distortions: Twirls.
#include <algorithm>
#include <cmath>

#include "base/Progress.h"
#include "paint/Distortion.h"
#include "paint/PaintClass.h"
#include "paint/math/EffectMath.h"
#include "paint/math/ExactMath.h"
#include "paint/math/Random.h"
#include "raster/HandleArray.h"
#include "raster/Truncation.h"

namespace {

/// Where the pixels of a twirl come from, as offsets from its centre: the same for all twirls of a
/// run. The pixels within the radius are kept by rows from dy = 1 - radius to radius - 1, which
/// hold the columns dx = -HalfWidth(dy) to HalfWidth(dy).
class TwirlTable {
  public:
    /// `newRadius` is 0 or more, `newQuotient` what turns a distance from the rim into a twist.
    TwirlTable(short newRadius, double newQuotient)
        : radius(newRadius),
          quotient(newQuotient),
          rowSize(2 * static_cast<std::size_t>(std::max(1, 2 * radius - 1))),
          keepsAll(radius <= largestKept),
          block(keepsAll ? rowSize * rowSize / 2 : rowSize) {
        for (int dy = 1 - radius; dy < radius && keepsAll && !Failed(); ++dy) {
            ComputeRow(dy);
        }
    }

    /// True if there was no memory.
    bool Failed() const { return block.Failed(); }

    int HalfWidth(int dy) const {
        return static_cast<int>(std::sqrt(static_cast<double>(radius * radius - dy * dy - 1)));
    }

    /// The sources of row dy of a twirl around (cx, cy).
    Positions Row(int dy, int cx, int cy) {
        if (!keepsAll) {
            ComputeRow(dy);
        }
        const double* const x = RowStart(dy);
        return {static_cast<double>(cx), static_cast<double>(cy), x, x + rowSize / 2,
                2 * HalfWidth(dy) + 1};
    }

  private:
    /// The largest radius whose whole table is kept: half the side of a tile of 724 by 724 pixels.
    /// Its table takes 8 MB. A larger radius computes each row when it is needed.
    static constexpr int largestKept = 362;

    double* RowStart(int dy) {
        const int row = keepsAll ? dy + radius - 1 : 0;
        return block.Values() + static_cast<std::size_t>(row) * rowSize;
    }

    void ComputeRow(int dy) {
        const int halfWidth = HalfWidth(dy);
        double* x = RowStart(dy);
        double* y = x + rowSize / 2;
        for (int dx = -halfWidth; dx <= halfWidth; ++dx) {
            Rotate(dx, dy, x++, y++);
        }
    }

    void Rotate(int dx, int dy, double* x, double* y) const {
        if (dx == 0 && dy == 0) {
            // The centre has no angle; the twirl puts it back unchanged.
            *x = 0;
            *y = 0;
            return;
        }
        const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
        const double t = (radius - distance) / quotient;
        const short twist = TruncateToShort(t * t * t * t);
        const SinCos turned = ExactSinCos(DegreesToRadians(twist) + AngleOf(dx, dy, distance));
        *x = turned.cos * distance;
        *y = turned.sin * distance;
    }

    static double AngleOf(int dx, int dy, double distance) {
        if (dx >= 0) {
            return ExactAsin(dy / distance);
        }
        const double angle = ExactAcos(dx / distance);
        return dy >= 0 ? angle : 6.283185307179586 - angle;
    }

    int radius;
    double quotient;
    /// Doubles a row: first across, then down.
    std::size_t rowSize;
    bool keepsAll;
    HandleArray<double> block;
};

/// A guard: more than the dialog gives, which only a damaged record has, counts as its highest.
/// Without a bound the work would have none.
int Kept(std::int16_t value, const Field& field) {
    return std::min<int>(value, static_cast<int>(field.high));
}

short TwirlCount(const TwirlsParams& params, short width, short height) {
    const int quantity = Kept(params.quantity, FieldFor(&TwirlsParams::quantity));
    return static_cast<short>(height * width / ((100 - quantity) * 15 + 500));
}

short TwirlRadius(const TwirlsParams& params, short width, short height) {
    const int size = Kept(params.size, FieldFor(&TwirlsParams::size));
    return TruncateToShort((height + width) / 2 / ((100 - size) * 0.03 + 2.0));
}

/// Writes the rows of one twirl around (cx, cy) from what was copied before. Where a large twirl
/// overlaps itself around the torus the last write stands; it overlaps in one direction only, so
/// going by rows leaves the same as going by columns.
template <typename Read>
void WriteTwirl(PicClass& pic, TwirlTable& table, int radius, int cx, int cy, Read read) {
    for (int dy = 1 - radius; dy < radius; ++dy) {
        Positions rest = table.Row(dy, cx, cy);
        const short y = Wrap(cy + dy, pic.grY);
        short x = Wrap(cx - table.HalfWidth(dy), pic.grX);
        while (rest.count > 0) {
            Positions part = rest;
            part.count = std::min(rest.count, pic.grX - x);
            read(part, pic.PixelAddress(x, y));
            rest.x += part.count;
            rest.y += part.count;
            rest.count -= part.count;
            x = 0;
        }
    }
}

}  // namespace

bool PaintClass::Twirls(const TwirlsParams& params) {
    if (GetClone() == nullptr) {
        return false;
    }
    SeedRandom();
    const short count = TwirlCount(params, grX, grY);
    const short radius = TwirlRadius(params, grX, grY);
    TwirlTable table(radius, radius / (params.intensity * 0.01 + 3.5));
    if (table.Failed()) {
        DeleteClone();
        return false;
    }
    ShowClass progress(count);
    TileWindow window(2 * radius + 1, 2 * radius + 1);
    for (short i = 0; i < count; ++i) {
        progress.Report(i);
        const auto cx = static_cast<short>(RandomRange(0, grX));
        const auto cy = static_cast<short>(RandomRange(0, grY));
        const Pixel centre = GetPixelWrapped(cx, cy);
        if (!window.Failed()) {
            // All that this twirl reads.
            window.Copy(*this, cx - radius, cy - radius);
            WriteTwirl(*this, table, radius, cx, cy,
                       [&](const Positions& part, unsigned char* out) { window.Read(part, out); });
        } else {
            CopyToClone();
            WriteTwirl(*this, table, radius, cx, cy,
                       [&](const Positions& part, unsigned char* out) {
                           ReadOneByOne(*clone, part, out);
                       });
        }
        SetPixelWrapped(cx, cy, centre);
    }
    Unlock();
    DeleteClone();
    SetDirty();
    return true;
}

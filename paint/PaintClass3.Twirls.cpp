// The distortions: Twirls.
#include <algorithm>
#include <cstring>

#include "base/Progress.h"
#include "paint/Distortion.h"
#include "paint/PaintClass.h"
#include "paint/kernels/TwirlDisc.h"
#include "paint/kernels/TwirlTorus.h"
#include "paint/math/Random.h"
#include "raster/HandleArray.h"
#include "raster/Truncation.h"

namespace {

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

/// Writes a row of a twirl from column `left` on, around the torus.
void WriteRow(PicClass& pic, int left, int y, const Pixel* row, int count) {
    short x = Wrap(left, pic.grX);
    while (count > 0) {
        const int part = std::min(count, pic.grX - x);
        std::memcpy(pic.PixelAddress(x, Wrap(y, pic.grY)), row,
                    static_cast<std::size_t>(part) * bytesPerPixel);
        row += part;
        count -= part;
        x = 0;
    }
}

/// Writes the rows of one twirl around (cx, cy), which `read(dy)` returns; the centre stays. Where
/// a large twirl overlaps itself around the torus the last write stands; it overlaps in one
/// direction only, so going by rows leaves the same as going by columns.
template <typename Read>
void WriteTwirl(PicClass& pic, const TwirlDisc& disc, short cx, short cy, Read read) {
    const Pixel centre = pic.GetPixelWrapped(cx, cy);
    for (int dy = 1 - disc.Radius(); dy < disc.Radius(); ++dy) {
        const int halfWidth = disc.HalfWidth(dy);
        WriteRow(pic, cx - halfWidth, cy + dy, read(dy), 2 * halfWidth + 1);
    }
    pic.SetPixelWrapped(cx, cy, centre);
}

/// Calls `twirl(cx, cy)` for the centre of each twirl.
template <typename Twirl>
void ForEachTwirl(const PicClass& pic, short count, Twirl twirl) {
    ShowClass progress(count);
    for (short i = 0; i < count; ++i) {
        progress.Report(i);
        const auto cx = static_cast<short>(RandomRange(0, pic.grX));
        const auto cy = static_cast<short>(RandomRange(0, pic.grY));
        twirl(cx, cy);
    }
}

// The ways to make twirls, the quickest first. Each returns false where it cannot be gone.

/// Most pixels by estimates, on a copy of the tile.
bool TwirlOnTorus(PicClass& pic, const TwirlDisc& disc, short count) {
    if (!disc.CanWrite() || !TwirlTorus::Fits(pic, disc.Radius())) {
        return false;
    }
    TwirlTorus torus(pic);
    if (torus.Failed()) {
        return false;
    }
    ForEachTwirl(pic, count, [&](short cx, short cy) { torus.Twirl(disc, cx, cy); });
    torus.CopyTo(pic);
    return true;
}

/// The same from a square to another, which have room for a disc that overlaps itself.
bool TwirlOnSquares(PicClass& pic, const TwirlDisc& disc, short count) {
    if (!disc.CanWrite()) {
        return false;
    }
    const int radius = disc.Radius();
    const int side = 2 * radius + 1;
    TileWindow from(side, side);
    TileWindow to(side, side);
    if (from.Failed() || to.Failed()) {
        return false;
    }
    ForEachTwirl(pic, count, [&](short cx, short cy) {
        from.Copy(pic, cx - radius, cy - radius);
        disc.Write({from.Row(0), to.Row(0), side, side, side, 0, 0, radius, cx, cy});
        WriteTwirl(pic, disc, cx, cy,
                   [&](int dy) { return to.Row(dy + radius) + radius - disc.HalfWidth(dy); });
    });
    return true;
}

/// All pixels in doubles. `row` has room for one of the disc's.
bool TwirlByRows(PicClass& pic, TwirlDisc& disc, short count, Pixel* row) {
    const int radius = disc.Radius();
    const int side = 2 * radius + 1;
    TileWindow window(side, side);
    if (window.Failed()) {
        return false;
    }
    ForEachTwirl(pic, count, [&](short cx, short cy) {
        window.Copy(pic, cx - radius, cy - radius);
        WriteTwirl(pic, disc, cx, cy, [&](int dy) {
            window.Read(disc.Row(dy, cx, cy), reinterpret_cast<unsigned char*>(row));
            return row;
        });
    });
    return true;
}

/// The same without memory for a window.
void TwirlOneByOne(PaintClass& pic, TwirlDisc& disc, short count, Pixel* row) {
    ForEachTwirl(pic, count, [&](short cx, short cy) {
        pic.CopyToClone();
        WriteTwirl(pic, disc, cx, cy, [&](int dy) {
            ReadOneByOne(*pic.clone, disc.Row(dy, cx, cy), reinterpret_cast<unsigned char*>(row));
            return row;
        });
    });
}

}  // namespace

bool PaintClass::Twirls(const TwirlsParams& params) {
    if (GetClone() == nullptr) {
        return false;
    }
    SeedRandom();
    const short count = TwirlCount(params, grX, grY);
    const short radius = TwirlRadius(params, grX, grY);
    TwirlDisc disc(radius, radius / (params.intensity * 0.01 + 3.5));
    const HandleArray<Pixel> row(static_cast<std::size_t>(2 * std::max<int>(radius, 0) + 1));
    if (disc.Failed() || row.Failed()) {
        DeleteClone();
        return false;
    }
    if (!TwirlOnTorus(*this, disc, count) && !TwirlOnSquares(*this, disc, count) &&
        !TwirlByRows(*this, disc, count, row.Values())) {
        TwirlOneByOne(*this, disc, count, row.Values());
    }
    Unlock();
    DeleteClone();
    SetDirty();
    return true;
}

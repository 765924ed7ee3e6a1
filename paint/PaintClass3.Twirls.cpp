// The distortions: Twirls.
#include <algorithm>
#include <cstring>

#include "base/Progress.h"
#include "paint/Distortion.h"
#include "paint/PaintClass.h"
#include "paint/kernels/TwirlDisc.h"
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

/// Writes the rows of one twirl around (cx, cy), each of which `read(dy, out)` reads from what was
/// copied before. Where a large twirl overlaps itself around the torus the last write stands; it
/// overlaps in one direction only, so going by rows leaves the same as going by columns.
template <typename Read>
void WriteTwirl(PicClass& pic, const TwirlDisc& disc, int radius, int cx, int cy, Pixel* row,
                Read read) {
    for (int dy = 1 - radius; dy < radius; ++dy) {
        const int halfWidth = disc.HalfWidth(dy);
        read(dy, row);
        WriteRow(pic, cx - halfWidth, cy + dy, row, 2 * halfWidth + 1);
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
    TwirlDisc disc(radius, radius / (params.intensity * 0.01 + 3.5));
    const HandleArray<Pixel> row(static_cast<std::size_t>(2 * std::max<int>(radius, 0) + 1));
    if (disc.Failed() || row.Failed()) {
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
            disc.Place(*this, cx, cy, window);
            WriteTwirl(*this, disc, radius, cx, cy, row.Values(),
                       [&](int dy, Pixel* out) { disc.ReadRow(dy, out); });
        } else {
            CopyToClone();
            WriteTwirl(*this, disc, radius, cx, cy, row.Values(), [&](int dy, Pixel* out) {
                ReadOneByOne(*clone, disc.Row(dy, cx, cy), reinterpret_cast<unsigned char*>(out));
            });
        }
        SetPixelWrapped(cx, cy, centre);
    }
    Unlock();
    DeleteClone();
    SetDirty();
    return true;
}

// Shared by the distortions. Waves, Twirls and Skew are in PaintClass3.Waves.cpp, .Twirls.cpp and
// .Skew.cpp.
#include <cstring>

#include "paint/Distortion.h"
#include "raster/Truncation.h"

ColumnTable::ColumnTable(short width) : values(2 * static_cast<std::size_t>(width)) {
    if (Failed()) {
        return;
    }
    numbers = values.Values();
    shifts = numbers + width;
    for (short x = 0; x < width; ++x) {
        numbers[x] = x;
        shifts[x] = 0;
    }
}

Positions ColumnTable::PartOfRow(double rowShift, short y, int first, int count) const {
    return {rowShift, static_cast<double>(y), numbers + first, shifts + first, count};
}

WholeTile::WholeTile(const PicClass& tile) : TileWindow(tile.grX + 1, tile.grY + 1) {
    if (!Failed()) {
        Copy(tile, 0, 0);
    }
}

bool KeepInClone(PaintClass& pic) {
    if (pic.GetClone() == nullptr) {
        return false;
    }
    pic.CopyToClone();
    return true;
}

void ReadOneByOne(const PicClass& clone, const Positions& positions, unsigned char* out) {
    for (int i = 0; i < positions.count; ++i) {
        unsigned char* const pixel = out + i * bytesPerPixel;
        clone.GetPixelInterpolated(positions.originX + positions.x[i],
                                   positions.originY + positions.y[i], pixel);
        pixel[3] = 0;
    }
}

void WriteNearest(const PicClass& clone, const Positions& positions, unsigned char* row) {
    for (int i = 0; i < positions.count; ++i) {
        const Pixel pixel =
            clone.GetPixelWrapped(TruncateToShort(positions.originX + positions.x[i]),
                                  TruncateToShort(positions.originY + positions.y[i]));
        std::memcpy(row + i * bytesPerPixel, &pixel, sizeof pixel);
    }
}

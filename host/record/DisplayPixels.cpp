#include "host/record/DisplayPixels.h"

#include <cstddef>
#include <new>

#include "base/Rectangles.h"
#include "hostapi/Results.h"

namespace host {

namespace {

const std::uint8_t* PixelAt(const hostapi::PSPixelMap& map, std::int32_t row, std::int32_t column) {
    return static_cast<const std::uint8_t*>(map.baseAddr) +
           static_cast<std::ptrdiff_t>(row) * map.rowBytes +
           static_cast<std::ptrdiff_t>(column) * map.colBytes;
}

// `row` and `column` count from the base address.
DisplayRows CopyRows(const hostapi::PSPixelMap& map, std::int32_t row, std::int32_t column,
                     std::int32_t width, std::int32_t height) {
    DisplayRows rows{width, height, {}};
    rows.bytes.resize(rows.RowBytes() * static_cast<std::size_t>(height));
    const bool isGrey = map.imageMode == hostapi::imageModeGrey;
    const std::ptrdiff_t green = isGrey ? 0 : map.planeBytes;
    for (std::int32_t y = 0; y < height; ++y) {
        const std::uint8_t* source = PixelAt(map, row + y, column);
        std::uint8_t* target = rows.bytes.data() + static_cast<std::size_t>(y) * rows.RowBytes();
        for (std::int32_t x = 0; x < width; ++x) {
            target[0] = source[2 * green];
            target[1] = source[green];
            target[2] = source[0];
            source += map.colBytes;
            target += 3;
        }
    }
    return rows;
}

}  // namespace

std::int16_t DisplayPixels(const hostapi::PSPixelMap* map, const hostapi::VRect* sourceRect,
                           std::int32_t dstRow, std::int32_t dstCol, void* context,
                           bool ignoreOrigin) {
    if (map == nullptr || sourceRect == nullptr || map->baseAddr == nullptr || context == nullptr) {
        return hostapi::filterBadParameters;
    }
    if (map->imageMode != hostapi::imageModeRGB && map->imageMode != hostapi::imageModeGrey) {
        return hostapi::filterBadParameters;
    }
    const hostapi::VRect shown = Intersect(*sourceRect, map->bounds);
    if (IsEmpty(shown)) {
        return hostapi::noErr;
    }
    dstRow += shown.top - sourceRect->top;
    dstCol += shown.left - sourceRect->left;
    const hostapi::VRect visible =
        VisiblePart({dstRow, dstCol, dstRow + Height(shown), dstCol + Width(shown)}, context);
    if (IsEmpty(visible)) {
        return hostapi::noErr;
    }
    const std::int32_t row =
        visible.top - dstRow + (ignoreOrigin ? 0 : shown.top - map->bounds.top);
    const std::int32_t column =
        visible.left - dstCol + (ignoreOrigin ? 0 : shown.left - map->bounds.left);
    try {
        DrawRows(CopyRows(*map, row, column, Width(visible), Height(visible)), visible.top,
                 visible.left, context);
    } catch (const std::bad_alloc&) {
        return hostapi::memFullErr;
    }
    return hostapi::noErr;
}

}  // namespace host

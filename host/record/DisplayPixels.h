// The display service: draws pixels in memory on a device context.
#pragma once

#include <cstdint>
#include <vector>

#include "hostapi/Suites.h"

namespace host {

/// Rows from the top, blue, green, red, each row padded to a multiple of 4 bytes: what Windows
/// draws without conversion.
struct DisplayRows {
    std::int32_t width;
    std::int32_t height;
    std::vector<std::uint8_t> bytes;

    std::size_t RowBytes() const { return (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4; }
};

/// Draws the part `sourceRect` of the map, as far as it lies in the map's bounds, so that the
/// rectangle's top left pixel comes to (dstCol, dstRow). Honours the context's clip region. RGB and
/// grey maps; their masks aren't looked at. With `ignoreOrigin` the map's base address is taken for
/// the rectangle's first pixel. Returns 0; filterBadParameters for a null map, rectangle, base
/// address or context and for other image modes; memFullErr.
std::int16_t DisplayPixels(const hostapi::PSPixelMap* map, const hostapi::VRect* sourceRect,
                           std::int32_t dstRow, std::int32_t dstCol, void* context,
                           bool ignoreOrigin);

/// The part of the rectangle that drawing on the context can show; the whole of it where there are
/// no device contexts. A view over a large picture draws much that is outside.
hostapi::VRect VisiblePart(const hostapi::VRect& rect, void* context);

/// The platform's part. `context` is a device context (an HDC); where there are none, draws
/// nothing.
void DrawRows(const DisplayRows& rows, std::int32_t row, std::int32_t column, void* context);

}  // namespace host

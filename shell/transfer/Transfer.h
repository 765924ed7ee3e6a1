// The two loops that move pixels between the host's selection and a raster, one row a host call.
#pragma once

#include <cstdint>
#include <memory>

#include "paint/PaintClass.h"
#include "shell/transfer/FilterContext.h"

/// A raster as the writing loop needs it.
struct TileInfo {
    std::int16_t width;
    std::int16_t height;
    std::int32_t rowBytes;
    const unsigned char* base;
};

/// `pic` has a pixel map.
TileInfo TileOf(const PicClass& pic);

/// Whether the host's picture is one in RGB, of three planes or more.
bool HasColors(const hostapi::FilterRecord& record);

/// Tries the selection's first row, since nothing but its length tells of a picture with more than
/// 8 bits a channel. Returns 0, filterBadParameters for such a picture, or the host's error. The
/// record's rectangles stay as they are.
std::int16_t TryFirstRow(FilterContext* context);

/// A new raster of the selection's full size with its pixels; pixels outside a selection mask
/// become white. Null without memory or with an empty selection. After an abort or an error of the
/// host (in the context's result) the rows that were not read stay white.
std::unique_ptr<PaintClass> ReadSelection(FilterContext* context);

/// Writes the tile, repeated, into the whole of filterRect: the pixel at (X, Y) from the
/// selection's top left corner receives the tile's pixel (X mod width, Y mod height). Planes beyond
/// the third keep what the host delivered. The context's result becomes 0, -128 after an abort, the
/// error of advanceState, or filterBadParameters for fewer than three planes, for rows of more than
/// 8 bits a channel, or for a row that the host neither delivers nor shrinks to nothing; rows
/// written before stay written.
void WriteTileToSelection(FilterContext* context, const TileInfo& tile);

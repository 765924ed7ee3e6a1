// Helpers of the tests of the transfer.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "base/Rectangles.h"
#include "hostapi/HostTypes.h"
#include "paint/PaintClass.h"
#include "shell/transfer/Transfer.h"
#include "tests/support/RowHost.h"

constexpr bool IsZero(const hostapi::Rect& rect) {
    return rect.top == 0 && rect.left == 0 && rect.bottom == 0 && rect.right == 0;
}

/// The tile in the bytes of a last texture's file, which must outlive it.
inline TileInfo TileOfFile(const std::string& file) {
    const auto number = [&file](std::size_t at) {
        return static_cast<std::int16_t>(static_cast<unsigned char>(file.at(at)) |
                                         static_cast<unsigned char>(file.at(at + 1)) << 8);
    };
    const TileInfo tile{number(0), number(2), number(0) * bytesPerPixel,
                        reinterpret_cast<const unsigned char*>(file.data()) + 4};
    EXPECT_EQ(file.size(), 4 + static_cast<std::size_t>(tile.rowBytes * tile.height));
    return tile;
}

/// `image` with the tile written across `rows` rows of `selection` from its top, pixel by pixel.
inline HostImage Tiled(HostImage image, const TileInfo& tile, const hostapi::Rect& selection,
                       int rows) {
    for (int y = selection.top; y < selection.top + rows; ++y) {
        for (int x = selection.left; x < selection.right; ++x) {
            const bool inImage = y >= image.bounds.top && y < image.bounds.bottom &&
                                 x >= image.bounds.left && x < image.bounds.right;
            if (!inImage) {
                continue;
            }
            const int column = (x - selection.left) % tile.width;
            const int row = (y - selection.top) % tile.height;
            for (int c = 0; c < 3; ++c) {
                image.At(x, y)[c] = tile.base[row * tile.rowBytes + column * bytesPerPixel + c];
            }
        }
    }
    return image;
}

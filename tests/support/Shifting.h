// The law of the torus: an operation gives the same picture wherever the tile begins.
#pragma once

#include "raster/PicClass.h"

/// Copies `from` into `to`, which has its size, moved around the torus.
inline void CopyShifted(const PicClass& from, PicClass& to, int dx, int dy) {
    for (short y = 0; y < from.grY; ++y) {
        for (short x = 0; x < from.grX; ++x) {
            to.SetPixel(Wrap(x + dx, from.grX), Wrap(y + dy, from.grY), from.GetPixel(x, y));
        }
    }
}

// A picture to measure with, on which no branch is foretold.
#pragma once

#include <random>

#include "raster/PicClass.h"

inline void FillWithNoise(PicClass& pic) {
    std::mt19937 generator(1);
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetPixel(x, y, static_cast<Pixel>(generator()));
        }
    }
}

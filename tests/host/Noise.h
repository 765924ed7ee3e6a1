// A picture that no operation leaves alone by chance.
#pragma once

#include <cstdint>
#include <random>

#include "host/picture/Picture.h"

namespace host {

/// Random bytes, the same ones for each seed.
inline Picture Noise(int width, int height, int planes, unsigned seed = 5) {
    Picture picture = MakePicture(width, height, planes);
    std::mt19937 random(seed);
    for (std::uint8_t& byte : picture.pixels) {
        byte = static_cast<std::uint8_t>(random());
    }
    return picture;
}

}  // namespace host

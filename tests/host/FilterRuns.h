// Helpers of the tests of a filter's run.
#pragma once

#include "host/record/FilterHost.h"

namespace host {

inline Picture InvertedInside(Picture picture, const hostapi::VRect& rect) {
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x) {
            for (int plane = 0; plane < 3; ++plane) {
                picture.Pixel(x, y)[plane] =
                    static_cast<std::uint8_t>(255 - picture.Pixel(x, y)[plane]);
            }
        }
    }
    return picture;
}

inline HostSettings With(std::initializer_list<Trait> traits) {
    HostSettings settings;
    settings.traits = traits;
    return settings;
}

inline constexpr hostapi::VRect part{2, 3, 9, 8};

}  // namespace host

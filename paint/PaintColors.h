// The colours that the tools paint with.
#pragma once

#include "paint/PaintClass.h"
#include "paint/kernels/PixelBytes.h"

/// The colour as the raster has it, with the alpha byte 0.
inline Pixel RasterColor(const RGBColor16& color) {
    return WithColor(0, HighByte(color.red), HighByte(color.green), HighByte(color.blue));
}

/// A texture that no editor holds has no colours: it is painted black on white.
inline const RGBColor16& ForegroundOf(const PaintClass& pic) {
    return pic.foreColor != nullptr ? *pic.foreColor : black16;
}

inline const RGBColor16& BackgroundOf(const PaintClass& pic) {
    return pic.backColor != nullptr ? *pic.backColor : white16;
}

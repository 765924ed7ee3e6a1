// The disc of a rubber stamp, several pixels at a time.
#pragma once

/// One stamp on a texture.
struct StampDisc {
    /// The texture, and the texture before the stroke: `height` rows of `width` pixels each,
    /// without a gap.
    unsigned char* pixels;
    const unsigned char* before;
    short width;
    short height;
    /// In pixels, at most largestStampCentre either way. The disc wraps around the texture.
    double centreX;
    double centreY;
    /// The centre of a stamp of the same radius that has been laid on this texture since its alpha
    /// bytes were set: pixels that are no nearer to the new centre are left out. None is left out
    /// if it is two radii away.
    double previousX;
    double previousY;
    /// 1 to largestStampRadius.
    int radius;
    /// The way from a pixel to the one that is copied to it.
    short offsetH;
    short offsetV;
};

constexpr double largestStampCentre = 1e9;
constexpr int largestStampRadius = 10;

/// Mixes each source with what was there before the stroke, where the stroke comes nearer: where
/// the distance from the centre, of which 256 is the radius, is below the pixel's alpha byte, which
/// it then becomes. One pixel after the other, row by row, as a source may be a pixel that the
/// stamp has just written.
void LayStamp(const StampDisc& disc);

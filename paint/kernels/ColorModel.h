// Hue, lightness and saturation: the conversion of single colours, and what is done in this model
// to rows of pixels.
//
// All conversions to bytes truncate, so a colour that goes there and back may lose a step.
#pragma once

struct ColorHLS {
    /// Degrees: 0 to 360, red at 0, green at 120, blue at 240.
    double hue;
    /// 0 to 1.
    double lightness;
    /// 0 to 1. 0 is grey, whose hue is 0 as well.
    double saturation;
};

/// `rgb` holds red, green and blue.
void RGBToHLS(const unsigned char* rgb, ColorHLS* out);
/// A hue beyond 0 to 360 comes back by one turn at most, and a channel keeps the low 8 bits of its
/// truncated number: a hue that was turned further can make it negative. That is intended.
void HLSToRGB(const ColorHLS* in, unsigned char* rgb);

// Rows of pixels of four bytes each, of which the fourth stays.

/// Adds `delta` to the saturation, which keeps to 0 to 1. Greys have the hue of red, so raising
/// the saturation tints them.
void SaturateRow(unsigned char* pixels, int count, double delta);

/// Turns the hue by twice the share of what the other picture's grey has above 128, in whole
/// degrees. Reads the colours of `pixels` and `other` and writes those of `out`, which may be
/// either of them.
void TurnHueRow(const unsigned char* pixels, const unsigned char* other, unsigned char* out,
                int count, double share);

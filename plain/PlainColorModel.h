// The two colour conversions, step by step.
#pragma once

/// Hue in degrees, lightness and saturation 0 to 1.
struct PlainHLS {
    double hue;
    double lightness;
    double saturation;
};

PlainHLS PlainRGBToHLS(const unsigned char* rgb);
/// Keeps the low 8 bits of what a channel becomes.
void PlainHLSToRGB(const PlainHLS& hls, unsigned char* rgb);

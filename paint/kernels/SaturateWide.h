// Saturation with AVX2, by the order of a pixel's three channels.
#pragma once

/// The same as SaturateRow, on a processor that has AVX2.
void SaturateWide(unsigned char* pixels, int count, double delta);

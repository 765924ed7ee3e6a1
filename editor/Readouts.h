// The texts of the editor's readouts, without a window to show them.
#pragma once

#include <cstdint>
#include <string>

/// A side of `pixels` in `unit`, followed by the unit: "300 pixel", "4.2 inch", "0.5 cm".
std::string SideText(short pixels, std::int32_t unit, int resolution);
/// "72 dpi".
std::string ResolutionText(int resolution);
/// Kilobytes of a texture, four bytes a pixel, truncated.
int Kilobytes(short width, short height);
/// "16 kB". May be "0 kB" in the editor; the dialogs never say less than 1.
std::string MemoryText(int kilobytes);
/// "33%" for 0.33.
std::string ZoomText(double zoom);

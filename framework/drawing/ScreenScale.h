// Pixels and pictures on screens of any resolution.
#pragma once

#include <array>

/// The resolution at which the figures in pixels are given, in dots an inch.
constexpr int plainResolution = 96;

/// The scale of a window: that of its screen.
struct ScreenScale {
    /// In dots an inch.
    int resolution = plainResolution;

    /// Pixels there for pixels at 96 dots an inch, rounded half away from zero.
    int Pixels(int plain) const;

    friend bool operator==(const ScreenScale&, const ScreenScale&) = default;
};

/// The scales at which every picture is drawn, in percent of its size at 96 dots an inch.
inline constexpr std::array pictureScales = {100, 150, 200};

/// `plain` pixels of a drawing at 100 percent in one of those, rounded as ScreenScale::Pixels.
int AtPercent(int plain, int percent);

/// The place in `pictureScales` of the drawing nearest to a picture `wanted` pixels wide, which has
/// `plain` at 100 percent; of two equally near the larger.
int NearestPictureScale(int plain, int wanted);

/// The resolution by which the system has laid a dialog out: of that of its window's monitor and
/// that of the device, the one at which the font of all dialogs is as high as the dialog's. The two
/// differ in a host that follows each monitor while the system does not lay its dialogs out by it.
/// `fontHeight` is in pixels without the leading, of either sign; 0 is unknown, as is a resolution
/// of 0. The monitor's comes first; 96 without either.
int LayoutResolution(int fontHeight, int ofMonitor, int ofDevice);
